#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"

#include "base/CoresAllowed.h"
#include "base/HelpingThreads.h"
#include "base/PagedReading.h"
#include "plotkit/model/PagedSeries.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"
#include "plugins/PlotixPlugIn/reading/values/PagedRecordPoints.h"
#include "plugins/PlotixPlugIn/reading/values/ShownSeries.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <limits>
#include <mutex>
#include <utility>

namespace plotix {

namespace {

bool isPlotted(const KTVPropertyPtr& snapshot)
{
    return snapshot && snapshot->type() != kPropertyTypeNeverPlotted && snapshot->isValid();
}

bool isTurnable(const KTVUnitModel::Map& map)
{
    return map.isLinear && std::isfinite(map.scale) && std::isfinite(map.offset) && map.scale != 0;
}

/// Whether the runs tell what frames need: with values in the unit shown that follow from the archived ones.
bool canBePaged(const RecordTimes& time, const KTVRecordColumn& column)
{
    return column.archivedValues().memory() && time.runs() && column.known().runs && column.size() > 0 &&
           column.size() <= time.size() && column.descriptor().type != kPropertyTypeNeverPlotted &&
           isTurnable(column.map());
}

/// What is known of values after a linear map; runs without values, or of which nothing is known, stay such.
class ShownRuns final : public KeptRuns {
public:
    ShownRuns(std::shared_ptr<const KeptRuns> archived, const KTVUnitModel::Map& map)
        : m_archived(std::move(archived)), m_map(map)
    {
    }
    std::size_t count() const override { return m_archived->count(); }
    void inPieces(const Take& take) const override
    {
        piecesOf(0, count(), [&take](const ValueRuns& piece, std::size_t) { take(piece); });
    }
    void piecesOf(std::size_t first, std::size_t end, const TakeFrom& take) const override
    {
        ValueRuns shown;
        m_archived->piecesOf(first, end, [&](const ValueRuns& piece, std::size_t firstRun) {
            shown = piece;
            show(shown);
            take(shown, firstRun);
        });
    }

private:
    void show(ValueRuns& runs) const
    {
        for (std::size_t run = 0; run < runs.count(); ++run) {
            if (!(runs.least[run] <= runs.greatest[run]))
                continue;
            for (double* value : {&runs.least[run], &runs.greatest[run], &runs.first[run]})
                *value = *value * m_map.scale + m_map.offset;
            if (m_map.scale < 0)
                std::swap(runs.least[run], runs.greatest[run]);
        }
    }

    const std::shared_ptr<const KeptRuns> m_archived;
    const KTVUnitModel::Map m_map;
};

/// A paged series before it is made: what is taken of its column on the main thread.
class PagedMaking {
public:
    PagedMaking(const RecordTimes& time, const KTVRecordColumn& column)
        : m_time(time), m_archived(column.known().runs), m_map(column.map()), m_count(column.known().count)
    {
        m_isAsArchived = column.unit() == column.descriptor().archivedUnit || m_map.isIdentity;
        PagedRecordPoints::Exceptions exceptions;
        for (const auto& [index, snapshot] : column.exceptions()) {
            const double value = isPlotted(snapshot) ? snapshot->unitValue() : std::numeric_limits<double>::quiet_NaN();
            m_count -= column.isValid(index) ? 1 : 0;
            m_count += std::isnan(value) ? 0 : 1;
            exceptions[index] = value;
            m_changed.push_back(index);
        }
        m_points = std::make_shared<const PagedRecordPoints>(column, std::move(exceptions));
    }

