#include "base/LargeMemory.h"

#include "base/HugePages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <optional>
#include <vector>

namespace plotix {

namespace {

constexpr std::size_t kAlignment = 64;
/// Shorter columns would waste more of their last huge page than they gain.
constexpr std::size_t kLeastMapped = 2 * kHugePage;
constexpr std::size_t kMostKept = 16;
constexpr std::size_t kShareKept = 8;  // of the machine's memory: one part in so many

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepsPieces = false;  // so that sanitizers see a use after free
#else
constexpr bool kKeepsPieces = true;
#endif

/// A mapping of whole huge pages, aligned to them.
struct Piece {
    void* start;
    std::size_t size;
};

std::optional<Piece> mappedPiece(std::size_t size)
{
    void* start = mapAligned(size);
    if (start == nullptr)
        return std::nullopt;
    madvise(start, size, MADV_HUGEPAGE);  // where it is refused, small pages serve
    return Piece{start, size};
}

void unmap(const Piece& piece)
{
    munmap(piece.start, piece.size);
}

/// Pieces that nobody owns at the moment, longest kept first.
class KeptPieces {
public:
    KeptPieces()
        : m_most(static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) /
                 kShareKept)
    {
        m_pieces.reserve(kMostKept + 1);  // so that freeing never allocates
    }

    /// The smallest piece that is long enough, and at most twice as long as needed.
    std::optional<Piece> take(std::size_t size)
    {
        const std::lock_guard lock(m_mutex);
        auto best = m_pieces.end();
        for (auto piece = m_pieces.begin(); piece != m_pieces.end(); ++piece)
            if (piece->size >= size && piece->size <= 2 * size && (best == m_pieces.end() || piece->size < best->size))
                best = piece;
        if (best == m_pieces.end())
            return std::nullopt;
        const Piece found = *best;
        m_pieces.erase(best);
        m_kept -= found.size;
        return found;
    }

    void keep(const Piece& piece)
    {
        if (!kKeepsPieces || piece.size > m_most)
            return unmap(piece);
        madvise(piece.start, piece.size, MADV_FREE);  // the system may take the pages back; the piece stays mapped
        const std::lock_guard lock(m_mutex);
        m_pieces.push_back(piece);
        m_kept += piece.size;
        while (m_kept > m_most || m_pieces.size() > kMostKept)
            dropFirst();
    }

    void dropAll()
    {
        const std::lock_guard lock(m_mutex);
        while (!m_pieces.empty())
            dropFirst();
    }

private:
    void dropFirst()
    {
        m_kept -= m_pieces.front().size;
        unmap(m_pieces.front());
        m_pieces.erase(m_pieces.begin());
    }

    const std::size_t m_most;
    std::mutex m_mutex;
    std::vector<Piece> m_pieces;
    std::size_t m_kept = 0;
};

/// Never destroyed: columns of static objects are freed after everything else.
KeptPieces& keptPieces()
{
    static KeptPieces& pieces = *new KeptPieces;
    return pieces;
}

std::shared_ptr<void> owned(const Piece& piece)
{
    return {piece.start, [piece](void*) { keptPieces().keep(piece); }};
}

std::shared_ptr<void> freshPiece(std::size_t size)
{
    std::optional<Piece> piece = mappedPiece(size);
    if (!piece) {
        keptPieces().dropAll();
        piece = mappedPiece(size);
    }
    if (!piece)
        throw std::bad_alloc();
    return owned(*piece);
}

std::shared_ptr<void> smallMemory(std::size_t bytes)
{
    void* memory = std::aligned_alloc(kAlignment, roundedUp(bytes, kAlignment));
    if (memory == nullptr)
        throw std::bad_alloc();
    return {memory, [](void* freed) { std::free(freed); }};
}

/// No system gives more than this, and rounding it up would overflow to zero.
void requirePossible(std::size_t bytes)
{
    if (bytes > PTRDIFF_MAX - 2 * kHugePage)
        throw std::bad_alloc();
}

}  // namespace

std::shared_ptr<void> unsetMemory(std::size_t bytes)
{
    if (bytes == 0)
        return nullptr;
    requirePossible(bytes);
    if (bytes < kLeastMapped)
        return smallMemory(bytes);
    const std::size_t size = roundedUp(bytes, kHugePage);
    if (const std::optional<Piece> kept = keptPieces().take(size))
        return owned(*kept);
    return freshPiece(size);
}

}  // namespace plotix
