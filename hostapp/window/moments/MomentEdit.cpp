#include "hostapp/window/moments/MomentEdit.h"

#include "base/WholeDay.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace plotix {

namespace {

const QTime kEndOfDay(23, 59, 59, 999);
constexpr QColor kMarkOnLight(0xb7, 0x1c, 0x1c);
constexpr QColor kMarkOnDark(0xff, 0x8a, 0x80);

QRegularExpressionMatchIterator partsOf(const QString& text)
{
    static const QRegularExpression part(QStringLiteral("[\\p{L}\\p{N}]+"));
    return part.globalMatch(text);
}

QDateTime stepped(const QDateTime& moment, QDateTimeEdit::Section section, int steps)
{
    constexpr int kMinute = 60, kHour = 3600, kHalfDay = 12 * kHour;
    switch (section) {
    case QDateTimeEdit::YearSection: return moment.addYears(steps);
    case QDateTimeEdit::MonthSection: return moment.addMonths(steps);
    case QDateTimeEdit::HourSection: return moment.addSecs(qint64(steps) * kHour);
    case QDateTimeEdit::MinuteSection: return moment.addSecs(qint64(steps) * kMinute);
    case QDateTimeEdit::SecondSection: return moment.addSecs(steps);
    case QDateTimeEdit::AmPmSection: return moment.addSecs(qint64(steps) * kHalfDay);
    default: return moment.addDays(steps);
    }
}

/// The form without its seconds, and that of the day alone.
QStringList shorterForms(const QString& form)
{
    static const QRegularExpression seconds(QStringLiteral("[:.]ss?"));
    static const QRegularExpression time(QStringLiteral("[,\\s]*[hH]+\\W*mm?(\\W*ss?)?(\\s*[aA]p?P?)?"));
    return {QString(form).remove(seconds), QString(form).remove(time).trimmed()};
}

}  // namespace

MomentEdit::MomentEdit(double moment, Day day, QWidget* parent) : QDateTimeEdit(parent), m_day(day), m_moment(moment)
{
    // What clocks anywhere show, the skipped hours of the user's zone included.
    setTimeSpec(Qt::UTC);
    setCalendarPopup(true);
    if (m_day != Day::SameTime)
        for (const auto picked : {&QCalendarWidget::clicked, &QCalendarWidget::activated})
            connect(calendarWidget(), picked, this, &MomentEdit::takeDay);
    // The toolkit's own editing takes a date part by part: "31" typed into a February becomes the 3rd, at one o'clock.
    disconnect(lineEdit(), nullptr, this, nullptr);
    lineEdit()->setValidator(nullptr);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, &MomentEdit::takeText);
    setMoment(moment);
}

QDateTime MomentEdit::clockTime(double seconds) const
{
    const auto whole = static_cast<qint64>(std::floor(seconds));
    const QDateTime time =
        m_zone.isValid() ? QDateTime::fromSecsSinceEpoch(whole, m_zone) : QDateTime::fromSecsSinceEpoch(whole);
    return {time.date(), time.time(), Qt::UTC};
}

double MomentEdit::moment() const
{
    const QDateTime shown = dateTime();
    if (shown == clockTime(m_moment))
        return m_moment;
    if (m_day == Day::End && shown.time() == kEndOfDay)
        if (const OptionalDate last = lastMomentOf(shown.date(), m_zone))
            return last->seconds;
    const QDateTime time =
        m_zone.isValid() ? QDateTime(shown.date(), shown.time(), m_zone) : QDateTime(shown.date(), shown.time());
    return static_cast<double>(time.toMSecsSinceEpoch()) / 1000;
}

void MomentEdit::setMoment(double seconds)
{
    dropTyping();
    m_moment = seconds;
    setDateTime(clockTime(seconds));
}

void MomentEdit::sayBy(const QTimeZone& zone)
{
    const double kept = moment();
    m_zone = zone;
    setMoment(kept);
}

/// Picked in the calendar, or typed without a time.
void MomentEdit::takeDay(QDate date)
{
    if (m_day != Day::SameTime)
        setTime(m_day == Day::End ? kEndOfDay : QTime(0, 0));
    setDate(date);
}

void MomentEdit::takeText(const QString& text)
{
    if (!std::exchange(m_isTyping, true))
        m_beforeTyping = dateTime();
    if (readText(text)) {
        setProblem({});
    } else {
        // Its beginning may have been a date by itself: nobody meant it.
        setDateTime(m_beforeTyping);
        const bool isNoDate = namesNoSuchDate(text);
        setProblem(isNoDate
                       ? tr("There is no such date.")
                       : tr("This is not understood as a date. Write it such as %1.").arg(textFor(m_beforeTyping)));
        if (isNoDate)
            tellProblem();
    }
    emit textTaken();
}

bool MomentEdit::readText(const QString& text)
{
    const QStringList shorter = shorterForms(displayFormat());
    for (const QString& form : {displayFormat(), shorter.front()})
        if (const auto whole = read(text, form)) {
            setDateTime(*whole);
            return true;
        }
    const auto day = read(text, shorter.back());
    if (day) {
        setDateTime(m_beforeTyping);
        takeDay(day->date());
    }
    return day.has_value();
}

