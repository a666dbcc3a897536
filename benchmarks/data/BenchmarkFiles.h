#pragma once

#include "benchmarks/data/StationRecords.h"
#include "records/store/RecordStore.h"

#include <QtCore/QString>

#include <array>

/// Files of one weather station's records, ten million of them, in a folder that outlives the program.
///
/// The folder is PLOTIX_BENCH_DATA, else "plotix-bench" among the temporary files. A missing file is made when it is
/// asked for. Main thread only.
namespace plotix_bench {

QString dataFile(const QString& name);

/// The station's columns in memory, made once.
const StationColumns& station();

/// A site document with one agent and the station's five properties.
struct SiteFile {
    QString path;
    plotix::RowId agent = 0;
    std::array<plotix::RowId, kStationProperties> properties{};

    /// The site's records, nothing of them open yet.
    std::shared_ptr<plotix::RecordStore> records() const;
};

/// A new one without records, in place of what was there.
SiteFile emptySite(const QString& path);

/// The one with all records.
SiteFile fullSite();

/// Stores all of the station's records and closes the file.
void storeStation(const SiteFile& site);

/// Removes the file and what the database keeps beside it.
void removeDatabase(const QString& path);

/// Has the system write out the file's pages and drop them from memory, so that the next read comes from the disk.
/// Answers the fraction that stayed in memory all the same. Requires: no mapping of the file.
double forgetPages(const QString& path);

}  // namespace plotix_bench
