#include "hostapp/web/WebRange.h"

#include "base/WholeDay.h"
#include "hostapp/web/WebPath.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace plotix {

namespace {

enum class Bound { From, To };

OptionalDate timeFrom(const QString& text, Bound bound)
{
    if (const QDate day = QDate::fromString(text, Qt::ISODate); day.isValid() && text.size() <= 10) {
        if (bound == Bound::To)
            return lastMomentOf(day);
        return Date{static_cast<double>(day.startOfDay().toMSecsSinceEpoch()) / 1000};
    }
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    return time.isValid() ? OptionalDate(Date{static_cast<double>(time.toMSecsSinceEpoch()) / 1000}) : std::nullopt;
}

QString textOf(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000)), Qt::UTC)
        .toString(Qt::ISODateWithMs);
}

}  // namespace

AskedRange rangeAsked(const QByteArray& query)
{
    const auto from = queryValue(query, "from"), to = queryValue(query, "to");
    if (!from && !to)
        return {};
    if (!from || !to)
        return {{}, QStringLiteral("A range needs both ends: from and to.")};
    const OptionalDate first = timeFrom(*from, Bound::From), last = timeFrom(*to, Bound::To);
    if (!first || !last)
        return {{},
                QStringLiteral("“%1” is not a time; write one as 2013-07-01 or 2013-07-01T12:00:00Z.")
                    .arg(first ? *to : *from)};
    if (last->seconds <= first->seconds)
        return {{}, QStringLiteral("The range ends before it begins: “to” must lie after “from”.")};
    return {WebRange{first->seconds, last->seconds}, {}};
}

QString queryOf(const WebRange& range)
{
    return QStringLiteral("?from=%1&to=%2").arg(textOf(range.from), textOf(range.to));
}

}  // namespace plotix
