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
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/RecordingIndicator.h"
#include "hostapp/window/SiteRecording.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

constexpr auto kBrokenLines = "brokenLines";  // an option of a trend's reading

void setChecked(QAction* action, bool checked)
{
    const QSignalBlocker silently(action);
    action->setChecked(checked);
}

}  // namespace

void SiteWindow::connectLiveActions()
{
    m_recording = std::make_unique<SiteRecording>(m_controller->siteDocument());
    m_recordingIndicator = new RecordingIndicator(m_recording.get(), this);
    statusBar()->addPermanentWidget(m_recordingIndicator);
    m_recordingIndicator->hide();  // adding it to the status bar has shown it
    connect(m_recording.get(), &SiteRecording::switched, this, &SiteWindow::showStatusBarIfNeeded);
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
    connect(m_actions.breakLines, &QAction::toggled, this, [this](bool on) {
        setReading(trendInFront().get(), {{QLatin1String(kBrokenLines), on}});
    });
    connect(m_actions.followSpans, &QActionGroup::triggered, this, &SiteWindow::follow);
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

bool SiteWindow::mayEndRecording()
{
    if (!m_asksBeforeClosing || !isVisible() || !m_recording || !m_recording->isOn())
        return true;
    QMessageBox box(this);
    box.setObjectName(QStringLiteral("endRecording"));
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::PlainText);
    box.setText(tr("This computer is being recorded"));
    box.setInformativeText(tr("%1. Recording ends when the window closes, and goes on when the site is opened again.")
                               .arg(m_recordingIndicator->text()));
    const QPushButton* end = box.addButton(tr("&Close and End Recording"), QMessageBox::AcceptRole);
    box.addButton(tr("&Keep Recording"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == end;
}

void SiteWindow::follow(QAction* span)
{
    const KTVPlugInPtr plugIn = trendInFront();
    if (span->isChecked())
        m_controller->follower().follow(plugIn, *followSpanNamed(span->data().toString()));
    else
        m_controller->follower().stopFollowing(plugIn.get());
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
    const QString reason = possible ? noTrend : tr("This view cannot do that.");
    setUnavailableReason(m_actions.follow, reason);
    const std::optional<FollowSpan> followed = m_controller->follower().followedSpan(plugIn.get());
    for (QAction* span : m_actions.followSpans->actions()) {
        setUnavailableReason(span, reason);
        setChecked(span, followed && span->data().toString() == followSpanName(*followed));
    }
    setChecked(m_actions.recordComputer, m_recording->isOn());
    const std::optional<QVariantMap> options = reading(plugIn.get());
    setUnavailableReason(m_actions.breakLines, options || !plugIn ? noTrend : tr("This view cannot do that."));
    setChecked(m_actions.breakLines, options && options->value(QLatin1String(kBrokenLines)).toBool());
    setChecked(m_actions.follow, m_controller->follower().isFollowing(plugIn.get()));
}

}  // namespace plotix
