#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"

#include <functional>
#include <optional>

/// Why a fetch failed, as a text for the user. A value; any thread.
struct KTVError {
    QString message;
};

/// The record database of one agent; answers range queries in the background. The agent *owns* it. Fetches are asked
/// for on the main thread; handlers run on any thread.
class KTVHOST_EXPORT KTVArchiveManager {
public:
    /// Progress from 0 to 1; setting the flag asks the fetch to stop. Called on any thread.
    using ProgressHandler = std::function<void(double progress, bool* stop)>;

    /// The dictionary or nothing, a number whose meaning is the archive's, an error or nothing. Called once, on any
    /// thread, possibly before the fetch call has returned.
    using CompletionHandler =
        std::function<void(KTVRecordDictionaryPtr records, double number, std::optional<KTVError> error)>;

    virtual ~KTVArchiveManager();

    /// Fetches every stored record with fromDate ≤ time ≤ toDate. Absent properties count as an empty list: the answer
    /// is then a dictionary without "time". Returns at once. Main thread.
    virtual void fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties,
                                           const plotix::OptionalDate& fromDate, const plotix::OptionalDate& toDate,
                                           int maximumSamples, ProgressHandler progressHandler,
                                           CompletionHandler completionHandler) = 0;

    /// The times of the first and the last of all stored records. Nothing where there are none, and from an archive
    /// that does not tell, as at first. Quick. Main thread.
    struct Span {
        plotix::Date first, last;
    };
    virtual std::optional<Span> recordedSpan() const;
};

/// "No limit" for `maximumSamples`.
inline constexpr int kMaximumSamplesUnlimited = 0x7FFFFFFF;
