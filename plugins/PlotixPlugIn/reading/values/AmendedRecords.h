#pragma once

#include "plugins/PlotixPlugIn/host/KTVAmendments.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

/// Which records of a line came late or were corrected. Values and free functions; any thread. Times are seconds since
/// 1970-01-01 UTC.
namespace plotix {

/// When the record at a time of the stretch came: between its ends as the time is.
double cameAt(const KTVAmendment& amendment, double time);

/// Without what came late by no more than `delay` seconds; corrections stay. Of a stretch that is late by more only in
/// part, that part, which may begin later than the next one.
std::vector<KTVAmendment> lateByMoreThan(double delay, const std::vector<KTVAmendment>& amendments);

/// The amendments of a line, found by time: neither a move of the pointer nor a frame goes through all of them.
class AmendedRecords {
public:
    AmendedRecords() = default;
    explicit AmendedRecords(const std::vector<KTVAmendment>& amendments);  ///< in any order

    /// What happened last to the record at a time; nothing where nothing did. Takes O(log n) for each that has the
    /// time.
    std::optional<KTVAmendment> at(double time) const;

    /// Where there is any of a kind that shares a time with `within`; in order, whole, and what is no farther than
    /// `apart` from the one before is one with it. Takes O(log n) for each `apart` of `within`, whatever their number.
    /// Requires: apart > 0.
    std::vector<TimeSpan> spans(KTVAmendment::Kind kind, const TimeSpan& within, double apart) const;

private:
    /// Those of one kind.
    class Stretches {
    public:
        void take(std::vector<KTVAmendment> amendments);
        const KTVAmendment& operator[](std::size_t index) const { return m_all[index]; }
        std::size_t size() const { return m_all.size(); }
        std::size_t firstReached(double time) const;  ///< the first before which all end before the time
        /// The first, of this one and later, that begins after the time.
        std::size_t firstBeyond(std::size_t index, double time) const;
        double reach(std::size_t index) const { return m_reach[index]; }  ///< the latest end of all up to this one
        std::size_t nextReaching(std::size_t index, double time) const;  ///< of this one and later: that ends no sooner

    private:
        std::vector<KTVAmendment> m_all;  // by their beginnings
        std::vector<double> m_begins, m_reach;
        std::vector<double> m_ends;  // a tree: above each two, the later end; its leaves are the stretches'
    };
    const Stretches& of(KTVAmendment::Kind kind) const { return m_kinds[static_cast<std::size_t>(kind)]; }

    std::array<Stretches, 2> m_kinds;  // by Kind
};

}  // namespace plotix
