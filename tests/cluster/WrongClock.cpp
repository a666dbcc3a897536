// A library for LD_PRELOAD: clocks of the day are PLOTIX_CLOCK_WRONG seconds wrong, those that measure spans go right.
// The usual library for this never answers to servers whose memory allocator asks for the time.

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace {

/// Every call, as nothing of this library may have been initialised when the first one comes.
long wrongBy()
{
    const char* const text = std::getenv("PLOTIX_CLOCK_WRONG");
    return text ? std::atol(text) : 0;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += wrongBy();
    return result;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* __restrict time, void* __restrict /*zone*/) noexcept
{
    timespec now{};
    const int result = clock_gettime(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return result;
}

__attribute__((visibility("default"))) time_t time(time_t* into) noexcept
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (into)
        *into = now.tv_sec;
    return now.tv_sec;
}
}
