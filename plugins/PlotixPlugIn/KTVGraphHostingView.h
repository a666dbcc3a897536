#pragma once

#include "plotkit/widget/CPTGraphHostingView.h"

/// What a graph's hosting view asks for when a key is pressed. *Borrowed* by the view. Main thread only.
class KTVGraphHostingViewKeyDelegate {
public:
    virtual ~KTVGraphHostingViewKeyDelegate() = default;
    virtual void refreshPlot() = 0;
};

/// The trend view's graph area: a hosting view whose key "r" asks the key delegate to refresh.
///
/// The root view *owns* it. The key delegate is *borrowed*: it must set itself back to null before it is destroyed.
/// Main thread only.
class KTVGraphHostingView : public CPTGraphHostingView {
    Q_OBJECT
public:
    explicit KTVGraphHostingView(QWidget* parent = nullptr);

    bool acceptsFirstResponder() const override { return true; }

    KTVGraphHostingViewKeyDelegate* keyDelegate() const { return m_keyDelegate; }
    void setKeyDelegate(KTVGraphHostingViewKeyDelegate* delegate) { m_keyDelegate = delegate; }

protected:
    /// The first character decides: "r", lower case only. Every other key, and one without characters, is the base's.
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    KTVGraphHostingViewKeyDelegate* m_keyDelegate = nullptr;  // borrowed
};
