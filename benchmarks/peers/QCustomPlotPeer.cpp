// The same graphs with QCustomPlot: its defaults, or with "fast" its fast polylines. A frame is what it paints into its
// buffers; copying them into the widget is left out, in its favour.

#include "benchmarks/peers/PeerProtocol.h"

#include <QtCore/QVector>
#include <QtWidgets/QApplication>
#include <qcustomplot.h>
#include <sqlite3.h>

using plotix_bench::PeerTask;

namespace {

QVector<QCPGraphData> graphData(const std::vector<double>& values)
{
    QVector<QCPGraphData> data(static_cast<qsizetype>(values.size()));
    QCPGraphData* next = data.data();
    for (std::size_t index = 0; index < values.size(); ++index)
        *next++ = QCPGraphData(plotix_bench::kStart + static_cast<double>(index), values[index]);
    return data;
}

class Picture {
public:
    explicit Picture(const PeerTask& task) : m_task(task)
    {
        m_plot.resize(task.width, task.height);
        m_plot.axisRect()->setAutoMargins(QCP::msNone);
        m_plot.axisRect()->setMargins({plotix_bench::kMarginLeft, plotix_bench::kMarginTop, plotix_bench::kMarginRight,
                                       plotix_bench::kMarginBottom});
        m_plot.setBackground(QBrush(Qt::black));
        if (task.fast)
            m_plot.setPlottingHint(QCP::phFastPolylines);
        m_plot.xAxis->setTicker(QSharedPointer<QCPAxisTickerDateTime>::create());
        for (int plot = 0; plot < task.plots; ++plot) {
            QCPGraph* graph = m_plot.addGraph();
            const QColor color = QColor::fromHsv(plotix_bench::hueOf(plot, task.plots), 200, 230);
            graph->setPen(QPen(color, plotix_bench::kPenWidth));
            graph->setAntialiased(true);
        }
    }

    void setData(int plot, const QVector<QCPGraphData>& data) { m_plot.graph(plot)->data()->set(data, true); }

    void show(const plotix_bench::ValueRange& values) { m_plot.yAxis->setRange(values.low, values.high); }
    void frame(std::size_t points, double share, int step)
    {
        const plotix_bench::TimeRange range = plotix_bench::pannedRange(points, share, step, m_task.width);
        m_plot.xAxis->setRange(range.start, range.start + range.length);
        m_plot.replot(QCustomPlot::rpQueuedRefresh);
    }
    void fitValues() { m_plot.yAxis->rescale(); }

private:
    PeerTask m_task;
    QCustomPlot m_plot;
};

void pan(const PeerTask& task)
{
    Picture picture(task);
    plotix_bench::ValueRange range;
    double bytes = 0;
    for (int plot = 0; plot < task.plots; ++plot) {
        const std::vector<double> values = plotix_bench::signalValues(task, plot);
        range.include(values);
        const double before = plotix_bench::residentBytes();
        picture.setData(plot, graphData(values));
        bytes += plotix_bench::residentBytes() - before;
    }
    picture.show(range);
    plotix_bench::answerRounds(bytes / static_cast<double>(task.points) / task.plots,
                               [&](int step) { picture.frame(task.points, task.share, step); });
}

/// From values in memory to the first frame.
void load(const PeerTask& task)
{
    const std::vector<double> values = plotix_bench::signalValues(task, 0);
    plotix_bench::ValueRange range;
    range.include(values);
    plotix_bench::answerRounds(0, [&](int) {
        Picture picture(task);
        picture.setData(0, graphData(values));
        picture.show(range);
        picture.frame(task.points, 1, 0);
    });
}

/// From a table with one row a record to the first frame.
void fetch(const PeerTask& task)
{
    plotix_bench::answerRounds(0, [&](int) {
        Picture picture(task);
        sqlite3* database = nullptr;
        sqlite3_stmt* rows = nullptr;
        sqlite3_open_v2(task.file.c_str(), &database, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(database, "PRAGMA mmap_size=1099511627776", nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(database, "SELECT * FROM record ORDER BY time", -1, &rows, nullptr);
        std::vector<QVector<QCPGraphData>> columns(static_cast<std::size_t>(task.plots));
        std::size_t count = 0;
        for (; sqlite3_step(rows) == SQLITE_ROW; ++count)
            for (int plot = 0; plot < task.plots; ++plot)
                columns[static_cast<std::size_t>(plot)].push_back(
                    {sqlite3_column_double(rows, 0), sqlite3_column_double(rows, plot + 1)});
        sqlite3_finalize(rows);
        sqlite3_close(database);
        for (int plot = 0; plot < task.plots; ++plot)
            picture.setData(plot, columns[static_cast<std::size_t>(plot)]);
        picture.fitValues();
        picture.frame(count, 1, 0);
    });
}

}  // namespace

int main(int argc, char** argv)
{
    const PeerTask task = PeerTask::parse(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    switch (task.kind) {
    case PeerTask::Kind::Pan: pan(task); break;
    case PeerTask::Kind::Load: load(task); break;
    case PeerTask::Kind::Fetch: fetch(task); break;
    }
    return 0;
}
