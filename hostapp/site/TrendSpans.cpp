#include "hostapp/site/TrendSpans.h"

#include "hostapp/site/PlugInOperations.h"

#include <cmath>

namespace plotix {

namespace {

constexpr double kSameMoment = 0.01;  // seconds

std::optional<MomentSpan> spanIn(const QVariantMap& map, const char* name)
{
    const QVariantList span = map.value(QLatin1String(name)).toList();
    return span.size() == 2 ? std::optional(MomentSpan(span[0].toDouble(), span[1].toDouble())) : std::nullopt;
}

}  // namespace

bool isSameSpan(const MomentSpan& one, const MomentSpan& other)
{
    return std::abs(one.first - other.first) < kSameMoment && std::abs(one.second - other.second) < kSameMoment;
}

bool isWithin(const MomentSpan& inner, const MomentSpan& outer)
{
    return inner.first > outer.first - kSameMoment && inner.second < outer.second + kSameMoment;
}

std::optional<TrendSpans> spansOf(const KTVPlugIn* plugIn)
{
    const std::optional<MomentSpan> dates = shownRange(plugIn);
    const QVariantMap map = spansTold(plugIn);
    if (!dates || map.isEmpty())
        return std::nullopt;
    return TrendSpans{*dates,
                      spanIn(map, "drawn"),
                      spanIn(map, "read"),
                      spanIn(map, "held"),
                      spanIn(map, "asked"),
                      map.value(QStringLiteral("datesLead")).toBool(),
                      map.value(QStringLiteral("datesEdited")).toBool()};
}

TrendNeed needOf(const TrendSpans& spans, Wanted wanted)
{
    if (!spans.drawn)
        return spans.asked ? TrendNeed::Waiting : TrendNeed::Nothing;
    const bool isOnItsWay = spans.asked && isWithin(spans.dates, *spans.asked);
    if (!isSameSpan(spans.dates, *spans.drawn)) {
        if (isOnItsWay)
            return TrendNeed::Waiting;
        if (!spans.datesLead)
            return TrendNeed::MoveDates;
        return spans.dates.first <= spans.dates.second ? TrendNeed::Show : TrendNeed::OtherDates;
    }
    const bool isRead = spans.read && isWithin(spans.dates, *spans.read);
    const bool isMore = wanted == Wanted::Exact && spans.held && !isWithin(*spans.held, spans.dates);
    if (isRead && !isMore)
        return TrendNeed::Nothing;
    return isOnItsWay && !isRead ? TrendNeed::Waiting : TrendNeed::Read;
}

void meet(TrendNeed need, KTVPlugIn& plugIn, const TrendSpans& spans)
{
    if (need == TrendNeed::Show)
        showRange(&plugIn, spans.dates.first, spans.dates.second);
    else if (need == TrendNeed::Read)
        readRange(&plugIn, spans.dates.first, spans.dates.second);
    else if (need == TrendNeed::MoveDates)
        sendToReadSpans(&plugIn, "moveDatesToDrawn");
}

}  // namespace plotix