    /// Any thread.
    CPTPointSeriesPtr made() const
    {
        const std::shared_ptr<const KeptRuns> shown =
            m_isAsArchived ? m_archived : std::make_shared<const ShownRuns>(m_archived, m_map);
        return plotkit::pagedSeries(m_time, {m_time.runs(), shown, m_changed}, m_points, m_count);
    }
    std::size_t runs() const { return m_archived->count(); }

private:
    RecordTimes m_time;
    std::shared_ptr<const KeptRuns> m_archived;
    KTVUnitModel::Map m_map;
    std::size_t m_count;
    bool m_isAsArchived;
    std::vector<std::size_t> m_changed;
    std::shared_ptr<const PagedRecordPoints> m_points;
};

/// Series that are made on several threads.
class SideBySide {
public:
    void add(const RecordTimes& time, const KTVRecordColumn& column, CPTPointSeriesPtr& to)
    {
        m_jobs.push_back({{time, column}, to});
    }

    void run()
    {
        std::size_t runs = 0;
        for (const Job& job : m_jobs)
            runs += job.making.runs();
        const std::size_t threads = std::min({coresAllowed(), m_jobs.size(), runs / kRunsPerThread});
        {
            const HelpingThreads helpers(threads > 0 ? threads - 1 : 0, [this] { work(); });
            work();
        }
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    struct Job {
        PagedMaking making;
        CPTPointSeriesPtr& to;
    };
    /// Starting a thread takes as long as making a tenth of this.
    static constexpr std::size_t kRunsPerThread = 1 << 16;

    void work() noexcept
    {
        for (std::size_t job = m_next++; job < m_jobs.size(); job = m_next++) {
            try {
                m_jobs[job].to = m_jobs[job].making.made();
            } catch (...) {  // there is no memory
                const std::lock_guard lock(m_mutex);
                m_failure = std::current_exception();
            }
        }
    }

    std::vector<Job> m_jobs;
    std::atomic<std::size_t> m_next = 0;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
};

}  // namespace

CPTPointSeriesPtr seriesOfRecords(const RecordTimes& time, const KTVRecordColumn& column)
{
    if (canBePaged(time, column)) {
        CPTPointSeriesPtr series = shownSeries(time, column);
        if (!series) {
            series = PagedMaking(time, column).made();
            noteShown(time, column, series);
        }
        return series;
    }
    SeriesBuilder builder(time, column.size());
    const bool isAsArchived = column.unit() == column.descriptor().archivedUnit;
    if (column.descriptor().type == kPropertyTypeNeverPlotted) {
        // Only exceptions can be points.
    } else if (isAsArchived) {
        inStretches(column, 0, builder.elementCount(), [&](std::size_t first, std::size_t end) {
            const auto values = column.archivedValues().span().subspan(first, end - first);
            builder.setBlock(first, values, column.validity());
        });
    } else {
        std::vector<double> block(std::min(SeriesBuilder::kBlock, builder.elementCount()));
        for (std::size_t first = 0; first < builder.elementCount(); first += block.size()) {
            const std::span<double> values(block.data(), std::min(block.size(), builder.elementCount() - first));
            const KTVRecordColumn::Hold held = column.hold(first, first + values.size());
            column.copyUnitValues(first, values);
            builder.setBlock(first, values, column.validity());
        }
    }
    for (const auto& [index, snapshot] : column.exceptions()) {
        if (isPlotted(snapshot))
            builder.setPoint(index, snapshot->unitValue());
        else
            builder.dropPoint(index);
    }
    return builder.finish();
}

std::map<QString, CPTPointSeriesPtr> seriesOfRecords(const KTVRecordDictionary& records)
{
    const RecordTimes& time = *records.time();
    std::map<QString, CPTPointSeriesPtr> series;
    SideBySide paged;
    for (const auto& [key, column] : records.columns()) {
        CPTPointSeriesPtr& made = series[key];
        if (!canBePaged(time, *column)) {
            made = seriesOfRecords(time, *column);
            continue;
        }
        made = shownSeries(time, *column);
        if (!made)
            paged.add(time, *column, made);
    }
    paged.run();
    for (const auto& [key, column] : records.columns())
        if (canBePaged(time, *column))
            noteShown(time, *column, series[key]);
    return series;
}

}  // namespace plotix
