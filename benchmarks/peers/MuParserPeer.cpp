// The same formulas with muParser's bulk mode: one call a block of as many values as lie in the near cache.

#include "benchmarks/peers/PeerProtocol.h"

#include <muParser.h>

#include <algorithm>

namespace {

constexpr std::size_t kBlock = 1024;

std::vector<double> walk(unsigned seed, std::size_t count)
{
    plotix_bench::Signal signal(plotix_bench::SignalKind::Walk, seed);
    std::vector<double> values(count);
    std::generate(values.begin(), values.end(), [&signal] { return signal.next(); });
    return values;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || std::strcmp(argv[1], "formula") != 0) {
        std::fputs("usage: formula EXPRESSION VALUES\n", stderr);
        return 1;
    }
    const std::size_t count = std::stoul(argv[3]);
    const std::vector<double> a = walk(0, count), b = walk(1, count);
    std::vector<double> blockOfA(kBlock), blockOfB(kBlock), result(count);
    mu::Parser parser;
    parser.DefineVar("a", blockOfA.data());
    parser.DefineVar("b", blockOfB.data());
    parser.SetExpr(argv[2]);
    plotix_bench::answerRounds(0, [&](int) {
        for (std::size_t at = 0; at < count; at += kBlock) {
            const std::size_t part = std::min(kBlock, count - at);
            std::copy_n(a.data() + at, part, blockOfA.data());
            std::copy_n(b.data() + at, part, blockOfB.data());
            parser.Eval(result.data() + at, static_cast<int>(part));
        }
    });
    return 0;
}
