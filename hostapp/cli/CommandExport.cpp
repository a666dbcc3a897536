#include "base/ReportableError.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/ExactText.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/exchange/Detection.h"

#include <QtCore/QSaveFile>

#include <cmath>
#include <ostream>

/// Exporting: comma-separated UTF-8 that importing reads back to the same bits.
///
/// Times are ISO 8601 in UTC; where one lies outside the calendar all of them are seconds since 1970, and the header
/// says so. Values are in the unit they are archived in; invalid ones are empty.
namespace plotix {

namespace {

constexpr std::size_t kBytesBetweenWrites = 1 << 20;
constexpr std::size_t kRowsBetweenReports = 8192;

std::string csvField(const QString& text)
{
    const bool isPlain = !text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
                         !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r'));
    return (isPlain
                ? text
                : QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"'))
        .toStdString();
}

/// Empty brackets keep the last word of a name without a unit from being taken for one.
QString headerOf(const SiteProperty& property)
{
    const QString& unit = property.description().archivedUnit;
    if (!unit.isEmpty())
        return QStringLiteral("%1 (%2)").arg(property.name(), unit);
    const bool isMistakable = splitHeader(property.name()).name != property.name();
    return isMistakable ? property.name() + QStringLiteral(" ()") : property.name();
}

class RecordsFile {
public:
    RecordsFile(const QString& path, const RecordBlock& block);

    void write(const std::vector<std::shared_ptr<SiteProperty>>& properties, const CommandProgress& progress);

private:
    void appendRow(std::size_t row);
    void flush();

    QSaveFile m_file;
    const RecordBlock& m_block;  // borrowed
    bool m_hasCalendarTimes;
    std::string m_text;
};

RecordsFile::RecordsFile(const QString& path, const RecordBlock& block) : m_file(path), m_block(block)
{
    const std::span<const double> times = block.times.span();
    m_hasCalendarTimes = std::all_of(times.begin(), times.end(), hasCalendarText);
    if (!m_file.open(QIODevice::WriteOnly))
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(path, m_file.errorString()));
}

void RecordsFile::write(const std::vector<std::shared_ptr<SiteProperty>>& properties, const CommandProgress& progress)
{
    m_text = m_hasCalendarTimes ? "time" : "time (s)";
    for (const auto& property : properties)
        m_text += ',' + csvField(headerOf(*property));
    m_text += '\n';
    for (std::size_t row = 0; row < m_block.times.size(); ++row) {
        appendRow(row);
        if (m_text.size() >= kBytesBetweenWrites)
            flush();
        const double fraction = 0.5 + 0.5 * static_cast<double>(row) / static_cast<double>(m_block.times.size());
        if (row % kRowsBetweenReports == 0 && !progress(fraction))
            throw ReportableError(QStringLiteral("cancelled; %1 was not written").arg(m_file.fileName()));
    }
    flush();
    if (!m_file.commit())
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(m_file.fileName(), m_file.errorString()));
}

void RecordsFile::appendRow(std::size_t row)
{
    const double time = m_block.times[row];
    m_text += m_hasCalendarTimes ? exactTime(time) : exactNumber(time);
    for (const RecordBlock::Column& column : m_block.columns) {
        m_text += ',';
        if (column.validity.isValid(row) && !std::isnan(column.values[row]))
            m_text += exactNumber(column.values[row]);
    }
    m_text += '\n';
}

void RecordsFile::flush()
{
    const auto size = static_cast<qint64>(m_text.size());
    if (m_file.write(m_text.data(), size) != size)
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(m_file.fileName(), m_file.errorString()));
    m_text.clear();
}

}  // namespace

int runCommand(const ExportCommand& command, CommandContext context)
{
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, command.choice.agent);
    const auto properties = propertiesOf(*agent, command.choice.properties);
    std::vector<RowId> ids;
    for (const auto& property : properties)
        ids.push_back(property->description().id);

    const Interruption interruption;
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Exporting %1").arg(agent->name()));
    RecordStore& store = *document->records();
    const TimeSpan span = timeSpanOf(command.choice, store.extent(agent->id()));
    const RecordOverview overview = store.overview(agent->id(), {}, span.from, span.to);
    if (const auto refusal = refusalOf({overview, ids.size(), span.from, span.to}, memoryBudget()))
        throw ReportableError(*refusal);
    const std::optional<RecordBlock> block = store.read(
        agent->id(), ids, span.from, span.to, [&progress](double fraction) { return progress(fraction / 2); });
    if (!block)
        throw ReportableError(QStringLiteral("cancelled; %1 was not written").arg(command.output));
    RecordsFile(command.output, *block).write(properties, progress);
    return kCommandDone;
}

}  // namespace plotix
