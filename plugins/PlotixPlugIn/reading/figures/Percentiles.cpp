#include "plugins/PlotixPlugIn/reading/figures/Percentiles.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <map>

namespace plotix {

namespace {

/// A number whose order among all is that of the value among values; the two zeros are one.
std::uint64_t keyOf(double value)
{
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double valueOf(std::uint64_t key)
{
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    return std::bit_cast<double>((key & kSign) != 0 ? key & ~kSign : ~key);
}

/// Keys from `lowest` to `highest`, cut into bins of 2^shift keys.
struct Bins {
    static constexpr int kCountBits = 16;

    std::uint64_t lowest = 0, highest = 0;
    int shift = 0;

    Bins(std::uint64_t from, std::uint64_t to)
        : lowest(from), highest(to), shift(std::max(0, static_cast<int>(std::bit_width(to - from)) - kCountBits))
    {
    }
    bool holds(std::uint64_t key) const { return key >= lowest && key <= highest; }
    std::size_t binOf(std::uint64_t key) const { return static_cast<std::size_t>((key - lowest) >> shift); }
    std::size_t count() const { return binOf(highest) + 1; }
    Bins inside(std::size_t bin) const
    {
        const std::uint64_t first = lowest + (static_cast<std::uint64_t>(bin) << shift);
        const std::uint64_t width = (std::uint64_t{1} << shift) - 1;
        return {first, std::min(highest, first + width)};
    }
};

using Ranks = std::vector<std::int64_t>;  // ascending, from 0
using Found = std::map<std::int64_t, double>;

/// One search through the elements of a line, for the values of some ranks.
class Selection {
public:
    Selection(const LineSummary& line, std::vector<LineSummary::Piece> pieces, const Work& work)
        : m_line(line), m_pieces(std::move(pieces)), m_work(work), m_buffer(std::make_unique<FigureRecords::Buffer>())
    {
    }

    /// Finds the ranks among the values of these bins, `below` of all lying beneath them. False when stopped.
    bool find(const Bins& bins, std::int64_t below, const Ranks& ranks, Found& found)
    {
        if (bins.lowest == bins.highest) {
            for (const std::int64_t rank : ranks)
                found[rank] = valueOf(bins.lowest);
            return true;
        }
        std::vector<std::int64_t> counts(bins.count());
        const bool went = forEachKey(bins, [&](std::uint64_t key) { ++counts[bins.binOf(key)]; });
        return went && findInBins(bins, counts, below, ranks, found);
    }

private:
    static constexpr std::int64_t kMostKept = 1 << 20;  // values of one bin that are sorted as they are

    struct Bin {
        std::int64_t below = 0;
        Ranks ranks = {};
        std::vector<double> values = {};
    };

    bool findInBins(const Bins& bins, const std::vector<std::int64_t>& counts, std::int64_t below, const Ranks& ranks,
                    Found& found)
    {
        std::map<std::size_t, Bin> small, large;
        auto rank = ranks.begin();
        for (std::size_t bin = 0; bin < counts.size() && rank != ranks.end(); below += counts[bin++])
            for (; rank != ranks.end() && *rank < below + counts[bin]; ++rank) {
                Bin& wanted = (counts[bin] <= kMostKept ? small : large)[bin];
                wanted.below = below;
                wanted.ranks.push_back(*rank);
            }
        if (!small.empty() && !findBySorting(bins, small, found))
            return false;
        return std::all_of(large.begin(), large.end(), [&](const auto& each) {
            return find(bins.inside(each.first), each.second.below, each.second.ranks, found);
        });
    }

    bool findBySorting(const Bins& bins, std::map<std::size_t, Bin>& wanted, Found& found)
    {
        const Bins reach{bins.inside(wanted.begin()->first).lowest, bins.inside(wanted.rbegin()->first).highest};
        std::vector<Bin*> byBin(bins.count());
        for (auto& [bin, values] : wanted)
            byBin[bin] = &values;
        const bool went = forEachKey(reach, [&](std::uint64_t key) {
            if (Bin* bin = byBin[bins.binOf(key)])
                bin->values.push_back(valueOf(key));
        });
        for (auto& [number, bin] : wanted) {
            std::sort(bin.values.begin(), bin.values.end());
            for (const std::int64_t rank : bin.ranks)
                if (went)
                    found[rank] = bin.values[static_cast<std::size_t>(rank - bin.below)];
        }
        return went;
    }

    /// Of values in these bins. Records whose summary says that none of them is there are passed over.
    template <class Take>
    bool forEachKey(const Bins& bins, const Take& take)
    {
        for (const LineSummary::Piece& piece : m_pieces) {
            if (m_work.isStopped())
                return false;
            const PointSums& sums = m_line.block(piece.block);
            if (keyOf(sums.minimum) <= bins.highest && keyOf(sums.maximum) >= bins.lowest)
                for (const double value : m_line.records().points(piece.first, piece.last, *m_buffer).values)
                    if (const std::uint64_t key = keyOf(value); bins.holds(key))
                        take(key);
            m_work.tell(piece.last - piece.first);
        }
        return true;
    }

    const LineSummary& m_line;
    std::vector<LineSummary::Piece> m_pieces;
    const Work& m_work;
    std::unique_ptr<FigureRecords::Buffer> m_buffer;
};

}  // namespace

std::optional<std::vector<double>> percentiles(const LineSummary& line, double from, double to,
                                               std::span<const double> shares, const Work& work)
{
    const LineFigures figures = line.figures(from, to);
    std::vector<double> answer(shares.size(), LineFigures::kNone);
    if (figures.points == 0)
        return work.isStopped() ? std::nullopt : std::optional(answer);
    const auto placeOf = [&](double share) {
        return std::clamp(share, 0.0, 1.0) * static_cast<double>(figures.points - 1);
    };
    Ranks ranks;
    for (const double share : shares)
        for (const double rank : {std::floor(placeOf(share)), std::ceil(placeOf(share))})
            ranks.push_back(static_cast<std::int64_t>(rank));
    std::ranges::sort(ranks);
    ranks.erase(std::unique(ranks.begin(), ranks.end()), ranks.end());
    Found found;
    Selection selection(line, line.pieces(line.elements(from, to)), work);
    if (!selection.find({keyOf(figures.minimum), keyOf(figures.maximum)}, 0, ranks, found))
        return std::nullopt;
    for (std::size_t index = 0; index < shares.size(); ++index) {
        const double place = placeOf(shares[index]);
        const double low = found[static_cast<std::int64_t>(std::floor(place))];
        const double high = found[static_cast<std::int64_t>(std::ceil(place))];
        const double part = place - std::floor(place);
        answer[index] = low == high ? low : low + (high - low) * part;
    }
    return answer;
}

}  // namespace plotix
