#include "hostapp/window/SiteRecording.h"

#include "hostapp/live/sources/ReadingSources.h"

namespace plotix {

namespace {
constexpr auto kRecordingKey = "recordThisComputer";  // stored: never change
}

SiteRecording::SiteRecording(std::shared_ptr<SiteDocument> document, MakeSource makeSource)
    : m_document(std::move(document)), m_makeSource(std::move(makeSource))
{
}

SiteRecording::~SiteRecording() = default;

std::unique_ptr<ReadingSource> SiteRecording::makeComputer()
{
    return makeReadingSource(QStringLiteral("computer"));
}

bool SiteRecording::isOn() const
{
    return m_recorder && m_recorder->status().state != RecordingStatus::State::SiteReplaced;
}

bool SiteRecording::wasOn() const
{
    return m_document->setting(QLatin1String(kRecordingKey)) == "1";
}

void SiteRecording::switchOn()
{
    if (m_recorder)
        return;
    std::unique_ptr<ReadingSource> source = m_makeSource();
    const QString agentName = source->agentName();
    const bool isNew = !m_document->agentNamed(agentName);
    auto recorder = std::make_unique<LiveRecorder>(m_document->path(), std::move(source));
    m_document->reload();
    remember(true);
    m_recorder = std::move(recorder);
    connect(m_recorder.get(), &LiveRecorder::statusChanged, this, &SiteRecording::messageChanged);
    connect(m_recorder.get(), &LiveRecorder::recorded, this, &SiteRecording::progressed);
    connect(m_recorder.get(), &LiveRecorder::waitingChanged, this, &SiteRecording::progressed);
    m_since = QDateTime::currentDateTime();
    m_recorder->start();
    emit switched();
    const std::shared_ptr<SiteAgent> agent = m_document->agentNamed(agentName);
    if (isNew && agent)
        emit agentAdded(agent);
}

void SiteRecording::switchOff()
{
    m_recorder.reset();
    m_since = {};
    remember(false);
    emit switched();
}

void SiteRecording::remember(bool on)
{
    if (wasOn() != on)
        m_document->setSetting(QLatin1String(kRecordingKey), on ? "1" : "0");
}

std::size_t SiteRecording::stored() const
{
    return m_recorder ? m_recorder->status().stored : 0;
}

std::size_t SiteRecording::onDisk() const
{
    return m_recorder ? m_recorder->status().onDisk : 0;
}

QString SiteRecording::message() const
{
    return m_recorder ? m_recorder->status().message : QString();
}

}  // namespace plotix
