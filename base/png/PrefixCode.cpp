#include "base/png/PrefixCode.h"

#include <algorithm>
#include <array>
#include <vector>

namespace plotix {

namespace {

constexpr int kLongestPossible = 15;

using CountPerLength = std::array<quint32, kLongestPossible + 1>;

/// Counts in ascending order become lengths in descending order, in place.
void makeLengths(std::vector<quint32>& a)
{
    const std::size_t n = a.size();
    a[0] += a[1];
    std::size_t root = 0;
    std::size_t leaf = 2;
    for (std::size_t next = 1; next < n - 1; ++next) {  // nodes: sums, then who their parent is
        const auto lightest = [&] {
            if (leaf >= n || (root < next && a[root] < a[leaf])) {
                const quint32 weight = a[root];
                a[root++] = static_cast<quint32>(next);
                return weight;
            }
            return a[leaf++];
        };
        const quint32 first = lightest();
        a[next] = first + lightest();
    }
    a[n - 2] = 0;
    for (std::size_t next = n - 2; next-- > 0;)  // depth of the inner nodes
        a[next] = a[a[next]] + 1;
    std::size_t available = 1;
    quint32 depth = 0;
    std::size_t to = n;
    for (std::size_t inner = n - 1; available > 0; ++depth) {  // depth of the leaves
        std::size_t used = 0;
        for (; inner > 0 && a[inner - 1] == depth; --inner)
            ++used;
        for (; available > used; --available)
            a[--to] = depth;
        available = 2 * used;
    }
}

/// The number of codes of each length with none longer than `longest`; the code is still complete.
CountPerLength limitedCounts(const std::vector<quint32>& lengths, int longest)
{
    CountPerLength counts{};
    for (const quint32 length : lengths)
        ++counts[std::min(length, static_cast<quint32>(longest))];
    const auto last = static_cast<std::size_t>(longest);
    quint32 taken = 0;
    for (std::size_t length = 1; length <= last; ++length)
        taken += counts[length] << (last - length);
    for (; taken > 1U << last; --taken) {
        --counts[last];
        std::size_t shorter = last - 1;
        while (counts[shorter] == 0)
            --shorter;
        --counts[shorter];
        counts[shorter + 1] += 2;
    }
    return counts;
}

quint16 reversed(quint32 code, int length)
{
    quint32 bits = 0;
    for (int bit = 0; bit < length; ++bit)
        bits = bits << 1 | (code >> bit & 1U);
    return static_cast<quint16>(bits);
}

void assignBits(const CountPerLength& counts, std::span<PrefixBits> codes)
{
    std::array<quint32, kLongestPossible + 2> next{};
    for (std::size_t length = 1; length < counts.size(); ++length)
        next[length + 1] = (next[length] + counts[length]) << 1;
    for (PrefixBits& code : codes)
        if (code.length > 0)
            code.bits = reversed(next[code.length]++, code.length);
}

}  // namespace

void makePrefixCode(std::span<const quint32> counts, int longest, std::span<PrefixBits> codes)
{
    std::fill(codes.begin(), codes.end(), PrefixBits{});
    std::vector<quint16> symbols;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol)
        if (counts[symbol] > 0)
            symbols.push_back(static_cast<quint16>(symbol));
    if (symbols.size() < 2) {
        for (const quint16 symbol : symbols)
            codes[symbol].length = 1;
        return;
    }
    std::stable_sort(symbols.begin(), symbols.end(),
                     [&](quint16 left, quint16 right) { return counts[left] < counts[right]; });
    std::vector<quint32> lengths(symbols.size());
    std::transform(symbols.begin(), symbols.end(), lengths.begin(), [&](quint16 symbol) { return counts[symbol]; });
    makeLengths(lengths);
    const CountPerLength perLength = limitedCounts(lengths, longest);
    auto rarest = symbols.begin();
    for (std::size_t length = static_cast<std::size_t>(longest); length > 0; --length)
        for (quint32 number = 0; number < perLength[length]; ++number)
            codes[*rarest++].length = static_cast<quint16>(length);
    assignBits(perLength, codes);
}

}  // namespace plotix
