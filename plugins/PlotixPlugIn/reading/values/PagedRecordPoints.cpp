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
    bool areRead = true;
    inStretches(m_column, into.first(), into.end(),
                [&](std::size_t first, std::size_t end) { areRead = writeStretch(into, first, end) && areRead; });
    for (auto each = m_exceptions.lower_bound(into.first()); each != m_exceptions.end() && each->first < into.end();
         ++each)
        into.setPoint(each->first, each->second);
    return areRead;
}

/// Requires: the stretch is held. False where what is held only stands in for what could not be read.
bool PagedRecordPoints::writeStretch(CPTPointWriter& into, std::size_t first, std::size_t end) const
{
    const PagedArray<double>& archived = m_column.archivedValues();
    PagedMemory::Hold read;
    if (!archived.memory()->holdIfThere(first, end, read))
        return false;
    if (m_isAsArchived) {
        into.setBlock(first, archived.span().subspan(first, end - first), m_column.validity());
        return true;
    }
    std::array<double, kBlock> block;
    for (; first < end; first += kBlock) {
        const std::span<double> values(block.data(), std::min(kBlock, end - first));
        m_column.copyUnitValues(first, values);
        into.setBlock(first, values, m_column.validity());
    }
    return true;
}

}  // namespace plotix
