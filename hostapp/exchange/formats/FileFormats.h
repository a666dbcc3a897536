#pragma once

#include "hostapp/core/OutputFile.h"
#include "hostapp/exchange/Export.h"
#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/InputFile.h"
#include "hostapp/exchange/RowSource.h"

#include <QtCore/QByteArrayView>

#include <memory>
#include <span>

/// The formats that files of measurements can have. A new one is a folder beside the others and a row of the table.
///
/// Any thread.
namespace plotix {

struct FileFormat {
    const char* name;  ///< for tests and logs

    /// Whether the file is of this format, by its name in lower case and its first kFileBeginning bytes.
    bool (*isOf)(const QString& fileName, QByteArrayView beginning);

    /// Opens a file of this format for reading. Throws ImportFailure.
    std::unique_ptr<RowSource> (*read)(std::unique_ptr<InputFile> file, const ImportOptions& options);

    /// Whether a file of this name is written in this format; null for a format that can only be read.
    bool (*isWrittenFor)(const QString& fileName);
    /// Throws ExportFailure and ExportCancelled. Null for a format that can only be read.
    void (*write)(QIODevice& device, const ExportedRecords& records, const ExportProgress& progress);
    FileKind written = FileKind::Text;  ///< what a written file is, so that it replaces no other kind
};

inline constexpr qsizetype kFileBeginning = 4096;  // bytes

/// "JSON", "HTML" or "XML" for a text that begins as one, which is no table of rows in lines; else empty.
QString kindThatIsNoTable(QByteArrayView beginning);

/// In the order in which they are asked; the last one accepts every file.
std::span<const FileFormat> fileFormats();

/// The first format whose `isOf` says so.
const FileFormat& formatOf(const QString& fileName, QByteArrayView beginning);
/// Throws OutputFailure when no format is written under such a name.
const FileFormat& formatWrittenFor(const QString& fileName);

}  // namespace plotix
