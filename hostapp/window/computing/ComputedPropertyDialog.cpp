#include "hostapp/window/computing/ComputedPropertyDialog.h"

#include "base/MainQueue.h"
#include "hostapp/core/Units.h"
#include "hostapp/window/computing/FormulaEdit.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>
#include <QtGui/QPainter>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <array>

namespace plotix {

namespace {

constexpr int kPreviewDelay = 250;  // milliseconds without a key
constexpr std::size_t kValuesShown = 4;

struct GapUnit {
    const char* text;
    double seconds;
};
constexpr std::array<GapUnit, 4> kGapUnits{{{QT_TRANSLATE_NOOP("plotix::ComputedPropertyDialog", "seconds"), 1},
                                            {QT_TRANSLATE_NOOP("plotix::ComputedPropertyDialog", "minutes"), 60},
                                            {QT_TRANSLATE_NOOP("plotix::ComputedPropertyDialog", "hours"), 3600},
                                            {QT_TRANSLATE_NOOP("plotix::ComputedPropertyDialog", "days"), 86400}}};

/// Without zeros that say nothing.
class GapBox : public QDoubleSpinBox {
public:
    using QDoubleSpinBox::QDoubleSpinBox;

protected:
    QString textFromValue(double value) const override
    {
        constexpr int kDigits = 9;
        return locale().toString(value, 'g', kDigits);
    }
};

QIcon swatch(const QColor& color)
{
    constexpr int kSide = 16;
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(color.lighter(130));
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0.5, 0.5, kSide - 1, kSide - 1), 3, 3);
    return painter.end() ? QIcon(pixmap) : QIcon();
}

QString sourceName(const ComputedPropertyDialog::About& about)
{
    const FormulaDirectory::Agent* agent = about.directory ? about.directory->agentWithId(about.agent) : nullptr;
    return agent ? agent->name : QString();
}

}  // namespace

ComputedPropertyDialog::ComputedPropertyDialog(About about, QWidget* parent)
    : QDialog(parent), m_about(std::move(about))
{
    //: %1 is the source that has, or gets, the property.
    setWindowTitle((m_about.property ? tr("Edit Computed Property of %1") : tr("New Computed Property of %1"))
                       .arg(sourceName(m_about)));
    m_previewDelay.setSingleShot(true);
    m_previewDelay.setInterval(kPreviewDelay);
    connect(&m_previewDelay, &QTimer::timeout, this, &ComputedPropertyDialog::askForPreview);
    makeFields();
    layOutFields();
    fill();
    connect(m_name, &QLineEdit::textChanged, this, &ComputedPropertyDialog::check);
    connect(m_formula, &QPlainTextEdit::textChanged, this, &ComputedPropertyDialog::check);
    connect(m_unit, &QComboBox::editTextChanged, this, &ComputedPropertyDialog::check);
    connect(m_join, &QComboBox::currentIndexChanged, this, &ComputedPropertyDialog::check);
    connect(m_gap, &QDoubleSpinBox::valueChanged, this, &ComputedPropertyDialog::check);
    connect(m_gapUnit, &QComboBox::currentIndexChanged, this, &ComputedPropertyDialog::check);
    check();
}

ComputedPropertyDialog::~ComputedPropertyDialog()
{
    ++*m_asked;
}

