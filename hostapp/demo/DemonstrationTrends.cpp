#include "hostapp/demo/DemonstrationTrends.h"

#include "base/ReportableError.h"
#include "hostapp/core/CoderNode.h"

namespace plotix {

namespace {

// The keys of a date range in an archived trend. Stored: never change.
const QString kDates = QStringLiteral("dataClusterViewController");
const QString kFrom = QStringLiteral("fromDate");
const QString kTo = QStringLiteral("toDate");

constexpr double kRecordInterval = 60;  // seconds: a trend that ends one record early still ended at the end

/// The state with its dates moved; nothing when they need not move.
std::optional<QByteArray> movedState(const QByteArray& state, double lastBefore, double lastNow)
{
    CoderNode root = readArchive(state);
    const CoderNode* found = root.find(kDates);
    const CoderNode* from = found ? found->find(kFrom) : nullptr;
    const CoderNode* to = found ? found->find(kTo) : nullptr;
    if (!from || !to)
        return std::nullopt;
    const double end = to->value.toDouble();
    if (end < lastBefore - kRecordInterval || end >= lastNow)
        return std::nullopt;
    CoderNode dates = *found;
    dates.set(kFrom, CoderNode::of(from->value.toDouble() + (lastNow - end)));
    dates.set(kTo, CoderNode::of(lastNow));
    root.set(kDates, std::move(dates));
    return writeArchive(root);
}

}  // namespace

int letTrendsFollow(SiteDocument& document, double lastBefore)
{
    const auto extent = document.recordExtent();
    if (!extent || document.isReadOnly())
        return 0;
    int moved = 0;
    for (ArchivedPlugIn plugIn : document.archivedPlugIns()) {
        std::optional<QByteArray> state;
        try {
            state = movedState(plugIn.state, lastBefore, extent->second.seconds);
        } catch (const ReportableError&) {
            continue;  // a state of a newer program stays as it is, as it does when the site is opened
        }
        if (!state)
            continue;
        plugIn.state = *state;
        document.storePlugIn(plugIn);
        ++moved;
    }
    return moved;
}

}  // namespace plotix
