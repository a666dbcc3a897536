#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtWidgets/QDateTimeEdit>

/// Told when Return or Enter is pressed in a date picker. Held *weakly* by the picker. Main thread only.
class DataClusterDatePickerReturnKeyNotification : public WeaklyReferenced {
public:
    virtual void returnKeyPressed(QObject* sender) = 0;
};

/// A date and time editor that keeps the exact date it was given beside the seconds it shows.
///
/// Setting a date notifies nobody; an edit by the user replaces the exact date with what is then shown and emits
/// `dateEdited`. A click selects what it falls on, day, month, hour …, so that typing replaces it. Shown in the user's
/// zone and locale, to the second. Its parent widget *owns* it. Main thread only.
class KTVDataClusterDatePicker : public QDateTimeEdit {
    Q_OBJECT
public:
    explicit KTVDataClusterDatePicker(QWidget* parent = nullptr);

    /// The exact date, to the bit, that was set or edited last.
    const plotix::OptionalDate& dateValue() const { return m_dateValue; }

    /// An absent date changes nothing, neither what is shown nor the value: there is always a range to read. A date the
    /// editor cannot show (before 1752, after 9999, not a number) is kept all the same; the editor shows the nearest it
    /// can, or what it showed before.
    void setDateValue(const plotix::OptionalDate& date);

    DataClusterDatePickerReturnKeyNotification* notifyReturnKeyDelegate() const { return m_returnKeyDelegate.get(); }
    void setNotifyReturnKeyDelegate(DataClusterDatePickerReturnKeyNotification* delegate)
    {
        m_returnKeyDelegate = delegate;
    }

signals:
    void dateEdited();

protected:
    /// Return and Enter go to the delegate and no farther; every other key edits.
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeEdit(const QDateTime& shown);

    plotix::OptionalDate m_dateValue;
    QDateTime m_shown;
    WeakReference<DataClusterDatePickerReturnKeyNotification> m_returnKeyDelegate;
};
