#include "base/ReportableError.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/ExactText.h"
#include "hostapp/cli/SiteLookup.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Compacting: the same records in less space, or without those that are older than wanted.
namespace plotix {

namespace {

/// "812 bytes", "96.5 KB", "1.3 GB".
std::string sizeText(qint64 bytes)
{
    double size = static_cast<double>(bytes);
    const char* unit = " bytes";
    for (const char* larger : {" KB", " MB", " GB", " TB"}) {
        if (size < 999.95)
            break;
        size /= 1000;
        unit = larger;
    }
    return QString::number(size, 'f', bytes < 1000 ? 0 : 1).toStdString() + unit;
}

/// Before which moment records go; nothing: none go. A site without records has nothing to count back from.
std::optional<double> dropBefore(const CompactCommand& command)
{
    if (!command.keep)
        return command.before;
    const auto extent = openSite(command.site)->recordExtent();
    return extent ? std::optional(extent->second.seconds - *command.keep) : std::nullopt;
}

void describe(std::ostream& out, const CompactionResult& result, const std::optional<double>& before)
{
    out << result.records << (result.records == 1 ? " record" : " records") << " kept, " << result.dropped
        << " dropped";
    if (before)
        out << " from before " << (hasCalendarText(*before) ? exactTime(*before) : exactNumber(*before) + " s");
    out << ".\nChunks: " << result.chunksBefore << " before, " << result.chunksAfter
        << " now.\nSize: " << sizeText(result.bytesBefore) << " before, " << sizeText(result.bytesAfter) << " now.\n";
}

}  // namespace

int runCommand(const CompactCommand& command, CommandContext context)
{
    // The document is closed again: open, it would keep the file from being shortened at once.
    const std::shared_ptr<RecordStore> records = openSite(command.site)->records();
    const CompactionRequest request{dropBefore(command)};
    const Interruption interruption;
    const CommandProgress progress = makeCommandProgress(
        context.services, context.streams, QStringLiteral("Compacting %1").arg(QFileInfo(command.site).fileName()));
    const CompactionResult result = records->compact(request, progress);
    describe(context.streams.output, result, request.dropBefore);
    if (result.stopped)
        throw ReportableError(QStringLiteral("cancelled; %1 is whole, and may be compacted further").arg(command.site));
    return kCommandDone;
}

}  // namespace plotix
