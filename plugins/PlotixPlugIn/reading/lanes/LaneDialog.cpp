#include "plugins/PlotixPlugIn/reading/lanes/LaneDialog.h"

#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <array>
#include <cmath>

namespace plotix {

namespace {

constexpr std::array<const char*, 6> kTitles{
    QT_TRANSLATE_NOOP("Plotix", "Lane"),    QT_TRANSLATE_NOOP("Plotix", "Scale"),
    QT_TRANSLATE_NOOP("Plotix", "Range"),   QT_TRANSLATE_NOOP("Plotix", "Lowest"),
    QT_TRANSLATE_NOOP("Plotix", "Highest"), QT_TRANSLATE_NOOP("Plotix", "Height")};

struct FitText {
    LaneFit fit;
    const char* text;
};
constexpr std::array<FitText, 4> kFitTexts{FitText{LaneFit::AllValues, QT_TRANSLATE_NOOP("Plotix", "All values")},
                                           FitText{LaneFit::Robust, QT_TRANSLATE_NOOP("Plotix", "Without outliers")},
                                           FitText{LaneFit::GrowOnly, QT_TRANSLATE_NOOP("Plotix", "Only growing")},
                                           FitText{LaneFit::Fixed, QT_TRANSLATE_NOOP("Plotix", "Fixed")}};
constexpr int kFieldCharacters = 8;

QString numberText(double number)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(number, 'g', 6);
}

std::optional<double> typedNumber(const QLineEdit& field)
{
    bool isNumber = false;
    double number = QLocale().toDouble(field.text().trimmed(), &isNumber);
    if (!isNumber)
        number = QLocale::c().toDouble(field.text().trimmed(), &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QLineEdit* numberField(double number, const QString& name, QWidget* parent)
{
    auto* field = new QLineEdit(numberText(number), parent);
    field->setAccessibleName(name);
    field->setAlignment(Qt::AlignRight);
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * kFieldCharacters);
    return field;
}

}  // namespace

LaneDialog::LaneDialog(Arrangement& arrangement, QWidget* parent)
    : QDialog(parent), m_arrangement(arrangement), m_before(arrangement.chosen())
{
    setWindowTitle(localizedText(QT_TRANSLATE_NOOP("Plotix", "Lanes")));
    setObjectName(QStringLiteral("lanes"));
    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    for (std::size_t index = 0; index < kTitles.size(); ++index)
        grid->addWidget(new QLabel(localizedText(kTitles[index]), this), 0, int(index));
    for (std::size_t lane = 0; lane < arrangement.lanes().size(); ++lane)
        addRow(grid, lane);
    column->addLayout(grid);
    m_problem = new QLabel(this);
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    column->addWidget(m_problem);
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_buttons->button(QDialogButtonBox::Ok)->setText(localizedText(QT_TRANSLATE_NOOP("Plotix", "OK")));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(localizedText(QT_TRANSLATE_NOOP("Plotix", "Cancel")));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(m_buttons);
    connect(&arrangement, &QObject::destroyed, this, &QDialog::close);
}

void LaneDialog::addRow(QGridLayout* grid, std::size_t lane)
{
    const Lane& shown = *m_arrangement.lanes()[lane];
    const LaneSettings& settings = shown.settings();
    const QString title = shown.title();
    const auto name = [&](std::size_t column) { return title + QStringLiteral(", ") + localizedText(kTitles[column]); };
    Row row;
    row.key = shown.key();
    row.scale = new QComboBox(this);
    row.scale->addItems({localizedText(QT_TRANSLATE_NOOP("Plotix", "Linear")),
                         localizedText(QT_TRANSLATE_NOOP("Plotix", "Logarithmic"))});
    row.scale->setCurrentIndex(settings.isLogarithmic ? 1 : 0);
    row.scale->setAccessibleName(name(1));
    row.fit = new QComboBox(this);
    for (const FitText& each : kFitTexts)
        row.fit->addItem(localizedText(each.text), int(each.fit));
    row.fit->setCurrentIndex(row.fit->findData(int(settings.fit)));
    row.fit->setAccessibleName(name(2));
    const CPTPlotRange& range = shown.space()->yRange();
    const auto value = [&](double coordinate) {
        return settings.isLogarithmic ? std::pow(10.0, coordinate) : coordinate;
    };
    const bool isFixed = settings.fit == LaneFit::Fixed;
    row.lowest = numberField(isFixed ? settings.lowest : value(range.minLimit()), name(3), this);
    row.highest = numberField(isFixed ? settings.highest : value(range.maxLimit()), name(4), this);
    row.height = numberField(settings.height, name(5), this);
    auto* label = new QLabel(title, this);
    label->setTextFormat(Qt::PlainText);
    int column = 0;
    for (QWidget* widget :
         {static_cast<QWidget*>(label), static_cast<QWidget*>(row.scale), static_cast<QWidget*>(row.fit),
          static_cast<QWidget*>(row.lowest), static_cast<QWidget*>(row.highest), static_cast<QWidget*>(row.height)})
        grid->addWidget(widget, int(lane) + 1, column++);
    const auto enable = [row] {
        const bool isTyped = row.fit->currentData().toInt() == int(LaneFit::Fixed);
        row.lowest->setEnabled(isTyped);
        row.highest->setEnabled(isTyped);
    };
    enable();
    connect(row.fit, &QComboBox::currentIndexChanged, this, [this, enable] {
        enable();
        takeOver();
    });
    connect(row.scale, &QComboBox::currentIndexChanged, this, &LaneDialog::takeOver);
    for (QLineEdit* field : {row.lowest, row.highest, row.height})
        connect(field, &QLineEdit::textChanged, this, &LaneDialog::takeOver);
    m_rows.push_back(row);
}

LaneSettings LaneDialog::settingsOf(const Row& row, QString& problem) const
{
    LaneSettings settings = m_arrangement.settingsOf(row.key);
    settings.isLogarithmic = row.scale->currentIndex() == 1;
    settings.fit = LaneFit(row.fit->currentData().toInt());
    const auto lowest = typedNumber(*row.lowest);
    const auto highest = typedNumber(*row.highest);
    const auto height = typedNumber(*row.height);
    if (settings.fit == LaneFit::Fixed) {
        if (!lowest || !highest || !(*lowest < *highest))
            problem =
                localizedText(QT_TRANSLATE_NOOP("Plotix", "The lowest value must be a number below the highest."));
        else if (settings.isLogarithmic && !(*lowest > 0))
            problem = localizedText(
                QT_TRANSLATE_NOOP("Plotix", "A logarithmic scale begins above zero: type a lowest value above 0."));
        settings.lowest = lowest.value_or(settings.lowest);
        settings.highest = highest.value_or(settings.highest);
    }
    if (!height || !(*height > 0))
        problem =
            localizedText(QT_TRANSLATE_NOOP("Plotix", "A height is a number above 0, in proportion to the others."));
    settings.height = height.value_or(settings.height);
    return settings;
}

void LaneDialog::takeOver()
{
    QString problem;
    std::vector<std::pair<QString, LaneSettings>> all;
    for (const Row& row : m_rows)
        all.emplace_back(row.key, settingsOf(row, problem));
    m_problem->setText(problem);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
    if (problem.isEmpty())
        for (const auto& [key, settings] : all)
            m_arrangement.setSettingsOf(key, settings);
}

void LaneDialog::reject()
{
    m_arrangement.choose(m_before);
    QDialog::reject();
}

}  // namespace plotix
