#pragma once

#include "plotkit/model/SeriesPart.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// Brings parts of paged series into memory, on a thread of its own, and holds them there.
///
/// A view that must not wait for pages *owns* one. One thread calls it; while it lives it *shares* the series that it
/// was asked for last, until it is done with them. Its end stops the thread, which first fills the pages that it is at:
/// some milliseconds.
namespace plotkit {

class PartFilling {
public:
    /// `filled` is called by the filling thread each time all that was asked for is held, or could not be had.
    explicit PartFilling(std::function<void()> filled) : m_filled(std::move(filled)) {}
    ~PartFilling();
    PartFilling(const PartFilling&) = delete;
    PartFilling& operator=(const PartFilling&) = delete;

    /// Fills these parts and none that were asked for before; those already held stay so until it is done. False: the
    /// system has no thread for it.
    bool fill(SeriesParts parts);
    /// Brings these parts into memory whenever nothing is to be filled, and none that it was asked to bring before.
    /// They are not held: they stay as long as their cache has room for them. Nothing of a series of which pages could
    /// not be read, and without a thread nothing at all.
    void bring(SeriesParts parts);
    /// Looks at all runs of these series whenever nothing is to be filled or brought, so that no frame need wait for
    /// them; at no others that it was asked for before. Without a thread nothing is looked at.
    void lookAt(std::vector<CPTPointSeriesPtr> series);
    /// Lets go of all that is held, and fills, brings and looks at no more.
    void letGo();

    /// What is held, once it is all that was asked for last; else nothing. A page of it that cannot be read is held as
    /// its stand-in.
    SeriesParts held() const;

private:
    using Holds = std::vector<CPTPointSeries::Hold>;

    void run();
    bool start();
    void hold(const SeriesParts& parts, std::uint64_t request, Holds& holds) const;
    void bringNext(std::unique_lock<std::mutex>& lock);
    void lookNext(std::unique_lock<std::mutex>& lock);
    void look(const CPTPointSeries& series, std::uint64_t request) const;
    bool isWanted(std::uint64_t request) const;

    std::function<void()> m_filled;
    mutable std::mutex m_mutex;
    std::condition_variable m_asked;
    // With the mutex held.
    SeriesParts m_parts;          // asked for last
    std::uint64_t m_request = 0;  // which was the last, counted
    std::uint64_t m_done = 0;     // of these, the last that was filled
    bool m_isStopping = false;
    Holds m_holds;
    SeriesParts m_unbrought;                    // what of the parts to be brought nobody has begun with
    std::vector<CPTPointSeriesPtr> m_unlooked;  // series whose runs nobody has looked at yet
    std::thread m_thread;                       // of the caller; started at the first request
};

}  // namespace plotkit
