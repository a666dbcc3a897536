#include "hostapp/demo/DemonstrationTrends.h"

#include "base/ReportableError.h"
#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

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
    KTVArchiveNode root = readKeyedArchive(state);
    const KTVArchiveNode* found = root.find(kDates);
    const KTVArchiveNode* from = found ? found->find(kFrom) : nullptr;
    const KTVArchiveNode* to = found ? found->find(kTo) : nullptr;
    if (!from || !to)
        return std::nullopt;
    const double end = to->value.toDouble();
    if (end < lastBefore - kRecordInterval || end >= lastNow)
        return std::nullopt;
    KTVArchiveNode dates = *found;
    dates.set(kFrom, KTVArchiveNode::of(from->value.toDouble() + (lastNow - end)));
    dates.set(kTo, KTVArchiveNode::of(lastNow));
    root.set(kDates, std::move(dates));
    return writeKeyedArchive(root);
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
