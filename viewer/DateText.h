#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

namespace viewer {

/// The short date format of the user's locale, its year with all four digits: patients are born in
/// two centuries.
QString shortDateFormat();
QString shortDate(const QDate &date);
/// The same with the time of day.
QString shortDateTime(const QDateTime &moment);

} // namespace viewer
