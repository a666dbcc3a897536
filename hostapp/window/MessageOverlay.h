#pragma once

#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"

#include <QtWidgets/QLabel>

/// The message over a view: one centred text on a rounded, translucent background.
///
/// *Owns* its label, unless the view under it is deleted first, with the label; the next message then makes a new one.
/// The label lets the mouse through, so that the graph under it can still be zoomed. Main thread only.
namespace plotix {

class MessageLabel : public QLabel {
    Q_OBJECT
public:
    MessageLabel();

    /// Moves to the middle of the view under it; without one nothing happens.
    void centre();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    QPointer<QWidget> m_followed;  // weak; the view whose size it follows
};

class MessageOverlay : public KTVMessageViewController {
public:
    MessageOverlay();
    ~MessageOverlay() override;

    void centerOnView(QWidget* view, const QString& message) override;
    QWidget* view() const override { return m_label; }  ///< null after the covered view was deleted

private:
    QPointer<MessageLabel> m_label;
};

}  // namespace plotix
