// Pictures for a host: the graph at a size of its choosing, also as it would look with other choices.
//
// Rules of this room:
//  1. Everything is put back: the screen, what is archived and what can be undone are as they were.
//  2. What is chosen for a picture alone counts while it is drawn, and tells nobody.
//  3. Every drawing ends the date panel's busy state, as on the screen.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>

namespace {

constexpr double kSpanHeight = 18;                     // points, for the line that names the span
constexpr QPointF kHostsTitleDisplacement{0.0, -2.0};  // clear of the frame's border
constexpr double kTitleSize = 18;                      // points, unless a size of text was chosen

/// Puts size, padding and title of a graph back when it goes.
class GraphStateKeeper {
public:
    explicit GraphStateKeeper(CPTXYGraph& graph)
        : m_graph(graph),
          m_bounds(graph.bounds()),
          m_padding(graph.plotAreaFrame().padding),
          m_title(graph.title()),
          m_timeTitle(graph.axisSet()->firstAxis()->title()),
          m_timeTitleOffset(graph.axisSet()->firstAxis()->titleOffset()),
          m_style(graph.titleTextStyle()),
          m_displacement(graph.titleDisplacement()),
          m_anchor(graph.titlePlotAreaFrameAnchor())
    {
    }
    ~GraphStateKeeper()
    {
        m_graph.setBounds(m_bounds);
        m_graph.setPlotAreaFramePadding(m_padding);
        m_graph.setTitle(m_title);
        m_graph.axisSet()->firstAxis()->setTitle(m_timeTitle);
        m_graph.axisSet()->firstAxis()->setTitleOffset(m_timeTitleOffset);
        m_graph.setTitleTextStyle(m_style);
        m_graph.setTitleDisplacement(m_displacement);
        m_graph.setTitlePlotAreaFrameAnchor(m_anchor);
    }
    GraphStateKeeper(const GraphStateKeeper&) = delete;
    GraphStateKeeper& operator=(const GraphStateKeeper&) = delete;

private:
    CPTXYGraph& m_graph;  // borrowed
    QRectF m_bounds;
    CPTPadding m_padding;
    QString m_title, m_timeTitle;
    double m_timeTitleOffset;
    CPTTextStyle m_style;
    QPointF m_displacement;
    CPTRectAnchor m_anchor;
};

/// The span that the graph shows, for people.
QString spanText(const CPTPlotRange& range, const CPTClock& clock)
{
    return QStringLiteral("%1 – %2").arg(plotix::momentDescription(clock, plotix::Date{range.minLimit()}),
                                         plotix::momentDescription(clock, plotix::Date{range.maxLimit()}));
}

/// What is written around the plots of a picture.
struct PictureTexts {
    QString title;  // empty: none
    CPTTextStyle titleStyle;
    bool hasSpan = true;
    double heightBelowTitle = 0;  // of what stands between it and the plots
    CPTClock clock;
};

/// The title is as light or dark as the labels; a chosen size of text is that of all texts. Where titles of axes were
/// chosen, the time axis has what was chosen.
PictureTexts textsOf(const CPTXYGraph& graph, const plotix::TrendReader& reader, const CPTClock& clock,
                     const QString& title)
{
    const QVariant size = reader.part(QStringLiteral("looks"))->chosen().value(QStringLiteral("fontSize"));
    const QVariantMap legend = reader.part(QStringLiteral("legend"))->chosen();
    PictureTexts texts{title, {}, !legend.contains(QStringLiteral("axisTitles")), reader.heightAbovePlots(), clock};
    texts.titleStyle = {.fontName = QStringLiteral("Helvetica-Bold"),
                        .fontSize = size.isValid() ? size.toDouble() : kTitleSize,
                        .color = graph.axes().xAxis().labelTextStyle().color};
    return texts;
}

/// Then the title has room of its own, above that.
bool hasRoomAtTop(const CPTXYGraph& graph)
{
    return std::any_of(graph.layers().begin(), graph.layers().end(), [&graph](const CPTGraphLayerPtr& layer) {
        const auto room = layer->room(graph.bounds().size());
        return room && room->edge == CPTLayerRoom::Edge::Top;
    });
}

void placeTitle(CPTXYGraph& graph, const PictureTexts& texts)
{
    graph.setTitle(texts.title);
    graph.setTitleDisplacement(kHostsTitleDisplacement);
    if (texts.title.isEmpty())
        return;
    graph.setTitleTextStyle(texts.titleStyle);
    graph.setTitlePlotAreaFrameAnchor(CPTRectAnchor::Top);
    CPTPadding padding = graph.plotAreaFrame().padding;
    padding.top += texts.heightBelowTitle + (hasRoomAtTop(graph) ? 0 : texts.titleStyle.fontSize);
    graph.setPlotAreaFramePadding(padding);
}

/// Titles the time axis with the span shown, below its labels: a picture has no date panel, and the labels of a short
/// span name no day.
void placeSpan(CPTXYGraph& graph, const CPTClock& clock)
{
    if (graph.allPlots().empty())
        return;
    CPTXYAxis& axis = *graph.axisSet()->firstAxis();
    axis.setTitle(spanText(graph.plotSpace().xRange(), clock));
    axis.setTitleOffset(0);
    CPTPadding padding = graph.plotAreaFrame().padding;
    padding.bottom += kSpanHeight;
    graph.setPlotAreaFramePadding(padding);
}

/// Draws the graph at a size of the host's choosing and leaves it as it was.
template <class Draw>
auto drawnAtSize(CPTXYGraph& graph, const QSizeF& size, const PictureTexts& texts, Draw draw)
{
    const GraphStateKeeper keeper(graph);
    if (texts.hasSpan)
        placeSpan(graph, texts.clock);
    graph.setBounds(QRectF(QPointF(), size));
    placeTitle(graph, texts);
    return draw();
}

}  // namespace