void ComputedPropertyDialog::makeFields()
{
    constexpr int kWidth = 460;  // points
    m_name = new QLineEdit(this);
    m_formula = new FormulaEdit(this);
    m_formula->setMinimumWidth(kWidth);
    m_formula->setDirectory(m_about.directory, m_about.agent);
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("formulaMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_unit = new QComboBox(this);
    m_unit->setEditable(true);
    m_unit->setInsertPolicy(QComboBox::NoInsert);
    m_colorButton = new QToolButton(this);
    m_colorButton->setText(tr("Color…"));
    m_colorButton->setAccessibleName(tr("Color"));
    m_colorButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(m_colorButton, &QToolButton::clicked, this, &ComputedPropertyDialog::pickColor);
    m_join = new QComboBox(this);
    m_join->addItem(tr("Its last value"));
    m_join->addItem(tr("A straight line between two"));
    m_join->setToolTip(tr("What stands for a property at a time that only another source has a record of."));
    m_gap = new GapBox(this);
    constexpr double kMost = 100'000;
    m_gap->setRange(0.001, kMost);
    m_gap->setDecimals(3);
    m_gap->setAccessibleName(tr("Longest gap that is bridged"));
    m_gapUnit = new QComboBox(this);
    m_gapUnit->setAccessibleName(tr("Unit of the longest gap"));
    for (const GapUnit& unit : kGapUnits)
        m_gapUnit->addItem(tr(unit.text));
    m_preview = new QLabel(this);
    m_preview->setObjectName(QStringLiteral("formulaPreview"));
    m_preview->setTextFormat(Qt::PlainText);
    m_preview->setWordWrap(true);
    m_preview->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_preview->setMinimumHeight(static_cast<int>(kValuesShown) * fontMetrics().lineSpacing());
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* accept = m_buttons->button(QDialogButtonBox::Ok);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_formula, &FormulaEdit::accepted, accept, &QPushButton::click);
}

void ComputedPropertyDialog::layOutFields()
{
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(tr("&Formula:"), m_formula);
    form->addRow(QString(), m_message);
    auto* unit = new QHBoxLayout;
    unit->addWidget(m_unit, 1);
    unit->addWidget(m_colorButton);
    form->addRow(tr("&Unit:"), unit);
    form->addRow(tr("&Between records:"), m_join);
    auto* gap = new QHBoxLayout;
    gap->addWidget(m_gap, 1);
    gap->addWidget(m_gapUnit);
    form->addRow(tr("&Longest gap:"), gap);
    form->addRow(tr("Last values:"), m_preview);
    form->addRow(m_buttons);
    for (const auto& [field, layout] : {std::pair<QWidget*, QLayout*>{m_unit, unit}, {m_gap, gap}})
        if (auto* label = qobject_cast<QLabel*>(form->labelForField(layout)))
            label->setBuddy(field);
}

void ComputedPropertyDialog::fill()
{
    const PropertyFormula formula =
        m_about.property ? m_about.property->formula.value_or(PropertyFormula{}) : PropertyFormula{};
    m_formula->setPlainText(formula.text);
    showUnit({});
    if (!formula.unit.isEmpty())
        m_unit->setEditText(formula.unit);
    m_join->setCurrentIndex(static_cast<int>(formula.join));
    // In the largest unit of which it is a whole number.
    int row = 0;
    for (int i = 0; i < static_cast<int>(kGapUnits.size()); ++i)
        if (std::fmod(formula.longestGap, kGapUnits[static_cast<std::size_t>(i)].seconds) == 0)
            row = i;
    m_gapUnit->setCurrentIndex(row);
    m_gap->setValue(formula.longestGap / kGapUnits[static_cast<std::size_t>(row)].seconds);
    if (m_about.property) {
        m_name->setText(m_about.property->name);
        setColor(m_about.property->color);
        m_color.reset();
    }
}

ComputedProperty ComputedPropertyDialog::property() const
{
    ComputedProperty property;
    property.name = m_name->text().simplified();
    property.formula.text = m_formula->formula();
    // The first entry tells the unit that follows; its text stands for none.
    if (m_unit->currentText() != m_unit->itemText(0))
        property.formula.unit = m_unit->currentText().trimmed();
    property.formula.join = static_cast<PropertyFormula::Join>(m_join->currentIndex());
    property.formula.longestGap =
        m_gap->value() * kGapUnits[static_cast<std::size_t>(std::max(0, m_gapUnit->currentIndex()))].seconds;
    property.color = m_color;
    return property;
}

QString ComputedPropertyDialog::problemWithName() const
{
    const QString name = m_name->text().simplified();
    if (name.isEmpty())
        return tr("Give it a name.");
    if (const FormulaDirectory::Agent* agent = m_about.directory->agentWithId(m_about.agent))
        if (const SiteProperty::Description* other = FormulaDirectory::propertyNamed(*agent, name))
            if (!m_about.property || other->id != m_about.property->id)
                return tr("“%1” is taken: choose another name.").arg(other->name);
    return {};
}

