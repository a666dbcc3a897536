#include "hostapp/exchange/formats/spreadsheet/SpreadsheetWriter.h"

#include "hostapp/exchange/formats/spreadsheet/SheetText.h"

#include <QtCore/QStringList>

#include <zip.h>

#include <algorithm>
#include <array>
#include <exception>
#include <vector>

namespace plotix {

namespace {

constexpr auto kTypesHead =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="xml" ContentType="application/xml"/>)"
    R"(<Override PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>)"
    R"(<Override PartName="/xl/styles.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>)";
constexpr auto kTypesSheet =
    R"(<Override PartName="/xl/worksheets/sheet%1.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>)";
constexpr auto kRootRelations =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="xl/workbook.xml"/></Relationships>)";
constexpr auto kWorkbookHead =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><sheets>)";
constexpr auto kWorkbookSheet = R"(<sheet name="%2" sheetId="%1" r:id="rId%1"/>)";
constexpr auto kRelationsHead =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)";
constexpr auto kRelationsSheet =
    R"(<Relationship Id="rId%1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="worksheets/sheet%1.xml"/>)";
constexpr auto kRelationsStyles =
    R"(<Relationship Id="rId%1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/></Relationships>)";
/// Style 1 is a date with its time of day.
constexpr auto kStyles =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">)"
    R"(<numFmts count="1"><numFmt numFmtId="164" formatCode="yyyy\-mm\-dd\ hh:mm:ss"/></numFmts>)"
    R"(<fonts count="1"><font><sz val="11"/><name val="Calibri"/></font></fonts>)"
    R"(<fills count="2"><fill><patternFill patternType="none"/></fill><fill><patternFill patternType="gray125"/></fill></fills>)"
    R"(<borders count="1"><border><left/><right/><top/><bottom/><diagonal/></border></borders>)"
    R"(<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>)"
    R"(<cellXfs count="2"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/><xf numFmtId="164" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/></cellXfs>)"
    R"(</styleSheet>)";

/// One sheet on its way into the archive.
struct SheetSource {
    SheetSource(const ExportedRecords& records, std::size_t first, std::size_t last, const ExportProgress& told)
        : text(records, first, last), progress(told), rowsBefore(first), rowsInAll(records.records.times.size())
    {
    }

    SheetText text;
    const ExportProgress& progress;  // borrowed
    std::size_t rowsBefore, rowsInAll;
    bool cancelled = false;
    std::exception_ptr failure;  // of reading the records
    zip_error_t error{};

    zip_int64_t read(void* data, zip_uint64_t length)
    {
        const double done = static_cast<double>(rowsBefore + text.rowsDone()) / static_cast<double>(rowsInAll + 1);
        if (progress && !progress(done)) {
            cancelled = true;
            zip_error_set(&error, ZIP_ER_CANCELLED, 0);
            return -1;
        }
        try {
            return static_cast<zip_int64_t>(text.read(static_cast<char*>(data), static_cast<std::size_t>(length)));
        } catch (...) {  // the archive's library knows no exceptions
            failure = std::current_exception();
            zip_error_set(&error, ZIP_ER_READ, 0);
            return -1;
        }
    }
};

zip_int64_t answerArchive(void* source, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto& sheet = *static_cast<SheetSource*>(source);
    switch (command) {
    case ZIP_SOURCE_OPEN: sheet.text.rewind(); return 0;
    case ZIP_SOURCE_READ: return sheet.read(data, length);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE: return 0;
    case ZIP_SOURCE_STAT: zip_stat_init(static_cast<zip_stat_t*>(data)); return sizeof(zip_stat_t);
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&sheet.error, data, length);
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
    default: zip_error_set(&sheet.error, ZIP_ER_OPNOTSUPP, 0); return -1;
    }
}

/// A zip archive in memory.
class Package {
public:
    Package() : m_bytes(zip_source_buffer_create(nullptr, 0, 0, nullptr))
    {
        if (m_bytes) {
            zip_source_keep(m_bytes);
            m_zip = zip_open_from_source(m_bytes, ZIP_TRUNCATE, nullptr);
        }
        if (!m_zip)
            throw ExportFailure(QStringLiteral("there is not enough memory"));
    }
    ~Package()
    {
        if (m_zip)
            zip_discard(m_zip);
        zip_source_free(m_bytes);
    }
    Package(const Package&) = delete;
    Package& operator=(const Package&) = delete;

