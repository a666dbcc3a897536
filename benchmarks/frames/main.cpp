#include "benchmarks/frames/FrameCases.h"

#include <QtGui/QGuiApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    plotix_bench::registerFrames();
    plotix_bench::registerPaged();
    plotix_bench::registerPictures();
    plotix_bench::registerPointing();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
