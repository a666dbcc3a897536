#pragma once

#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

namespace plotix {

/// Threads that run the same work, and are waited for at the end of their life. The work throws nothing. One thread
/// owns them.
class HelpingThreads {
public:
    /// Fewer where the system has none: the others do the work.
    template <class Work>
    HelpingThreads(std::size_t count, Work work)
    {
        try {
            for (; count > 0; --count)
                m_threads.emplace_back(work);
        } catch (const std::exception&) {
        }
    }
    ~HelpingThreads()
    {
        for (std::thread& thread : m_threads)
            thread.join();
    }
    HelpingThreads(const HelpingThreads&) = delete;
    HelpingThreads& operator=(const HelpingThreads&) = delete;

private:
    std::vector<std::thread> m_threads;
};

}  // namespace plotix
