#pragma once

#include "plugins/PlotixPlugIn/logic/PanelGeometry.h"

#include <QtCore/QObject>
#include <QtCore/QParallelAnimationGroup>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

/// Places the parts of a trend view: moves them to new frames in an animation, and when the view is resized.
///
/// There is no layout: one would undo the animation at the next resize. The parts are *weak*; a missing one is skipped.
/// Frames are remembered here, so that a part that someone else has moved comes back at the next resize, and a resize
/// during an animation changes where it ends. The plug-in *owns* it. Main thread only.
class TrendViewArrangement : public QObject {
    Q_OBJECT
public:
    struct Parts {
        QPointer<QWidget> panel;
        QPointer<QWidget> button;
        QPointer<QWidget> label;
        QPointer<QWidget> graph;
        QPointer<QWidget> dates;
        QPointer<QWidget> sharing;
    };
    enum class Fade { In, Out };

    static constexpr int kAnimationMilliseconds = 250;

    /// `size` is the parent's size for which the parts' present frames were made.
    TrendViewArrangement(Parts parts, const QSize& size, QObject* parent);

    int height() const { return m_size.height(); }
    /// Where the parts are now; an animation under way is brought to its end first.
    plotix::TrendViewFrames currentFrames();

    /// Moves button, label and graph to their new frames and fades the panel, all together and starting at once. The
    /// panel itself is hidden meanwhile, and stays so when faded out: it takes neither clicks nor the focus.
    void animateTo(const plotix::TrendViewFrames& frames, Fade fade);
    bool isAnimating() const { return m_animation; }

    void followSize(const QSize& newSize);
    /// Gives the date panel that height; the graph's upper edge moves along.
    void setDatesHeight(int height);

signals:
    void animationDidEnd(QObject* animation);

private:
    void finishAnimation();
    void addFade(Fade fade);
    void addMove(QWidget* part, const QRect& end);
    void endFade(Fade fade);
    void place(const plotix::TrendViewFrames& frames);
    void redirectAnimation(const QSize& oldSize, const QRect& oldPanel);
    void moveGraphsTop(int distance);

    Parts m_parts;
    QSize m_size;
    QPointer<QParallelAnimationGroup> m_animation;
    QPointer<QWidget> m_fadingImage;   ///< stands in for the panel during the animation; a child of its parent
    plotix::TrendViewFrames m_frames;  ///< where the parts belong, at the end of an animation under way
};
