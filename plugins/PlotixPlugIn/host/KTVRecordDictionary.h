#pragma once

#include "base/RecordTimes.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// The answer to a range query: the key "time" and, per property key, a column of snapshots, index for index.
///
/// *Shared* between the archive manager and the plug-in; compared by identity. Keys are enumerated in the order the
/// archive manager put them in. "time" (seconds since 1970-01-01 UTC, in archive order) may be absent. Times and values
/// may be paged, and then are read while they are held. Built on any thread, then main thread only.
class KTVHOST_EXPORT KTVRecordDictionary {
public:
    using Entry = std::pair<QString, std::shared_ptr<KTVRecordColumn>>;

    const std::optional<plotix::RecordTimes>& time() const { return m_time; }
    void setTime(plotix::RecordTimes time) { m_time = std::move(time); }

    /// Every key but "time".
    const std::vector<Entry>& columns() const { return m_columns; }

    /// Adds a column at the end; replaces the one under an equal key in place.
    void setColumn(const QString& key, std::shared_ptr<KTVRecordColumn> column);

    /// Null when there is none.
    std::shared_ptr<KTVRecordColumn> columnForKey(const QString& key) const;

private:
    std::optional<plotix::RecordTimes> m_time;
    std::vector<Entry> m_columns;
};

using KTVRecordDictionaryPtr = std::shared_ptr<KTVRecordDictionary>;
