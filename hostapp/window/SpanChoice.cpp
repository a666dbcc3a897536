#include "hostapp/window/SpanChoice.h"

#include "hostapp/window/moments/MomentEdit.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QRadioButton>

namespace plotix {

SpanChoice::SpanChoice(const MomentSpan& proposed, QWidget* parent)
    : QWidget(parent),
      m_button(new QRadioButton(tr("&From"), this)),
      m_from(new MomentEdit(proposed.first, MomentEdit::Day::Beginning, this)),
      m_to(new MomentEdit(proposed.second, MomentEdit::Day::End, this))
{
    auto* parts = new QHBoxLayout(this);
    parts->setContentsMargins(0, 0, 0, 0);
    auto* to = new QLabel(tr("t&o"), this);
    to->setBuddy(m_to);
    for (MomentEdit* edit : {m_from, m_to}) {
        edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        edit->setEnabled(false);
        connect(m_button, &QRadioButton::toggled, edit, &QWidget::setEnabled);
    }
    m_from->setAccessibleName(tr("From"));
    m_to->setAccessibleName(tr("To"));
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
    return {m_from->moment(), m_to->moment()};
}

void SpanChoice::choose(const MomentSpan& span)
{
    m_button->click();
    m_from->setMoment(span.first);
    m_to->setMoment(span.second);
}

bool SpanChoice::isUnderstood() const
{
    return m_from->problem().isEmpty() && m_to->problem().isEmpty();
}

void SpanChoice::askAgain()
{
    MomentEdit* asked = m_from->problem().isEmpty() ? m_to : m_from;
    asked->setFocus();
    asked->selectAll();
    if (!asked->problem().isEmpty())
        asked->tellProblem();
}

void SpanChoice::sayBy(const QTimeZone& zone)
{
    m_from->sayBy(zone);
    m_to->sayBy(zone);
}

}  // namespace plotix
