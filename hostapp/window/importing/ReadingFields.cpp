#include "hostapp/window/importing/ReadingFields.h"

#include <QtCore/QEvent>
#include <QtCore/QSignalBlocker>
#include <QtCore/QTimeZone>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <algorithm>
#include <array>

namespace plotix {

namespace {

constexpr std::array kDelimiterSigns = {"", ",", ";", "\t", "|", " "};  // in the order of the choices
constexpr QColor kMarkOnLight(0xB3, 0x26, 0x1E), kMarkOnDark(0xFF, 0x8A, 0x80);

/// The text of the choice "found out", with what that is.
void setGuess(QComboBox& box, const QString& guess)
{
    if (box.isEditable()) {
        if (box.currentText().isEmpty()) {
            box.lineEdit()->setPlaceholderText(guess);
            box.setToolTip(guess);
        }
    } else if (box.currentIndex() == 0) {  // else what was said would be taken for what was found
        box.setItemText(0, guess);
    }
}

void setItems(QComboBox& box, const QStringList& items)
{
    QStringList present;
    for (int index = 0; index < box.count(); ++index)
        present << box.itemText(index);
    if (present == items)
        return;
    const QString text = box.currentText();
    box.clear();
    box.addItems(items);
    box.setCurrentIndex(-1);
    box.setEditText(text);
}

void setMark(QWidget& widget, bool isMarked)
{
    QPalette colours;
    if (isMarked) {
        const QPalette shown = widget.palette();
        const bool isLight = shown.color(QPalette::Base).lightness() > 128;
        colours.setColor(QPalette::WindowText, isLight ? kMarkOnLight : kMarkOnDark);
    }
    widget.setPalette(colours);
    QFont font = widget.font();
    font.setBold(isMarked);
    widget.setFont(font);
}

}  // namespace

ReadingFields::ReadingFields(QWidget* parent)
    : QWidget(parent),
      m_form(new QFormLayout(this)),
      m_timeColumn(addNamed(ImportOption::TimeColumn, tr("Time c&olumn:"), "timeColumn")),
      m_timeZone(addNamed(ImportOption::TimeZone, tr("&Time zone:"), "timeZone")),
      m_dateOrder(addChoice(ImportOption::DateOrder, tr("&Dates:"),
                            {tr("Day before month"), tr("Month before day"), tr("Year, month, day")})),
      m_decimal(addChoice(ImportOption::Decimal, tr("Deci&mal sign:"), {tr("Point: 1.5"), tr("Comma: 1,5")})),
      m_delimiter(addChoice(ImportOption::Delimiter, tr("Betwee&n columns:"),
                            {tr("Comma"), tr("Semicolon"), tr("Tab"), tr("Bar |"), tr("Blanks")})),
      m_sheet(addChoice(ImportOption::Sheet, tr("S&heet:"), {})),
      m_arrangement(
          addChoice(ImportOption::Arrangement, tr("&Quantities:"), {tr("A column for each"), tr("Named in each row")}))
{
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    QStringList zones = {QStringLiteral("UTC"), QString::fromLatin1(QTimeZone::systemTimeZoneId())};
    zones.removeDuplicates();
    for (const QByteArray& zone : QTimeZone::availableTimeZoneIds())
        zones << QString::fromLatin1(zone);
    m_timeZone->addItems(zones);
    m_timeZone->setCurrentIndex(-1);
    m_timeZone->completer()->setFilterMode(Qt::MatchContains);
    m_timeZone->completer()->setCompletionMode(QCompleter::PopupCompletion);
    addRows();
    addQuality();
    addSwitches();
    forgetGuesses();
    showWhatApplies({.delimiter = QStringLiteral(",")});
}

QComboBox* ReadingFields::addChoice(ImportOption option, const QString& label, const QStringList& words)
{
    auto* box = new QComboBox(this);
    box->addItem(QString());  // found out
    box->addItems(words);
    // A long guess must not widen the dialog, and turning the wheel to scroll must not choose.
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QComboBox::currentIndexChanged, this, &ReadingFields::changed);
    m_form->addRow(label, box);
    m_fields[option] = box;
    return box;
}

QComboBox* ReadingFields::addNamed(ImportOption option, const QString& label, const char* name)
{
    auto* box = new QComboBox(this);
    box->setObjectName(QLatin1String(name));
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QComboBox::editTextChanged, this, &ReadingFields::changed);
    m_form->addRow(label, box);
    m_fields[option] = box;
    return box;
}

