#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What stands in a column of quality beside a value, and whether that value is good by it. Pure; any thread.
namespace plotix {

enum class Verdict {
    Good,
    Uncertain,  ///< doubtful, estimated, stale: counts as good unless the user says otherwise
    Bad,
    Unknown
};

/// How a column of quality is written. One column has one way throughout.
enum class QualityCode {
    Words,           ///< good, ok, uncertain, bad, fault, …, in English and German; "{down,stale}" is its worst word
    Numbers,         ///< of process data exchange: 192 and more good, 64 … 127 uncertain, below 64 bad
    Truth,           ///< 1, true, yes, … good, and 0, false, no, … bad: under a header such as "valid"
    ValidLetters,    ///< V valid, N not
    GoodLetters,     ///< G good, U uncertain, B bad
    ApprovedLetters  ///< A approved, P provisional, E estimated
};

/// What a text means in such a column; nothing in it is Unknown too.
Verdict verdictOf(std::string_view text, QualityCode code);

/// What the header of a column of quality says it is about.
enum class QualityHeader { Validity, Quality, Status };

/// The one way in which all the texts are written; nothing where there is none, or it cannot be told from measurements:
/// 0 and 1 mean one thing here and the opposite there, unless the header says "valid".
std::optional<QualityCode> qualityCodeOf(std::span<const std::string> texts, QualityHeader header);

}  // namespace plotix
