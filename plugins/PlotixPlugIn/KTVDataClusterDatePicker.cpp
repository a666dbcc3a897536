#include "plugins/PlotixPlugIn/KTVDataClusterDatePicker.h"

#include "base/WholeDay.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyleOption>

#include <cmath>

namespace {

/// Beyond what any editor shows; keeps the conversion to milliseconds inside 64 bits.
constexpr double kFarthestSeconds = 1e15;

plotix::Date dateOf(const QDateTime& moment)
{
    return {static_cast<double>(moment.toMSecsSinceEpoch()) / 1000.0};
}

/// The locale's own order of day, month and year, with four digits of the year and seconds of the time.
QString displayFormatFor(const QLocale& locale, const CPTClock& clock)
{
    QString dateFormat = locale.dateFormat(QLocale::ShortFormat);
    if (!dateFormat.contains(QLatin1String("yyyy")))
        dateFormat.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    QString timeFormat = locale.timeFormat(QLocale::ShortFormat);
    if (!timeFormat.contains(QLatin1String("ss")))
        timeFormat.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return dateFormat + QLatin1Char(' ') + plotix::formatBy(clock, timeFormat);
}

/// One part moved on; what it carries over goes to the others, so that the day after the 31st is the first.
QDateTime stepped(const QDateTime& moment, QDateTimeEdit::Section section, int steps)
{
    switch (section) {
    case QDateTimeEdit::YearSection: return moment.addYears(steps);
    case QDateTimeEdit::MonthSection: return moment.addMonths(steps);
    case QDateTimeEdit::HourSection: return moment.addSecs(3600 * qint64{steps});
    case QDateTimeEdit::MinuteSection: return moment.addSecs(60 * qint64{steps});
    case QDateTimeEdit::SecondSection: return moment.addSecs(steps);
    case QDateTimeEdit::AmPmSection: return moment.addSecs(12 * 3600 * qint64{steps});
    default: return moment.addDays(steps);
    }
}

/// The parts of a shown date: its numbers and words, in order.
QRegularExpressionMatchIterator partsOf(const QString& text)
{
    static const QRegularExpression part(QStringLiteral("\\w+"), QRegularExpression::UseUnicodePropertiesOption);
    return part.globalMatch(text);
}

}  // namespace

KTVDataClusterDatePicker::KTVDataClusterDatePicker(QWidget* parent) : QDateTimeEdit(parent)
{
    setCalendarPopup(true);
    setDisplayFormat(displayFormatFor(locale(), m_clock));
    m_shown = dateTime();
    // The toolkit's own editing takes a date part by part and refuses what does not fit the part at the caret: "1.2."
    // typed over the whole becomes something else. Its line is let go from it, and what is typed is read as a whole.
    disconnect(lineEdit(), nullptr, this, nullptr);
    lineEdit()->setValidator(nullptr);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, &KTVDataClusterDatePicker::takeText);
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &KTVDataClusterDatePicker::takeEdit);
}

void KTVDataClusterDatePicker::setDateValue(const plotix::OptionalDate& date)
{
    if (!date)
        return;
    m_dateValue = date;
    dropTyping();
    if (std::isnan(date->seconds))
        return;
    const QSignalBlocker silence(this);
    if (date->seconds <= -kFarthestSeconds)
        setDateTime(minimumDateTime());
    else if (date->seconds >= kFarthestSeconds)
        setDateTime(maximumDateTime());
    else
        show(plotix::momentBy(m_clock, date->seconds));
    m_shown = dateTime();
}

void KTVDataClusterDatePicker::setClock(const CPTClock& clock)
{
    m_clock = clock;
    const QSignalBlocker silence(this);
    setTimeSpec(clock.zone.isValid() ? Qt::UTC : Qt::LocalTime);
    setDisplayFormat(displayFormatFor(locale(), clock));
    m_shown = dateTime();
    setDateValue(plotix::OptionalDate(m_dateValue));
    const QString zone = QString::fromUtf8(clock.zone.id());
    setToolTip(zone);
    setAccessibleDescription(zone);
}

// The toolkit's editor knows the user's zone and UTC. The clock of another zone is shown in it as though it were UTC's.
QDateTime KTVDataClusterDatePicker::shownFor(const QDateTime& moment) const
{
    if (!m_clock.zone.isValid())
        return moment;
    const QDateTime local = moment.toTimeZone(m_clock.zone);
    return QDateTime(local.date(), local.time(), Qt::UTC);
}

QDateTime KTVDataClusterDatePicker::momentFor(const QDateTime& shown) const
{
    if (!m_clock.zone.isValid())
        return shown;
    const double local = static_cast<double>(shown.toMSecsSinceEpoch()) / 1000.0;
    return plotix::momentBy(m_clock, plotkit::momentOfLocal(m_clock.zone, local));
}

/// The editor reports a programmatic change like an edit; this one is not reported.
void KTVDataClusterDatePicker::show(const QDateTime& moment)
{
    const QSignalBlocker silence(this);
    setDateTime(std::clamp(shownFor(moment), minimumDateTime(), maximumDateTime()));
}

