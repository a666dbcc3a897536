#include "hostapp/window/SaveCaseDialog.h"

#include <QtCore/QLocale>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

namespace {

constexpr int kTextWidth = 460;  // points

QDateTime timeOf(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000));
}

double secondsOf(const QDateTime& time)
{
    return static_cast<double>(time.toMSecsSinceEpoch()) / 1000;
}

QString textOf(const MomentSpan& span)
{
    const QLocale locale;
    return QStringLiteral("%1 – %2").arg(locale.toString(timeOf(span.first), QLocale::ShortFormat),
                                         locale.toString(timeOf(span.second), QLocale::ShortFormat));
}

}  // namespace

SaveCaseDialog::SaveCaseDialog(const QString& trend, const MomentSpan& visible, const std::optional<MomentSpan>& marked,
                               QWidget* parent)
    : QDialog(parent),
      m_visible(visible),
      m_marked(marked),
      m_shown(new QRadioButton(tr("What is &visible: %1").arg(textOf(visible)), this)),
      m_between(new QRadioButton(marked ? tr("From &A to B: %1").arg(textOf(*marked)) : tr("From &A to B"), this)),
      m_chosen(new QRadioButton(tr("&From"), this)),
      m_from(new QDateTimeEdit(this)),
      m_to(new QDateTimeEdit(this))
{
    setWindowTitle(tr("Save as Case"));
    auto* rows = new QVBoxLayout(this);
    auto* what = new QLabel(tr("A case is a site of its own, with “%1”, its records, limits and notes of this span and "
                               "nothing else. Whoever has Plotix opens it, and needs nothing else.")
                                .arg(trend),
                            this);
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);
    what->setMinimumWidth(kTextWidth);
    m_between->setEnabled(marked.has_value());
    m_between->setToolTip(marked ? QString() : tr("Set both marks, A and B, first."));
    (marked ? m_between : m_shown)->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(tr("&Save…"), QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QWidget* row : std::initializer_list<QWidget*>{what, m_shown, m_between, makeSpanRow(), buttons})
        rows->addWidget(row);
}

QWidget* SaveCaseDialog::makeSpanRow()
{
    auto* row = new QWidget(this);
    auto* parts = new QHBoxLayout(row);
    parts->setContentsMargins(0, 0, 0, 0);
    auto* to = new QLabel(tr("t&o"), row);
    to->setBuddy(m_to);
    for (QDateTimeEdit* edit : {m_from, m_to}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        edit->setEnabled(false);
        connect(m_chosen, &QRadioButton::toggled, edit, &QWidget::setEnabled);
    }
    m_from->setAccessibleName(tr("From"));
    m_to->setAccessibleName(tr("To"));
    const MomentSpan proposed = m_marked.value_or(m_visible);
    m_from->setDateTime(timeOf(proposed.first));
    m_to->setDateTime(timeOf(proposed.second));
    auto* spans = new QButtonGroup(this);  // the buttons stand in two widgets, and only one of them counts
    for (QRadioButton* button : {m_shown, m_between, m_chosen})
        spans->addButton(button);
    parts->addWidget(m_chosen);
    parts->addWidget(m_from, 1);
    parts->addWidget(to);
    parts->addWidget(m_to, 1);
    return row;
}

MomentSpan SaveCaseDialog::span() const
{
    if (m_chosen->isChecked())
        return {secondsOf(m_from->dateTime()), secondsOf(m_to->dateTime())};
    return m_between->isChecked() ? *m_marked : m_visible;
}

void SaveCaseDialog::chooseSpan(const MomentSpan& span)
{
    m_chosen->click();
    m_from->setDateTime(timeOf(span.first));
    m_to->setDateTime(timeOf(span.second));
}

void SaveCaseDialog::accept()
{
    if (span().second < span().first) {
        m_to->setFocus();
        m_to->selectAll();
        return;
    }
    QDialog::accept();
}

}  // namespace plotix
