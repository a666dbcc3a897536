#pragma once

#include "records/store/RecordStore.h"

#include <QtCore/QString>

#include <cstdint>
#include <optional>

/// How much memory the records of one plotted range may take, and what to say where they would take more.
///
/// Sizes are in bytes and decimal: 8 GB are 8,000,000,000. Free functions; any thread.
namespace plotix {

/// What one record of a plotted range costs in all: its time, and for each property the archived value, the plotted
/// one, their validity and the index that drawing needs.
constexpr std::uint64_t bytesPerRecord(std::size_t properties)
{
    return 8 + 13 * static_cast<std::uint64_t>(properties);
}

/// The environment variable PLOTIX_MEMORY_BUDGET, else the user's setting "Memory/budget", else half of the machine's
/// memory. What cannot be read as a size counts as not there.
std::uint64_t memoryBudget();

/// Reads "8 GB", "500M", "1.5T" or plain bytes: a number above 0, perhaps K, M, G or T, perhaps B.
std::optional<std::uint64_t> sizeFromText(const QString& text);

/// What is to be read: runs of records, of which [from, to] is asked for. Absent bounds are open.
struct ReadRequest {
    const RecordOverview& overview;  ///< borrowed; of that range
    std::size_t properties = 0;
    std::optional<double> from, to;
};

/// Records in the range. Those of a run that the range cuts count by its share of the run's time.
std::uint64_t estimatedRecords(const ReadRequest& request);

/// Nothing where the request fits; else a sentence with the size needed, the budget, and the longest range with the
/// same end that fits.
std::optional<QString> refusalOf(const ReadRequest& request, std::uint64_t budget);

}  // namespace plotix
