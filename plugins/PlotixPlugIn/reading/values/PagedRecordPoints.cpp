#include "plugins/PlotixPlugIn/reading/values/PagedRecordPoints.h"

#include "base/PagedReading.h"

#include <array>

namespace plotix {

namespace {

constexpr std::size_t kBlock = 4096;  // a multiple of 64, and the nearest cache holds it

}  // namespace

PagedRecordPoints::PagedRecordPoints(const KTVRecordColumn& column, Exceptions exceptions)
    : CPTPagedPoints(column.archivedValues().memory()->cache(), column.size()),
      m_column(column.descriptor(), column.archivedValues(), column.validity(), column.unitModel()),
      m_exceptions(std::move(exceptions)),
      m_isAsArchived(column.unit() == column.descriptor().archivedUnit)
{
}

bool PagedRecordPoints::writePoints(CPTPointWriter& into) const noexcept
{
    const bool areRead = inPieces(m_column.archivedValues(), m_column.validity(), into.first(), into.end(),
                                  [&](const PagedMemory::Piece& piece) { writePiece(into, piece); });
    for (auto each = m_exceptions.lower_bound(into.first()); each != m_exceptions.end() && each->first < into.end();
         ++each)
        into.setPoint(each->first, each->second);
    return areRead;
}

void PagedRecordPoints::writePiece(CPTPointWriter& into, const PagedMemory::Piece& piece) const
{
    if (m_isAsArchived)
        return into.setBlock(piece.first, piece.values, piece.valid);
    std::array<double, kBlock> block;
    for (std::size_t done = 0; done < piece.values.size(); done += kBlock) {
        const std::span<const double> archived =
            piece.values.subspan(done, std::min(kBlock, piece.values.size() - done));
        const std::span<double> shown(block.data(), archived.size());
        m_column.convert(archived, shown);
        into.setBlock(piece.first + done, shown, piece.valid ? piece.valid + done / 64 : nullptr);
    }
}

}  // namespace plotix
