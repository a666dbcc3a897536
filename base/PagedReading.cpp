#include "base/PagedReading.h"

namespace plotix {

namespace {

constexpr std::size_t kWordBits = 64;

/// One reading of inPieces.
class PieceReading {
public:
    PieceReading(const PagedArray<double>& values, const ValidityBitmap& validity, const PagedMemory::Show& show)
        : m_values(values), m_validity(validity), m_show(show)
    {
    }

    bool run(std::size_t first, std::size_t end) const
    {
        if (m_values.isResident()) {
            showHeld(first, end);
            return true;
        }
        bool isRead = true;
        while (first < end) {
            std::size_t next = pageEnd(first, end);
            PagedMemory::Hold held;
            if (m_values.memory()->holdIfThere(first, next, held)) {
                showHeld(first, next);
            } else {
                while (next < end && !isThere(next, pageEnd(next, end)))
                    next = pageEnd(next, end);
                isRead = readAbsent(first, next) && isRead;
            }
            first = next;
        }
        return isRead;
    }

private:
    static std::size_t pageEnd(std::size_t first, std::size_t end)
    {
        return std::min(end, (first / PagedMemory::kPage + 1) * PagedMemory::kPage);
    }
    bool isThere(std::size_t first, std::size_t end) const
    {
        PagedMemory::Hold held;
        return m_values.memory()->holdIfThere(first, end, held);
    }

    /// Requires: the values are held.
    void showHeld(std::size_t first, std::size_t end) const
    {
        const PagedArray<std::uint64_t>& words = m_validity.words();
        const std::size_t word = first / kWordBits;
        PagedMemory::Hold held;
        if (!m_validity.isAllValid())
            held = words.hold(word, (end + kWordBits - 1) / kWordBits);
        m_show({first, m_values.span().subspan(first, end - first),
                m_validity.isAllValid() ? nullptr : words.data() + word});
    }

    bool readAbsent(std::size_t first, std::size_t end) const
    {
        if (m_validity.isAllValid()) {
            const auto withoutBits = [this](const PagedMemory::Piece& piece) {
                m_show({piece.first, piece.values, nullptr});
            };
            if (const auto isRead = m_values.memory()->readPast(first, end, withoutBits))
                return *isRead;
        } else if (m_validity.words().memory() == m_values.memory()) {
            if (const auto isRead = m_values.memory()->readPast(first, end, m_show))
                return *isRead;
        }
        m_values.expect(first, end);
        bool isRead = true;
        inStretches(m_values, first, end, [&](std::size_t from, std::size_t to) {
            isRead = isThere(from, to) && isRead;
            showHeld(from, to);
        });
        return isRead;
    }

    const PagedArray<double>& m_values;
    const ValidityBitmap& m_validity;
    const PagedMemory::Show& m_show;
};

}  // namespace

bool inPieces(const PagedArray<double>& values, const ValidityBitmap& validity, std::size_t first, std::size_t end,
              const PagedMemory::Show& show)
{
    return PieceReading(values, validity, show).run(first, end);
}

}  // namespace plotix
