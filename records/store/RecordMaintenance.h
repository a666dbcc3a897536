#pragma once

#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
#include <optional>

/// What compacting and verifying a store are asked, and what they answer. Values; any thread.
namespace plotix {

struct CompactionRequest {
    /// Records with an earlier time (seconds since 1970-01-01 UTC) are removed for good. Absent: all stay.
    std::optional<double> dropBefore;
    /// False: the store keeps its free space for records to come. Giving space back may need free disk space of about
    /// twice the store's new size for a while; if that is missing, everything else is done and an error tells how much
    /// is needed.
    bool giveSpaceBack = true;
    /// The most bytes that the records at work may take; 0: no limit. A part that needs more, which a file made to do
    /// harm can claim in few bytes, ends the work with an error that says how much.
    std::uint64_t memory = 0;
};

struct CompactionResult {
    bool stopped = false;                           ///< by `progress`; what was done up to then stays done
    std::size_t dropped = 0;                        ///< records removed for their age
    std::size_t records = 0;                        ///< that are there now
    std::size_t chunksBefore = 0, chunksAfter = 0;  ///< 0 for a store that has none
    qint64 bytesBefore = 0, bytesAfter = 0;         ///< of the whole store; 0 when unknown
};

struct VerificationResult {
    bool stopped = false;                             ///< by `progress`; `findings` are those up to then
    QStringList findings;                             ///< one line each, in plain words; empty: the store is sound
    bool moreFindings = false;                        ///< there were more than kMostFindings
    std::size_t chunks = 0, records = 0, values = 0;  ///< that were looked at; valid values, without times

    static constexpr int kMostFindings = 100;

    bool isSound() const { return findings.empty() && !stopped; }
};

}  // namespace plotix
