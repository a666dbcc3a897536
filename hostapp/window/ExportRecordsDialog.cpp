#include "hostapp/window/ExportRecordsDialog.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QTimeZone>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

namespace plotix {

namespace {

enum Format { Commas, Semicolons, Workbook };
enum Decimal { Point, Comma };

/// Where no trend shows any.
MomentSpan lastDay()
{
    constexpr double kDay = 86'400, kMillis = 1000;
    const double now = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / kMillis;
    return {now - kDay, now};
}

}  // namespace

ExportRecordsDialog::ExportRecordsDialog(std::vector<Source> sources, const std::optional<Span>& visible,
                                         QWidget* parent, const Zones& zones)
    : QDialog(parent),
      m_sources(std::move(sources)),
      m_visible(visible),
      m_all(new QRadioButton(tr("&All records"), this)),
      m_shown(new QRadioButton(tr("Those the trend &shows"), this)),
      m_chosen(new SpanChoice(visible.value_or(lastDay()), this)),
      m_source(new QComboBox(this)),
      m_format(new QComboBox(this)),
      m_decimal(new QComboBox(this)),
      m_clock(new QComboBox(this)),
      m_properties(new PropertyChoice(this)),
      m_guard(new QCheckBox(tr("Put an &apostrophe before names that look like formulas"), this)),
      m_qualities(new QCheckBox(tr("Write in a column &beside each which values are good"), this))
{
    setWindowTitle(tr("Export Records"));
    for (const Source& source : m_sources)
        m_source->addItem(source.name);
    m_format->addItems(
        {tr("Text, comma-separated (.csv)"), tr("Text, semicolon-separated (.csv)"), tr("Spreadsheet (.xlsx)")});
    m_decimal->addItems({QStringLiteral("1.5"), QStringLiteral("1,5")});
    offerClocks(zones);
    auto* spans = new QButtonGroup(this);  // the buttons stand in two widgets, and only one of them counts
    for (QRadioButton* button : {m_all, m_shown, &m_chosen->button()})
        spans->addButton(button);
    m_shown->setEnabled(visible.has_value());
    (visible ? m_shown : m_all)->setChecked(true);
    buildRows();
    connect(m_format, &QComboBox::currentIndexChanged, this, &ExportRecordsDialog::adjust);
    connect(m_source, &QComboBox::currentIndexChanged, this, &ExportRecordsDialog::offerProperties);
    connect(m_properties, &PropertyChoice::tickedChanged, this, &ExportRecordsDialog::adjust);
    connect(m_clock, &QComboBox::currentIndexChanged, this, [this] { m_chosen->sayBy(zone()); });
    m_chosen->sayBy(zone());
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
    rows->addRow(QString(), m_chosen);
    rows->addRow(tr("F&ormat:"), m_format);
    rows->addRow(tr("&Decimal sign:"), m_decimal);
    rows->addRow(tr("&Times:"), m_clock);
    rows->addRow(QString(), m_guard);
    rows->addRow(QString(), m_qualities);
    m_qualities->setObjectName(QStringLiteral("qualities"));
    m_qualities->setToolTip(tr("Values that are not valid are then written too, and an import reads back both. "
                               "Otherwise they are left empty."));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_export = buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    rows->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

/// An item's data is its zone's name; of the user's own it is empty.
void ExportRecordsDialog::offerClocks(const Zones& zones)
{
    m_clock->addItem(tr("Local time (%1)").arg(QString::fromLatin1(QTimeZone::systemTimeZoneId())), QByteArray());
    m_clock->addItem(tr("UTC"), QByteArrayLiteral("UTC"));
    const auto offer = [this](const QTimeZone& zone, const QString& text) {
        if (zone.isValid() && m_clock->findData(zone.id()) < 0)
            m_clock->addItem(text.arg(QString::fromLatin1(zone.id())), zone.id());
    };
    offer(zones.trend, tr("The trend's clocks (%1)"));
    offer(zones.site, tr("The site's clocks (%1)"));
    if (zones.trend.isValid())
        m_clock->setCurrentIndex(m_clock->findData(zones.trend.id()));
}

QTimeZone ExportRecordsDialog::zone() const
{
    const QByteArray name = m_clock->currentData().toByteArray();
    return name.isEmpty() ? QTimeZone() : QTimeZone(name);
}

std::size_t ExportRecordsDialog::source() const
{
    return static_cast<std::size_t>(m_source->currentIndex());
}

void ExportRecordsDialog::offerProperties()
{
    m_properties->offer(m_sources[source()].properties);
}

void ExportRecordsDialog::adjust()
{
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
    return m_chosen->span();
}

ExportForm ExportRecordsDialog::form() const
{
    ExportForm form;
    setClock(form, zone());
    form.delimiter = m_format->currentIndex() == Semicolons ? ';' : ',';
    form.decimalSign = m_decimal->currentIndex() == Comma ? ',' : '.';
    form.guardsFormulas = m_guard->isChecked();
    form.withQualities = m_qualities->isChecked();
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
    const bool isNoDate = m_chosen->isChosen() && !m_chosen->isUnderstood();
    if (isNoDate || (chosen && chosen->second < chosen->first)) {
        m_chosen->askAgain();
        return;
    }
    QDialog::accept();
}

}  // namespace plotix