// As though clocks were never changed: hours that the user's own zone leaves out may be another zone's.
std::optional<QDateTime> MomentEdit::read(const QString& text, const QString& format) const
{
    const QDateTime read = locale().toDateTime(text.simplified() + QLatin1String(" UTC"), format + QLatin1String(" t"));
    return read.isValid() ? std::optional(QDateTime(read.date(), read.time(), Qt::UTC)) : std::nullopt;
}

/// Whether it would be a date on the first of the month, or in January.
bool MomentEdit::namesNoSuchDate(const QString& text) const
{
    constexpr int kPartsOfDate = 3;
    const QStringList forms = QStringList{displayFormat()} + shorterForms(displayFormat());
    auto parts = partsOf(text);
    for (int place = 0; place < kPartsOfDate && parts.hasNext(); ++place) {
        const QRegularExpressionMatch part = parts.next();
        bool isNumber = false;
        const int number = part.captured().toInt(&isNumber);
        if (!isNumber || number > 99)
            continue;
        QString other = text;
        other.replace(part.capturedStart(), part.capturedLength(), QStringLiteral("01"));
        for (const QString& form : forms)
            if (read(other, form))
                return true;
    }
    return false;
}

void MomentEdit::tellProblem()
{
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), m_problem, this);
}

void MomentEdit::setProblem(const QString& problem)
{
    m_problem = problem;
    QPalette colours;
    if (!problem.isEmpty())
        colours.setColor(QPalette::Text,
                         palette().color(QPalette::Base).lightness() > 128 ? kMarkOnLight : kMarkOnDark);
    lineEdit()->setPalette(colours);
    QFont marked = font();
    marked.setUnderline(!problem.isEmpty());
    lineEdit()->setFont(marked);
    lineEdit()->setToolTip(problem);
    setAccessibleDescription(problem);
}

void MomentEdit::endTyping()
{
    if (m_problem.isEmpty())  // else the text stays, to be mended
        dropTyping();
}

void MomentEdit::dropTyping()
{
    if (!std::exchange(m_isTyping, false))
        return;
    setProblem({});
    lineEdit()->setText(textFromDateTime(dateTime()));
    emit textTaken();
}

QString MomentEdit::textFromDateTime(const QDateTime& moment) const
{
    // What is being typed is not rewritten under the user's hands.
    return m_isTyping && moment == dateTime() ? lineEdit()->text() : textFor(moment);
}

QString MomentEdit::textFor(const QDateTime& moment) const
{
    return QDateTimeEdit::textFromDateTime(moment);
}

QValidator::State MomentEdit::validate(QString&, int&) const
{
    return m_problem.isEmpty() ? QValidator::Acceptable : QValidator::Intermediate;
}

void MomentEdit::stepBy(int steps)
{
    dropTyping();
    int section = -1;
    const int caret = lineEdit()->cursorPosition();
    for (auto parts = partsOf(lineEdit()->text()); parts.hasNext();)
        if (parts.next().capturedStart() <= caret)
            ++section;
    setDateTime(stepped(dateTime(), sectionAt(std::clamp(section, 0, sectionCount() - 1)), steps));
    lineEdit()->setCursorPosition(caret);
    selectPartAtCaret();
    emit textTaken();
}

void MomentEdit::keyPressEvent(QKeyEvent* event)
{
    const bool isEnd = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnd)
        endTyping();
    if (isEnd && !m_problem.isEmpty()) {
        tellProblem();
        event->accept();
    } else if (event->key() == Qt::Key_Escape && m_isTyping) {
        dropTyping();
        event->accept();
    } else {
        QAbstractSpinBox::keyPressEvent(event);  // past the editing by parts
    }
}

void MomentEdit::focusInEvent(QFocusEvent* event)
{
    QAbstractSpinBox::focusInEvent(event);  // Tab selects the whole, not the first part
}

void MomentEdit::focusOutEvent(QFocusEvent* event)
{
    endTyping();
    QDateTimeEdit::focusOutEvent(event);
}

void MomentEdit::mousePressEvent(QMouseEvent* event)
{
    dropTyping();  // the calendar begins with the date
    QDateTimeEdit::mousePressEvent(event);
}

bool MomentEdit::focusNextPrevChild(bool next)
{
    return QAbstractSpinBox::focusNextPrevChild(next);  // not from part to part
}

bool MomentEdit::eventFilter(QObject* watched, QEvent* event)
{
    // A click alone leaves the caret between two digits; typing there would insert where people mean to replace.
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText() &&
        !m_isTyping)
        selectPartAtCaret();
    return QDateTimeEdit::eventFilter(watched, event);
}

void MomentEdit::selectPartAtCaret()
{
    for (auto parts = partsOf(lineEdit()->text()); parts.hasNext();) {
        const QRegularExpressionMatch part = parts.next();
        if (lineEdit()->cursorPosition() <= part.capturedEnd()) {
            lineEdit()->setSelection(static_cast<int>(part.capturedStart()), static_cast<int>(part.capturedLength()));
            return;
        }
    }
}

}  // namespace plotix