/// An edit that says a moment: also one of those whose time of day comes twice.
void KTVDataClusterDatePicker::takeMoment(const QDateTime& moment)
{
    show(moment);
    if (!m_clock.zone.isValid())
        return takeEdit(dateTime());
    m_shown = dateTime();
    m_dateValue = dateOf(moment);
    emit dateEdited();
}

void KTVDataClusterDatePicker::takeEdit(const QDateTime& shown)
{
    // Losing the focus makes the editor read its own text again: that is no edit, and must not round the exact date.
    if (shown == m_shown)
        return;
    m_shown = shown;
    m_dateValue = dateOf(momentFor(shown));
    emit dateEdited();
}

/// A day without a time, typed or chosen in the calendar. The exact date keeps its last moment, beyond the seconds
/// shown.
void KTVDataClusterDatePicker::takeDay(const QDate& day)
{
    const plotix::OptionalDate moment =
        m_dayMeans == DayMeans::ItsEnd
            ? plotix::lastMomentOf(day, m_clock.zone)
            : dateOf(m_clock.zone.isValid() ? day.startOfDay(m_clock.zone) : day.startOfDay());
    if (!moment)
        return;
    show(plotix::momentBy(m_clock, std::floor(moment->seconds)));
    m_shown = dateTime();
    if (m_dateValue && m_dateValue->seconds == moment->seconds)
        return;
    m_dateValue = moment;
    emit dateEdited();
}

/// Made when it is first needed. The toolkit keeps the time of day when a day is chosen, of which nobody said anything.
void KTVDataClusterDatePicker::followCalendar()
{
    if (std::exchange(m_followsCalendar, true))
        return;
    for (const auto chosen : {&QCalendarWidget::clicked, &QCalendarWidget::activated})
        connect(calendarWidget(), chosen, this, &KTVDataClusterDatePicker::takeDay);
}

QString KTVDataClusterDatePicker::textFromDateTime(const QDateTime& moment) const
{
    // What is being typed is not rewritten under the user's hands.
    return m_typing && moment == dateTime() ? lineEdit()->text() : QDateTimeEdit::textFromDateTime(moment);
}

QValidator::State KTVDataClusterDatePicker::validate(QString&, int&) const
{
    return isUnderstood() ? QValidator::Acceptable : QValidator::Intermediate;
}

void KTVDataClusterDatePicker::keyPressEvent(QKeyEvent* event)
{
    const bool opensCalendar =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier));
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        endTyping();
        event->accept();
        if (!isUnderstood())
            tellWhy();
        else if (auto* delegate = notifyReturnKeyDelegate())
            delegate->returnKeyPressed(this);
    } else if (event->key() == Qt::Key_Escape && m_typing) {
        dropTyping();
        event->accept();
    } else if (opensCalendar) {
        event->accept();
        openCalendar();
    } else {
        QAbstractSpinBox::keyPressEvent(event);  // past the editing by parts
    }
}

/// As a click on the arrow does: the toolkit has no key for it.
void KTVDataClusterDatePicker::openCalendar()
{
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    const QPoint arrow = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton, {});
    mousePressEvent(&press);
}

void KTVDataClusterDatePicker::stepBy(int steps)
{
    dropTyping();
    const int caret = lineEdit()->cursorPosition();
    const Section section = QDateTimeEdit::sectionAt(sectionAt(caret));
    if (m_clock.zone.isValid() && m_dateValue)
        takeMoment(stepped(plotix::momentBy(m_clock, m_dateValue->seconds), section, steps));
    else
        setDateTime(stepped(dateTime(), section, steps));
    selectNumberAt(caret);
}

int KTVDataClusterDatePicker::sectionAt(int position) const
{
    int section = -1;
    for (auto parts = partsOf(lineEdit()->text()); parts.hasNext();)
        if (parts.next().capturedStart() <= position)
            ++section;
    return std::clamp(section, 0, sectionCount() - 1);
}

void KTVDataClusterDatePicker::selectNumberAt(int position)
{
    for (auto parts = partsOf(lineEdit()->text()); parts.hasNext();) {
        const QRegularExpressionMatch part = parts.next();
        if (position <= part.capturedEnd()) {
            lineEdit()->setSelection(static_cast<int>(part.capturedStart()), static_cast<int>(part.capturedLength()));
            return;
        }
    }
}

void KTVDataClusterDatePicker::focusInEvent(QFocusEvent* event)
{
    QAbstractSpinBox::focusInEvent(event);  // Tab selects the whole, not the first part
}

void KTVDataClusterDatePicker::focusOutEvent(QFocusEvent* event)
{
    endTyping();
    QDateTimeEdit::focusOutEvent(event);
}

void KTVDataClusterDatePicker::mousePressEvent(QMouseEvent* event)
{
    dropTyping();  // the calendar begins with the date
    followCalendar();
    QDateTimeEdit::mousePressEvent(event);
}

bool KTVDataClusterDatePicker::focusNextPrevChild(bool next)
{
    return QAbstractSpinBox::focusNextPrevChild(next);  // not from part to part
}

bool KTVDataClusterDatePicker::eventFilter(QObject* watched, QEvent* event)
{
    // A click alone leaves the caret between two digits; typing there would insert where people mean to replace.
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText() &&
        !m_typing)
        selectNumberAt(lineEdit()->cursorPosition());
    return QDateTimeEdit::eventFilter(watched, event);
}
