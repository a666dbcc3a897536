#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"

#include "base/PagedReading.h"
#include "plotkit/model/PagedSeries.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"
#include "plugins/PlotixPlugIn/reading/values/PagedRecordPoints.h"
#include "plugins/PlotixPlugIn/reading/values/ShownSeries.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

bool isPlotted(const KTVPropertyPtr& snapshot)
{
    return snapshot && snapshot->type() != kPropertyTypeNeverPlotted && snapshot->isValid();
}

bool isTurnable(const KTVUnitModel::Map& map)
{
    return map.isLinear && std::isfinite(map.scale) && std::isfinite(map.offset) && map.scale != 0;
}

/// Whether the runs tell what frames need: with values in the unit shown that follow from the archived ones.
bool canBePaged(const RecordTimes& time, const KTVRecordColumn& column)
{
    return column.archivedValues().memory() && time.runs() && column.known().runs && column.size() > 0 &&
           column.size() <= time.size() && column.descriptor().type != kPropertyTypeNeverPlotted &&
           isTurnable(column.map());
}

/// What is known of values after a linear map; runs without values, or of which nothing is known, stay such. *Borrows*
/// what is known before.
class ShownRuns final : public KeptRuns {
public:
    ShownRuns(const KeptRuns& archived, const KTVUnitModel::Map& map) : m_archived(archived), m_map(map) {}
    std::size_t count() const override { return m_archived.count(); }
    void inPieces(const Take& take) const override
    {
        ValueRuns shown;
        m_archived.inPieces([&](const ValueRuns& piece) {
            shown = piece;
            show(shown);
            take(shown);
        });
    }

private:
    void show(ValueRuns& runs) const
    {
        for (std::size_t run = 0; run < runs.count(); ++run) {
            if (!(runs.least[run] <= runs.greatest[run]))
                continue;
            for (double* value : {&runs.least[run], &runs.greatest[run], &runs.first[run]})
                *value = *value * m_map.scale + m_map.offset;
            if (m_map.scale < 0)
                std::swap(runs.least[run], runs.greatest[run]);
        }
    }

    const KeptRuns& m_archived;
    const KTVUnitModel::Map& m_map;
};

CPTPointSeriesPtr pagedSeriesOf(const RecordTimes& time, const KTVRecordColumn& column)
{
    auto count = static_cast<std::size_t>(column.known().count);
    PagedRecordPoints::Exceptions exceptions;
    std::vector<std::size_t> changed;
    for (const auto& [index, snapshot] : column.exceptions()) {
        const double value = isPlotted(snapshot) ? snapshot->unitValue() : std::numeric_limits<double>::quiet_NaN();
        count -= column.isValid(index) ? 1 : 0;
        count += std::isnan(value) ? 0 : 1;
        exceptions[index] = value;
        changed.push_back(index);
    }
    const bool isAsArchived = column.unit() == column.descriptor().archivedUnit || column.map().isIdentity;
    const KeptRuns& archived = *column.known().runs;
    const ShownRuns shown(archived, column.map());
    const auto points = std::make_shared<const PagedRecordPoints>(column, std::move(exceptions));
    return plotkit::pagedSeries(time, {time.runs(), isAsArchived ? archived : shown, changed}, points, count);
}

}  // namespace

CPTPointSeriesPtr seriesOfRecords(const RecordTimes& time, const KTVRecordColumn& column)
{
    if (canBePaged(time, column)) {
        if (CPTPointSeriesPtr shown = shownSeries(time, column))
            return shown;
        CPTPointSeriesPtr made = pagedSeriesOf(time, column);
        noteShown(time, column, made);
        return made;
    }
    SeriesBuilder builder(time, column.size());
    const bool isAsArchived = column.unit() == column.descriptor().archivedUnit;
    if (column.descriptor().type == kPropertyTypeNeverPlotted) {
        // Only exceptions can be points.
    } else if (isAsArchived) {
        inStretches(column, 0, builder.elementCount(), [&](std::size_t first, std::size_t end) {
            const auto values = column.archivedValues().span().subspan(first, end - first);
            builder.setBlock(first, values, column.validity());
        });
    } else {
        std::vector<double> block(std::min(SeriesBuilder::kBlock, builder.elementCount()));
        for (std::size_t first = 0; first < builder.elementCount(); first += block.size()) {
            const std::span<double> values(block.data(), std::min(block.size(), builder.elementCount() - first));
            const KTVRecordColumn::Hold held = column.hold(first, first + values.size());
            column.copyUnitValues(first, values);
            builder.setBlock(first, values, column.validity());
        }
    }
    for (const auto& [index, snapshot] : column.exceptions()) {
        if (isPlotted(snapshot))
            builder.setPoint(index, snapshot->unitValue());
        else
            builder.dropPoint(index);
    }
    return builder.finish();
}

}  // namespace plotix
