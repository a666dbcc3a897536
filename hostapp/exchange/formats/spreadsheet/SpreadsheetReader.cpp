#include "hostapp/exchange/formats/spreadsheet/SpreadsheetReader.h"

#include <algorithm>

namespace plotix {

namespace {

using What = ImportFinding::What;

}  // namespace

bool isZip(QByteArrayView beginning)
{
    return beginning.size() > 3 && beginning[0] == 'P' && beginning[1] == 'K' && beginning[2] == '\3' &&
           beginning[3] == '\4';
}

SpreadsheetReader::SpreadsheetReader(std::unique_ptr<InputFile> file, const ImportOptions& options)
    : TableReader(options), m_archive(file->fromBeginning().readAll()), m_workbook(m_archive)
{
    chooseSheet(options);
    m_size = m_archive.size(m_sheet.part);
    if (m_workbook.sheets().size() > 1)
        addNote({.what = What::SheetChosen, .text = m_sheet.name, .columns = m_workbook.sheetNames()});
    understand(sampleOf(m_sheet.part));
}

void SpreadsheetReader::chooseSheet(const ImportOptions& options)
{
    const std::vector<Workbook::Sheet>& sheets = m_workbook.sheets();
    if (sheets.empty())
        throw ImportFailure({.what = What::EmptyFile});
    const bool isNamed = !options.sheet.trimmed().isEmpty();
    const auto chosen = std::find_if(sheets.begin(), sheets.end(), [&](const Workbook::Sheet& sheet) {
        return isNamed ? sheet.name.compare(options.sheet.trimmed(), Qt::CaseInsensitive) == 0
                       : isTable(sampleOf(sheet.part), options);
    });
    if (chosen != sheets.end()) {
        m_sheet = *chosen;
        return;
    }
    if (isNamed)
        throw ImportFailure({.what = What::NoSuchSheet, .text = options.sheet, .columns = m_workbook.sheetNames()});
    const auto filled = std::find_if(sheets.begin(), sheets.end(), [this](const Workbook::Sheet& sheet) {
        return !sampleOf(sheet.part).rows.empty();
    });
    m_sheet = filled == sheets.end() ? sheets.front() : *filled;  // what is wrong with it is told
}

bool SpreadsheetReader::isTable(const TableSample& sample, const ImportOptions& options) const
{
    try {
        const TableShape shape = shapeOf(sample);
        if (options.timeColumn.isEmpty())
            timeColumnsOf(sample, shape, {});
        return shape.fields() > 1;
    } catch (const ImportFailure&) {
        return false;
    }
}

TableSample SpreadsheetReader::sampleOf(const QString& part) const
{
    TableSample sample;
    sample.delimiter = '\0';
    SheetRows rows(m_archive, m_workbook, part);
    TextRecord record;
    std::size_t width = 0;
    while (sample.rows.size() < kSampleRows && rows.next(record)) {
        TableSample::Row& row = sample.rows.emplace_back();
        row.line = record.line;
        row.fields.assign(record.fields.begin(), record.fields.end());
        width = std::max(width, row.fields.size());
    }
    for (TableSample::Row& row : sample.rows)
        row.fields.resize(width);
    return sample;
}

SourceForm SpreadsheetReader::form() const
{
    SourceForm form = TableReader::form();
    form.sheets = m_workbook.sheetNames();
    form.sheet = m_sheet.name;
    return form;
}

bool SpreadsheetReader::next(TextRecord& record)
{
    return m_rows->next(record);
}

void SpreadsheetReader::rewind()
{
    m_rows = std::make_unique<SheetRows>(m_archive, m_workbook, m_sheet.part);
}

}  // namespace plotix
