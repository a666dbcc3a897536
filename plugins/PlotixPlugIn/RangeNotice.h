#pragma once

#include "plugins/PlotixPlugIn/reading/OutsideLines.h"

#include <QtWidgets/QFrame>

class QLabel;
class QToolButton;

/// A line above the graph that names the lines its value range does not show, with a button that scales them.
///
/// It stands in the graph's outer margin, over nothing, and is hidden while there is nothing to tell. The view it
/// stands in *owns* it. Main thread only.
class RangeNotice : public QFrame {
    Q_OBJECT
public:
    explicit RangeNotice(QWidget* graphView);

    void tell(const plotix::OutsideLines& lines);
    QString text() const;
    QToolButton* button() const { return m_button; }

signals:
    void scalingRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    plotix::OutsideLines m_told;
    QLabel* m_label;        // a child
    QToolButton* m_button;  // a child
};
