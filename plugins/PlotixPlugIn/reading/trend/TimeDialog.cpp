#include "plugins/PlotixPlugIn/reading/trend/TimeDialog.h"

#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/trend/TypedTime.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

namespace {

QString momentText(double time, const CPTClock& clock)
{
    constexpr double kMinute = 60;
    return CPTMomentFormatter(clock).stringForTick(time, kMinute);
}

}  // namespace

TimeDialog::TimeDialog(const QString& title, double time, const CPTClock& clock, QWidget* parent)
    : QDialog(parent),
      m_shown(time),
      m_clock(clock),
      m_field(new QLineEdit(timeForTyping(time, clock), this)),
      m_meaning(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)),
      m_toEnd(m_buttons->addButton(QString(), QDialogButtonBox::AcceptRole))
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
    m_meaning->setTextFormat(Qt::PlainText);
    rows->addRow(m_meaning);
    rows->addRow(m_buttons);
    m_field->selectAll();
    m_field->setMinimumWidth(m_field->fontMetrics().averageCharWidth() * 34);
    connect(m_field, &QLineEdit::textChanged, this, &TimeDialog::judge);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &TimeDialog::take);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    judge();
}

void TimeDialog::setRecorded(const TimeSpan& recorded)
{
    m_recorded = recorded;
    judge();
}

std::optional<double> TimeDialog::typed() const
{
    return typedTime(m_field->text(), m_shown, m_clock);
}

std::optional<double> TimeDialog::nearestEnd(double time) const
{
    if (!m_recorded || (time >= m_recorded->from && time <= m_recorded->to))
        return std::nullopt;
    return time < m_recorded->from ? m_recorded->from : m_recorded->to;
}

/// Two lines always, so that the dialog stands still while one types.
QString TimeDialog::meaningOf(double time) const
{
    const QString meant = QStringLiteral("= ") + momentText(time, m_clock) + u'\n';
    const auto end = nearestEnd(time);
    if (!end)
        return meant;
    return meant + (time < *end ? localizedText(QT_TRANSLATE_NOOP("Plotix", "Nothing is recorded before %1."))
                                : localizedText(QT_TRANSLATE_NOOP("Plotix", "The records end at %1.")))
                       .arg(momentText(*end, m_clock));
}

void TimeDialog::judge()
{
    const auto time = typed();
    const auto end = time ? nearestEnd(*time) : std::nullopt;
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    m_meaning->setText(time ? meaningOf(*time) : whyNoTime(m_field->text(), m_shown, m_clock) + u'\n');
    ok->setEnabled(time.has_value());
    ok->setVisible(!end);
    m_toEnd->setVisible(end.has_value());
    if (end)
        m_toEnd->setText(*time < *end ? localizedText(QT_TRANSLATE_NOOP("Plotix", "Go to the &First Record"))
                                      : localizedText(QT_TRANSLATE_NOOP("Plotix", "Go to the &Last Record")));
    (end ? m_toEnd : ok)->setDefault(true);
}

void TimeDialog::take()
{
    const auto time = typed();
    if (!time)
        return;
    accept();
    emit timeGiven(nearestEnd(*time).value_or(*time));
}

}  // namespace plotix
