#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

namespace plotix {

/// The states of a pass at the beginnings of pages, as far as one has come. Any thread; of several that are the first
/// to look far behind, one goes there.
template <class State>
class StateKeeping {
public:
    explicit StateKeeping(State begun) : m_states{std::move(begun)} {}

    struct Found {
        State state;
        std::optional<State> later;  ///< at the next page
    };
    /// `advance(state, page)` takes the state of one page to the next.
    template <class Advance>
    Found at(std::size_t page, const Advance& advance)
    {
        const std::lock_guard lock(m_mutex);
        while (m_states.size() <= page) {
            State next = m_states.back();
            advance(next, m_states.size() - 1);
            m_states.push_back(std::move(next));
        }
        return {m_states[page],
                page + 1 < m_states.size() ? std::optional(m_states[page + 1]) : std::optional<State>()};
    }
    /// Kept where it is the next one.
    void keep(std::size_t page, State state)
    {
        const std::lock_guard lock(m_mutex);
        if (m_states.size() == page)
            m_states.push_back(std::move(state));
    }

private:
    std::mutex m_mutex;
    std::vector<State> m_states;
};

}  // namespace plotix
