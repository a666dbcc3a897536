#pragma once

#include "base/Date.h"
#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtWidgets/QDateTimeEdit>

/// Told when Return or Enter is pressed in a date picker. Held *weakly* by the picker. Main thread only.
class DataClusterDatePickerReturnKeyNotification : public WeaklyReferenced {
public:
    virtual void returnKeyPressed(QObject* sender) = 0;
};

/// A date and time editor that keeps the exact date it was given beside the seconds it shows.
///
/// Setting a date notifies nobody; an edit by the user replaces the exact date and emits `dateEdited`. The text is
/// typed freely and read as people write dates (`logic/TypedDate.h`); what is not understood is marked and changes
/// nothing. A click selects the number it falls on, so that typing replaces it; the arrow keys and the wheel change the
/// part at the caret. One stop of the Tab key. Shown in the user's locale and, unless told otherwise, zone, to the
/// second. Its parent widget
/// *owns* it. Main thread only.
class KTVDataClusterDatePicker : public QDateTimeEdit {
    Q_OBJECT
public:
    /// What a day without a time stands for.
    enum class DayMeans { ItsStart, ItsEnd };

    explicit KTVDataClusterDatePicker(QWidget* parent = nullptr);

    /// The exact date, to the bit, that was set or edited last.
    const plotix::OptionalDate& dateValue() const { return m_dateValue; }

    /// An absent date changes nothing, neither what is shown nor the value: there is always a range to read. A date the
    /// editor cannot show (before 1752, after 9999, not a number) is kept all the same; the editor shows the nearest it
    /// can, or what it showed before.
    void setDateValue(const plotix::OptionalDate& date);

    /// The clock that is shown and typed by; the exact date stays.
    void setClock(const CPTClock& clock);

    void setDayMeans(DayMeans meaning) { m_dayMeans = meaning; }  ///< its start unless set

    /// Whether the text is understood as a date. False: it is marked, and the date is still the one before.
    bool isUnderstood() const { return m_text == Text::Understood; }

    DataClusterDatePickerReturnKeyNotification* notifyReturnKeyDelegate() const { return m_returnKeyDelegate.get(); }
    void setNotifyReturnKeyDelegate(DataClusterDatePickerReturnKeyNotification* delegate)
    {
        m_returnKeyDelegate = delegate;
    }

    void stepBy(int steps) override;

signals:
    void dateEdited();

protected:
    /// Return and Enter go to the delegate and no farther, unless the text is not understood; every other key edits.
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QString textFromDateTime(const QDateTime& dateTime) const override;
    QValidator::State validate(QString& text, int& position) const override;

private:
    QDateTime shownFor(const QDateTime& moment) const;
    QDateTime momentFor(const QDateTime& shown) const;
    void show(const QDateTime& moment);
    void takeMoment(const QDateTime& moment);
    void takeEdit(const QDateTime& shown);
    void takeText(const QString& text);
    void takeDay(const QDate& day);
    void followCalendar();
    void openCalendar();
    void endTyping();   ///< unless the text is not understood
    void dropTyping();  ///< shows the date again
    void takeBack();
    enum class Text { Understood, NotUnderstood, NoSuchDate };
    void markText(Text text);
    QString whyMarked() const;
    void tellWhy();
    void selectNumberAt(int position);
    int sectionAt(int position) const;

    plotix::OptionalDate m_dateValue;
    CPTClock m_clock;
    QDateTime m_shown;
    QDateTime m_shownBeforeTyping;  ///< what a text leaves out is taken from here
    plotix::OptionalDate m_dateBeforeTyping;
    DayMeans m_dayMeans = DayMeans::ItsStart;
    bool m_typing = false;  ///< the text is the user's, not ours
    Text m_text = Text::Understood;
    bool m_followsCalendar = false;
    WeakReference<DataClusterDatePickerReturnKeyNotification> m_returnKeyDelegate;
};
