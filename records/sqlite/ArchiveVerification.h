#pragma once

#include "records/store/RecordStore.h"

#include <QtCore/QStringList>

/// Checks a site document from end to end without changing it: the database's own structure, the place of every chunk,
/// that every column reads back, and that what is stored about it agrees with its values.
namespace plotix {

struct VerificationResult {
    bool stopped = false;       ///< `progress` said so; nothing was found up to then but `findings`
    QStringList findings;       ///< one line each, in plain words; empty: the document is sound
    bool moreFindings = false;  ///< there were more than kMostFindings
    std::size_t chunks = 0, records = 0, values = 0;  ///< that were looked at; valid values, without times

    static constexpr int kMostFindings = 100;

    bool isSound() const { return findings.empty() && !stopped; }
};

/// Reads everything once, in one snapshot beside any writer; any thread. `progress` rises from 0 to 1 and answers false
/// to stop. Throws ReportableError when the document cannot be opened at all.
VerificationResult verifyArchive(const QString& file, const ArchiveProgress& progress = {});

}  // namespace plotix
