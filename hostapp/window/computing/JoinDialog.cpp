#include "hostapp/window/computing/JoinDialog.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

JoinDialog::JoinDialog(const QStringList& names, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Add to the Trend"));
    auto* question =
        new QLabel(tr("“%1” comes from a source with times of its own. What stands at the times between its records?")
                       .arg(names.join(QStringLiteral("”, “"))),
                   this);
    question->setTextFormat(Qt::PlainText);
    question->setWordWrap(true);
    m_hold = new QRadioButton(tr("&Its last value (counters, states, set points)"), this);
    m_hold->setObjectName(QStringLiteral("joinHold"));
    m_hold->setChecked(true);
    m_straight = new QRadioButton(tr("A &straight line to the next (temperatures, levels)"), this);
    m_straight->setObjectName(QStringLiteral("joinStraight"));
    auto* later = new QLabel(
        tr("Edit Computed Property, in the menu of the property, changes that, and how long a gap is bridged."), this);
    later->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* each : std::initializer_list<QWidget*>{question, m_hold, m_straight, later, buttons})
        layout->addWidget(each);
    constexpr int kWidth = 460;  // points
    setMinimumWidth(kWidth);
}

PropertyFormula::Join JoinDialog::join() const
{
    return m_straight->isChecked() ? PropertyFormula::Join::Straight : PropertyFormula::Join::HoldLast;
}

}  // namespace plotix
