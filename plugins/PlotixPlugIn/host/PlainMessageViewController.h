#pragma once

#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"

/// A message as a plain label, centred over a view and staying there when the view is resized.
///
/// *Owns* the label, unless the covered view is deleted first and takes it along; the next message makes a new one.
/// Main thread only.
class KTVHOST_EXPORT PlainMessageViewController : public KTVMessageViewController {
public:
    PlainMessageViewController();
    ~PlainMessageViewController() override;

    void centerOnView(QWidget* view, const QString& message) override;
    QWidget* view() const override { return m_label; }

private:
    class Label;
    QPointer<QWidget> m_label;  // a Label
};
