#pragma once

#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"

#include <QtWidgets/QLabel>

/// The message over a view: one centred text on a rounded, translucent background.
///
/// *Owns* its label, unless the view it lies on is deleted first and takes the label along; the next message then makes
/// a new one. The label lets the mouse through, so that the graph under it can still be zoomed. Main thread only.
namespace plotix {

class MessageLabel : public QLabel {
    Q_OBJECT
public:
    MessageLabel();

    /// Takes its place in the middle of the view it lies on; without one nothing happens.
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
    QWidget* view() const override { return m_label; }  ///< null after the covered view took it along

private:
    QPointer<MessageLabel> m_label;
};

}  // namespace plotix
