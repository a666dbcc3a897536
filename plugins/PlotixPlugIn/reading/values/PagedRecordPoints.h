#pragma once

#include "plotkit/model/CPTPagedPoints.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

#include <map>

/// The points of a paged column, written where somebody looks, in the unit that was shown when this was made: from the
/// column's pages where they are in memory, else past them. *Shares* the column's values; made on the main thread, then
/// any thread.
namespace plotix {

class PagedRecordPoints : public CPTPagedPoints {
public:
    /// Elements that differ from the column: their values, NaN where there is no point.
    using Exceptions = std::map<std::size_t, double>;

    /// Requires: column.archivedValues() is paged.
    PagedRecordPoints(const KTVRecordColumn& column, Exceptions exceptions);

    void expect(std::size_t first, std::size_t end) const override { m_column.archivedValues().expect(first, end); }

private:
    bool writePoints(CPTPointWriter& into) const noexcept override;
    void writePiece(CPTPointWriter& into, const PagedMemory::Piece& piece) const;

    KTVRecordColumn m_column;
    Exceptions m_exceptions;
    bool m_isAsArchived;
};

}  // namespace plotix
