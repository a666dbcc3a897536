#include "hostapp/exchange/formats/FileExchange.h"

#include "base/ReportableError.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/exchange/formats/FileFormats.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

std::unique_ptr<RowSource> sourceOf(const QString& file, const ImportOptions& options)
{
    auto input = std::make_unique<InputFile>(file);
    const QByteArray beginning = input->fromBeginning().read(kFileBeginning);
    if (const QString kind = kindThatIsNoTable(beginning); !kind.isEmpty())
        throw ImportFailure({.what = ImportFinding::What::NotATable, .text = kind});
    return formatOf(QFileInfo(file).fileName(), beginning).read(std::move(input), options);
}

}  // namespace

ImportPreview previewOf(const QString& file, const ImportOptions& options, const ImportProgress& progress)
{
    try {
        const std::unique_ptr<RowSource> source = sourceOf(file, options);
        source->watch(progress);
        return previewRows(*source, options);
    } catch (const ImportFailure& failure) {
        ImportPreview preview;
        preview.problem = failure.finding();
        return preview;
    }
}

ImportSummary importFile(const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress)
{
    const QString name = QFileInfo(file).fileName();
    const std::unique_ptr<RowSource> source = sourceOf(file, options);
    source->watch(progress);
    try {
        return importRows(*source, file, site, options, progress);
    } catch (const ReportableError& error) {
        throw ReportableError(QStringLiteral("%1: %2").arg(name, error.message()));
    }
}

void exportFile(const QString& file, const ExportedRecords& records, const ExportProgress& progress)
{
    const FileFormat& format = formatWrittenFor(QFileInfo(file).fileName());
    OutputFile saved(format.written, file);
    format.write(saved.device(), records, progress);
    saved.commit();
}

}  // namespace plotix
