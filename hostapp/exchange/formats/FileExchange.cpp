#include "hostapp/exchange/formats/FileExchange.h"

#include "base/ReportableError.h"
#include "hostapp/exchange/formats/FileFormats.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

namespace plotix {

ImportSummary importFile(const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress)
{
    const QString name = QFileInfo(file).fileName();
    auto input = std::make_unique<InputFile>(file);
    const QByteArray beginning = input->fromBeginning().read(kFileBeginning);
    const std::unique_ptr<RowSource> source = formatOf(name, beginning).read(std::move(input));
    try {
        return importRows(*source, file, site, options, progress);
    } catch (const ReportableError& error) {
        throw ReportableError(QStringLiteral("%1: %2").arg(name, error.message()));
    }
}

void exportFile(const QString& file, const ExportedRecords& records, const ExportProgress& progress)
{
    QSaveFile saved(file);
    if (!saved.open(QIODevice::WriteOnly))
        throw ExportFailure(saved.errorString());
    formatWrittenFor(QFileInfo(file).fileName()).write(saved, records, progress);
    if (!saved.commit())
        throw ExportFailure(saved.errorString());
}

}  // namespace plotix
