#pragma once

#include "records/store/RecordStore.h"

#include <cstddef>
#include <stdexcept>

/// How far a change of a site has come, and that it may be stopped.
///
/// Values; one thread at a time, the one that makes the change.
namespace plotix {

/// Called with 0 to 1 on the calling thread; answers false to cancel.
using EditProgress = ArchiveProgress;

/// Thrown where the handler cancelled; the site is then as it was.
class EditCancelled : public std::runtime_error {
public:
    EditCancelled() : std::runtime_error("the change was cancelled") {}
};

/// Counts parts of about equal length. Parts that nobody expected end at 1.
class EditMeter {
public:
    explicit EditMeter(EditProgress progress = {}) : m_progress(std::move(progress)) {}

    void expect(std::size_t parts) { m_expected += parts; }

    /// One more is done. Throws EditCancelled.
    void advance();

private:
    EditProgress m_progress;
    std::size_t m_expected = 0, m_done = 0;
};

/// How many parts an agent's records with from ≤ time ≤ to are worked on in. Absent bounds are open.
std::size_t partsOf(RecordStore& stored, RowId agent, std::optional<double> from = {}, std::optional<double> to = {});

/// Takes elements out, a part at a time. `stored`: the records as they are; otherwise as RecordTransaction::remove.
void removeInParts(RecordStore& stored, RecordTransaction& records, RowId agent, const std::vector<RowId>& properties,
                   std::optional<double> from, std::optional<double> to, EditMeter& meter);

}  // namespace plotix