QImage KTVPlotixPlugIn::graphImageWithSize(const QSizeF& size, double density, const QString& title)
{
    if (!m_graph)
        return {};
    return drawnAtSize(*m_graph, size, textsOf(*m_graph, *m_reader, m_access->clock(), title), [&] {
        return plotkit::imageOfGraph(*m_graph, size, density, plotkit::DrawingReport::TellDelegates);
    });
}

QByteArray KTVPlotixPlugIn::graphPDFWithSize(const QSizeF& size, const QString& title)
{
    if (!m_graph)
        return {};
    return drawnAtSize(*m_graph, size, textsOf(*m_graph, *m_reader, m_access->clock(), title),
                       [&] { return plotkit::pdfOfGraph(*m_graph, size, plotkit::DrawingReport::TellDelegates); });
}

QByteArray KTVPlotixPlugIn::graphFile(const QVariantMap& figure)
{
    if (!m_graph)
        return {};
    const QSizeF size = figure.value(QStringLiteral("size")).toSizeF();
    const QString format = figure.value(QStringLiteral("format")).toString();
    const QVariantMap chosen = m_reader->chosen();
    const QVariantMap ranges = m_reader->ranges();
    const QVariantMap choices = figure.value(QStringLiteral("reading")).toMap();
    const QSignalBlocker silence(m_reader.get());
    const QScopedValueRollback drawing(m_rangeBeingShown, true);
    m_reader->choose(choices);
    const PictureTexts texts =
        textsOf(*m_graph, *m_reader, m_access->clock(), figure.value(QStringLiteral("title")).toString());
    const QByteArray file = drawnAtSize(*m_graph, size, texts, [&] {
        constexpr auto kTell = plotkit::DrawingReport::TellDelegates;
        if (format == QLatin1String("svg"))
            return plotkit::svgOfGraph(*m_graph, size, kTell);
        if (format == QLatin1String("pdf"))
            return plotkit::pdfOfGraph(*m_graph, size, kTell);
        return pngOfImage(
            plotkit::imageOfGraph(*m_graph, size, figure.value(QStringLiteral("density"), 1.0).toDouble(), kTell));
    });
    if (!choices.isEmpty()) {
        m_reader->chooseOnly(chosen);
        m_reader->setRanges(ranges);
    }
    return file;
}
