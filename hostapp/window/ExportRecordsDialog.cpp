#include "hostapp/window/ExportRecordsDialog.h"

#include "base/WholeDay.h"

#include <QtCore/QLocale>
#include <QtCore/QTimeZone>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

namespace plotix {

namespace {

enum Format { Commas, Semicolons, Workbook };
enum Decimal { Point, Comma };
enum Clock { Local, Utc };

QDateTime timeOf(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000));
}

double secondsOf(const QDateTime& time)
{
    return static_cast<double>(time.toMSecsSinceEpoch()) / 1000;
}

/// The end of a day is its last moment, whatever part of a second that is.
double endOf(const QDateTime& time)
{
    const OptionalDate end = time == time.date().endOfDay() ? lastMomentOf(time.date()) : std::nullopt;
    return end ? end->seconds : secondsOf(time);
}

}  // namespace

ExportRecordsDialog::ExportRecordsDialog(std::vector<Source> sources, const std::optional<Span>& visible,
                                         QWidget* parent)
    : QDialog(parent),
      m_sources(std::move(sources)),
      m_visible(visible),
      m_all(new QRadioButton(tr("&All records"), this)),
      m_shown(new QRadioButton(tr("Those the trend &shows"), this)),
      m_chosen(new QRadioButton(tr("&From"), this)),
      m_from(new QDateTimeEdit(this)),
      m_to(new QDateTimeEdit(this)),
      m_source(new QComboBox(this)),
      m_format(new QComboBox(this)),
      m_decimal(new QComboBox(this)),
      m_clock(new QComboBox(this)),
      m_properties(new PropertyChoice(this)),
      m_guard(new QCheckBox(tr("Put an &apostrophe before names that look like formulas"), this))
{
    setWindowTitle(tr("Export Records"));
    for (const Source& source : m_sources)
        m_source->addItem(source.name);
    m_format->addItems(
        {tr("Text, comma-separated (.csv)"), tr("Text, semicolon-separated (.csv)"), tr("Spreadsheet (.xlsx)")});
    m_decimal->addItems({QStringLiteral("1.5"), QStringLiteral("1,5")});
    m_clock->addItems({tr("Local time (%1)").arg(QString::fromLatin1(QTimeZone::systemTimeZoneId())), tr("UTC")});
    auto* spans = new QButtonGroup(this);  // the buttons stand in two widgets, and only one of them counts
    for (QRadioButton* button : {m_all, m_shown, m_chosen})
        spans->addButton(button);
    m_shown->setEnabled(visible.has_value());
    (visible ? m_shown : m_all)->setChecked(true);
    buildRows();
    connect(m_chosen, &QRadioButton::toggled, this, &ExportRecordsDialog::adjust);
    connect(m_format, &QComboBox::currentIndexChanged, this, &ExportRecordsDialog::adjust);
    connect(m_source, &QComboBox::currentIndexChanged, this, &ExportRecordsDialog::offerProperties);
    connect(m_properties, &PropertyChoice::tickedChanged, this, &ExportRecordsDialog::adjust);
    offerProperties();
    // A locale with a decimal comma has spreadsheets that expect semicolons.
    if (QLocale().decimalPoint() == QLatin1String(","))
        m_format->setCurrentIndex(Semicolons);
    adjust();
    m_decimal->setCurrentIndex(m_format->currentIndex() == Semicolons ? Comma : Point);
}