void ComputedPropertyDialog::check()
{
    const RowId id = m_about.property ? m_about.property->id : 0;
    const PropertyFormula formula = property().formula;
    PropertyFormula following = formula;
    following.unit.clear();
    const FormulaPlan free = planFormula(*m_about.directory, m_about.agent, following, id);
    const FormulaPlan plan = planFormula(*m_about.directory, m_about.agent, formula, id);
    m_formula->showProblem(free.problem);  // a unit that does not fit is no fault of a place in the text
    showUnit(free.program ? free.program->unit : QString());
    const QString name = problemWithName();
    QString message;
    if (plan.problem && (plan.problem->kind != FormulaProblem::Kind::Empty || name.isEmpty()))
        message = sentenceOf(*plan.problem);
    else if (!name.isEmpty())
        message = name;
    else if (plan.program)
        message = plan.program->unit.isEmpty() ? tr("The result is a number without a unit.")
                                               : tr("The result is in %1.").arg(plan.program->unit);
    m_message->setText(message);
    QPushButton* accept = m_buttons->button(QDialogButtonBox::Ok);
    accept->setEnabled(plan.program && name.isEmpty());
    accept->setToolTip(accept->isEnabled() ? QString() : message);
    ++*m_asked;  // an answer on its way is of another formula
    if (plan.program) {
        m_previewDelay.start();
        return;
    }
    m_previewDelay.stop();
    m_preview->clear();
}

/// The unit that follows comes first, then those it converts to; what was chosen stays.
void ComputedPropertyDialog::showUnit(const QString& following)
{
    const QString first = following.isEmpty() ? tr("as it follows") : tr("as it follows: %1").arg(following);
    QStringList units{first};
    units << Units::shared()->compatibleUnits(following);
    QStringList shown;
    for (int i = 0; i < m_unit->count(); ++i)
        shown << m_unit->itemText(i);
    if (units == shown)
        return;
    const bool isFollowing = m_unit->count() == 0 || m_unit->currentText() == m_unit->itemText(0);
    const QString chosen = isFollowing ? first : m_unit->currentText();
    const QSignalBlocker quiet(m_unit);
    m_unit->clear();
    m_unit->addItems(units);
    m_unit->setEditText(chosen);
}

void ComputedPropertyDialog::askForPreview()
{
    const int asked = ++*m_asked;
    const RowId id = m_about.property ? m_about.property->id : 0;
    QThreadPool::globalInstance()->start(
        [self = QPointer(this), now = m_asked, asked, about = m_about, id, formula = property().formula] {
            FormulaPreview preview;
            try {
                preview = previewOf(about.records, about.directory, about.agent, formula, id, kValuesShown,
                                    [now, asked](double) { return *now == asked; });
            } catch (const std::exception& error) {
                preview.failure = QString::fromUtf8(error.what());
            }
            MainQueue::main().async([self, now, asked, preview] {
                if (self && *now == asked)
                    self->showPreview(preview);
            });
        });
}

void ComputedPropertyDialog::showPreview(const FormulaPreview& preview)
{
    QStringList lines;
    for (const auto& [time, value] : preview.last) {
        const QString moment =
            QLocale().toString(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(time * 1000)), QLocale::ShortFormat);
        constexpr int kDigits = 6;
        lines << tr("%1:  %2 %3").arg(moment, QLocale().toString(value, 'g', kDigits), preview.unit).trimmed();
    }
    if (lines.isEmpty())
        lines << (preview.failure.isEmpty() ? tr("There is no value yet.") : preview.failure);
    m_preview->setText(lines.join(QLatin1Char('\n')));
}

void ComputedPropertyDialog::pickColor()
{
    auto* dialog =
        new QColorDialog(m_color.value_or(m_about.property ? m_about.property->color : QColor(Qt::white)), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this, &ComputedPropertyDialog::setColor);
    dialog->open();
}

void ComputedPropertyDialog::setColor(const QColor& color)
{
    m_color = color;
    m_colorButton->setIcon(swatch(color));
}

}  // namespace plotix
