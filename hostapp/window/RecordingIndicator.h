#pragma once

#include <QtCore/QDateTime>
#include <QtWidgets/QWidget>

class QLabel;

namespace plotix {

class SiteRecording;

/// Says in the status bar that this computer is recorded, since when, and how many records are stored. Hidden while
/// nothing is recorded. *Borrows* the recording. Main thread only.
class RecordingIndicator : public QWidget {
    Q_OBJECT
public:
    explicit RecordingIndicator(SiteRecording* recording, QWidget* parent = nullptr);

    QString text() const;  ///< empty while nothing is recorded

private:
    void showStatus();

    SiteRecording* m_recording;
    QLabel* m_text;
};

/// "14:02" of today, with the date on other days, in the user's locale.
QString shortMoment(const QDateTime& moment, const QDateTime& now);

}  // namespace plotix
