// Of stored runs, what stays in memory while columns are looked at.

#include "records/columns/ColumnCodec.h"
#include "records/columns/IndexBytes.h"
#include "records/columns/IndexLayout.h"
#include "records/columns/ValidityBits.h"

namespace plotix::indexcodec {

namespace {

/// What does not count leaves no extremes; false where places do not fit.
bool takeCounting(BytesReader& from, unsigned bits, std::size_t count, std::size_t runs, RunExtremes& extremes)
{
    for (std::size_t run = 0; run < runs; ++run) {
        RunFigures figures;
        figures.valid = from.takeBits(bits + 1);
        for (auto* point : {&figures.first, &figures.last, &figures.least, &figures.greatest})
            point->at = from.takeBits(bits);
        if (!isPossible(figures, std::min(extremes.runLength, count - run * extremes.runLength)))
            return false;
        if (figures.valid == 0) {
            extremes.least[run] = kInfinity;
            extremes.greatest[run] = -kInfinity;
        }
        if (figures.valid == 0 || figures.first.at > 0)
            extremes.first[run] = absentValue();
    }
    from.finishBits();
    return true;
}

}  // namespace

// Places tell nothing where every element counts, and sums are those of the whole column: both are passed over.
bool readExtremes(std::span<const std::byte> bytes, const Owner& owner, RunExtremes& extremes)
{
    extremes.runs = 0;
    if (!checksum::isIntact(bytes, checksumBefore(owner)))
        return false;
    BytesReader from(checksum::withoutSeal(bytes));
    const auto head = from.take<RunHead>();
    if (head.doublings > kMostDoublings || (head.flags & ~kEveryElementCounts) != 0)
        return false;
    extremes.runLength = kRun << head.doublings;
    const std::size_t runs = runsOf(owner.count, extremes.runLength);
    std::array<double, RunExtremes::kMost * 4> room;
    if (runs > RunExtremes::kMost)
        return false;
    const std::span<double> values(room.data(), runs * 4);
    if (!codec::decode(head.codec, from.takeBytes(head.bytes), values.size(), nullptr, 0, values))
        return false;
    std::copy_n(values.data(), runs, extremes.first.data());
    std::copy_n(values.data() + runs * 2, runs, extremes.least.data());
    std::copy_n(values.data() + runs * 3, runs, extremes.greatest.data());
    const unsigned bits = kRunBits + head.doublings;
    if ((head.flags & kEveryElementCounts) != 0)
        from.takeBytes((runs * 2 * bits + 7) / 8);
    else if (!takeCounting(from, bits, owner.count, runs, extremes))
        return false;
    from.takeBytes(runs * head.sumWidth);
    if (!from.isWhole() || from.left() > 0)
        return false;
    extremes.runs = runs;
    return true;
}

}  // namespace plotix::indexcodec
