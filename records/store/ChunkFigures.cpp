#include "records/store/ChunkFigures.h"

#include <limits>

namespace plotix {

ChunkFigures::Column ChunkFigures::Column::of(RowId property, const ColumnIndex& index)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Column column{property, {}, index.whole.valid, index.sum};
    column.runs.reserve(index.runs.size());
    for (const RunFigures& run : index.runs) {
        const bool isEmpty = run.valid == 0;
        column.runs.least.push_back(isEmpty ? kInfinity : run.least.value);
        column.runs.greatest.push_back(isEmpty ? -kInfinity : run.greatest.value);
        column.runs.first.push_back(isEmpty || run.first.at > 0 ? absentValue() : run.first.value);
    }
    return column;
}

ChunkFigures ChunkFigures::of(const RecordsView& records)
{
    ChunkFigures figures;
    figures.times = runTimesOf({records.times, records.size});
    for (const RecordsView::Column& column : records.columns)
        figures.columns.push_back(Column::of(column.property, indexOf(column, records.size)));
    return figures;
}

}  // namespace plotix
