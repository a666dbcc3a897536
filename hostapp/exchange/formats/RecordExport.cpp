#include "hostapp/exchange/formats/RecordExport.h"

#include "base/ReportableError.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "hostapp/exchange/formats/FileFormats.h"
#include "records/store/RecordStore.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

/// Reading is the first half of the work.
constexpr double kReadingPart = 0.5;

}  // namespace

RecordExport exportOf(const SiteAgent& agent, const std::vector<std::shared_ptr<SiteProperty>>& properties)
{
    RecordExport what;
    what.agent = agent.id();
    for (const auto& property : properties) {
        what.properties.push_back(property->description().id);
        what.columns.push_back({property->name(), property->description().archivedUnit});
    }
    return what;
}

void exportRecords(RecordStore& store, const RecordExport& what, const QString& file, const ExportProgress& progress)
{
    const auto reported = [&progress](double fraction) { return !progress || progress(fraction); };
    if (const auto refusal = refusalToRead(store, {what.agent, what.properties, what.from, what.to}, memoryBudget()))
        throw ReportableError(*refusal);
    const std::optional<RecordBlock> block =
        store.read(what.agent, what.properties, what.from, what.to,
                   [&reported](double fraction) { return reported(kReadingPart * fraction); });
    if (!block)
        throw ExportCancelled();
    exportFile(file, {what.columns, *block, what.form},
               [&reported](double fraction) { return reported(kReadingPart + (1 - kReadingPart) * fraction); });
}

void requireExportable(const QString& file)
{
    requireWritable(formatWrittenFor(QFileInfo(file).fileName()).written, file);
}

}  // namespace plotix
