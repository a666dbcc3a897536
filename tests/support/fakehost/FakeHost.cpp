#include "tests/support/fakehost/FakeHost.h"

#include "base/MainQueue.h"

#include <QtCore/QCoreApplication>

namespace fakehost {

FakeHost::FakeHost()
    : m_units(std::make_shared<FakeUnitModel>()),
      m_agent(std::make_shared<FakeAgent>(QStringLiteral("agent-1"), m_units, &m_log)),
      m_siteWindowController(m_agent, &m_log),
      m_userInterface(&m_log),
      m_dateCreator(&m_log),
      m_helpManager(&m_log)
{
    m_agent->setSiteWindowController(&m_siteWindowController);
    m_printInfo.setPaperSize({612, 792});
    KTVHostServices services;
    services.makeMessageViewController = [this] { return makeMessageViewController(); };
    services.helpManager = &m_helpManager;
    services.dateCreator = &m_dateCreator;
    services.mainBundle = &m_bundle;
    services.userInterface = &m_userInterface;
    services.printInfo = &m_printInfo;
    m_previousServices = KTVHostServices::install(services);
}

FakeHost::~FakeHost()
{
    m_agent->setSiteWindowController(nullptr);
    KTVHostServices::install(m_previousServices);
}

FakePropertyPtr FakeHost::addProperty(const QString& name, const QString& unit, const QColor& color)
{
    return m_agent->addProperty({.name = name, .unit = unit, .color = color});
}

void FakeHost::serve(const RecordBuilder& records, FakeArchiveManager::Where where)
{
    archiveManager().answerFetchesWith(
        [records](const FakeArchiveManager::Fetch& fetch) { return records.answer(fetch); }, where);
}

void FakeHost::drainMainQueue()
{
    bool reached = false;
    plotix::MainQueue::main().async([&reached] { reached = true; });
    while (!reached)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

QString FakeHost::shownMessage() const
{
    const FakeMessageViewController* last = lastMessageViewController();
    return last ? last->shownMessage() : QString();
}

std::unique_ptr<KTVMessageViewController> FakeHost::makeMessageViewController()
{
    return std::make_unique<FakeMessageViewController>(&m_log, m_lastMessageViewController);
}

}  // namespace fakehost
