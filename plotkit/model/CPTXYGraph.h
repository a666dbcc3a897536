#pragma once

#include "plotkit/model/CPTAxisSet.h"
#include "plotkit/model/CPTGraphLayer.h"
#include "plotkit/model/CPTLegend.h"
#include "plotkit/model/CPTPlotSpace.h"
#include "plotkit/model/CPTScatterPlot.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CPTXYGraph;

/// A named look. `kCPTDarkGradientTheme` is the only one. Immutable; lives as long as the program. Main thread only.
class CPTTheme {
public:
    virtual ~CPTTheme();
    /// Null for an unknown name.
    static const CPTTheme* themeNamed(const QString& name);
    virtual void applyToGraph(CPTXYGraph& graph) const = 0;
};
inline const QString kCPTDarkGradientTheme = QStringLiteral("Dark Gradients");

enum class CPTRectAnchor { Bottom, Top };

/// Who makes room for axis labels between frame and plot area. Fixed: the frame's padding; what does not fit is left
/// out, or reaches beyond the frame. Grows: each side is at least as wide as its axis's labels and title need, which
/// then stand inside the frame and beside the plot area.
enum class CPTLabelRoom { Fixed, Grows };

/// The frame round the plot area; its padding keeps room for axis labels.
struct CPTPlotAreaFrame {
    CPTPadding padding{};
    CPTFill fill{};
    std::optional<CPTLineStyle> borderLineStyle{};
    double cornerRadius = 0;
};

/// An XY graph: plot spaces, axes, scatter plots, and layers above them. State only; plotkit/render draws it.
///
/// Every plot and every axis names its plot space. If it names none, or one that is not in this graph, it uses the
/// default space, which is the first and always there.
///
/// Its maker and the hosting view *share* it. Main thread only.
class CPTXYGraph {
public:
    explicit CPTXYGraph(const QRectF& frame = {});
    ~CPTXYGraph();
    CPTXYGraph(const CPTXYGraph&) = delete;
    CPTXYGraph& operator=(const CPTXYGraph&) = delete;

    void applyTheme(const CPTTheme* theme);  ///< null: nothing happens

    CPTXYPlotSpace* defaultPlotSpace() { return m_plotSpaces.front().get(); }
    const CPTXYPlotSpace& plotSpace() const { return *m_plotSpaces.front(); }
    const std::vector<CPTXYPlotSpacePtr>& allPlotSpaces() const { return m_plotSpaces; }  ///< the default one first
    void addPlotSpace(const CPTXYPlotSpacePtr& space);     ///< null, or added already: nothing happens
    void removePlotSpace(const CPTXYPlotSpacePtr& space);  ///< the default one, or not in the graph: nothing happens

    const CPTXYPlotSpace& plotSpaceOf(const CPTScatterPlot& plot) const;
    const CPTXYPlotSpace& plotSpaceOf(const CPTXYAxis& axis) const;
    /// The plots that use a space of this graph, first to last: the space is fitted to these.
    std::vector<CPTScatterPlotPtr> plotsIn(const CPTXYPlotSpace& space) const;

    /// What a fit of this space is about: those, or where it has none those of the spaces that follow its x.
    std::vector<CPTScatterPlotPtr> plotsToFit(const CPTXYPlotSpace& space) const;

    CPTXYAxisSet* axisSet() { return &m_axisSet; }
    const CPTXYAxisSet& axes() const { return m_axisSet; }

    const std::vector<CPTScatterPlotPtr>& allPlots() const { return m_plots; }
    void addPlot(const CPTScatterPlotPtr& plot);
    void removePlot(const CPTScatterPlotPtr& plot);  ///< not in the graph: nothing happens
    CPTScatterPlotPtr plotWithIdentifier(const QString& identifier) const;

    const std::vector<CPTGraphLayerPtr>& layers() const { return m_layers; }  ///< from the lowest to the topmost
    void addLayer(const CPTGraphLayerPtr& layer);         ///< on top; null, or added already: nothing happens
    void addLayerBeneath(const CPTGraphLayerPtr& layer);  ///< the same, beneath all others
    void removeLayer(const CPTGraphLayerPtr& layer);      ///< not in the graph: nothing happens

    const QRectF& bounds() const { return m_bounds; }  ///< points
    void setBounds(const QRectF& bounds);
    const CPTPadding& padding() const { return m_padding; }  ///< 20 on every side at first
    void setPadding(const CPTPadding& padding);
    const CPTFill& fill() const { return m_fill; }
    void setFill(const CPTFill& fill);

    const CPTPlotAreaFrame& plotAreaFrame() const { return m_plotAreaFrame; }
    void setPlotAreaFrame(const CPTPlotAreaFrame& frame);
    void setPlotAreaFramePadding(const CPTPadding& padding);
    CPTLabelRoom labelRoom() const { return m_labelRoom; }
    void setLabelRoom(CPTLabelRoom room);

    const QString& title() const { return m_title; }
    void setTitle(const QString& title);
    const CPTTextStyle& titleTextStyle() const { return m_titleTextStyle; }
    void setTitleTextStyle(const CPTTextStyle& style);
    QPointF titleDisplacement() const { return m_titleDisplacement; }  ///< points, y upward
    void setTitleDisplacement(QPointF displacement);
    CPTRectAnchor titlePlotAreaFrameAnchor() const { return m_titleAnchor; }
    void setTitlePlotAreaFrameAnchor(CPTRectAnchor anchor);

    const CPTLegend& legend() const { return m_legend; }  ///< none at first
    void setLegend(const CPTLegend& legend);

    /// Called after every change of anything the graph shows; the hosting view sets it to repaint.
    void setNeedsDisplayHandler(std::function<void()> handler) { m_needsDisplayHandler = std::move(handler); }
    void setNeedsDisplay() const;
    /// Called after changes of the layers alone: the graph beneath them need not be drawn again.
    void setLayersNeedDisplayHandler(std::function<void()> handler) { m_layersNeedDisplayHandler = std::move(handler); }
    void setLayersNeedDisplay() const;

private:
    const CPTXYPlotSpace& spaceNamed(const std::shared_ptr<const CPTXYPlotSpace>& space) const;

    std::vector<CPTXYPlotSpacePtr> m_plotSpaces{std::make_shared<CPTXYPlotSpace>()};
    CPTXYAxisSet m_axisSet;
    std::vector<CPTScatterPlotPtr> m_plots;
    std::vector<CPTGraphLayerPtr> m_layers;
    QRectF m_bounds;
    CPTPadding m_padding{20, 20, 20, 20};
    CPTFill m_fill;
    CPTPlotAreaFrame m_plotAreaFrame;
    CPTLabelRoom m_labelRoom = CPTLabelRoom::Fixed;
    QString m_title;
    CPTTextStyle m_titleTextStyle;
    QPointF m_titleDisplacement;
    CPTRectAnchor m_titleAnchor = CPTRectAnchor::Top;
    CPTLegend m_legend;
    std::function<void()> m_needsDisplayHandler;
    std::function<void()> m_layersNeedDisplayHandler;
};

using CPTXYGraphPtr = std::shared_ptr<CPTXYGraph>;
