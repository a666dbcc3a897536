#pragma once

#include "base/HelpingThreads.h"
#include "records/sqlite/SegmentReader.h"

#include <cstddef>
#include <span>

/// Threads that help unpacking, where cores are free and the work is worth starting them.
namespace plotix {

/// How many to start beside the caller's own, which holds a connection of the lender already. `pieces`: what the work
/// can be shared out in.
std::size_t helpersFor(const ReadConnections& lender, std::size_t values, std::size_t pieces);

/// Whether a connection's snapshot has every chunk of the work. The contents of a chunk id never change: a chunk that
/// is written again gets another id, and no id comes twice. So it then shows the same records as the caller's, which
/// alone always suffices.
bool showsEveryPart(ReadConnection& connection, std::span<const ChunkPart> parts);

}  // namespace plotix
