// What a person waits for at a site of ten years of one-second records: the first frame, a pan, the table, a zoom to
// ten seconds.
//   bench_decade --make FILE               makes the site: 308,000,000 records, 6 GB, some minutes
//   PLOTIX_DECADE=FILE bench_decade        measures it; a tenth of it is made where it is missing, and needs no FILE

#include "base/MainQueue.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "benchmarks/data/Elapsed.h"
#include "benchmarks/data/ResidentMemory.h"
#include "benchmarks/decade/DecadeSite.h"
#include "hostapp/app/Composition.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/WaitForRecords.h"

#include <QtCore/QFile>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <numeric>
#include <vector>

namespace {

using namespace plotix_bench;

constexpr QSize kWindow{1920, 1080};
constexpr int kZoomSteps = 60;
constexpr double kZoomedTo = 10;  // seconds
constexpr double kNotch = 1.25;   // what a wheel's notch zooms by
constexpr double kEighthsANotch = 120;

/// A trend of all properties over all records, drawn.
struct Shown {
    plotix::TrendRequest trend;
    KTVPlugInPtr plugIn;
    QWidget* view = nullptr;
    QWidget* graph = nullptr;

    /// Lets the window do what it was asked for, which paints what has changed, once.
    static void settle() { QCoreApplication::sendPostedEvents(); }
    double seconds() const
    {
        const auto range = plotix::shownRange(plugIn.get());
        return range ? range->second - range->first : 0;
    }
};

/// Counts how often a widget is painted, as long as it lives.
class Paints : public QObject {
public:
    explicit Paints(QWidget* of) { of->installEventFilter(this); }
    benchmark::IterationCount count() const { return m_count; }

private:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    benchmark::IterationCount m_count = 0;
};

/// Of the document's first agent.
Shown shown(KTVPlugInModule& module, const std::shared_ptr<plotix::SiteDocument>& document)
{
    const auto extent = document->records()->extent(document->agents().front()->id());
    Shown made;
    made.trend = {document, document->agents().front(), {}, {}, {}, {}};
    const auto& all = made.trend.agent->siteProperties();
    made.trend.properties.assign(all.begin(), all.end());
    made.trend.from = plotix::Date{extent->first};
    made.trend.to = plotix::Date{extent->last};
    made.plugIn = plotix::requireTrend(module, made.trend);
    made.view = made.plugIn->view();
    made.view->resize(kWindow);
    made.view->show();
    plotix::waitForRecords(*made.trend.agent);
    for (QWidget* each : made.view->findChildren<QWidget*>())
        if (std::strcmp(each->metaObject()->className(), "KTVGraphHostingView") == 0)
            made.graph = each;
    Shown::settle();
    return made;
}

Shown shown(KTVPlugInModule& module, const QString& path)
{
    return shown(module, plotix::SiteDocument::open(path));
}

/// From the request for other records to what is painted of them.
void show(const Shown& trend, double from, double to)
{
    plotix::showRange(trend.plugIn.get(), from, to);
    plotix::waitForRecords(*trend.trend.agent);
    Shown::settle();
}

void firstFrame(benchmark::State& state, KTVPlugInModule& module, const QString& path, bool isCold)
{
    const double before = residentBytes();
    double held = 0, records = 0;
    for (auto unused : state) {
        if (isCold)
            forgetPages(path);
        const Elapsed elapsed;
        const Shown drawn = shown(module, path);
        state.SetIterationTime(elapsed.seconds());
        held = residentBytes() - before;
        records = drawn.seconds();
    }
    state.counters["memory_MB"] = held / 1e6;
    state.counters["bytes_per_sample"] = held / (records * kDecadeProperties);
}

/// The first frame of another trend of the same records, while one is shown.
void secondTrend(benchmark::State& state, KTVPlugInModule& module, const QString& path)
{
    const Shown first = shown(module, path);
    const double before = residentBytes();
    double held = 0;
    for (auto unused : state) {
        const Elapsed elapsed;
        const Shown second = shown(module, first.trend.document);
        state.SetIterationTime(elapsed.seconds());
        held = residentBytes() - before;
    }
    state.counters["memory_MB"] = held / 1e6;
}

/// A range that is moved on by a share of its length, or by so many seconds, again and again, from one end of the
/// records to the other.
void movedRange(benchmark::State& state, KTVPlugInModule& module, const QString& path, double share, double step)
{
    const Shown drawn = shown(module, path);
    const double first = drawn.trend.from->seconds, last = drawn.trend.to->seconds;
    const double length = (1 - share) * (last - first) - 100 * step;
    const double by = share * (last - first) + step;
    double from = first;
    show(drawn, from, from + length);
    for (auto unused : state) {
        from = from + by + length <= last ? from + by : first;
        const Elapsed elapsed;
        show(drawn, from, from + length);
        state.SetIterationTime(elapsed.seconds());
    }
}

void send(QWidget* to, QEvent::Type type, const QPointF& at, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, at, to->mapToGlobal(at), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(to, &event);
}

void pan(benchmark::State& state, const Shown& drawn)
{
    QPointF at = drawn.graph->rect().center();
    send(drawn.graph, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    int step = 0;
    const Paints paints(drawn.graph);
    for (auto unused : state) {
        at.rx() += ++step / 64 % 2 == 0 ? 1 : -1;
        send(drawn.graph, QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton);
        Shown::settle();
    }
    if (paints.count() != state.iterations())
        state.SkipWithError("a step is not painted once");
    send(drawn.graph, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
}

/// The rows of all properties, from the records that are shown to what is painted.
void table(benchmark::State& state, const Shown& drawn)
{
    for (auto unused : state) {
        if (!QMetaObject::invokeMethod(drawn.plugIn.get(), "updateInfoTable", Qt::DirectConnection))
            state.SkipWithError("The trend has no table");
        Shown::settle();
    }
}

/// How long each step of a zoom took.
struct ZoomTimes {
    std::vector<double> shown;  ///< seconds until the window shows the step
    std::vector<double> exact;  ///< and until what it shows is exact; the same where it was at once
    int provisional = 0;        ///< steps that were not
};

bool isProvisional(const Shown& drawn)
{
    return drawn.graph->property("provisional").toBool();
}

double meanOf(const std::vector<double>& times)
{
    return std::accumulate(times.begin(), times.end(), 0.0) / static_cast<double>(times.size());
}

/// From everything to ten seconds, each step as soon as the one before is shown or, if `waits`, is exact.
ZoomTimes zoomed(const Shown& drawn, bool waits)
{
    const double factor = std::pow(drawn.seconds() / kZoomedTo, 1.0 / kZoomSteps);
    const QPoint turned(0, static_cast<int>(std::lround(kEighthsANotch * std::log(factor) / std::log(kNotch))));
    const QPointF at = drawn.graph->rect().center();
    ZoomTimes times;
    for (int step = 0; step < kZoomSteps; ++step) {
        QWheelEvent event(at, drawn.graph->mapToGlobal(at), {}, turned, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        const Elapsed elapsed;
        QCoreApplication::sendEvent(drawn.graph, &event);
        Shown::settle();
        times.shown.push_back(elapsed.seconds());
        times.provisional += isProvisional(drawn) ? 1 : 0;
        while (waits && isProvisional(drawn))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        times.exact.push_back(elapsed.seconds());
    }
    return times;
}

/// Twice, each time beginning with nothing in memory: as fast as it goes, which is what is timed, and waiting for exact
/// frames.
void zoom(benchmark::State& state, KTVPlugInModule& module, const QString& path)
{
    for (auto unused : state) {
        {
            const Shown drawn = shown(module, path);
            const ZoomTimes times = zoomed(drawn, false);
            state.SetIterationTime(*std::max_element(times.shown.begin(), times.shown.end()));
            state.counters["mean_ms"] = meanOf(times.shown) * 1000;
            state.counters["provisional_steps"] = times.provisional;
            state.counters["seconds_shown"] = drawn.seconds();
        }
        const ZoomTimes times = zoomed(shown(module, path), true);
        state.counters["exact_worst_ms"] = *std::max_element(times.exact.begin(), times.exact.end()) * 1000;
        state.counters["exact_mean_ms"] = meanOf(times.exact) * 1000;
        state.counters["waiting_provisional_steps"] = times.provisional;
    }
}

/// The file with so many records; empty where nobody has made it.
QString siteOf(std::size_t records)
{
    if (records == kDecadeRecords)
        return qEnvironmentVariable("PLOTIX_DECADE");
    const QString path = dataFile(QStringLiteral("decade-tenth.plotix"));
    if (!QFile::exists(path)) {
        makeDecade(path + QStringLiteral(".new"), records);
        QFile::rename(path + QStringLiteral(".new"), path);
    }
    return path;
}

using Measured = std::function<void(benchmark::State&, const QString& path)>;

benchmark::internal::Benchmark* add(const std::string& name, std::size_t records, const Measured& measured)
{
    const auto onSite = [records, measured](benchmark::State& state) {
        const QString path = siteOf(records);
        if (path.isEmpty())
            state.SkipWithError("PLOTIX_DECADE names no file: make one with --make");
        else
            measured(state, path);
    };
    return benchmark::RegisterBenchmark(name.c_str(), onSite)->Unit(benchmark::kMillisecond);
}

void registerCases(KTVPlugInModule& module, std::size_t records, const std::string& name)
{
    for (const bool isCold : {false, true})
        add(name + (isCold ? "/first-frame/cold" : "/first-frame/warm"), records,
            [&module, isCold](benchmark::State& state, const QString& path) {
                firstFrame(state, module, path, isCold);
            })
            ->UseManualTime()
            ->Iterations(1);
    add(name + "/pan", records,
        [&module](benchmark::State& state, const QString& path) { pan(state, shown(module, path)); });
    add(name + "/second-trend", records,
        [&module](benchmark::State& state, const QString& path) { secondTrend(state, module, path); })
        ->UseManualTime()
        ->Iterations(3);
    for (const bool isTick : {false, true})
        add(name + (isTick ? "/tick" : "/shifted"), records,
            [&module, isTick](benchmark::State& state, const QString& path) {
                movedRange(state, module, path, isTick ? 0 : 0.1, isTick ? 1 : 0);
            })
            ->UseManualTime()
            ->Iterations(8);
    add(name + "/table", records,
        [&module](benchmark::State& state, const QString& path) { table(state, shown(module, path)); });
    add(name + "/zoom", records, [&module](benchmark::State& state, const QString& path) { zoom(state, module, path); })
        ->UseManualTime()
        ->Iterations(1);
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    plotix::MainQueue::main();  // made here, because it belongs to the first thread that asks for it
    if (argc == 3 && std::strcmp(argv[1], "--make") == 0) {
        makeDecade(QString::fromLocal8Bit(argv[2]), kDecadeRecords);
        return 0;
    }
    plotix::Composition composition(plotix::Composition::Audience::Nobody);
    registerCases(*composition.module(), kDecadeRecords / 10, "decade/10x31M");
    registerCases(*composition.module(), kDecadeRecords, "decade/10x308M");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
