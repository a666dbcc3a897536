#pragma once

#include "records/store/EncodedChunk.h"

#include <functional>

/// Encodes many chunks on all free cores and hands them on in order, so that the store is the same as if one thread had
/// done everything. Free function; any thread.
namespace plotix {

/// `sink` is called on the calling thread only, once for each chunk, in the order of `chunks`. At most a few dozen
/// encoded chunks wait in memory. What `sink` throws ends the work and reaches the caller.
void encodeInOrder(const std::vector<RecordsView>& chunks, const std::function<void(EncodedChunk&&)>& sink);

}  // namespace plotix
