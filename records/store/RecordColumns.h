#pragma once

#include "base/ColumnRuns.h"
#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"
#include "records/columns/ExactTotal.h"
#include "records/store/RecordBlock.h"

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// Records of an agent as promises: columns that stay where they are stored and are unpacked where somebody looks.
namespace plotix {

/// What went wrong while columns were being unpacked, when nobody could be told: the first failure, in one line for
/// people. *Shared* by columns of the same records and those who read them. Any thread.
class ColumnFailure {
public:
    using Listener = std::function<void(const QString& message)>;

    std::optional<QString> message() const;

    /// Called once, with the first failure: at once when there has been one, else on whichever thread it happens, which
    /// must not be kept waiting and holds no column. An owner has one listener, which lasts as long as it does; those
    /// of others who share the columns stay. Requires: not called by a listener.
    void addListener(const std::weak_ptr<const void>& owner, Listener listener);

    /// Keeps the first message.
    void report(const QString& message);

private:
    mutable std::mutex m_mutex;
    std::optional<QString> m_message;
    std::vector<std::pair<std::weak_ptr<const void>, Listener>> m_listeners;
};

/// The same records as a RecordBlock. Values; what they *share* may be read by any thread, while it is held (see
/// PagedArray).
///
/// A page that cannot be unpacked has stand-ins where the values are missing, and is tried again whenever it is looked
/// at: values are NaN, and not valid where the column has a bitmap; times are spread evenly over the span that the
/// missing ones have, so that they still rise. `failure` then says why.
struct RecordColumns {
    /// Over the elements that are valid and no NaN.
    struct Total {
        std::size_t valid = 0;
        ExactTotal sum;  ///< with infinities
    };
    struct Column {
        RowId property = 0;
        PagedArray<double> values;             ///< in the property's archived unit
        ValidityBitmap validity;               ///< held by whoever holds the same values
        std::shared_ptr<const KeptRuns> runs;  ///< null: nothing is known without reading
        std::optional<Total> total;            ///< nothing: as well
    };
    PagedArray<double> times;              ///< seconds since 1970-01-01 UTC
    std::shared_ptr<const TimeRuns> runs;  ///< null: nothing is known without reading, of no column
    std::vector<Column> columns;
    std::shared_ptr<ColumnFailure> failure = std::make_shared<ColumnFailure>();  ///< never null

    /// Everything in memory for good, nothing known without reading. *Shares* the block's columns.
    static RecordColumns resident(const RecordBlock& block);
};

}  // namespace plotix
