#pragma once

#include <atomic>

/// How one thread ends what another one waits for: a server that does not answer, say.
namespace plotix {

/// As long as it lives, long waits of this thread end with an error once the flag is set, a second later at most. The
/// inner one counts. *Borrows* the flag; any thread may set it.
class Interruption {
public:
    explicit Interruption(const std::atomic<bool>& flag) : m_before(current()) { current() = &flag; }
    ~Interruption() { current() = m_before; }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// For a thread that works for this one. Null: nobody can end its waits.
    static const std::atomic<bool>* ofThread() { return current(); }

    /// Asked by whoever waits.
    static bool isAsked() { return current() && *current(); }

private:
    static const std::atomic<bool>*& current()
    {
        thread_local const std::atomic<bool>* flag = nullptr;
        return flag;
    }
    const std::atomic<bool>* const m_before;
};

}  // namespace plotix
