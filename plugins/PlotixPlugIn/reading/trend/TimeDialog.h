#pragma once

#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtWidgets/QDialog>

#include <optional>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a time, typed as people type it, and says what the text is taken for. Deletes itself when it is closed; its
/// parent *owns* it. Main thread only.
namespace plotix {

class TimeDialog : public QDialog {
    Q_OBJECT
public:
    /// Shows `time` (seconds since 1970-01-01 UTC); what is typed without a day is taken to be on its day.
    /// Both by the clock.
    TimeDialog(const QString& title, double time, const CPTClock& clock, QWidget* parent);

    /// From the first to the last record. A time outside is not given: the dialog says so, and offers the nearest end.
    void setRecorded(const TimeSpan& recorded);

signals:
    void timeGiven(double time);

private:
    void take();
    void judge();
    std::optional<double> typed() const;
    std::optional<double> nearestEnd(double time) const;  ///< nothing for a time within what is recorded
    QString meaningOf(double time) const;

    double m_shown;
    CPTClock m_clock;
    QLineEdit* m_field;
    QLabel* m_meaning;
    QDialogButtonBox* m_buttons;
    QPushButton* m_toEnd;  // in the place of OK
    std::optional<TimeSpan> m_recorded;
};

}  // namespace plotix
