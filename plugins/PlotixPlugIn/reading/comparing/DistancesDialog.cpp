#include "plugins/PlotixPlugIn/reading/comparing/DistancesDialog.h"

#include "base/TimeDistance.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QRegularExpression>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

namespace {

constexpr int kCharacters = 34;

struct Typed {
    QStringList distances;
    QString wrong;  ///< the first part that is no distance; empty: all are
};

Typed typedDistances(const QString& text)
{
    static const QRegularExpression between(QStringLiteral("[,;]"));
    Typed typed;
    for (const QString& part : text.split(between, Qt::SkipEmptyParts)) {
        if (part.trimmed().isEmpty())
            continue;
        if (const auto distance = timeDistanceFrom(part))
            typed.distances << textOf(*distance);
        else if (typed.wrong.isEmpty())
            typed.wrong = part.trimmed();
    }
    typed.distances.removeDuplicates();
    return typed;
}

}  // namespace

DistancesDialog::DistancesDialog(const QStringList& distances, QWidget* parent)
    : QDialog(parent),
      m_field(new QLineEdit(distances.join(QStringLiteral(", ")), this)),
      m_problem(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(localizedText(QT_TRANSLATE_NOOP("Plotix", "Compare with Earlier Times")));
    auto* rows = new QFormLayout(this);
    rows->addRow(localizedText(QT_TRANSLATE_NOOP("Plotix", "&So long before:")), m_field);
    m_problem->setWordWrap(true);
    rows->addRow(m_problem);
    rows->addRow(m_buttons);
    m_field->selectAll();
    m_field->setMinimumWidth(m_field->fontMetrics().averageCharWidth() * kCharacters);
    connect(m_field, &QLineEdit::textChanged, this, &DistancesDialog::judge);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &DistancesDialog::take);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    judge();
}

void DistancesDialog::judge()
{
    const QString wrong = typedDistances(m_field->text()).wrong;
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(wrong.isEmpty());
    m_problem->setText(
        wrong.isEmpty()
            ? localizedText(QT_TRANSLATE_NOOP(
                  "Plotix", "For example 7d, 2w, 3mo, 1y. Days, weeks, months and years go by the clock on the wall; "
                            "36h are hours that pass."))
            : localizedText(
                  QT_TRANSLATE_NOOP("Plotix", "“%1” is no distance: give a number with s, min, h, d, w, mo or y."))
                  .arg(wrong));
}

void DistancesDialog::take()
{
    const Typed typed = typedDistances(m_field->text());
    if (!typed.wrong.isEmpty())
        return;
    accept();
    emit distancesGiven(typed.distances);
}

}  // namespace plotix
