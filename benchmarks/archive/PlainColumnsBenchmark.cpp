// The bound of what reading can cost: the same columns, as they are, copied from a mapped file.

#include "base/LargeMemory.h"
#include "benchmarks/archive/ArchiveCases.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "benchmarks/data/Elapsed.h"

#include <QtCore/QFile>

#include <benchmark/benchmark.h>

#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace plotix_bench {

namespace {

constexpr std::size_t kColumns = kStationProperties + 1;
constexpr std::size_t kColumnBytes = kStationRecords * sizeof(double);

QString fullColumns()
{
    const QString path = dataFile(QStringLiteral("columns.bin"));
    if (QFile::exists(path))
        return path;
    QFile file(path + QStringLiteral(".new"));
    file.open(QFile::WriteOnly);
    const auto write = [&file](const std::vector<double>& column) {
        file.write(reinterpret_cast<const char*>(column.data()), qint64(kColumnBytes));
    };
    write(station().times);
    for (const std::vector<double>& column : station().values)
        write(column);
    file.rename(path);
    return path;
}

/// The file mapped for as long as it lives.
class MappedColumns {
public:
    explicit MappedColumns(const QString& path)
        : m_file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC)),
          m_bytes(mmap(nullptr, kColumns * kColumnBytes, PROT_READ, MAP_SHARED, m_file, 0))
    {
    }
    ~MappedColumns()
    {
        munmap(m_bytes, kColumns * kColumnBytes);
        ::close(m_file);
    }
    MappedColumns(const MappedColumns&) = delete;
    MappedColumns& operator=(const MappedColumns&) = delete;

    void copyInto(const std::shared_ptr<double> (&columns)[kColumns]) const
    {
        for (std::size_t column = 0; column < kColumns; ++column)
            std::memcpy(columns[column].get(), static_cast<const char*>(m_bytes) + column * kColumnBytes, kColumnBytes);
        benchmark::ClobberMemory();
    }

private:
    int m_file;
    void* m_bytes;
};

/// Columns that have been written before, so that no page of theirs is fetched while the clock runs.
struct WarmColumns {
    WarmColumns()
    {
        for (std::shared_ptr<double>& each : columns) {
            each = plotix::unsetArray<double>(kStationRecords);
            std::memset(each.get(), 0, kColumnBytes);
        }
    }
    std::shared_ptr<double> columns[kColumns];
};

void copy(benchmark::State& state)
{
    const MappedColumns file(fullColumns());
    const WarmColumns result;
    file.copyInto(result.columns);
    for (auto unused : state)
        file.copyInto(result.columns);
}

void copyCold(benchmark::State& state)
{
    const QString path = fullColumns();
    const WarmColumns result;
    double stayed = 0;
    for (auto unused : state) {
        stayed = std::max(stayed, forgetPages(path));
        const Elapsed elapsed;
        const MappedColumns file(path);
        file.copyInto(result.columns);
        state.SetIterationTime(elapsed.seconds());
    }
    state.counters["stayed"] = stayed;
}

}  // namespace

void registerPlainColumns()
{
    benchmark::RegisterBenchmark("memcpy/archive/read/10Mx5", copy)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("memcpy/archive/cold/10Mx5", copyCold)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
}

}  // namespace plotix_bench
