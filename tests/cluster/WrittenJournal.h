#pragma once

#include "tests/e2e/writer/WrittenValues.h"

#include <optional>
#include <random>
#include <string>
#include <vector>

/// What a writer that is to be killed did with its agent, on disk before each operation and after it, and the records
/// that must be there because of it. One thread.
namespace plotix {

struct WrittenOperation {
    enum Kind {
        Append,   ///< by an appender, behind everything or behind a gap
        Store,    ///< many, in a transaction
        Amend,    ///< late and corrected ones, by an appender that notes them
        Correct,  ///< the same in a transaction
        Remove,   ///< a span
        Compact
    };
    Kind kind = Append;
    int first = 0, count = 0;  ///< times
    int number = 0;            ///< from 1; values are this operation's own

    static const char* nameOf(Kind kind);
};

/// By time, the number of the operation that stored the record; 0: there is none.
class WrittenState {
public:
    void apply(const WrittenOperation& operation);
    int end() const { return static_cast<int>(m_numbers.size()); }
    std::size_t count() const;
    /// Empty where the records are these; else what is different.
    std::string differenceTo(const RecordBlock& read) const;

private:
    std::vector<int> m_numbers;
};

/// Another operation on such records.
WrittenOperation nextOperation(const WrittenState& state, int number, std::minstd_rand& random);
RecordBlock recordsOf(const WrittenAgent& agent, const WrittenOperation& operation);

class WrittenJournal {
public:
    /// Reads what is there; a line that was cut short does not count.
    explicit WrittenJournal(std::string file);

    const WrittenState& done() const { return m_done; }                       ///< of what was acknowledged
    const std::optional<WrittenOperation>& begun() const { return m_begun; }  ///< and not known to be done
    int operations() const { return m_operations; }

    void begin(const WrittenOperation& operation);
    void end();

private:
    void add(const std::string& line) const;

    std::string m_file;
    WrittenState m_done;
    std::optional<WrittenOperation> m_begun;
    int m_operations = 0;  // that were done
};

}  // namespace plotix
