#pragma once

#include "records/store/RecordStore.h"

#include <memory>

/// The span that records of a store far away cover, answered from memory: the store is asked on another thread, and
/// again where the answer is older than two seconds. *Owned* by whoever asks; any thread.
namespace plotix {

class RememberedExtent {
public:
    /// *Shares* the store.
    explicit RememberedExtent(std::shared_ptr<RecordStore> records);

    /// What is known. The first time it waits for the store: where an event loop would stand still, no longer than a
    /// second and a half, and nothing is answered then. Throws
    /// ReportableError where the store could not tell and nothing is known from before.
    std::optional<RecordExtent> extent();

private:
    struct State;
    static void ask(const std::shared_ptr<State>& state);
    const std::shared_ptr<State> m_state;
};

}  // namespace plotix
