#include "records/clickhouse/AgentWriting.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kChunk = schema::kRecordsPerChunk;
/// The most records that are repacked at once.
constexpr std::size_t kAtOnce = 64 * kChunk;

double before(double time)
{
    return std::nextafter(time, -kInfinity);
}

/// Of the blocks' records in [begin, end]: how many, and the first and last time.
struct Fresh {
    Fresh(const std::vector<Records>& blocks, double begin, double end)
    {
        for (const Records& block : blocks) {
            const RecordsView some = block.view().between(begin, end);
            if (some.size == 0)
                continue;
            first = std::min(first, some.times[0]);
            last = std::max(last, some.times[some.size - 1]);
            count += some.size;
        }
    }
    double first = kInfinity, last = -kInfinity;
    std::size_t count = 0;
};

}  // namespace

Records AgentWriting::recordsIn(const AgentReading::Rows& rows, const Region& region)
{
    Records all;
    for (const AgentReading::Piece& piece : m_reading.pieces(rows, region.begin, region.end, nullptr)) {
        if (piece.chunk)
            all.append(m_reading.recordsOf(*piece.chunk, nullptr).view());
        else
            all.append(piece.records.view());
    }
    Records inside;
    inside.append(all.view().between(region.begin, region.end));
    return inside;
}

WriterMarks AgentWriting::takenIn(const AgentReading::Rows& rows, const Region& region) const
{
    WriterMarks taken;
    const auto take = [&](std::uint64_t writer, std::uint64_t number) {
        std::uint64_t& mark = taken[writer];
        mark = std::max(mark, number);
    };
    for (const ChunkStretch& stretch : stretchesOf(rows.chunks))
        if (stretch.begin <= region.end && stretch.end >= region.begin)
            for (const auto& [writer, number] : stretch.chunk->taken)
                take(writer, number);
    for (const YoungRecord& record : rows.young)
        if (record.time >= region.begin && record.time <= region.end)
            take(record.writer, record.number);
    return taken;
}

void AgentWriting::merge(const std::vector<Records>& blocks)
{
    const Fresh all(blocks, -kInfinity, kInfinity);
    if (all.count == 0)
        return;
    const AgentReading::Rows rows = m_reading.rows(all.first, all.last);
    std::vector<Region> regions;
    std::optional<Region> before;  // the stretch that the gap in work follows
    const auto fillGap = [&](double begin, double end) {
        const Fresh fresh(blocks, begin, end);
        if (fresh.count == 0)
            return;
        if (before && before->records + fresh.count <= kChunk) {
            // A few records behind a short chunk make it longer.
            if (regions.empty() || regions.back().end < before->begin)
                regions.push_back(*before);
            regions.back().end = fresh.last;
            return;
        }
        regions.push_back({fresh.first, fresh.last, fresh.count});
    };
    double next = -kInfinity;
    for (const ChunkStretch& stretch : stretchesOf(rows.chunks)) {
        fillGap(next, plotix::before(stretch.begin));
        before = Region{stretch.begin, stretch.end, stretch.chunk->n};
        if (Fresh(blocks, stretch.begin, stretch.end).count > 0)
            regions.push_back(*before);
        next = std::nextafter(stretch.end, kInfinity);
    }
    fillGap(next, kInfinity);
    const bool isNew = rows.chunks.empty() && rows.young.empty();
    for (const Region& region : regions) {
        Records now = isNew ? Records() : recordsIn(rows, region);
        for (const Records& block : blocks) {
            const RecordsView some = block.view().between(region.begin, region.end);
            if (some.size == 0)
                continue;
            if (now.isEmpty())
                now.append(some);
            else
                now = Records::merged(now.view(), some);
        }
        if (isNew)
            m_insert.writeApart(now.view(), {});
        else
            m_insert.write(now.view(), region.begin, region.end, kChunk, takenIn(rows, region));
    }
    m_insert.flush();
}

