#include "plugins/PlotixPlugIn/reading/statistics/LimitDialog.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QLocale>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <cmath>

namespace plotix {

LimitDialog::LimitDialog(Side side, std::vector<Line> lines, const QString& key, QWidget* parent)
    : QDialog(parent),
      m_lines(std::move(lines)),
      m_line(new QComboBox(this)),
      m_limit(new QLineEdit(this)),
      m_unit(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    const bool isAbove = side == Side::Above;
    setWindowTitle(localizedText(isAbove ? QT_TRANSLATE_NOOP("Plotix", "Time Above a Limit")
                                         : QT_TRANSLATE_NOOP("Plotix", "Time Below a Limit")));
    for (const Line& line : m_lines)
        m_line->addItem(line.name, line.key);
    m_line->setCurrentIndex(std::max(0, m_line->findData(key)));
    auto* limit = new QHBoxLayout;
    limit->addWidget(m_limit);
    limit->addWidget(m_unit);
    auto* rows = new QFormLayout(this);
    auto* lineLabel = new QLabel(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Property:")), this);
    auto* limitLabel = new QLabel(localizedText(isAbove ? QT_TRANSLATE_NOOP("Plotix", "How long &above:")
                                                        : QT_TRANSLATE_NOOP("Plotix", "How long b&elow:")),
                                  this);
    lineLabel->setBuddy(m_line);
    limitLabel->setBuddy(m_limit);
    rows->addRow(lineLabel, m_line);
    rows->addRow(limitLabel, limit);
    rows->addRow(m_buttons);
    connect(m_line, &QComboBox::currentIndexChanged, this, &LimitDialog::offerLimit);
    connect(m_limit, &QLineEdit::textChanged, this, &LimitDialog::judge);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &LimitDialog::take);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    offerLimit();
    m_limit->setFocus();
}

void LimitDialog::offerLimit()
{
    constexpr int kDigits = 7;
    const Line& line = m_lines[static_cast<std::size_t>(m_line->currentIndex())];
    m_limit->setText(QLocale().toString(line.limit, 'g', kDigits));
    m_limit->selectAll();
    m_unit->setText(line.unitSymbol);
}

/// Also with the unit behind it, as people copy it.
std::optional<double> LimitDialog::typed() const
{
    QString text = m_limit->text().trimmed();
    if (!m_unit->text().isEmpty() && text.endsWith(m_unit->text()))
        text = text.chopped(m_unit->text().size()).trimmed();
    bool isNumber = false;
    double number = QLocale().toDouble(text, &isNumber);
    if (!isNumber)
        number = QLocale::c().toDouble(text, &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void LimitDialog::judge()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(typed().has_value());
}

void LimitDialog::take()
{
    const auto limit = typed();
    if (!limit)
        return;
    accept();
    emit limitGiven(m_line->currentData().toString(), *limit);
}

}  // namespace plotix
