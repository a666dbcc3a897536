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

/// What reading is of the work where everything is read at once; else records are read as they are written.
constexpr double kReadingPart = 0.5;
constexpr double kLookingUpPart = 0.02;

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
    const bool isUnpacked = store.unpacksOnDemand(what.properties);
    if (const auto refusal =
            refusalToReadColumns(store, {what.agent, what.properties, what.from, what.to}, memoryBudget()))
        throw ReportableError(*refusal);
    const double begun = isUnpacked ? kLookingUpPart : kReadingPart;
    const std::optional<RecordColumns> records =
        store.columns(what.agent, what.properties, what.from, what.to, programPages(),
                      [&](double fraction) { return reported(begun * fraction); });
    if (!records)
        throw ExportCancelled();
    exportFile(file, {what.columns, *records, what.form},
               [&](double fraction) { return reported(begun + (1 - begun) * fraction); });
}

void requireExportable(const QString& file)
{
    requireWritable(formatWrittenFor(QFileInfo(file).fileName()).written, file);
}

}  // namespace plotix
