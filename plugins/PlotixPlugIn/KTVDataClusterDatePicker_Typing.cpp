// What is typed into a date picker.
//
// Rules of this room:
//  1. The text is read as a whole with every key; what is not understood, or names no date there is, changes nothing
//     and is marked, and the text stays to be mended.
//  2. What is being typed is not rewritten under the user's hands.

#include "plugins/PlotixPlugIn/KTVDataClusterDatePicker.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/logic/TypedDate.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"
#include "plugins/PlotixPlugIn/reading/trend/TypedTime.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

namespace {

constexpr QColor kMarkOnLight(0xb7, 0x1c, 0x1c);
constexpr QColor kMarkOnDark(0xff, 0x8a, 0x80);

QString localizedText(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QLatin1String(key));
}

}  // namespace

void KTVDataClusterDatePicker::takeText(const QString& text)
{
    if (!m_typing) {
        m_shownBeforeTyping = m_shown;
        m_dateBeforeTyping = m_dateValue;
    }
    m_typing = true;
    const auto end = m_dayMeans == DayMeans::ItsEnd ? plotix::SpanEnd::To : plotix::SpanEnd::From;
    const QString meant = plotix::endOfTypedSpan(text, end);
    const plotix::TypedDateSurroundings surroundings{locale(), plotix::dayWords(), momentFor(m_shownBeforeTyping),
                                                     plotix::nowBy(m_clock)};
    const auto read = plotix::typedDate(meant, surroundings);
    const bool isNoDate = !read && plotix::namesNoSuchDate(meant, surroundings);
    markText(read ? Text::Understood : isNoDate ? Text::NoSuchDate : Text::NotUnderstood);
    if (isNoDate)
        tellWhy();
    if (!read)
        return takeBack();
    if (read->hasTime)
        takeMoment(read->moment);
    else
        takeDay(read->moment.date());
}

/// The beginning of what is not understood may have been a date by itself, such as the 31 of "31 Feb": nobody meant it.
void KTVDataClusterDatePicker::takeBack()
{
    if (m_dateValue == m_dateBeforeTyping)
        return;
    QSignalBlocker silence(this);
    setDateTime(m_shownBeforeTyping);
    m_shown = dateTime();
    m_dateValue = m_dateBeforeTyping;
    silence.unblock();
    emit dateEdited();
}

void KTVDataClusterDatePicker::tellWhy()
{
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), lineEdit()->toolTip(), this);
}

void KTVDataClusterDatePicker::endTyping()
{
    if (isUnderstood())  // else the text stays, to be mended
        dropTyping();
}

void KTVDataClusterDatePicker::dropTyping()
{
    if (!m_typing)
        return;
    m_typing = false;
    markText(Text::Understood);
    lineEdit()->setText(textFromDateTime(dateTime()));
}

void KTVDataClusterDatePicker::markText(Text text)
{
    if (text == m_text)
        return;
    m_text = text;
    QPalette colours;
    if (!isUnderstood())
        colours.setColor(QPalette::Text,
                         palette().color(QPalette::Base).lightness() > 128 ? kMarkOnLight : kMarkOnDark);
    lineEdit()->setPalette(colours);
    QFont marked = font();
    marked.setUnderline(!isUnderstood());
    lineEdit()->setFont(marked);
    lineEdit()->setToolTip(isUnderstood() ? QString() : whyMarked());
    setAccessibleDescription(isUnderstood() ? QString::fromUtf8(m_clock.zone.id()) : whyMarked());
}

QString KTVDataClusterDatePicker::whyMarked() const
{
    if (m_text == Text::NoSuchDate)
        return plotix::noSuchDateText();
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "This is not understood as a date. Write it such as %1, or %2."))
        .arg(QDateTimeEdit::textFromDateTime(dateTime()), plotix::dayWords().yesterday);
}
