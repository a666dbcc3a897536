#pragma once

#include "plotkit/model/CPTClock.h"

#include <QtWidgets/QDialog>

class QDialogButtonBox;
class QLineEdit;

/// Asks for a time, typed as people type it. Deletes itself when it is closed; its parent *owns* it. Main thread only.
namespace plotix {

class TimeDialog : public QDialog {
    Q_OBJECT
public:
    /// Shows `time` (seconds since 1970-01-01 UTC); what is typed without a day is taken to be on its day.
    /// Both by the clock.
    TimeDialog(const QString& title, double time, const CPTClock& clock, QWidget* parent);

signals:
    void timeGiven(double time);

private:
    void take();
    void judge();

    double m_shown;
    CPTClock m_clock;
    QLineEdit* m_field;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