/// All that is there, in time order: stretches of chunks, and young records between them.
std::vector<AgentWriting::Region> AgentWriting::regionsOf(const AgentReading::Rows& rows) const
{
    std::vector<Region> regions;
    auto young = rows.young.begin();
    const auto takeLoose = [&](double end) {
        Region loose;
        for (; young != rows.young.end() && young->time < end; ++young) {
            loose.begin = loose.records == 0 ? young->time : loose.begin;
            loose.end = young->time;
            if (++loose.records == kChunk)
                regions.push_back(std::exchange(loose, {}));
        }
        if (loose.records > 0 && (regions.empty() || loose.end > regions.back().end))
            regions.push_back(loose);
    };
    for (const ChunkStretch& stretch : stretchesOf(rows.chunks)) {
        takeLoose(stretch.begin);
        Region region{stretch.begin, stretch.end, stretch.chunk->n, stretch.chunk->n > 0 && stretch.chunk->n < kChunk,
                      !stretch.isWhole()};
        for (; young != rows.young.end() && young->time <= stretch.end; ++young)
            region.isUntidy = region.isUntidy || !stretch.chunk->hasTaken(young->writer, young->number);
        regions.push_back(region);
    }
    takeLoose(kInfinity);
    // Of one time, young records of two writers may end one region and begin the next.
    for (std::size_t i = 1; i < regions.size(); ++i)
        if (regions[i].begin <= regions[i - 1].end) {
            regions[i].begin = regions[i - 1].begin;
            regions[i].records += regions[i - 1].records;
            regions[i - 1].records = 0;
        }
    std::vector<Region> apart;
    for (const Region& region : regions) {
        if (!apart.empty() && apart.back().begin == region.begin)
            apart.back() = region;
        else
            apart.push_back(region);
    }
    return apart;
}

void AgentWriting::remove(std::span<const RowId> properties, double from, double to)
{
    const AgentReading::Rows rows = m_reading.rows(from, to);
    for (const Region& region : regionsOf(rows)) {
        if (region.end < from || region.begin > to)
            continue;
        const Records now = recordsIn(rows, region);
        if (const std::optional<Records> left = Records::without(now.view(), properties, from, to))
            m_insert.write(left->view(), region.begin, region.end, kChunk, takenIn(rows, region));
    }
    m_insert.flush();
}

std::size_t AgentWriting::dropBefore(double time)
{
    const double last = before(time);
    const AgentReading::Rows rows = m_reading.rows(-kInfinity, last);
    const std::vector<RowId> none;
    std::size_t dropped = 0;
    double begin = last;
    for (const AgentReading::Piece& piece : m_reading.pieces(rows, -kInfinity, last, &none)) {
        begin = std::min(begin, piece.t0);
        if (piece.t1 <= last) {
            dropped += piece.n;
            continue;
        }
        const Records records = piece.chunk ? m_reading.recordsOf(*piece.chunk, &none) : piece.records;
        dropped += records.view().between(-kInfinity, last).size;
    }
    if (dropped == 0)
        return 0;
    for (const StoredChunk& chunk : rows.chunks)
        begin = std::min(begin, chunk.begin);
    const Region gone{begin, last, 0};
    m_insert.write({}, begin, last, kChunk, takenIn(rows, gone));
    m_insert.flush();
    return dropped;
}

void AgentWriting::repack(const std::function<bool()>& goOn)
{
    const AgentReading::Rows rows = m_reading.rows(-kInfinity, kInfinity);
    std::vector<Region> group;
    std::size_t records = 0;
    const auto endGroup = [&] {
        const std::vector<Region> some = std::exchange(group, {});
        records = 0;
        if (some.empty() || (goOn && !goOn()))
            return;
        const Region all{some.front().begin, some.back().end, 0};
        // Chunks as they are stored stay where others would not be fewer.
        const bool isTidy =
            std::none_of(some.begin(), some.end(), [](const Region& region) { return region.isUntidy; });
        std::size_t count = 0;
        for (const Region& region : some)
            count += region.records;
        if (isTidy && (count + kChunk - 1) / kChunk >= some.size())
            return;
        const Records now = recordsIn(rows, all);
        m_insert.writeFull(now.view(), all.begin, all.end, takenIn(rows, all));
    };
    for (const Region& region : regionsOf(rows)) {
        if (!region.isShort && !region.isUntidy) {
            endGroup();
            continue;
        }
        group.push_back(region);
        records += region.records;
        if (records >= kAtOnce)
            endGroup();
    }
    endGroup();
    m_insert.flush();
}

bool AgentWriting::sealOneChunk(const std::function<void()>& beforeStoring)
{
    const AgentReading::Rows rows = m_reading.rows(-kInfinity, kInfinity);
    const std::vector<ChunkStretch> stretches = stretchesOf(rows.chunks);
    const double last = stretches.empty() ? -kInfinity : stretches.back().end;
    std::vector<const YoungRecord*> behind;
    for (const YoungRecord& record : rows.young)
        if (record.time > last)
            behind.push_back(&record);
    const Records now = joined({}, behind, nullptr);
    if (now.size() < kChunk)
        return false;
    const RecordsView sealed = now.view().slice(0, kChunk);
    const Region region{sealed.times[0], sealed.times[kChunk - 1], kChunk};
    m_insert.write(sealed, region.begin, region.end, kChunk, takenIn(rows, region));
    beforeStoring();
    m_insert.flush();
    return true;
}

}  // namespace plotix
