#include "base/ByteArena.h"

#include "base/LargeMemory.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kFirstBlock = 64 << 10;
/// What the system has in huge pages.
constexpr std::size_t kLargestBlock = 4 << 20;

}  // namespace

SharedArray<std::byte> ByteArena::kept(std::span<const std::byte> bytes)
{
    if (m_size - m_used < bytes.size()) {
        const std::size_t next = m_size == 0 ? kFirstBlock : std::min(2 * m_size, kLargestBlock);
        const std::size_t size = std::max(next, bytes.size());
        m_block = std::static_pointer_cast<std::byte>(unsetMemory(size));
        m_size = size;
        m_used = 0;
    }
    std::byte* place = m_block.get() + m_used;
    std::copy(bytes.begin(), bytes.end(), place);
    m_used += bytes.size();
    return {std::shared_ptr<const std::byte>(m_block, place), bytes.size()};
}

}  // namespace plotix
