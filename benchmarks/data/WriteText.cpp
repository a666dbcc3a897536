// bench_text FILE ROWS: the station's first property as text, two columns with a tab between, a row a record: what
// imports read.

#include "benchmarks/data/StationRecords.h"

#include <charconv>
#include <cstdio>
#include <string>

namespace {

void append(std::string& text, double value, int decimals)
{
    char digits[32];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::fixed, decimals);
    text.append(digits, end.ptr);
}

}  // namespace

int main(int argc, char** argv)
{
    std::FILE* file = argc == 3 ? std::fopen(argv[1], "wb") : nullptr;
    if (!file) {
        std::fputs("usage: bench_text FILE ROWS\n", stderr);
        return 1;
    }
    std::string text = "time\ttemperature\n";
    plotix_bench::Station station;
    for (std::size_t row = std::stoul(argv[2]); row > 0; --row) {
        const plotix_bench::Station::Record record = station.next();
        append(text, record.time, 0);
        text += '\t';
        append(text, record.values[0], 1);
        text += '\n';
        if (text.size() > 1'000'000 || row == 1) {
            std::fwrite(text.data(), 1, text.size(), file);
            text.clear();
        }
    }
    return std::fclose(file) == 0 ? 0 : 1;
}
