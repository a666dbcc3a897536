#include "hostapp/window/SiteRecording.h"

namespace plotix {

namespace {
constexpr auto kRecordingKey = "recordThisComputer";  // stored: never change
}

SiteRecording::SiteRecording(std::shared_ptr<SiteDocument> document, MakeRecorder makeRecorder)
    : m_document(std::move(document)), m_makeRecorder(std::move(makeRecorder))
{
}

SiteRecording::~SiteRecording() = default;

std::unique_ptr<LiveRecorder> SiteRecording::makeSystemRecorder(const QString& site)
{
    return std::make_unique<LiveRecorder>(site);
}

bool SiteRecording::wasOn() const
{
    return m_document->setting(QLatin1String(kRecordingKey)) == "1";
}

void SiteRecording::switchOn()
{
    if (m_recorder)
        return;
    const bool isNew = !m_document->agentNamed(QLatin1String(kMachineAgentName));
    std::unique_ptr<LiveRecorder> recorder = m_makeRecorder(m_document->path());
    m_document->reload();
    remember(true);
    m_recorder = std::move(recorder);
    connect(m_recorder.get(), &LiveRecorder::statusChanged, this, &SiteRecording::messageChanged);
    m_recorder->start();
    const std::shared_ptr<SiteAgent> agent = m_document->agentNamed(QLatin1String(kMachineAgentName));
    if (isNew && agent)
        emit agentAdded(agent);
}

void SiteRecording::switchOff()
{
    m_recorder.reset();
    remember(false);
}

void SiteRecording::remember(bool on)
{
    if (wasOn() != on)
        m_document->setSetting(QLatin1String(kRecordingKey), on ? "1" : "0");
}

QString SiteRecording::message() const
{
    return m_recorder ? m_recorder->status().message : QString();
}

}  // namespace plotix
