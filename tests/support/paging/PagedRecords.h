#pragma once

#include "base/PageCache.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"

#include <random>

/// Records that are read page by page, made of records in memory: what a store does, without a store.
///
/// A cache without budget lets every page go as soon as nobody holds it, so that whoever reads without holding reads
/// zeros, or is caught by AddressSanitizer. Runs are cut where the random numbers say, at one element or some hundred:
/// where, must not matter. Any thread.
namespace plotix_test {

plotix::PagedArray<double> paged(const plotix::PagedArray<double>& values,
                                 const std::shared_ptr<plotix::PageCache>& cache);

/// The same values, in paged memory, with all that a store would know of them; in the unit the column is shown in.
/// `begin` as in TimeRuns. Exceptions are the column's own.
std::shared_ptr<KTVRecordColumn> paged(const KTVRecordColumn& column, const std::vector<std::size_t>& begin,
                                       const std::shared_ptr<plotix::PageCache>& cache);

/// The same records. Requires: times that never decrease, if there are times.
KTVRecordDictionaryPtr paged(const KTVRecordDictionary& records, const std::shared_ptr<plotix::PageCache>& cache,
                             std::mt19937& random);

/// Where runs of so many elements begin, and where the last one ends.
std::vector<std::size_t> randomRuns(std::size_t elements, std::mt19937& random);

}  // namespace plotix_test
