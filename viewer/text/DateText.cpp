#include "viewer/text/DateText.h"

#include <QLocale>

namespace viewer {

QString shortDateFormat()
{
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

QString shortDate(const QDate &date)
{
    return QLocale().toString(date, shortDateFormat());
}

QString shortDateTime(const QDateTime &moment)
{
    return shortDate(moment.date()) + QLatin1Char(' ') +
           QLocale().toString(moment.time(), QLocale::ShortFormat);
}

QDateTime momentOf(const QDate &day)
{
    const QDateTime first = day.startOfDay();
    // Where the day is left out Qt gives a moment of a neighbour, or none.
    if (first.isValid() && first.date() == day) return first;
    return QDateTime(day, QTime(12, 0), Qt::UTC);
}

} // namespace viewer
