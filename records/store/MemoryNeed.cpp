#include "records/store/MemoryNeed.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The part of a run's time that lies in [from, to], 0 to 1. A run of one moment lies in it whole.
double shareOf(const RecordOverview::Run& run, double from, double to)
{
    const double length = run.t1 - run.t0;
    if (!(length > 0))
        return 1;
    return std::clamp((std::min(run.t1, to) - std::max(run.t0, from)) / length, 0.0, 1.0);
}

double recordsIn(const RecordOverview::Run& run, double from, double to)
{
    return static_cast<double>(run.records) * shareOf(run, from, to);
}

/// Where the longest range that ends at `to` and holds at most `most` records begins.
double earliestBegin(const RecordOverview& overview, double to, double most)
{
    double room = most;
    for (auto run = overview.runs.rbegin(); run != overview.runs.rend(); ++run) {
        const double records = recordsIn(*run, -kInfinity, to);
        if (records > room)
            return std::min(run->t1, to) - (std::min(run->t1, to) - run->t0) * room / records;
        room -= records;
    }
    return overview.runs.front().t0;
}

}  // namespace

std::uint64_t estimatedRecords(const ReadRequest& request)
{
    double records = 0;
    for (const RecordOverview::Run& run : request.overview.runs)
        records += recordsIn(run, request.from.value_or(-kInfinity), request.to.value_or(kInfinity));
    return static_cast<std::uint64_t>(std::ceil(records));
}

std::optional<MemoryShortage> shortageOf(const ReadRequest& request, std::uint64_t budget)
{
    const std::uint64_t each = bytesPerRecord(request.properties);
    const std::uint64_t records = estimatedRecords(request);
    if (records <= budget / each)
        return std::nullopt;
    const std::vector<RecordOverview::Run>& runs = request.overview.runs;
    const double end = request.to.value_or(runs.back().t1);
    const double begin = std::max(request.from.value_or(-kInfinity), runs.front().t0);
    const double fits = end - earliestBegin(request.overview, end, static_cast<double>(budget / each));
    return MemoryShortage{request.properties, records * each, budget, end - begin, fits};
}

}  // namespace plotix
