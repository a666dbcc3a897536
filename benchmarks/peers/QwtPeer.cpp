// The same graphs with Qwt and its defaults: curves with an antialiased pen on its canvas, painted with the whole plot
// into an image.

#include "benchmarks/peers/PeerProtocol.h"

#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>

using plotix_bench::PeerTask;

namespace {

std::vector<double> secondsTimes(std::size_t points)
{
    std::vector<double> times(points);
    for (std::size_t index = 0; index < points; ++index)
        times[index] = plotix_bench::kStart + static_cast<double>(index);
    return times;
}

class Picture {
public:
    explicit Picture(const PeerTask& task) : m_task(task), m_image(task.width, task.height, QImage::Format_RGB32)
    {
        m_plot.resize(task.width, task.height);
        m_plot.setCanvasBackground(Qt::black);
        (new QwtPlotGrid)->attach(&m_plot);
        for (int plot = 0; plot < task.plots; ++plot) {
            auto* curve = new QwtPlotCurve;
            curve->setRenderHint(QwtPlotItem::RenderAntialiased);
            const QColor color = QColor::fromHsv(plotix_bench::hueOf(plot, task.plots), 200, 230);
            curve->setPen(QPen(color, plotix_bench::kPenWidth));
            curve->attach(&m_plot);
            m_curves.push_back(curve);
        }
    }

    /// The curve keeps copies of both.
    void setData(int plot, const std::vector<double>& times, const std::vector<double>& values)
    {
        m_curves[static_cast<std::size_t>(plot)]->setSamples(times.data(), values.data(), int(values.size()));
    }
    void show(const plotix_bench::ValueRange& values) { m_plot.setAxisScale(QwtPlot::yLeft, values.low, values.high); }
    void frame(int step)
    {
        const plotix_bench::TimeRange range =
            plotix_bench::pannedRange(m_task.points, m_task.share, step, m_task.width);
        m_plot.setAxisScale(QwtPlot::xBottom, range.start, range.start + range.length);
        m_plot.replot();
        m_plot.render(&m_image);
    }

private:
    PeerTask m_task;
    QwtPlot m_plot;
    QImage m_image;
    std::vector<QwtPlotCurve*> m_curves;  // the plot owns them
};

void pan(const PeerTask& task)
{
    Picture picture(task);
    const std::vector<double> times = secondsTimes(task.points);
    plotix_bench::ValueRange range;
    double bytes = 0;
    for (int plot = 0; plot < task.plots; ++plot) {
        const std::vector<double> values = plotix_bench::signalValues(task, plot);
        range.include(values);
        const double before = plotix_bench::residentBytes();
        picture.setData(plot, times, values);
        bytes += plotix_bench::residentBytes() - before;
    }
    picture.show(range);
    plotix_bench::answerRounds(bytes / static_cast<double>(task.points) / task.plots,
                               [&](int step) { picture.frame(step); });
}

void load(const PeerTask& task)
{
    const std::vector<double> times = secondsTimes(task.points);
    const std::vector<double> values = plotix_bench::signalValues(task, 0);
    plotix_bench::ValueRange range;
    range.include(values);
    plotix_bench::answerRounds(0, [&](int) {
        Picture picture(task);
        picture.setData(0, times, values);
        picture.show(range);
        picture.frame(0);
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
    case PeerTask::Kind::Fetch: std::fputs("records are not fetched with this library\n", stderr); return 1;
    }
    return 0;
}
