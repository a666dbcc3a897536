#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "tests/support/fakehost/FakeAgent.h"
#include "tests/support/fakehost/FakeBundle.h"
#include "tests/support/fakehost/FakeCoder.h"
#include "tests/support/fakehost/FakeDateCreator.h"
#include "tests/support/fakehost/FakeMessageViewController.h"
#include "tests/support/fakehost/FakeSiteWindow.h"
#include "tests/support/fakehost/FakeUserInterface.h"
#include "tests/support/fakehost/RecordBuilder.h"

/// A complete host in memory. Make one per test, as the first member of the fixture, so that it outlives every plug-in.
///
/// Installs itself as the host's services, and restores those installed before when it is destroyed. The agent has no
/// properties at first, its identifier is "agent-1", and its archive manager leaves every fetch open. Main thread only.
namespace fakehost {

class FakeHost {
public:
    FakeHost();
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    CallLog& log() { return m_log; }
    const std::shared_ptr<FakeAgent>& agent() const { return m_agent; }
    FakeArchiveManager& archiveManager() { return *m_agent->archiveManager(); }
    FakeSiteWindowController& siteWindowController() { return m_siteWindowController; }
    FakeUserInterface& userInterface() { return m_userInterface; }
    FakeDateCreator& dateCreator() { return m_dateCreator; }
    FakeBundle& bundle() { return m_bundle; }
    /// The shared print settings: Letter at first, everything else as made.
    KTVPrintInfo& printInfo() { return m_printInfo; }
    const std::shared_ptr<const FakeUnitModel>& units() const { return m_units; }

    /// A property of the agent, its key the camel-case form of the name.
    FakePropertyPtr addProperty(const QString& name, const QString& unit, const QColor& color = Qt::red);

    RecordBuilder records() const { return RecordBuilder(m_agent, m_units); }

    /// Every later fetch is answered from these records, as an archive holding them would.
    void serve(const RecordBuilder& records, FakeArchiveManager::Where where = FakeArchiveManager::Where::OnThisThread);

    /// The overlay made last; null before the first, and once its owner has destroyed it.
    FakeMessageViewController* lastMessageViewController() const { return *m_lastMessageViewController; }
    /// The message that overlay shows now; null text for none.
    QString shownMessage() const;

    /// Runs what waits in the main queue at this moment. Requires: not inside a task of the queue.
    static void drainMainQueue();

    /// A decoder whose names lead to this host's agent and site window. The archive is borrowed.
    FakeDecoder decoder(const FakeArchive& archive) { return {archive, m_agent, &m_siteWindowController}; }

private:
    std::unique_ptr<KTVMessageViewController> makeMessageViewController();

    CallLog m_log;
    std::shared_ptr<const FakeUnitModel> m_units;
    std::shared_ptr<FakeAgent> m_agent;
    FakeSiteWindowController m_siteWindowController;
    FakeUserInterface m_userInterface;
    FakeDateCreator m_dateCreator;
    FakeBundle m_bundle;
    FakeHelpManager m_helpManager;
    KTVPrintInfo m_printInfo;
    FakeMessageViewController::Slot m_lastMessageViewController = std::make_shared<FakeMessageViewController*>(nullptr);
    KTVHostServices m_previousServices;
};

}  // namespace fakehost
