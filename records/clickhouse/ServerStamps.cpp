#include "records/clickhouse/ServerStamps.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <random>

namespace plotix::stamps {

namespace {

std::atomic<std::uint64_t> latest = 0;

std::uint64_t microseconds()
{
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now().time_since_epoch())
            .count());
}

}  // namespace

std::uint64_t version()
{
    const std::uint64_t now = microseconds();
    std::uint64_t before = latest;
    std::uint64_t next = 0;
    do
        next = std::max(now, before + 1);
    while (!latest.compare_exchange_weak(before, next));
    return next;
}

void saw(std::uint64_t version)
{
    std::uint64_t before = latest;
    while (before < version && !latest.compare_exchange_weak(before, version))
        ;
}

std::uint64_t number()
{
    static std::mutex mutex;
    static std::random_device random;
    static std::uint64_t last = 0;
    const std::lock_guard lock(mutex);
    const std::uint64_t seconds = microseconds() / 1'000'000;
    const std::uint64_t next = (seconds << kRandomBits) | (random() & ((std::uint64_t{1} << kRandomBits) - 1));
    last = std::max(last + 1, next);
    return last;
}

std::uint32_t day()
{
    return static_cast<std::uint32_t>(microseconds() / 86'400'000'000ULL);
}

}  // namespace plotix::stamps
