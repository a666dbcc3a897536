#pragma once

#include "hostapp/window/SiteActions.h"
#include "hostapp/window/SiteWindowController.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace plotix {

class RecordingIndicator;
class SiteRecording;

/// The switches of a site window for recording this computer and following what is recorded, and the indicator that
/// says since when.
///
/// A switch shows what is, not what was asked for: a recording that could not begin leaves it off. Following belongs to
/// a trend, not to the window: its switches show that of the trend in front. The recording goes on while the site is
/// open and begins again with it; so does following. The window *owns* it; it *borrows* controller, actions and
/// indicator, and must end before the controller. Main thread only.
class LiveControls : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        SiteWindowController& controller;
        const SiteActions& actions;
        std::function<KTVPlugInPtr()> trendInFront;  ///< the one that the menus act on; null: none
        QWidget* window;                             ///< asks in it, and *owns* the indicator
    };
    explicit LiveControls(const Surroundings& surroundings);
    ~LiveControls() override;

    RecordingIndicator* indicator() const { return m_indicator; }
    bool isRecording() const;
    /// Follows and records again what the site remembers. To be called once, when the signals are connected.
    void beginAgain();
    /// Asks whether recording may end with the window; without a recording, yes.
    bool mayEnd();
    /// `noTrend`: why nothing can be done with a trend; empty where there is one.
    void update(const QString& noTrend);

signals:
    void switched();          ///< the recording, on or off
    void followingChanged();  ///< of any trend
    void told(const QString& message);
    void failed(const QString& message, const QString& text);

private:
    void connectActions();
    void record(bool on);
    void follow(const QAction& span);
    void addFirstTrend(const std::shared_ptr<SiteAgent>& agent);

    Surroundings m_around;
    std::unique_ptr<SiteRecording> m_recording;
    RecordingIndicator* m_indicator;
};

}  // namespace plotix
