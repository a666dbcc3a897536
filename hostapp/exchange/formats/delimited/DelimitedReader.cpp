#include "hostapp/exchange/formats/delimited/DelimitedReader.h"

#include "hostapp/exchange/ImportTable.h"

#include <algorithm>

namespace plotix {

namespace {

/// So much of the file that some rows are whole, however long they are.
TextSample sampleOf(InputFile& file, const QString& delimiter)
{
    constexpr std::size_t kFewRows = 8;
    for (qsizetype bytes = kSampleBytes;; bytes *= 4) {
        QByteArray beginning;
        QIODevice& device = file.fromBeginning();
        while (beginning.size() < bytes) {
            const QByteArray more = device.read(bytes - beginning.size());
            if (more.isEmpty())
                break;
            beginning += more;
        }
        const bool isWhole = beginning.size() < bytes;
        TextSample sample = takeSample(beginning, isWhole, delimiter);
        if (isWhole || sample.rows.size() >= kFewRows || bytes >= kLongestSample)
            return sample;
    }
}

}  // namespace

DelimitedReader::DelimitedReader(std::unique_ptr<InputFile> file, const ImportOptions& options)
    : TableReader(options), m_file(std::move(file))
{
    TextSample sample = sampleOf(*m_file, options.delimiter);
    m_format = sample.format;
    understand(std::move(sample));
}

void DelimitedReader::rewind()
{
    m_text = std::make_unique<TextReader>(m_file->fromBeginning(), m_format);
}

void DelimitedReader::prepareRows()
{
    const bool mayBePlain =
        hasSingleTime() && !rowsNameQuantities() && takesBareNumbers() && m_format.fewestBlanks == 0;
    m_plain =
        mayBePlain ? std::make_unique<PlainRows>(m_format, shape().fields(), plan(), times(), qualities()) : nullptr;
}

bool DelimitedReader::readRows(ImportTable& table)
{
    if (!m_plain)
        return TableReader::readRows(table);
    TextReader& text = *m_text;
    PlainRows& plain = *m_plain;
    for (std::size_t count = 0; count < kRowsInBatch; ++count) {
        if (const std::size_t bytes = plain.read(text.ahead(), commonMark())) {
            text.passOver(bytes);
            if (plain.hasQualities())
                table.addRow(plain.time(), plain.values(), plain.marks());
            else
                table.addRow(plain.time(), plain.values());
        } else if (text.next(m_record)) {
            addRow(m_record, table);
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace plotix
