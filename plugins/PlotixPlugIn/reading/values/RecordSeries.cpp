#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"

#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <algorithm>

namespace plotix {

namespace {

bool isPlotted(const KTVPropertyPtr& snapshot)
{
    return snapshot && snapshot->type() != kPropertyTypeNeverPlotted && snapshot->isValid();
}

}  // namespace

CPTPointSeriesPtr seriesOfRecords(const SharedArray<double>& time, const KTVRecordColumn& column)
{
    SeriesBuilder builder(time, column.size());
    const bool isAsArchived = column.unit() == column.descriptor().archivedUnit;
    if (column.descriptor().type == kPropertyTypeNeverPlotted) {
        // Only exceptions can be points.
    } else if (isAsArchived) {
        builder.setBlock(0, column.archivedValues().span().first(builder.elementCount()), column.validity());
    } else {
        std::vector<double> block(std::min(SeriesBuilder::kBlock, builder.elementCount()));
        for (std::size_t first = 0; first < builder.elementCount(); first += block.size()) {
            const std::span<double> values(block.data(), std::min(block.size(), builder.elementCount() - first));
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
