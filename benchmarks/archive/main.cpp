#include "benchmarks/archive/ArchiveCases.h"

#include <QtCore/QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    plotix_bench::registerArchive();
    plotix_bench::registerCommits();
    plotix_bench::registerRows();
    plotix_bench::registerPlainColumns();
    plotix_bench::registerFilling();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
