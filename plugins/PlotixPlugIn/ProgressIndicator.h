#pragma once

#include <QtCore/QBasicTimer>
#include <QtWidgets/QWidget>

/// A small spinning wheel that says "something is under way". Its parent widget *owns* it. Main thread only.
///
/// Turns only while animated and visible; takes its colour from the palette's text.
class ProgressIndicator : public QWidget {
    Q_OBJECT
public:
    explicit ProgressIndicator(QWidget* parent = nullptr);

    void startAnimation();  ///< already turning: nothing happens
    void stopAnimation();   ///< standing still: nothing happens
    bool isAnimating() const { return m_animating; }

    QSize sizeHint() const override { return {18, 18}; }

signals:
    void animatingChanged(bool animating);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void turnWhileNeeded();

    QBasicTimer m_timer;
    int m_step = 0;  ///< twelfths of a turn
    bool m_animating = false;
};
