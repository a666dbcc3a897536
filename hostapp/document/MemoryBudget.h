#pragma once

#include "base/PageCache.h"
#include "records/store/MemoryNeed.h"

#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>

/// How much memory the records of one plotted range may take, and the message when they would take more; and the memory
/// that unpacked pages of long records take together.
///
/// Sizes are in bytes and decimal: 8 GB are 8,000,000,000. Free functions; any thread.
namespace plotix {

/// The environment variable PLOTIX_MEMORY_BUDGET, else the user's setting "Memory/budget", else half of the machine's
/// memory. A text that is not a size is passed over; `memoryBudgetProblem` says so.
std::uint64_t memoryBudget();

/// PLOTIX_PAGE_BUDGET, else the setting "Memory/pages", else 256 MiB: what the pages of long records may take that
/// nobody looks at.
std::uint64_t pageBudget();

/// How much of what came from servers is kept on this computer: PLOTIX_SERVER_CACHE, else the user's setting
/// "Servers/cache", else 1 GB; 0: nothing.
std::uint64_t serverCacheBudget();

/// The pages of this program, all sites together; its budget is read when it is first asked for. *Shared* by everyone.
const std::shared_ptr<PageCache>& programPages();

/// What is wrong with the variables or the settings that would have counted, in one line; nothing when all is well.
std::optional<QString> memoryBudgetProblem();

/// Reads "8 GB", "500M", "1.5T" or plain bytes: a number above 0, perhaps K, M, G or T, perhaps B.
std::optional<std::uint64_t> sizeFromText(const QString& text);

/// One sentence with the size needed, the budget, and the longest range with the same end that fits.
QString sentenceOf(const MemoryShortage& shortage);

/// Nothing when the request fits; else that sentence.
std::optional<QString> refusalOf(const ReadRequest& request, std::uint64_t budget);

}  // namespace plotix
