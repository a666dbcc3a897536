#pragma once

#include "plotkit/model/CPTAxis.h"
#include "plotkit/model/CPTPlotSpace.h"
#include "plotkit/model/CPTScatterPlot.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CPTXYGraph;

/// A named look. `kCPTDarkGradientTheme` is the only one.
class CPTTheme {
public:
    virtual ~CPTTheme();
    /// Null for an unknown name.
    static const CPTTheme* themeNamed(const QString& name);
    virtual void applyToGraph(CPTXYGraph& graph) const = 0;
};
inline const QString kCPTDarkGradientTheme = QStringLiteral("Dark Gradients");

enum class CPTRectAnchor { Bottom, Top };

/// The frame round the plot area; its padding keeps room for axis labels.
struct CPTPlotAreaFrame {
    CPTPadding padding{};
    CPTFill fill{};
    std::optional<CPTLineStyle> borderLineStyle{};
    double cornerRadius = 0;
};

/// An XY graph: one plot space, two axes, any number of scatter plots. State only; plotkit/render draws it.
///
/// Whoever made it *shares* it with the hosting view. Main thread only.
class CPTXYGraph {
public:
    explicit CPTXYGraph(const QRectF& frame = {});
    ~CPTXYGraph();
    CPTXYGraph(const CPTXYGraph&) = delete;
    CPTXYGraph& operator=(const CPTXYGraph&) = delete;

    void applyTheme(const CPTTheme* theme);  ///< null: nothing happens

    CPTXYPlotSpace* defaultPlotSpace() { return &m_plotSpace; }
    const CPTXYPlotSpace& plotSpace() const { return m_plotSpace; }
    CPTXYAxisSet* axisSet() { return &m_axisSet; }
    const CPTXYAxisSet& axes() const { return m_axisSet; }

    const std::vector<CPTScatterPlotPtr>& allPlots() const { return m_plots; }
    void addPlot(const CPTScatterPlotPtr& plot);
    void removePlot(const CPTScatterPlotPtr& plot);  ///< not in the graph: nothing happens
    CPTScatterPlotPtr plotWithIdentifier(const QString& identifier) const;

    const QRectF& bounds() const { return m_bounds; }  ///< points
    void setBounds(const QRectF& bounds);
    const CPTPadding& padding() const { return m_padding; }  ///< 20 on every side at first
    void setPadding(const CPTPadding& padding);
    const CPTFill& fill() const { return m_fill; }
    void setFill(const CPTFill& fill);

    const CPTPlotAreaFrame& plotAreaFrame() const { return m_plotAreaFrame; }
    void setPlotAreaFrame(const CPTPlotAreaFrame& frame);
    void setPlotAreaFramePadding(const CPTPadding& padding);

    const QString& title() const { return m_title; }
    void setTitle(const QString& title);
    const CPTTextStyle& titleTextStyle() const { return m_titleTextStyle; }
    void setTitleTextStyle(const CPTTextStyle& style);
    QPointF titleDisplacement() const { return m_titleDisplacement; }  ///< points, y upward
    void setTitleDisplacement(QPointF displacement);
    CPTRectAnchor titlePlotAreaFrameAnchor() const { return m_titleAnchor; }
    void setTitlePlotAreaFrameAnchor(CPTRectAnchor anchor);

    /// Called after every change of anything the graph shows; the hosting view sets it to repaint.
    void setNeedsDisplayHandler(std::function<void()> handler) { m_needsDisplayHandler = std::move(handler); }
    void setNeedsDisplay() const;

private:
    CPTXYPlotSpace m_plotSpace;
    CPTXYAxisSet m_axisSet;
    std::vector<CPTScatterPlotPtr> m_plots;
    QRectF m_bounds;
    CPTPadding m_padding{20, 20, 20, 20};
    CPTFill m_fill;
    CPTPlotAreaFrame m_plotAreaFrame;
    QString m_title;
    CPTTextStyle m_titleTextStyle;
    QPointF m_titleDisplacement;
    CPTRectAnchor m_titleAnchor = CPTRectAnchor::Top;
    std::function<void()> m_needsDisplayHandler;
};

using CPTXYGraphPtr = std::shared_ptr<CPTXYGraph>;
