#pragma once

#include "benchmarks/data/Signal.h"
#include "plotkit/model/CPTXYGraph.h"

#include <cstddef>
#include <memory>
#include <vector>

/// What the frame benchmarks draw: signals sampled once a second, made once and kept, and a graph over them.
///
/// The same seeds give the same picture in every run. Main thread only.
namespace plotix_bench {

/// Times 1.4e9, 1.4e9 + 1, …; longer arrays share their beginning with shorter ones.
plotix::SharedArray<double> secondsTimes(std::size_t count);

/// A random walk as archived values; `plot` is the seed.
const std::vector<double>& walkValues(std::size_t count, unsigned plot);

/// A signal as a series that shares the times.
CPTPointSeriesPtr signalSeries(SignalKind kind, std::size_t count, unsigned plot);

/// Bytes per sample that the series made so far take, shared times included; 0 before the first.
double seriesBytesPerSample();

/// A graph with the dark theme, a grid and room for labels, showing `plots` signals of `count` points with a pen
/// of 3.
class BenchmarkGraph {
public:
    BenchmarkGraph(int plots, std::size_t count, SignalKind kind = SignalKind::Walk);
    explicit BenchmarkGraph(const std::vector<CPTPointSeriesPtr>& series);

    /// Shows a fraction of all times, moved by `step` pixels of a picture that wide. Pan frames call it with 0, 1, 2, …
    void show(double share, int step, int pictureWidth);

    /// Gives every plot its own colour, `turn` degrees along.
    void setColors(int turn);

    CPTXYGraph graph;

private:
    std::vector<CPTSeriesControllerPtr> m_controllers;
    std::vector<CPTScatterPlotPtr> m_plots;
    std::size_t m_points = 0;
};

}  // namespace plotix_bench
