#include "plugins/PlotixPlugIn/reading/trend/TimeDialog.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/trend/TypedTime.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

TimeDialog::TimeDialog(const QString& title, double time, const CPTClock& clock, QWidget* parent)
    : QDialog(parent),
      m_shown(time),
      m_clock(clock),
      m_field(new QLineEdit(timeForTyping(time, clock), this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    auto* rows = new QFormLayout(this);
    rows->addRow(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Time:")), m_field);
    auto* hint = new QLabel(localizedText(QT_TRANSLATE_NOOP(
                                "Plotix", "For example 14:35, last Tuesday 14:35, 3 Feb, 3 Feb 2013 8:00, now")),
                            this);
    hint->setEnabled(false);
    rows->addRow(hint);
    rows->addRow(m_buttons);
    m_field->selectAll();
    m_field->setMinimumWidth(m_field->fontMetrics().averageCharWidth() * 34);
    connect(m_field, &QLineEdit::textChanged, this, &TimeDialog::judge);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &TimeDialog::take);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void TimeDialog::judge()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(typedTime(m_field->text(), m_shown, m_clock).has_value());
}

void TimeDialog::take()
{
    const auto time = typedTime(m_field->text(), m_shown, m_clock);
    if (!time)
        return;
    accept();
    emit timeGiven(*time);
}

}  // namespace plotix
