#include "base/KeptBytes.h"

#include "base/LargeMemory.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kLeastPiece = std::size_t{64} << 10;
constexpr std::size_t kMostPiece = std::size_t{4} << 20;  // lies in huge pages

}  // namespace

KeptBytes ByteKeeper::keep(std::span<const std::byte> bytes)
{
    if (bytes.size() > m_left) {
        const std::size_t size = std::max(bytes.size(), std::clamp(m_taken, kLeastPiece, kMostPiece));
        m_piece = unsetMemory(size);
        m_free = static_cast<std::byte*>(m_piece.get());
        m_left = size;
        m_taken += size;
    }
    std::byte* const start = m_free;
    std::copy(bytes.begin(), bytes.end(), start);
    m_free += bytes.size();
    m_left -= bytes.size();
    return {std::shared_ptr<const std::byte>(m_piece, start), bytes.size()};
}

}  // namespace plotix
