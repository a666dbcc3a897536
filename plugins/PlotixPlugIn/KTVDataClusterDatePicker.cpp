#include "plugins/PlotixPlugIn/KTVDataClusterDatePicker.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLineEdit>

#include <cmath>

namespace {

/// Beyond what any editor shows; keeps the conversion to milliseconds inside 64 bits.
constexpr double kFarthestSeconds = 1e15;

QDateTime nearestShown(const plotix::Date& date, const QDateTime& earliest, const QDateTime& latest)
{
    if (date.seconds <= -kFarthestSeconds)
        return earliest;
    if (date.seconds >= kFarthestSeconds)
        return latest;
    const QDateTime dateTime = QDateTime::fromMSecsSinceEpoch(std::llround(date.seconds * 1000.0));
    return std::clamp(dateTime, earliest, latest);
}

/// The locale's own order of day, month and year, with four digits of the year and seconds of the time.
QString displayFormatFor(const QLocale& locale)
{
    QString dateFormat = locale.dateFormat(QLocale::ShortFormat);
    if (!dateFormat.contains(QLatin1String("yyyy")))
        dateFormat.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    QString timeFormat = locale.timeFormat(QLocale::ShortFormat);
    if (!timeFormat.contains(QLatin1String("ss")))
        timeFormat.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return dateFormat + QLatin1Char(' ') + timeFormat;
}

}  // namespace

KTVDataClusterDatePicker::KTVDataClusterDatePicker(QWidget* parent) : QDateTimeEdit(parent)
{
    setCalendarPopup(true);
    setDisplayFormat(displayFormatFor(locale()));
    m_shown = dateTime();
    lineEdit()->installEventFilter(this);
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &KTVDataClusterDatePicker::takeEdit);
}

void KTVDataClusterDatePicker::setDateValue(const plotix::OptionalDate& date)
{
    if (!date)
        return;
    m_dateValue = date;
    if (std::isnan(date->seconds))
        return;
    // The editor reports a programmatic change like an edit; this one must not be reported.
    const QSignalBlocker silence(this);
    setDateTime(nearestShown(*date, minimumDateTime(), maximumDateTime()));
    m_shown = dateTime();
}

void KTVDataClusterDatePicker::takeEdit(const QDateTime& shown)
{
    // Losing the focus makes the editor read its own text again: that is no edit, and must not round the exact date.
    if (shown == m_shown)
        return;
    m_shown = shown;
    m_dateValue = plotix::Date{static_cast<double>(shown.toMSecsSinceEpoch()) / 1000.0};
    emit dateEdited();
}

void KTVDataClusterDatePicker::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDateTimeEdit::keyPressEvent(event);
        return;
    }
    interpretText();  // a half-typed section counts as typed
    event->accept();
    if (auto* delegate = notifyReturnKeyDelegate())
        delegate->returnKeyPressed(this);
}

bool KTVDataClusterDatePicker::eventFilter(QObject* watched, QEvent* event)
{
    // A click alone leaves the caret between two digits, where every further digit is refused as too many.
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText())
        setSelectedSection(currentSection());
    return QDateTimeEdit::eventFilter(watched, event);
}
