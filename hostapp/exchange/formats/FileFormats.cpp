#include "hostapp/exchange/formats/FileFormats.h"

#include "hostapp/exchange/formats/delimited/DelimitedReader.h"
#include "hostapp/exchange/formats/delimited/DelimitedWriter.h"
#include "hostapp/exchange/formats/spreadsheet/SpreadsheetReader.h"
#include "hostapp/exchange/formats/spreadsheet/SpreadsheetWriter.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace plotix {

namespace {

template <class Source>
std::unique_ptr<RowSource> make(std::unique_ptr<InputFile> file, const ImportOptions& options)
{
    return std::make_unique<Source>(std::move(file), options);
}

bool zipFile(const QString&, QByteArrayView beginning)
{
    return isZip(beginning);
}

bool anyFile(const QString&, QByteArrayView)
{
    return true;
}

bool isTextName(const QString& name)
{
    return hasEndingOf(FileKind::Text, name);
}

bool isWorkbookName(const QString& name)
{
    return hasEndingOf(FileKind::Workbook, name);
}

constexpr std::array<FileFormat, 2> kFormats = {{
    {"spreadsheet", zipFile, make<SpreadsheetReader>, isWorkbookName, writeSpreadsheet, FileKind::Workbook},
    {"delimited text", anyFile, make<DelimitedReader>, isTextName, writeDelimited},
}};

}  // namespace

std::span<const FileFormat> fileFormats()
{
    return kFormats;
}

/// A line of a log may begin with a bracket too, and a date behind it: so what follows it counts.
QString kindThatIsNoTable(QByteArrayView beginning)
{
    QByteArray text = beginning.toByteArray();
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    text = text.trimmed().toLower();
    const QByteArray behind = text.mid(1).trimmed();
    const auto goesOnWith = [&behind](const char* signs) {
        return !behind.isEmpty() && std::strchr(signs, behind.front()) != nullptr;
    };
    if ((text.startsWith('{') && goesOnWith("\"}")) || (text.startsWith('[') && goesOnWith("{[\"")))
        return QStringLiteral("JSON");
    for (const char* const mark : {"<!doctype html", "<html", "<table", "<head", "<body"})
        if (text.startsWith(mark))
            return QStringLiteral("HTML");
    return text.startsWith("<?xml") ? QStringLiteral("XML") : QString();
}

const FileFormat& formatOf(const QString& fileName, QByteArrayView beginning)
{
    return *std::find_if(kFormats.begin(), kFormats.end(),
                         [&](const FileFormat& format) { return format.isOf(fileName.toLower(), beginning); });
}

const FileFormat& formatWrittenFor(const QString& fileName)
{
    const auto found = std::find_if(kFormats.begin(), kFormats.end(), [&](const FileFormat& format) {
        return format.write != nullptr && format.isWrittenFor(fileName.toLower());
    });
    if (found == kFormats.end())
        throw OutputFailure({OutputProblem::Reason::WrongEnding, fileName, FileKind::Text});
    return *found;
}

}  // namespace plotix
