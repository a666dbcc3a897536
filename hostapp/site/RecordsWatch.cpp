#include "hostapp/site/RecordsWatch.h"

#include "base/MainQueue.h"
#include "base/ReportableError.h"
#include "hostapp/formulas/FormulaPlan.h"
#include "hostapp/site/PlugInOperations.h"
#include "records/store/RecordStore.h"

#include <QtCore/QHashFunctions>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>

#include <algorithm>

namespace plotix {

namespace {

constexpr int kLookInterval = 500;  // milliseconds
constexpr double kPixels = 1000;    // about as many as a graph is wide
constexpr double kSoonest = 3;      // seconds
constexpr double kLatest = 60;      // seconds

/// Differs, but for values that were exchanged for others of the same least, greatest and sum, when the records do.
std::size_t summaryOf(const RecordOverview& overview)
{
    std::size_t summary = 0;
    for (const RecordOverview::Run& run : overview.runs)
        summary = qHashMulti(summary, run.t0, run.t1, run.records);
    for (const RecordOverview::Column& column : overview.columns)
        for (const RecordOverview::Summary& part : column.summaries)
            summary = qHashMulti(summary, part.valid, part.minimum, part.maximum, part.sum);
    return summary;
}

/// Dates that somebody has just chosen or is typing come first: they are read soon, and must not be taken back.
bool isSettled(const TrendSpans& spans)
{
    return !spans.asked && !spans.datesEdited && spans.drawn && isSameSpan(spans.dates, *spans.drawn);
}

}  // namespace

RecordsWatch::RecordsWatch(const SiteDocument& document, Trends trends)
    : m_document(document), m_trends(std::move(trends))
{
    m_timer.setInterval(kLookInterval);
    connect(&m_timer, &QTimer::timeout, this, &RecordsWatch::look);
}

std::chrono::milliseconds RecordsWatch::restAfter(const MomentSpan& span)
{
    const double seconds = std::clamp((span.second - span.first) / kPixels, kSoonest, kLatest);
    return std::chrono::milliseconds(qint64(seconds * 1000));
}

void RecordsWatch::recordsMayDiffer()
{
    std::erase_if(m_watched, [](const auto& entry) { return entry.second.trend.expired(); });
    for (const KTVPlugInPtr& trend : m_trends()) {
        Watched& watched = m_watched[trend.get()];
        watched.trend = trend;
        watched.mayDiffer = true;
    }
    m_timer.start();
    look();
}

std::optional<RecordsWatch::Shown> RecordsWatch::shownBy(const KTVPlugIn& trend) const
{
    const std::optional<TrendSpans> spans = spansOf(&trend);
    const auto agent = trend.agent() ? m_document.agentWithIdentifier(trend.agent()->uniqueIdentifier()) : nullptr;
    if (!spans || !spans->read || !agent)
        return std::nullopt;
    Shown shown{agent->id(), {}, *spans->read};
    const auto directory = m_document.formulaDirectory();
    const QStringList keys = changeableState(&trend).value(QStringLiteral("properties")).toStringList();
    for (const auto& property : agent->siteProperties())
        if (keys.contains(property->propertyName())) {
            shown.properties.push_back(property->description().id);
            for (const PropertyFormula& formula : formulasBeneath(*directory, property->description().id))
                shown.formulas.push_back(formula);
        }
    return shown;
}

/// A trend that is not settled, or was read again a moment ago, is looked at later.
void RecordsWatch::look()
{
    bool isMore = false;
    for (auto& [key, watched] : m_watched) {
        const KTVPlugInPtr trend = watched.trend.lock();
        if (!trend || !watched.mayDiffer)
            continue;
        isMore = true;
        const std::optional<TrendSpans> spans = spansOf(trend.get());
        const std::optional<Shown> shown = shownBy(*trend);
        if (!spans || (!spans->asked && (!shown || !spans->drawn)))
            watched.mayDiffer = false;  // what it shows first is still to be read
        else if (isSettled(*spans) && !watched.isCompared && Clock::now() - watched.readAgain >= restAfter(shown->span))
            compare(key, watched, *shown);
    }
    if (!isMore)
        m_timer.stop();
}

void RecordsWatch::compare(const KTVPlugIn* key, Watched& watched, const Shown& shown)
{
    watched.isCompared = true;
    watched.mayDiffer = false;  // what is written from now on is told again
    QThreadPool::globalInstance()->start([key, shown, store = m_document.records(), self = QPointer(this)] {
        std::size_t summary = 0;
        try {
            for (const RecordPart& part :
                 store->partsRead(shown.agent, shown.properties, shown.span.first, shown.span.second))
                summary =
                    qHashMulti(summary, summaryOf(store->overview(part.agent, part.properties, part.from, part.to)));
        } catch (const std::exception&) {  // reading says what is wrong with the records
        }
        MainQueue::main().async([key, shown, summary, self] {
            if (self)
                self->compared(key, shown, summary);
        });
    });
}

void RecordsWatch::compared(const KTVPlugIn* key, const Shown& shown, std::size_t summary)
{
    const auto found = m_watched.find(key);
    const KTVPlugInPtr trend = found == m_watched.end() ? nullptr : found->second.trend.lock();
    if (!trend)
        return;
    Watched& watched = found->second;
    watched.isCompared = false;
    const std::optional<TrendSpans> spans = spansOf(trend.get());
    if (!spans || !isSettled(*spans) || shownBy(*trend) != shown) {
        watched.mayDiffer = true;  // it went on to something else meanwhile
        return;
    }
    const bool isSame = watched.isKnown && watched.shown == shown && watched.summary == summary;
    watched.shown = shown;
    watched.summary = summary;
    watched.isKnown = true;
    if (isSame)
        return;
    watched.readAgain = Clock::now();
    if (spans->held)
        readRange(trend.get(), shown.span.first, shown.span.second);
    else
        showRange(trend.get(), spans->dates.first, spans->dates.second);
}

}  // namespace plotix
