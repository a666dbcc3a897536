#include "hostapp/exchange/formats/delimited/DelimitedReader.h"

#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/ImportTable.h"

#include <algorithm>

namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr std::size_t kRowsInBatch = 4096;
constexpr std::size_t kLongestField = 40;  // bytes of a field in a finding about its row

TextSample sampleOf(InputFile& file)
{
    const QByteArray beginning = file.fromBeginning().read(kSampleBytes);
    return takeSample(beginning, beginning.size() < kSampleBytes);
}

}  // namespace

DelimitedReader::DelimitedReader(std::unique_ptr<InputFile> file)
    : m_file(std::move(file)), m_sample(sampleOf(*m_file)), m_shape(shapeOf(m_sample)), m_columns(columnsOf(m_shape))
{
}

std::size_t DelimitedReader::chooseTimeColumn(std::optional<std::size_t> named)
{
    m_time = timeColumnOf(m_sample, m_shape, named);
    return m_time.field;
}

void DelimitedReader::begin(const ImportPlan& plan)
{
    m_plan = &plan;
    if (m_time.needsDateOrder && plan.dateOrder != DateOrder::Detect) {
        m_time.needsDateOrder = false;
        m_time.layout = plan.dateOrder == DateOrder::DayFirst ? TimeLayout::DayFirst : TimeLayout::MonthFirst;
    }
    startAtFirstRow();
}

void DelimitedReader::startAtFirstRow()
{
    m_text = std::make_unique<TextReader>(m_file->fromBeginning(), m_sample.format);
    if (m_shape.hasHeader)
        m_text->next(m_record);
    if (m_time.needsDateOrder)
        return;
    m_times = std::make_unique<TimeColumnReader>(m_time.layout, LocalTime(m_plan->timeZone));
    m_plain = std::make_unique<PlainRows>(m_sample.format, m_shape.fields(), *m_plan, *m_times);
}

bool DelimitedReader::read(ImportTable& table)
{
    return m_time.needsDateOrder ? readDates() : readRows(table);
}

bool DelimitedReader::readDates()
{
    for (std::size_t count = 0; count < kRowsInBatch; ++count) {
        if (!m_text->next(m_record)) {
            decideDateOrder();
            break;
        }
        if (m_time.field < m_record.fields.size())
            if (const std::optional<DateAndTime> date = splitDateAndTime(m_record.fields[m_time.field]))
                m_dates.add(*date);
    }
    return true;
}

void DelimitedReader::decideDateOrder()
{
    m_time.layout = decidedLayout(m_dates);
    m_time.needsDateOrder = false;
    m_shape.notes.push_back(
        {.what = m_time.layout == TimeLayout::DayFirst ? What::DatesHaveDayFirst : What::DatesHaveMonthFirst});
    startAtFirstRow();
}

bool DelimitedReader::readRows(ImportTable& table)
{
    TextReader& text = *m_text;
    PlainRows& plain = *m_plain;
    for (std::size_t count = 0; count < kRowsInBatch; ++count) {
        if (const std::size_t bytes = plain.read(text.ahead(), m_mark)) {
            text.passOver(bytes);
            table.addRow(plain.time(), plain.values());
        } else if (text.next(m_record)) {
            addRow(table);
        } else {
            return false;
        }
    }
    return true;
}

void DelimitedReader::addRow(ImportTable& table)
{
    if (m_record.fields.size() != m_shape.fields()) {
        table.addBadRow(wrongLength());
        return;
    }
    if (!conditionsHold()) {
        table.passOverRow();
        return;
    }
    const std::string_view timeText = m_record.fields[m_time.field];
    const std::optional<double> time = m_times->read(timeText);
    if (!time) {
        table.addBadRow({.what = What::NoTime,
                         .line = m_record.line,
                         .column = m_plan->timeHeader,
                         .text = textForFinding(timeText)});
        return;
    }
    for (std::size_t index = 0; index < m_plan->columns.size(); ++index) {
        const std::string_view field = m_record.fields[m_plan->columns[index].field];
        double value = 0;
        switch (readNumber(field, m_mark, value)) {
        case FieldKind::Number: table.addNumber(index, value); break;
        case FieldKind::Missing: table.addMissing(index); break;
        case FieldKind::Text: table.addText(index, m_record.line, field); break;
        }
    }
    table.endRow(*time);
}

bool DelimitedReader::conditionsHold() const
{
    return std::all_of(m_plan->conditions.begin(), m_plan->conditions.end(),
                       [&](const auto& condition) { return condition.holds(m_record.fields[condition.field]); });
}

ImportFinding DelimitedReader::wrongLength() const
{
    QStringList fields;
    for (const std::string_view field : m_record.fields)
        fields << decodedText(field.substr(0, kLongestField));
    return {.what = m_shape.hasHeader ? What::RowUnlikeHeader : What::RowUnlikeOthers,
            .line = m_record.line,
            .text = textForFinding(fields.join(QLatin1Char(' ')).toStdString()),
            .found = m_record.fields.size(),
            .expected = m_shape.fields()};
}

}  // namespace plotix
