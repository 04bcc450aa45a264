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

/// The moment that represents a day in a view: its first one on the user's clock. A day that the
/// local calendar left out (30 December 2011 in Samoa) has none there, and a treatment of that day
/// could not be shown or changed: its noon by universal time represents it.
QDateTime momentOf(const QDate &day);

} // namespace viewer
