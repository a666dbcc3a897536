#include "records/store/ChunkPipeline.h"

#include "base/CoresAllowed.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace plotix {

namespace {

constexpr std::size_t kMostThreads = 8;
constexpr std::size_t kAhead = 32;         // chunks that may wait to be handed on
constexpr std::size_t kChunksForHelp = 4;  // fewer are encoded before a thread has started

class Pipeline {
public:
    explicit Pipeline(const std::vector<RecordsView>& chunks) : m_chunks(chunks), m_encoded(chunks.size()) {}
    ~Pipeline()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_next = m_chunks.size();
        }
        m_changed.notify_all();
        for (std::thread& helper : m_helpers)
            helper.join();
    }
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    void startHelpers()
    {
        if (m_chunks.size() < kChunksForHelp)
            return;
        try {
            for (std::size_t i = 1; i < std::min(coresAllowed(), kMostThreads); ++i)
                m_helpers.emplace_back([this] { help(); });
        } catch (const std::exception&) {  // no thread available: the caller does the work
        }
    }

    void run(const std::function<void(EncodedChunk&&)>& sink)
    {
        for (std::size_t i = 0; i < m_chunks.size(); ++i)
            sink(take(i));
    }

private:
    /// Chunk `index`; while another thread encodes it, encodes later ones.
    EncodedChunk take(std::size_t index)
    {
        std::unique_lock lock(m_mutex);
        m_handedOn = index;
        m_changed.notify_all();
        while (!m_encoded[index] && !m_failure) {
            if (mayEncode())
                encodeNext(lock);
            else
                m_changed.wait(lock);
        }
        if (m_failure)
            std::rethrow_exception(m_failure);
        return *std::exchange(m_encoded[index], std::nullopt);
    }

    void help()
    {
        std::unique_lock lock(m_mutex);
        while (m_next < m_chunks.size() && !m_failure) {
            if (mayEncode())
                encodeNext(lock);
            else
                m_changed.wait(lock);
        }
    }

    bool mayEncode() const { return m_next < m_chunks.size() && m_next < m_handedOn + kAhead; }

    void encodeNext(std::unique_lock<std::mutex>& lock)
    {
        const std::size_t index = m_next++;
        lock.unlock();
        std::optional<EncodedChunk> encoded;
        std::exception_ptr failure;
        try {
            encoded = encodedChunk(m_chunks[index]);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        m_encoded[index] = std::move(encoded);
        if (failure)
            m_failure = failure;
        m_changed.notify_all();
    }

    const std::vector<RecordsView>& m_chunks;
    std::mutex m_mutex;  // guards everything below but the helpers
    std::condition_variable m_changed;
    std::vector<std::optional<EncodedChunk>> m_encoded;
    std::size_t m_next = 0;      // first that nobody has begun
    std::size_t m_handedOn = 0;  // how many were handed on
    std::exception_ptr m_failure;
    std::vector<std::thread> m_helpers;
};

}  // namespace

void encodeInOrder(const std::vector<RecordsView>& chunks, const std::function<void(EncodedChunk&&)>& sink)
{
    Pipeline pipeline(chunks);
    pipeline.startHelpers();
    pipeline.run(sink);
}

}  // namespace plotix
