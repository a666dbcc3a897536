#include "hostapp/exchange/ImportRows.h"

#include "hostapp/exchange/ImportText.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kRowsBetweenReports = 4096;
constexpr double kRoomToSpare = 1.02;  // memory never touched costs nothing; moving a full column does

BadField wrongLength(const TextRecord& record, const ImportPlan& plan)
{
    const QString columns =
        plan.shape.hasHeader ? ImportText::tr("the header stands for %1") : ImportText::tr("the rows before have %1");
    QString text;
    for (const std::string_view field : record.fields)
        text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + decodedText(field.substr(0, 40));
    return {record.line,
            {},
            ImportText::tr("the row has %1 columns where %2: %3")
                .arg(record.fields.size())
                .arg(columns.arg(plan.shape.fields()), quotation(text.toStdString()))};
}

}  // namespace

ImportSource::ImportSource(const QString& file) : m_file(file)
{
    if (!m_file.open(QIODevice::ReadOnly))
        throw ReportableError(ImportText::tr("cannot be read: %1").arg(m_file.errorString()));
    if (m_file.isSequential()) {
        m_memory.setData(m_file.readAll());
        m_memory.open(QIODevice::ReadOnly);
        m_size = m_memory.size();
    } else {
        m_size = m_file.size();
    }
}

QIODevice& ImportSource::fromBeginning()
{
    QIODevice& device = m_memory.isOpen() ? static_cast<QIODevice&>(m_memory) : m_file;
    device.seek(0);
    return device;
}

ImportRows::ImportRows(ImportSource& source, ImportPlan& plan, const ImportOptions& options,
                       const ImportProgress& progress)
    : m_source(source), m_plan(plan), m_options(options), m_progress(progress)
{
}

void ImportRows::report(qint64 done) const
{
    if (m_progress && !m_progress(done, m_source.size()))
        throw ImportCancelled(ImportText::tr("cancelled; nothing was stored"));
}

/// Offers every row below the header to `takeAhead`, as text; what that does not take goes to `take`, cut into fields.
template <class TakeAhead, class Take>
void ImportRows::forEachRow(TakeAhead takeAhead, Take take)
{
    TextReader reader(m_source.fromBeginning(), m_plan.format);
    TextRecord record;
    if (m_plan.shape.hasHeader)
        reader.next(record);
    const auto takeNext = [&] {
        if (takeAhead(reader))
            return true;
        if (!reader.next(record))
            return false;
        take(record);
        return true;
    };
    for (std::size_t count = 1; takeNext(); ++count)
        if (count % kRowsBetweenReports == 0)
            report(reader.bytesRead());
    report(reader.bytesRead());
}

/// How many rows there will be, with a little to spare, when the rest of the file is like its beginning.
std::size_t ImportRows::expectedRows(std::size_t rows, qint64 bytesRead) const
{
    const double files = static_cast<double>(m_source.size()) / static_cast<double>(bytesRead);
    return rows + static_cast<std::size_t>(static_cast<double>(rows) * files * kRoomToSpare);
}

void ImportRows::decideDateOrder()
{
    if (!m_plan.time.needsDateOrder)
        return;
    DateOrderEvidence evidence;
    const auto nothingAhead = [](TextReader&) { return false; };
    forEachRow(nothingAhead, [&](const TextRecord& record) {
        if (m_plan.time.field < record.fields.size())
            if (const std::optional<DateAndTime> date = splitDateAndTime(record.fields[m_plan.time.field]))
                evidence.add(*date);
    });
    m_plan.time.layout = decidedLayout(evidence);
    m_plan.time.needsDateOrder = false;
}

RowCounts ImportRows::read(ImportTable& table)
{
    TimeColumnReader times(m_plan.time.layout, LocalTime(m_options.timeZone));
    PlainRows plain(m_plan, times);
    RowCounts counts;
    const auto takePlain = [&](TextReader& reader) {
        const std::size_t bytes = plain.read(reader.ahead(), table.decimalMark());
        if (bytes == 0)
            return false;
        reader.passOver(bytes);
        table.addRow(plain.time(), plain.values());
        if (++counts.rows == kRowsBetweenReports)
            table.expectRows(expectedRows(table.rows(), reader.bytesRead()));
        return true;
    };
    forEachRow(takePlain, [&](const TextRecord& record) {
        ++counts.rows;
        if (record.fields.size() == m_plan.shape.fields() && !conditionsHold(record)) {
            ++counts.otherRows;
            return;
        }
        const std::optional<BadField> bad = addRow(table, times, record);
        if (!bad)
            return;
        if (!m_options.skipBadRows)
            throw ReportableError(bad->message());
        ++counts.badRows;
        if (!counts.firstBad)
            counts.firstBad = bad;
    });
    return counts;
}

bool ImportRows::conditionsHold(const TextRecord& record) const
{
    return std::all_of(m_plan.conditions.begin(), m_plan.conditions.end(),
                       [&](const auto& condition) { return condition.holds(record.fields[condition.field]); });
}

std::optional<BadField> ImportRows::addRow(ImportTable& table, TimeColumnReader& times, const TextRecord& record)
{
    if (record.fields.size() != m_plan.shape.fields())
        return wrongLength(record, m_plan);
    const std::string_view text = record.fields[m_plan.time.field];
    const std::optional<double> time = times.read(text);
    if (!time)
        return BadField{record.line, m_plan.timeHeader(), ImportText::tr("%1 is no time").arg(quotation(text))};
    table.addRow(*time, record);
    return {};
}

}  // namespace plotix
