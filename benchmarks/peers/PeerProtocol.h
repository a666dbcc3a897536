#pragma once

#include "benchmarks/data/ResidentMemory.h"
#include "benchmarks/data/Signal.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

/// How the driver talks to a program that is measured: it is started once, makes its data, says "ready", and then does
/// its work once for every line "next", answering with the milliseconds it took. So rounds of several programs take
/// turns while each keeps its data in memory. It ends with its input. Main thread only.
namespace plotix_bench {

/// What to draw: pan PLOTS POINTS SHARE WIDTH HEIGHT, load POINTS WIDTH HEIGHT, or fetch FILE PLOTS WIDTH HEIGHT, and
/// "noisy" and "fast" at the end: the noisy signal, and the library's quicker way of drawing lines.
struct PeerTask {
    enum class Kind { Pan, Load, Fetch };

    Kind kind = Kind::Pan;
    std::string file;
    int plots = 1;
    std::size_t points = 0;
    double share = 1;
    int width = 0, height = 0;
    SignalKind kindOfSignal = SignalKind::Walk;
    bool fast = false;

    static PeerTask parse(int argc, char** argv)
    {
        std::vector<std::string> words(argv + 1, argv + argc);
        PeerTask task;
        for (; !words.empty() && (words.back() == "fast" || words.back() == "noisy"); words.pop_back())
            if (words.back() == "fast")
                task.fast = true;
            else
                task.kindOfSignal = SignalKind::Noisy;
        if (words.size() == 6 && words[0] == "pan") {
            task.plots = std::stoi(words[1]);
            task.points = std::stoul(words[2]);
            task.share = std::stod(words[3]);
        } else if (words.size() == 4 && words[0] == "load") {
            task.kind = Kind::Load;
            task.points = std::stoul(words[1]);
        } else if (words.size() == 5 && words[0] == "fetch") {
            task.kind = Kind::Fetch;
            task.file = words[1];
            task.plots = std::stoi(words[2]);
        } else {
            std::fputs("usage: pan PLOTS POINTS SHARE WIDTH HEIGHT | load POINTS WIDTH HEIGHT | "
                       "fetch FILE PLOTS WIDTH HEIGHT, then [noisy] [fast]\n",
                       stderr);
            std::exit(1);
        }
        task.width = std::stoi(words[words.size() - 2]);
        task.height = std::stoi(words.back());
        return task;
    }
};

/// Values of one plot, and the range all plots' values lie in, 0 included.
inline std::vector<double> signalValues(const PeerTask& task, int plot)
{
    Signal signal(task.kindOfSignal, static_cast<unsigned>(plot));
    std::vector<double> values(task.points);
    std::generate(values.begin(), values.end(), [&signal] { return signal.next(); });
    return values;
}

struct ValueRange {
    double low = 0, high = 0;

    void include(const std::vector<double>& values)
    {
        const auto [least, most] = std::minmax_element(values.begin(), values.end());
        low = std::min(low, *least);
        high = std::max(high, *most);
    }
};

/// Says it is ready, then works once a line until the input ends.
template <class Work>
void answerRounds(double bytesPerSample, Work&& work)
{
    std::printf("ready bytes_per_sample=%.2f\n", bytesPerSample);
    std::fflush(stdout);
    char line[16];
    for (int step = 0; std::fgets(line, sizeof line, stdin) && std::strcmp(line, "next\n") == 0; ++step) {
        const auto begin = std::chrono::steady_clock::now();
        work(step % 200);
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - begin;
        std::printf("%.6f\n", elapsed.count());
        std::fflush(stdout);
    }
}

}  // namespace plotix_bench
