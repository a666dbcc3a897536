#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QString>

#include <optional>

/// A site copied from where it stands to where it shall stand: a file, or a server's `clickhouse://…`. Everything comes
/// along: agents, properties, limits, notes, trends and records, with what came late or was corrected. Steps that can
/// be undone stay behind. Free functions; any one thread.
namespace plotix {

struct CopiedSite {
    std::size_t agents = 0, properties = 0, records = 0;
    std::size_t attached = 0;  ///< agents whose records are elsewhere: that comes along, and not the records
    bool wentOn = false;       ///< with a copy that was interrupted
};

/// A copy that is interrupted goes on where it ended when it is asked for again: a file is made under NAME.copying and
/// gets its name when it is whole. At the end what is there is compared with what was copied: for each property its
/// values' count, extremes and exact sum. Nothing when `progress` stopped it. Throws ReportableError: a file that is
/// there already, a server that has another site, or none, and whatever the stores throw.
std::optional<CopiedSite> copySite(const QString& from, const QString& to, const ArchiveProgress& progress = {});

}  // namespace plotix
