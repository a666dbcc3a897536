#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

#include <algorithm>

namespace plotix {

double cameAt(const KTVAmendment& amendment, double time)
{
    const double length = amendment.to - amendment.from;
    const double share = length > 0 ? std::clamp((time - amendment.from) / length, 0.0, 1.0) : 1.0;
    return amendment.first + share * (amendment.last - amendment.first);
}

std::vector<KTVAmendment> lateByMoreThan(double delay, const std::vector<KTVAmendment>& amendments)
{
    std::vector<KTVAmendment> left;
    for (const KTVAmendment& each : amendments) {
        const double atBegin = each.first - each.from, atEnd = each.last - each.to;
        if (each.kind == KTVAmendment::Kind::Corrected || (atBegin > delay && atEnd > delay)) {
            left.push_back(each);
            continue;
        }
        if (atBegin <= delay && atEnd <= delay)
            continue;
        // Delays change evenly along a stretch.
        const double turn = each.from + (each.to - each.from) * (delay - atBegin) / (atEnd - atBegin);
        KTVAmendment part = each;
        (atBegin > delay ? part.to : part.from) = turn;
        (atBegin > delay ? part.last : part.first) = cameAt(each, turn);
        left.push_back(part);
    }
    return left;
}

std::optional<KTVAmendment> amendmentAt(const std::vector<KTVAmendment>& amendments, double time)
{
    std::optional<KTVAmendment> latest;
    for (const KTVAmendment& each : amendments) {
        if (each.from > time)
            break;
        if (time <= each.to && (!latest || cameAt(each, time) >= cameAt(*latest, time)))
            latest = each;
    }
    return latest;
}

}  // namespace plotix
