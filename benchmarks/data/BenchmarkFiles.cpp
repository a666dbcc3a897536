#include "benchmarks/data/BenchmarkFiles.h"

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plotix_bench {

namespace {

constexpr std::size_t kBlock = 1 << 20;  // records handed over at a time

plotix::SharedArray<double> part(const std::vector<double>& values, std::size_t first, std::size_t count)
{
    // The station's columns live as long as the program.
    return {std::shared_ptr<const double>(std::shared_ptr<void>(), values.data() + first), count};
}

plotix::RecordBlock blockOf(const SiteFile& site, std::size_t first, std::size_t count)
{
    plotix::RecordBlock block{part(station().times, first, count), {}};
    for (std::size_t property = 0; property < kStationProperties; ++property)
        block.columns.push_back({site.properties[property], part(station().values[property], first, count), {}});
    return block;
}

SiteFile siteIn(const plotix::SiteDocument& document)
{
    const auto& agent = document.agents().front();
    SiteFile site{document.path(), agent->id(), {}};
    for (std::size_t property = 0; property < kStationProperties; ++property)
        site.properties[property] = agent->siteProperties()[property]->description().id;
    return site;
}

/// The fraction of the file's pages that are in memory.
double residentShare(int file, std::size_t size)
{
    void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, file, 0);
    if (mapped == MAP_FAILED)
        return 0;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<unsigned char> pages((size + page - 1) / page);
    const bool asked = mincore(mapped, size, pages.data()) == 0;
    munmap(mapped, size);
    const auto resident = std::count_if(pages.begin(), pages.end(), [](unsigned char each) { return each & 1U; });
    return asked ? static_cast<double>(resident) / static_cast<double>(pages.size()) : 0;
}

void forgetEverything()
{
    // Only root may; for others the advice must suffice.
    if (std::FILE* control = std::fopen("/proc/sys/vm/drop_caches", "w")) {
        std::fputs("1", control);
        std::fclose(control);
    }
}

}  // namespace

QString dataFile(const QString& name)
{
    const QString folder = qEnvironmentVariable("PLOTIX_BENCH_DATA", QDir::temp().filePath("plotix-bench"));
    QDir().mkpath(folder);
    return QDir(folder).filePath(name);
}

const StationColumns& station()
{
    static const StationColumns columns = stationColumns(kStationRecords);
    return columns;
}

std::shared_ptr<plotix::RecordStore> SiteFile::records() const
{
    return plotix::recordsOfSite(path);
}

SiteFile emptySite(const QString& path)
{
    removeDatabase(path);
    const auto document = plotix::SiteDocument::create(path, QStringLiteral("Benchmark"));
    const auto agent = document->addAgent(QStringLiteral("Station"));
    for (const char* key : kStationKeys)
        agent->addProperty(QString::fromLatin1(key), QString());
    return siteIn(*document);
}

SiteFile fullSite()
{
    const QString path = dataFile(QStringLiteral("station.plotix"));
    if (QFile::exists(path))
        return siteIn(*plotix::SiteDocument::open(path));
    const QString unfinished = path + QStringLiteral(".new");
    storeStation(emptySite(unfinished));
    QFile::rename(unfinished, path);
    return siteIn(*plotix::SiteDocument::open(path));
}

void storeStation(const SiteFile& site)
{
    const auto writer = site.records()->begin();
    for (std::size_t first = 0; first < kStationRecords; first += kBlock)
        writer->store(site.agent, blockOf(site, first, std::min(kBlock, kStationRecords - first)));
    writer->commit();
}

void removeDatabase(const QString& path)
{
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(suffix));
}

double forgetPages(const QString& path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0 || status.st_size == 0)
        return 1;
    const auto size = static_cast<std::size_t>(status.st_size);
    fsync(file);
    posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    double stayed = residentShare(file, size);
    if (stayed > 0.01) {
        forgetEverything();
        stayed = residentShare(file, size);
    }
    ::close(file);
    return stayed;
}

}  // namespace plotix_bench