void ReadingFields::addRows()
{
    m_where = new QLineEdit(this);
    m_where->setObjectName(QStringLiteral("rows"));
    m_where->setPlaceholderText(tr("all, or such as origin=EWR"));
    m_where->setToolTip(tr("All rows, or those with a text in a column, such as origin=EWR."));
    connect(m_where, &QLineEdit::textChanged, this, &ReadingFields::changed);
    m_form->addRow(tr("&Rows:"), m_where);
    m_fields[ImportOption::Where] = m_where;
    m_rowsAtOneTime = addChoice(ImportOption::RowsAtOneTime, tr("At one tim&e:"), {tr("Keep the last row")});
    m_rowsAtOneTime->setItemText(0, tr("Refuse many rows"));
    m_rowsAtOneTime->setToolTip(tr("Whether many rows with one time and different numbers are refused, or the last of "
                                   "them is kept."));
}

void ReadingFields::addSwitches()
{
    m_keepAllNumbers = new QCheckBox(tr("-999 and the li&ke are values"), this);
    m_keepAllNumbers->setToolTip(tr("Otherwise such numbers are gaps where all others are far above."));
    m_skipBadRows = new QCheckBox(tr("Skip rows &without a time"), this);
    m_skipBadRows->setToolTip(tr("Otherwise the import is refused when more than a third of the rows have none."));
    for (QCheckBox* box : {m_keepAllNumbers, m_skipBadRows}) {
        connect(box, &QCheckBox::toggled, this, &ReadingFields::changed);
        m_form->addRow(box);
    }
    m_fields[ImportOption::BadRows] = m_skipBadRows;
}

