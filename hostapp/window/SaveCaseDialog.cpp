#include "hostapp/window/SaveCaseDialog.h"

#include <QtCore/QLocale>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

namespace {

constexpr int kTextWidth = 460;  // points

QString textOf(double seconds, const QTimeZone& zone)
{
    const auto millis = static_cast<qint64>(seconds * 1000);
    return QLocale().toString(zone.isValid() ? QDateTime::fromMSecsSinceEpoch(millis, zone)
                                             : QDateTime::fromMSecsSinceEpoch(millis),
                              QLocale::ShortFormat);
}

QString textOf(const MomentSpan& span, const QTimeZone& zone)
{
    return QStringLiteral("%1 – %2").arg(textOf(span.first, zone), textOf(span.second, zone));
}

}  // namespace

SaveCaseDialog::SaveCaseDialog(const QString& trend, const MomentSpan& visible, const std::optional<MomentSpan>& marked,
                               QWidget* parent, const QTimeZone& zone)
    : QDialog(parent),
      m_visible(visible),
      m_marked(marked),
      m_shown(new QRadioButton(tr("What is &visible: %1").arg(textOf(visible, zone)), this)),
      m_between(
          new QRadioButton(marked ? tr("From &A to B: %1").arg(textOf(*marked, zone)) : tr("From &A to B"), this)),
      m_chosen(new SpanChoice(marked.value_or(visible), this))
{
    m_chosen->sayBy(zone);
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
    auto* spans = new QButtonGroup(this);  // the buttons stand in two widgets, and only one of them counts
    for (QRadioButton* button : {m_shown, m_between, &m_chosen->button()})
        spans->addButton(button);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(tr("&Save…"), QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QWidget* row : std::initializer_list<QWidget*>{what, m_shown, m_between, m_chosen, buttons})
        rows->addWidget(row);
}

MomentSpan SaveCaseDialog::span() const
{
    if (m_chosen->isChosen())
        return m_chosen->span();
    return m_between->isChecked() ? *m_marked : m_visible;
}

void SaveCaseDialog::accept()
{
    const bool isNoDate = m_chosen->isChosen() && !m_chosen->isUnderstood();
    if (isNoDate || span().second < span().first)
        m_chosen->askAgain();
    else
        QDialog::accept();
}

}  // namespace plotix
