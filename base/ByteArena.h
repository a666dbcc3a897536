#pragma once

#include "base/SharedArray.h"

#include <cstddef>
#include <span>

/// Many short pieces of bytes in few blocks of memory: the system hands out a large block several times faster than its
/// pages one by one.
namespace plotix {

/// Whoever fills it *owns* it; one thread. What it keeps goes with its last sharer, whether or not the arena is there.
class ByteArena {
public:
    /// A copy. It *shares* the block that it lies in, so all of a block goes together. Throws std::bad_alloc.
    SharedArray<std::byte> kept(std::span<const std::byte> bytes);

private:
    std::shared_ptr<std::byte> m_block;  // pieces are added to this one
    std::size_t m_size = 0, m_used = 0;
};

}  // namespace plotix
