#pragma once

#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"
#include "plotkit/model/CPTPointWriter.h"

/// The points of a series in paged memory: y, which elements are points, and the blocks of the index, filled together
/// from archived doubles where somebody looks.
///
/// Derive from it, and write the points where they come from. *Shared* by the series; writePoints is called by any
/// thread, also by several at once.
class CPTPagedPoints : public plotix::PagedMemory {
public:
    /// Elements that a pair of the coarser level stands for.
    static constexpr std::size_t kCoarse = 1024;

    plotix::PagedArray<float> y() const { return {shared_from_this(), m_arrays.y, elements()}; }
    plotix::ValidityBitmap points() const;
    const CPTFineBlocks& fine() const { return m_arrays.fine; }
    const float* coarseLeast() const { return m_coarseLeast; }
    const float* coarseGreatest() const { return m_coarseGreatest; }

protected:
    CPTPagedPoints(std::shared_ptr<plotix::PageCache> cache, std::size_t elements);

    /// Writes the elements [into.first(), into.end()): blocks first, then exceptions. What it reads from other paged
    /// columns it holds itself. False: they could not be had; what was not written is dropped for now.
    virtual bool writePoints(CPTPointWriter& into) const noexcept = 0;

private:
    bool fill(std::size_t first, std::size_t end) const noexcept final;

    CPTPointWriter::Arrays m_arrays;
    float* m_coarseLeast;
    float* m_coarseGreatest;
};
