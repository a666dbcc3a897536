#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace plotix {

/// Some bytes, and what keeps the memory that they stand in. A value; any thread may read.
struct KeptBytes {
    std::shared_ptr<const std::byte> start;
    std::size_t size = 0;

    std::span<const std::byte> span() const { return {start.get(), size}; }
};

/// Copies many short strings of bytes, which stay for long, one beside the other into large pieces of memory: thousands
/// of small ones cost several times as much to fill, and lie far apart. A piece stays as long as any of its strings.
///
/// One thread at a time; what it answers is independent of it.
class ByteKeeper {
public:
    /// A copy. Throws std::bad_alloc where there is no room.
    KeptBytes keep(std::span<const std::byte> bytes);

private:
    std::shared_ptr<void> m_piece;
    std::byte* m_free = nullptr;  // what is left of it
    std::size_t m_left = 0;
    std::size_t m_taken = 0;  // bytes of all pieces
};

}  // namespace plotix
