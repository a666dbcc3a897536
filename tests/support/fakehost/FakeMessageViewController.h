#pragma once

#include "plugins/PlotixPlugIn/host/PlainMessageViewController.h"
#include "tests/support/fakehost/CallLog.h"

#include <QtCore/QStringList>

/// A message overlay that shows a real label and remembers what it was asked to show.
///
/// Whoever asked for it *owns* it, as with a real one; the host knows its overlays only *weakly*. Main thread only.
namespace fakehost {

class FakeMessageViewController : public PlainMessageViewController {
public:
    /// Where its maker finds it while it lives; empty afterwards.
    using Slot = std::shared_ptr<FakeMessageViewController*>;

    FakeMessageViewController(CallLog* log, Slot slot);
    ~FakeMessageViewController() override;

    void centerOnView(QWidget* view, const QString& message) override;

    const QStringList& messages() const { return m_messages; }  ///< every one ever asked for
    /// The message that lies over a view now; null text when none does.
    QString shownMessage() const;
    QWidget* coveredView() const;  ///< null when no message lies over a view

private:
    CallLog* m_log;  // borrowed
    Slot m_slot;     // shared with the maker
    QStringList m_messages;
};

}  // namespace fakehost
