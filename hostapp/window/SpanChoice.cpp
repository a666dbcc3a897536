#include "hostapp/window/SpanChoice.h"

#include "base/WholeDay.h"

#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QRadioButton>

namespace plotix {

namespace {

QDateTime timeOf(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000));
}

double secondsOf(const QDateTime& time)
{
    return static_cast<double>(time.toMSecsSinceEpoch()) / 1000;
}

/// The end of a day is its last moment, whatever part of a second that is.
double endOf(const QDateTime& time)
{
    const OptionalDate end = time == time.date().endOfDay() ? lastMomentOf(time.date()) : std::nullopt;
    return end ? end->seconds : secondsOf(time);
}

}  // namespace

SpanChoice::SpanChoice(const MomentSpan& proposed, QWidget* parent)
    : QWidget(parent),
      m_button(new QRadioButton(tr("&From"), this)),
      m_from(new QDateTimeEdit(this)),
      m_to(new QDateTimeEdit(this))
{
    auto* parts = new QHBoxLayout(this);
    parts->setContentsMargins(0, 0, 0, 0);
    auto* to = new QLabel(tr("t&o"), this);
    to->setBuddy(m_to);
    for (QDateTimeEdit* edit : {m_from, m_to}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        edit->setEnabled(false);
        connect(m_button, &QRadioButton::toggled, edit, &QWidget::setEnabled);
    }
    // The calendar names a day, and no time of it: from its beginning, to its end.
    for (const auto chosen : {&QCalendarWidget::clicked, &QCalendarWidget::activated}) {
        connect(m_from->calendarWidget(), chosen, this, [this](QDate day) { m_from->setDateTime(day.startOfDay()); });
        connect(m_to->calendarWidget(), chosen, this, [this](QDate day) { m_to->setDateTime(day.endOfDay()); });
    }
    m_from->setAccessibleName(tr("From"));
    m_to->setAccessibleName(tr("To"));
    show(proposed);
    parts->addWidget(m_button);
    parts->addWidget(m_from, 1);
    parts->addWidget(to);
    parts->addWidget(m_to, 1);
}

bool SpanChoice::isChosen() const
{
    return m_button->isChecked();
}

MomentSpan SpanChoice::span() const
{
    return {secondsOf(m_from->dateTime()), endOf(m_to->dateTime())};
}

void SpanChoice::choose(const MomentSpan& span)
{
    m_button->click();
    show(span);
}

void SpanChoice::askAgain()
{
    m_to->setFocus();
    m_to->selectAll();
}

void SpanChoice::show(const MomentSpan& span)
{
    m_from->setDateTime(timeOf(span.first));
    m_to->setDateTime(timeOf(span.second));
}

}  // namespace plotix
