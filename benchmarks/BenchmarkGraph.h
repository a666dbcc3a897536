#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <cstddef>
#include <memory>
#include <vector>

/// What the frame benchmarks draw: random walks sampled once a second, made once and kept, and a graph over them.
///
/// The same seeds give the same picture in every run. Main thread only.
namespace plotix_bench {

/// Times 1.4e9, 1.4e9 + 1, …; longer arrays share their beginning with shorter ones.
plotix::SharedArray<double> secondsTimes(std::size_t count);

/// A walk with a slight pull to 0, as archived values; `plot` is the seed.
const std::vector<double>& walkValues(std::size_t count, unsigned plot);

/// The same walk as a series that shares the times.
CPTPointSeriesPtr walkSeries(std::size_t count, unsigned plot);

/// A graph with the dark theme, a grid and room for labels, showing `plots` walks of `count` points with a pen of 3.
class BenchmarkGraph {
public:
    BenchmarkGraph(int plots, std::size_t count);
    explicit BenchmarkGraph(const std::vector<CPTPointSeriesPtr>& series);

    /// Shows a share of all times, moved by `step` pixels of a picture 1920 wide. Pan frames call it with 0, 1, 2, …
    void show(double share, int step);

    CPTXYGraph graph;

private:
    std::vector<CPTSeriesControllerPtr> m_controllers;
    double m_seconds = 1;
};

}  // namespace plotix_bench
