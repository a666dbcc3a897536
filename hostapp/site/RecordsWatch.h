#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/TrendSpans.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <map>

/// Reads the records of trends again when others, or another part of this program, have stored or removed some of them.
///
/// Told that the file has changed, it compares what the store knows of the records that a trend shows with what it knew
/// when they were last read, on a worker thread, and reads them again where that differs: quietly, in the ranges shown,
/// and the less often the longer the span, since a second more of a year cannot be seen. A trend that shows no record
/// yet is fitted to the first ones. *Borrows* the document; trends are *weak*. Main thread only.
namespace plotix {

class RecordsWatch : public QObject {
    Q_OBJECT
public:
    using Trends = std::function<std::vector<KTVPlugInPtr>()>;  ///< with a loaded view; asked when the records changed

    RecordsWatch(const SiteDocument& document, Trends trends);

    /// To be called when anything was written to the file; quick.
    void recordsMayDiffer();

    /// The soonest that a span is read again after it was last read.
    static std::chrono::milliseconds restAfter(const MomentSpan& span);

private:
    using Clock = std::chrono::steady_clock;
    struct Shown {
        qint64 agent = 0;
        std::vector<qint64> properties;
        MomentSpan span;
        std::vector<PropertyFormula> formulas = {};  ///< of those that are computed

        friend bool operator==(const Shown&, const Shown&) = default;
    };
    struct Watched {
        std::weak_ptr<KTVPlugIn> trend;
        Shown shown;              ///< when it was last compared
        std::size_t summary = 0;  ///< of its records then
        bool isKnown = false;
        bool mayDiffer = false;
        bool isCompared = false;  ///< right now
        Clock::time_point readAgain;
    };
    void look();
    void compare(const KTVPlugIn* key, Watched& watched, const Shown& shown);
    void compared(const KTVPlugIn* key, const Shown& shown, std::size_t summary);
    std::optional<Shown> shownBy(const KTVPlugIn& trend) const;

    const SiteDocument& m_document;
    Trends m_trends;
    std::map<const KTVPlugIn*, Watched> m_watched;
    QTimer m_timer;
};

}  // namespace plotix