void ExportRecordsDialog::buildRows()
{
    auto* rows = new QFormLayout(this);
    rows->addRow(tr("Sou&rce:"), m_source);
    rows->addRow(tr("&Properties:"), m_properties);
    rows->addRow(tr("Records:"), m_all);
    rows->addRow(QString(), m_shown);
    rows->addRow(QString(), makeSpanRow());
    rows->addRow(tr("F&ormat:"), m_format);
    rows->addRow(tr("&Decimal sign:"), m_decimal);
    rows->addRow(tr("&Times:"), m_clock);
    rows->addRow(QString(), m_guard);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_export = buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    rows->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::size_t ExportRecordsDialog::source() const
{
    return static_cast<std::size_t>(m_source->currentIndex());
}

void ExportRecordsDialog::offerProperties()
{
    m_properties->offer(m_sources[source()].properties);
}

QWidget* ExportRecordsDialog::makeSpanRow()
{
    auto* row = new QWidget(this);
    auto* parts = new QHBoxLayout(row);
    parts->setContentsMargins(0, 0, 0, 0);
    auto* to = new QLabel(tr("t&o"), row);
    to->setBuddy(m_to);
    for (QDateTimeEdit* edit : {m_from, m_to}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    // The calendar names a day, and no time of it: from its beginning, to its end.
    for (const auto chosen : {&QCalendarWidget::clicked, &QCalendarWidget::activated}) {
        connect(m_from->calendarWidget(), chosen, this, [this](QDate day) { m_from->setDateTime(day.startOfDay()); });
        connect(m_to->calendarWidget(), chosen, this, [this](QDate day) { m_to->setDateTime(day.endOfDay()); });
    }
    m_from->setAccessibleName(tr("From"));
    m_to->setAccessibleName(tr("To"));
    const double now = secondsOf(QDateTime::currentDateTime());
    constexpr double kDay = 86'400;
    m_from->setDateTime(timeOf(m_visible ? m_visible->first : now - kDay));
    m_to->setDateTime(timeOf(m_visible ? m_visible->second : now));
    parts->addWidget(m_chosen);
    parts->addWidget(m_from, 1);
    parts->addWidget(to);
    parts->addWidget(m_to, 1);
    return row;
}

void ExportRecordsDialog::adjust()
{
    m_from->setEnabled(m_chosen->isChecked());
    m_to->setEnabled(m_chosen->isChecked());
    // Commas between columns leave the point alone; a spreadsheet writes numbers as its own locale has it.
    m_decimal->setEnabled(m_format->currentIndex() == Semicolons);
    if (!m_decimal->isEnabled())
        m_decimal->setCurrentIndex(Point);
    if (const bool isWorkbook = m_format->currentIndex() == Workbook; isWorkbook != m_wasWorkbook) {
        m_wasWorkbook = isWorkbook;
        m_guard->setChecked(isWorkbook);
    }
    m_export->setEnabled(!properties().empty());
    m_export->setToolTip(m_export->isEnabled() ? QString() : tr("Tick a property first."));
}

std::optional<ExportRecordsDialog::Span> ExportRecordsDialog::span() const
{
    if (m_all->isChecked())
        return std::nullopt;
    if (m_shown->isChecked())
        return m_visible;
    return Span(secondsOf(m_from->dateTime()), endOf(m_to->dateTime()));
}

ExportForm ExportRecordsDialog::form() const
{
    ExportForm form;
    form.clock = m_clock->currentIndex() == Utc ? ExportForm::Clock::Utc : ExportForm::Clock::Local;
    form.delimiter = m_format->currentIndex() == Semicolons ? ';' : ',';
    form.decimalSign = m_decimal->currentIndex() == Comma ? ',' : '.';
    form.guardsFormulas = m_guard->isChecked();
    return form;
}

QString ExportRecordsDialog::fileType() const
{
    return m_format->currentIndex() == Workbook ? QStringLiteral("xlsx") : QStringLiteral("csv");
}

void ExportRecordsDialog::chooseAll()
{
    m_all->setChecked(true);
}

void ExportRecordsDialog::chooseSpan(const Span& span)
{
    m_chosen->setChecked(true);
    m_from->setDateTime(timeOf(span.first));
    m_to->setDateTime(timeOf(span.second));
}

void ExportRecordsDialog::chooseWorkbook()
{
    m_format->setCurrentIndex(Workbook);
}

void ExportRecordsDialog::chooseSemicolons()
{
    m_format->setCurrentIndex(Semicolons);
    m_decimal->setCurrentIndex(Comma);
}

void ExportRecordsDialog::accept()
{
    if (m_properties->isSearching()) {
        m_properties->leaveSearch();
        return;
    }
    const std::optional<Span> chosen = span();
    if (chosen && chosen->second < chosen->first) {
        m_to->setFocus();
        m_to->selectAll();
        return;
    }
    QDialog::accept();
}

}  // namespace plotix
