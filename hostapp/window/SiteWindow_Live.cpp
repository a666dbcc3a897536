// Recording this computer, and following what is recorded.
//
// Rules of this room:
//  1. The switch shows what is, not what was asked for: a recording that could not begin leaves it off.
//  2. Following belongs to a trend, not to the window: the switch shows the selected trend's.
//  3. The recording goes on while the site is open and begins again with it; so does following.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/window/SiteRecording.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

void setChecked(QAction* action, bool checked)
{
    const QSignalBlocker silently(action);
    action->setChecked(checked);
}

}  // namespace

void SiteWindow::connectLiveActions()
{
    m_recording = std::make_unique<SiteRecording>(m_controller->siteDocument());
    TrendFollower* const follower = &m_controller->follower();
    connect(m_actions.recordComputer, &QAction::toggled, this, &SiteWindow::recordComputer);
    connect(m_recording.get(), &SiteRecording::agentAdded, this, &SiteWindow::addFirstLiveTrend);
    connect(m_recording.get(), &SiteRecording::messageChanged, this, [this] {
        statusBar()->showMessage(m_recording->message());
        setChecked(m_actions.recordComputer, m_recording->isOn());
    });
    connect(m_actions.follow, &QAction::toggled, this, [this, follower](bool on) {
        if (on)
            follower->follow(trendInFront());
        else
            follower->stopFollowing(trendInFront().get());
    });
    connect(follower, &TrendFollower::followingChanged, this, &SiteWindow::updateActions);
    m_controller->followAgain();
    if (m_recording->wasOn() && !m_controller->siteDocument()->isReadOnly())
        recordComputer(true);
}

void SiteWindow::recordComputer(bool on)
{
    try {
        if (on)
            m_recording->switchOn();
        else
            m_recording->switchOff();
    } catch (const ReportableError& error) {
        showAlert(tr("This computer is not recorded"), error.message());
    }
    setChecked(m_actions.recordComputer, m_recording->isOn());
}

void SiteWindow::addFirstLiveTrend(const std::shared_ptr<SiteAgent>& agent)
{
    m_controller->newTrend(agent, planFirstTrend(TrendOccasion::Watched, *agent));
}

void SiteWindow::updateLiveActions(const QString& noTrend)
{
    if (!m_recording)
        return;  // while the window is made or destroyed
    const KTVPlugInPtr plugIn = trendInFront();
    const bool readOnly = m_controller->siteDocument()->isReadOnly();
    m_actions.recordComputer->setToolTip(tr("Load, memory, disks, network and temperatures, every second."));
    setUnavailableReason(m_actions.recordComputer, readOnly ? tr("This site may only be looked at.") : QString());
    m_actions.follow->setToolTip(tr("Keeps the trend's span ending now, until you move it."));
    const bool possible = !plugIn || TrendFollower::canFollow(plugIn.get());
    setUnavailableReason(m_actions.follow, possible ? noTrend : tr("This view cannot do that."));
    setChecked(m_actions.recordComputer, m_recording->isOn());
    setChecked(m_actions.follow, m_controller->follower().isFollowing(plugIn.get()));
}

}  // namespace plotix
