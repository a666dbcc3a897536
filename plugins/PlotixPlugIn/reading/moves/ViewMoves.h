#pragma once

#include "plugins/PlotixPlugIn/reading/moves/GraphGestures.h"
#include "plugins/PlotixPlugIn/reading/moves/RangeHistory.h"
#include "plugins/PlotixPlugIn/reading/moves/ViewBounds.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QTimer>

#include <vector>

/// Moving about in a trend: back and forward among the views looked at, fitting values to the times shown, and more
/// gestures.
///
/// Choices, truths both: "gestures", whether pointer and wheel do more than the contract's, see GraphGestures, and
/// "bounded", whether the view stays where records can be, see ViewBounds. A view counts as looked at once it has
/// rested; a trend that moves by itself, as one that is followed, adds none. The trend's reader *owns* it. Main thread
/// only.
namespace plotix {

class ViewMoves : public ReadingPart {
    Q_OBJECT
public:
    explicit ViewMoves(ReadTrend& trend);

    QString key() const override { return QStringLiteral("moves"); }
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    bool pointerActed(QEvent& event) override;
    void graphBuilt() override { m_bounds.watchSpaces(); }
    void graphReleased() override { m_rest.stop(); }
    void plotsReplaced() override { m_bounds.watchSpaces(); }
    void linesChanged() override { m_bounds.watchSpaces(); }
    void fitted() override;
    void rangeSet(CPTCoordinate coordinate) override;
    std::vector<QAction*> actions() const override { return m_actions; }

    void goBack();
    void goForward();
    /// The view as it is counts as looked at now; for whoever cannot wait until it has rested.
    void settle();

private:
    QVariantMap presentView() const;
    void show(const std::optional<QVariantMap>& view);
    void updateActions();
    void toggleBounds();
    QAction* addAction(const char* text, const QKeySequence& keys, void (ViewMoves::*act)());
    void fitValues();
    void fitAll() { trend().fit(); }
    void zoomToBox() { m_gestures.zoomByNextDrag(); }

    GraphGestures m_gestures;
    ViewBounds m_bounds;
    RangeHistory m_history;
    QTimer m_rest;
    bool m_isGoing = false;  // back or forward
    std::vector<QAction*> m_actions;
    QAction* m_back = nullptr;  // a child, as those below
    QAction* m_forward = nullptr;
    QAction* m_bounded = nullptr;
};

}  // namespace plotix
