#include "hostapp/window/LiveControls.h"

#include "base/ReportableError.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/RecordingIndicator.h"
#include "hostapp/window/SiteRecording.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace plotix {

namespace {

constexpr auto kBrokenLines = "brokenLines";  // an option of a trend's reading

void setChecked(QAction* action, bool checked)
{
    const QSignalBlocker silently(action);
    action->setChecked(checked);
}

}  // namespace

LiveControls::LiveControls(const Surroundings& surroundings)
    : m_around(surroundings),
      m_recording(std::make_unique<SiteRecording>(surroundings.controller.siteDocument())),
      m_indicator(new RecordingIndicator(m_recording.get(), surroundings.window))
{
    connect(m_recording.get(), &SiteRecording::switched, this, &LiveControls::switched);
    connect(m_recording.get(), &SiteRecording::agentAdded, this, &LiveControls::addFirstTrend);
    connect(m_recording.get(), &SiteRecording::messageChanged, this, [this] {
        emit told(m_recording->message());
        setChecked(m_around.actions.recordComputer, m_recording->isOn());
    });
    connectActions();
}

LiveControls::~LiveControls() = default;

void LiveControls::connectActions()
{
    const SiteActions& actions = m_around.actions;
    TrendFollower* const follower = &m_around.controller.follower();
    connect(actions.recordComputer, &QAction::toggled, this, &LiveControls::record);
    connect(actions.follow, &QAction::toggled, this, [this, follower](bool on) {
        if (on)
            follower->follow(m_around.trendInFront());
        else
            follower->stopFollowing(m_around.trendInFront().get());
    });
    connect(actions.breakLines, &QAction::toggled, this, [this](bool on) {
        setReading(m_around.trendInFront().get(), {{QLatin1String(kBrokenLines), on}});
    });
    connect(actions.followSpans, &QActionGroup::triggered, this, [this](const QAction* span) { follow(*span); });
    connect(follower, &TrendFollower::followingChanged, this, &LiveControls::followingChanged);
}

void LiveControls::beginAgain()
{
    m_around.controller.followAgain();
    if (m_recording->wasOn() && !m_around.controller.siteDocument()->isReadOnly())
        record(true);
}

bool LiveControls::isRecording() const
{
    return m_recording->isOn();
}

void LiveControls::record(bool on)
{
    try {
        if (on)
            m_recording->switchOn();
        else
            m_recording->switchOff();
    } catch (const ReportableError& error) {
        emit failed(tr("This computer is not recorded"), error.message());
    }
    setChecked(m_around.actions.recordComputer, m_recording->isOn());
}

bool LiveControls::mayEnd()
{
    if (!m_recording->isOn())
        return true;
    QMessageBox box(m_around.window);
    box.setObjectName(QStringLiteral("endRecording"));
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::PlainText);
    box.setText(tr("This computer is being recorded"));
    box.setInformativeText(tr("%1. Recording ends when the window closes, and goes on when the site is opened again.")
                               .arg(m_indicator->text()));
    const QPushButton* end = box.addButton(tr("&Close and End Recording"), QMessageBox::AcceptRole);
    box.addButton(tr("&Keep Recording"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == end;
}

void LiveControls::follow(const QAction& span)
{
    const KTVPlugInPtr plugIn = m_around.trendInFront();
    if (span.isChecked())
        m_around.controller.follower().follow(plugIn, *followSpanNamed(span.data().toString()));
    else
        m_around.controller.follower().stopFollowing(plugIn.get());
}

void LiveControls::addFirstTrend(const std::shared_ptr<SiteAgent>& agent)
{
    m_around.controller.newTrend(agent, planFirstTrend(TrendOccasion::Watched, *agent));
}

void LiveControls::update(const QString& noTrend)
{
    const SiteActions& actions = m_around.actions;
    const KTVPlugInPtr plugIn = m_around.trendInFront();
    TrendFollower& follower = m_around.controller.follower();
    const bool readOnly = m_around.controller.siteDocument()->isReadOnly();
    actions.recordComputer->setToolTip(tr("Load, memory, disks, network and temperatures, every second."));
    setUnavailableReason(actions.recordComputer, readOnly ? tr("This site may only be looked at.") : QString());
    actions.follow->setToolTip(tr("Keeps the trend's span ending now, until you move it."));
    const bool possible = !plugIn || TrendFollower::canFollow(plugIn.get());
    const QString reason = possible ? noTrend : tr("This view cannot do that.");
    setUnavailableReason(actions.follow, reason);
    const std::optional<FollowSpan> followed = follower.followedSpan(plugIn.get());
    for (QAction* span : actions.followSpans->actions()) {
        setUnavailableReason(span, reason);
        setChecked(span, followed && span->data().toString() == followSpanName(*followed));
    }
    setChecked(actions.recordComputer, m_recording->isOn());
    const std::optional<QVariantMap> options = reading(plugIn.get());
    setUnavailableReason(actions.breakLines, options || !plugIn ? noTrend : tr("This view cannot do that."));
    setChecked(actions.breakLines, options && options->value(QLatin1String(kBrokenLines)).toBool());
    setChecked(actions.follow, follower.isFollowing(plugIn.get()));
}

}  // namespace plotix