bool ReadingFields::eventFilter(QObject* watched, QEvent* event)
{
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && widget && !widget->hasFocus()) {
        event->ignore();  // the area around it scrolls
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ReadingFields::setOptions(const ImportOptions& options)
{
    const QSignalBlocker quiet(this);
    m_timeColumn->setEditText(options.timeColumn);
    m_timeZone->setEditText(options.timeZone);
    m_dateOrder->setCurrentIndex(static_cast<int>(options.dateOrder));
    m_decimal->setCurrentIndex(static_cast<int>(options.decimal));
    const auto sign = std::find(kDelimiterSigns.begin(), kDelimiterSigns.end(), options.delimiter.toStdString());
    m_delimiter->setCurrentIndex(sign == kDelimiterSigns.end() ? 0 : static_cast<int>(sign - kDelimiterSigns.begin()));
    if (!options.sheet.isEmpty() && m_sheet->findText(options.sheet) < 1)
        m_sheet->addItem(options.sheet);
    m_sheet->setCurrentIndex(std::max(0, options.sheet.isEmpty() ? 0 : m_sheet->findText(options.sheet)));
    m_arrangement->setCurrentIndex(static_cast<int>(options.arrangement));
    m_where->setText(options.where.empty() ? QString()
                                           : options.where[0].first + QLatin1Char('=') + options.where[0].second);
    m_rowsAtOneTime->setCurrentIndex(static_cast<int>(options.rowsAtOneTime));
    setQuality(options);
    m_keepAllNumbers->setChecked(options.keepAllNumbers);
    m_skipBadRows->setChecked(options.skipBadRows);
}

void ReadingFields::addTo(ImportOptions& options) const
{
    options.timeColumn = m_timeColumn->currentText().trimmed();
    options.timeZone = m_timeZone->currentText().trimmed();
    options.dateOrder = static_cast<DateOrder>(m_dateOrder->currentIndex());
    options.decimal = static_cast<DecimalSign>(m_decimal->currentIndex());
    if (m_form->isRowVisible(m_delimiter))
        options.delimiter = QLatin1String(kDelimiterSigns.at(static_cast<std::size_t>(m_delimiter->currentIndex())));
    if (m_sheet->currentIndex() > 0 && m_form->isRowVisible(m_sheet))
        options.sheet = m_sheet->currentText();
    options.arrangement = static_cast<Arrangement>(m_arrangement->currentIndex());
    if (const QString where = m_where->text().trimmed(); !where.isEmpty())
        options.where = {
            {where.section(QLatin1Char('='), 0, 0).trimmed(), where.section(QLatin1Char('='), 1).trimmed()}};
    options.rowsAtOneTime = static_cast<RowsAtOneTime>(m_rowsAtOneTime->currentIndex());
    addQualityTo(options);
    options.keepAllNumbers = m_keepAllNumbers->isChecked();
    options.skipBadRows = m_skipBadRows->isChecked();
}

QString ReadingFields::wrongText() const
{
    switch (wrongOption()) {
    case ImportOption::Where: return tr("Write the rows you want as COLUMN=TEXT.");
    case ImportOption::Quality: return tr("Write the columns of quality as STATUS=VALUES.");
    default: return {};
    }
}

ImportOption ReadingFields::wrongOption() const
{
    const QString where = m_where->text().trimmed();
    if (!where.isEmpty() && where.indexOf(QLatin1Char('=')) < 1)
        return ImportOption::Where;
    return isQualityWrong() ? ImportOption::Quality : ImportOption::None;
}

void ReadingFields::forgetGuesses()
{
    const QSignalBlocker quiet(this);
    for (QComboBox* box : {m_dateOrder, m_decimal, m_delimiter, m_sheet, m_arrangement})
        box->setItemText(0, tr("Automatic"));
    m_timeColumn->lineEdit()->setPlaceholderText(tr("Automatic"));
    m_timeZone->lineEdit()->setPlaceholderText(tr("Automatic"));
    m_quality->setPlaceholderText(tr("Automatic"));
}

void ReadingFields::showGuesses(const ImportPreview& preview)
{
    const QSignalBlocker quiet(this);
    const auto show = [](QComboBox& box, int found) {
        setGuess(box, found > 0 ? tr("Automatic: %1").arg(box.itemText(found)) : tr("Automatic"));
    };
    const SourceForm& form = preview.form;
    if (preview.columns.empty())
        return;  // not even opened: what was found before still stands
    showWhatApplies(form);
    const auto sign = std::find(kDelimiterSigns.begin(), kDelimiterSigns.end(), form.delimiter.toStdString());
    show(*m_delimiter, sign == kDelimiterSigns.end() ? 0 : static_cast<int>(sign - kDelimiterSigns.begin()));
    show(*m_decimal, static_cast<int>(form.decimal));
    show(*m_dateOrder, static_cast<int>(form.dateOrder));
    show(*m_arrangement, static_cast<int>(form.arrangement));
    show(*m_sheet, m_sheet->findText(form.sheet));
    showTimeGuesses(preview);
    showQualities(preview);
}

void ReadingFields::showWhatApplies(const SourceForm& form)
{
    QStringList sheets = {m_sheet->itemText(0)};
    sheets << form.sheets;
    const QString chosen = m_sheet->currentIndex() > 0 ? m_sheet->currentText() : QString();
    if (m_sheet->count() != sheets.size() || !form.sheets.contains(m_sheet->itemText(1))) {
        m_sheet->clear();
        m_sheet->addItems(sheets);
        m_sheet->setCurrentIndex(std::max(0, chosen.isEmpty() ? 0 : m_sheet->findText(chosen)));
    }
    m_form->setRowVisible(m_sheet, form.sheets.size() > 1);
    m_form->setRowVisible(m_delimiter, form.sheets.isEmpty());
}

void ReadingFields::showTimeGuesses(const ImportPreview& preview)
{
    QStringList headers, times;
    for (const ImportPreview::Column& column : preview.columns) {
        headers << column.header;
        if (column.use == ImportPreview::Column::Use::Time)
            times << column.header;
    }
    headers.removeDuplicates();
    setItems(*m_timeColumn, headers);
    setGuess(*m_timeColumn, times.isEmpty() ? tr("Automatic") : tr("Automatic: %1").arg(times.join(QLatin1Char('+'))));
    const QString yours = QString::fromLatin1(QTimeZone::systemTimeZoneId());
    setGuess(*m_timeZone, preview.zoneIsFromFile ? tr("Automatic: %1 (the file's)").arg(preview.timeZone)
                                                 : tr("Automatic: %1 (yours)").arg(yours));
}

QWidget* ReadingFields::field(ImportOption option) const
{
    const auto found = m_fields.find(option);
    return found == m_fields.end() ? nullptr : found->second;
}

void ReadingFields::mark(ImportOption option, const QString& why)
{
    for (const auto& [own, field] : m_fields) {
        QWidget* label = m_form->labelForField(field);
        setMark(label ? *label : *field, own == option);
        field->setAccessibleDescription(own == option ? why : QString());
    }
}

}  // namespace plotix
