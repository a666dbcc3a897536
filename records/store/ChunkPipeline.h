#pragma once

#include "records/store/EncodedChunk.h"

#include <functional>

/// Encodes many chunks on as many cores as are free and hands them on in order, so that the file is the same as if one
/// thread had done everything.
namespace plotix {

/// `sink` runs on the calling thread only, once a chunk, in the order of `chunks`. At most a few dozen encoded chunks
/// wait in memory. What `sink` throws ends the work and is passed on.
void encodeInOrder(const std::vector<RecordsView>& chunks, const std::function<void(EncodedChunk&&)>& sink);

}  // namespace plotix
