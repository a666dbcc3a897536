#include "hostapp/window/annotating/LimitsDialog.h"

#include "hostapp/core/Units.h"

#include <QtCore/QLocale>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr int kNameWidth = 180;  // points
constexpr int kValueWidth = 90;

QString numberText(double number)
{
    constexpr int kDigits = 10;
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(number, 'g', kDigits);
}

std::optional<double> typedNumber(const QLineEdit& field)
{
    bool isNumber = false;
    double number = QLocale().toDouble(field.text().trimmed(), &isNumber);
    if (!isNumber)
        number = QLocale::c().toDouble(field.text().trimmed(), &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace

LimitsDialog::LimitsDialog(const QString& propertyName, const QString& unit, const std::vector<SiteLimit>& limits,
                           QWidget* parent)
    : QDialog(parent),
      m_unit(unit),
      m_grid(new QGridLayout),
      m_none(new QLabel(tr("No limits."), this)),
      m_problem(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Limits of %1").arg(propertyName));
    setObjectName(QStringLiteral("limits"));
    auto* column = new QVBoxLayout(this);
    column->addLayout(m_grid);
    int place = 0;
    for (const QString& title : {tr("Name"), tr("Beyond it"), tr("Value"), QString(), tr("Severity")})
        m_grid->addWidget(new QLabel(title, this), 0, place++);
    m_none->setForegroundRole(QPalette::PlaceholderText);
    column->addWidget(m_none);
    auto* add = new QPushButton(tr("&Add Limit"), this);
    add->setAutoDefault(false);
    connect(add, &QPushButton::clicked, this, &LimitsDialog::addNewRow);
    column->addWidget(add, 0, Qt::AlignLeft);
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->setMinimumHeight(fontMetrics().lineSpacing());
    column->addWidget(m_problem);
    column->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (const SiteLimit& limit : limits)
        addRow(limit, true);
    if (limits.empty())
        addNewRow();
    check();
}

void LimitsDialog::addNewRow()
{
    SiteLimit limit;
    limit.name = suggestedName();
    limit.unit = m_unit;
    addRow(limit, false);
    m_rows.back().value->setFocus();
    check();
}

void LimitsDialog::addRow(const SiteLimit& limit, bool isTyped)
{
    Row row{limit,
            {},
            new QLineEdit(limit.name, this),
            new QComboBox(this),
            new QLineEdit(this),
            new QLabel(Units::shared()->symbolForUnit(m_unit), this),
            new QComboBox(this),
            new QToolButton(this)};
    if (isTyped)
        row.shown = numberText(Units::shared()->convert(limit.value, limit.unit, m_unit));
    row.value->setText(row.shown);
    row.value->setAlignment(Qt::AlignRight);
    row.value->setMinimumWidth(kValueWidth);
    row.name->setMinimumWidth(kNameWidth);
    row.side->addItems({tr("above"), tr("below")});
    row.side->setCurrentIndex(static_cast<int>(limit.side));
    row.severity->addItems({tr("Notice"), tr("Warning"), tr("Alarm")});
    row.severity->setCurrentIndex(static_cast<int>(limit.severity));
    row.remove->setText(QStringLiteral("×"));
    row.remove->setToolTip(tr("Remove this limit"));
    const QString number = QString::number(m_gridRows);
    row.name->setAccessibleName(tr("Name of limit %1").arg(number));
    row.side->setAccessibleName(tr("Side of limit %1").arg(number));
    row.value->setAccessibleName(tr("Value of limit %1").arg(number));
    row.severity->setAccessibleName(tr("Severity of limit %1").arg(number));
    row.remove->setAccessibleName(tr("Remove limit %1").arg(number));
    int place = 0;
    for (QWidget* widget :
         {static_cast<QWidget*>(row.name), static_cast<QWidget*>(row.side), static_cast<QWidget*>(row.value),
          static_cast<QWidget*>(row.unit), static_cast<QWidget*>(row.severity), static_cast<QWidget*>(row.remove)}) {
        m_grid->addWidget(widget, m_gridRows, place++);
        widget->show();
    }
    ++m_gridRows;
    connect(row.name, &QLineEdit::textChanged, this, &LimitsDialog::check);
    connect(row.value, &QLineEdit::textChanged, this, &LimitsDialog::check);
    connect(row.remove, &QToolButton::clicked, this, [this, button = row.remove] { removeRow(button); });
    m_rows.push_back(row);
}

void LimitsDialog::removeRow(const QToolButton* button)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& each) { return each.remove == button; });
    if (row == m_rows.end())
        return;
    for (QWidget* widget :
         {static_cast<QWidget*>(row->name), static_cast<QWidget*>(row->side), static_cast<QWidget*>(row->value),
          static_cast<QWidget*>(row->unit), static_cast<QWidget*>(row->severity), static_cast<QWidget*>(row->remove)}) {
        widget->hide();
        widget->deleteLater();
    }
    m_rows.erase(row);
    check();
}

/// What is not taken yet, so that several limits are set by typing values alone.
QString LimitsDialog::suggestedName() const
{
    const QStringList usual{tr("high"), tr("low"), tr("very high"), tr("very low")};
    for (const QString& name : usual)
        if (std::none_of(m_rows.begin(), m_rows.end(), [&](const Row& row) {
                return row.name->text().trimmed().compare(name, Qt::CaseInsensitive) == 0;
            }))
            return name;
    return {};
}

SiteLimit LimitsDialog::limitOf(const Row& row) const
{
    SiteLimit limit = row.before;
    limit.name = row.name->text().trimmed();
    limit.side = static_cast<KTVLimit::Side>(row.side->currentIndex());
    limit.severity = static_cast<KTVLimit::Severity>(row.severity->currentIndex());
    if (row.value->text() != row.shown) {
        limit.value = typedNumber(*row.value).value_or(limit.value);
        limit.unit = m_unit;
    }
    return limit;
}

std::vector<SiteLimit> LimitsDialog::limits() const
{
    std::vector<SiteLimit> limits;
    for (const Row& row : m_rows)
        limits.push_back(limitOf(row));
    return limits;
}

QString LimitsDialog::problem() const
{
    QStringList names;
    for (const Row& row : m_rows) {
        const QString name = row.name->text().trimmed();
        if (name.isEmpty())
            return tr("Every limit needs a name.");
        if (names.contains(name, Qt::CaseInsensitive))
            return tr("Two limits are called “%1”: choose another name for one of them.").arg(name);
        names << name;
        if (!typedNumber(*row.value))
            return row.value->text().trimmed().isEmpty() ? tr("Type a value for “%1”, or remove it with ×.").arg(name)
                                                         : tr("The value of “%1” is no number.").arg(name);
    }
    return {};
}

void LimitsDialog::check()
{
    m_none->setVisible(m_rows.empty());
    m_problem->setText(problem());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_problem->text().isEmpty());
}

}  // namespace plotix