    /// The text must live until the archive is closed.
    void add(const char* name, const QByteArray& text)
    {
        add(name, zip_source_buffer(m_zip, text.constData(), static_cast<zip_uint64_t>(text.size()), 0));
    }
    void add(const QByteArray& name, SheetSource& sheet)
    {
        add(name.constData(), zip_source_function(m_zip, answerArchive, &sheet));
    }

    bool close()
    {
        if (zip_close(m_zip) != 0)
            return false;
        m_zip = nullptr;
        return true;
    }
    QString errorText() { return m_zip ? QString::fromUtf8(zip_strerror(m_zip)) : QString(); }

    /// Requires: closed.
    void writeTo(QIODevice& device)
    {
        std::vector<char> piece(1 << 20);
        zip_source_open(m_bytes);
        for (zip_int64_t size; (size = zip_source_read(m_bytes, piece.data(), piece.size())) > 0;)
            if (device.write(piece.data(), size) != size)
                throw ExportFailure(device.errorString());
        zip_source_close(m_bytes);
    }

private:
    void add(const char* name, zip_source_t* source)
    {
        if (source && zip_file_add(m_zip, name, source, ZIP_FL_ENC_UTF_8) >= 0)
            return;
        zip_source_free(source);
        throw ExportFailure(errorText());
    }

    zip_source_t* m_bytes;   // owned
    zip_t* m_zip = nullptr;  // owned until closed
};

std::vector<std::unique_ptr<SheetSource>> sheetsOf(const ExportedRecords& records, const ExportProgress& progress)
{
    const std::size_t rows = records.records.times.size();
    std::vector<std::unique_ptr<SheetSource>> sheets;
    std::size_t first = 0;
    do {
        const std::size_t last = std::min(rows, first + kMostSheetRows - 1);
        sheets.push_back(std::make_unique<SheetSource>(records, first, last, progress));
        first = last;
    } while (first < rows);
    return sheets;
}

/// A part that lists the sheets: what stands before, once for each sheet, and after.
QByteArray listing(const char* head, const char* each, std::size_t count, const QString& tail)
{
    QString text = QString::fromLatin1(head);
    for (std::size_t number = 1; number <= count; ++number) {
        const QString name = number == 1 ? QStringLiteral("Records") : QStringLiteral("Records %1").arg(number);
        QString line = QString::fromLatin1(each).replace(QStringLiteral("%1"), QString::number(number));
        text += line.replace(QStringLiteral("%2"), name);
    }
    return (text + tail).toUtf8();
}

}  // namespace

void writeSpreadsheet(QIODevice& device, const ExportedRecords& records, const ExportProgress& progress)
{
    const std::size_t each = records.form.withQualities ? 2 : 1;
    if (records.columns.size() * each + 1 > kMostSheetColumns)
        throw ExportFailure(
            QStringLiteral("a sheet has no room for more than %1 properties; choose fewer, or a .csv file")
                .arg((kMostSheetColumns - 1) / each));
    const std::vector<std::unique_ptr<SheetSource>> sheets = sheetsOf(records, progress);
    const std::size_t count = sheets.size();
    const QByteArray types = listing(kTypesHead, kTypesSheet, count, QStringLiteral("</Types>"));
    const QByteArray root = kRootRelations;
    const QByteArray workbook = listing(kWorkbookHead, kWorkbookSheet, count, QStringLiteral("</sheets></workbook>"));
    const QByteArray relations =
        listing(kRelationsHead, kRelationsSheet, count, QString::fromLatin1(kRelationsStyles).arg(count + 1));
    const QByteArray styles = kStyles;
    Package package;
    package.add("[Content_Types].xml", types);
    package.add("_rels/.rels", root);
    package.add("xl/workbook.xml", workbook);
    package.add("xl/_rels/workbook.xml.rels", relations);
    package.add("xl/styles.xml", styles);
    for (std::size_t index = 0; index < count; ++index)
        package.add("xl/worksheets/sheet" + QByteArray::number(qulonglong(index + 1)) + ".xml", *sheets[index]);
    if (!package.close()) {
        if (std::any_of(sheets.begin(), sheets.end(), [](const auto& sheet) { return sheet->cancelled; }))
            throw ExportCancelled();
        for (const auto& sheet : sheets)
            if (sheet->failure)
                std::rethrow_exception(sheet->failure);
        throw ExportFailure(package.errorText());
    }
    package.writeTo(device);
}

}  // namespace plotix
