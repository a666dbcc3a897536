#pragma once

#include "plugins/PlotixPlugIn/reading/overview/OverviewLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <memory>
#include <optional>

class CPTGraphHostingView;
class QMouseEvent;
class QWheelEvent;

/// An overview below the graph: everything that was fetched, and a window on what is shown.
///
/// Choices: "shown", a truth. The window is dragged, its edges too; a drag elsewhere draws another one, a click brings
/// it there, the wheel makes it narrower or wider, a double click shows everything. Part of a trend's reading, which
/// *owns* it. Main thread only.
namespace plotix {

class Overview : public ReadingPart {
    Q_OBJECT
public:
    explicit Overview(ReadTrend& trend);
    ~Overview() override;

    QString key() const override { return QStringLiteral("overview"); }  // stored: never changes
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    bool pointerActed(QEvent& event) override;
    void graphBuilt() override { attach(); }
    void graphReleased() override { detach(); }
    void plotsReplaced() override { takeLines(); }
    void fitted() override { takeLines(); }
    void linesChanged() override { takeLines(); }
    void rangeSet(CPTCoordinate coordinate) override;
    void clockSet() override;
    std::vector<QAction*> actions() const override { return {m_action}; }

private:
    struct Drag {
        OverviewWindow window;  ///< as it was when the drag began
        OverviewWindow::Grip grip;
        double fromX;
        bool hasMoved = false;
    };

    void setShown(bool shown);
    void attach();
    void detach();
    void takeLines();
    std::optional<OverviewWindow> window() const;
    std::optional<OverviewWindow> windowAt(const QPointF& point) const;  ///< if the point is in its strip
    bool press(const QMouseEvent& event);
    bool moveTo(const QPointF& point);
    bool release();
    bool wheel(const QWheelEvent& event);
    void hover(const QPointF& point);

    PartLayer<OverviewLayer> m_layer;
    std::optional<Drag> m_drag;
    bool m_shown = false;
    bool m_hasCursor = false;
    QAction* m_action;  // a child
};

}  // namespace plotix
