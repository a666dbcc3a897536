#pragma once

#include <chrono>
#include <cstddef>

/// How much one client, and all of them together, may cost. A value.
namespace plotix {

struct HttpLimits {
    std::size_t connections = 384;  ///< all together; beyond them silent ones are ended, those of the busiest first
    std::size_t target = 8'192;     ///< bytes of a request's address; a longer one is 414
    std::size_t parameters = 256;   ///< of an address; more are 414
    std::size_t headers = 16'384;   ///< bytes of a request's line and headers; larger ones are 431
    std::size_t waitingWork = 256;  ///< for a worker, requests for the same counted once; beyond it 503
    int workers = 2;                ///< each has at most one rendering on the main queue

    /// A connection silent for less is not ended to make room: it may belong to a client that is about to ask.
    std::chrono::milliseconds silentForRoom{1'000};
    /// From the connection, or from the end of the last answer, until a request's headers are whole.
    std::chrono::milliseconds untilRequest{15'000};
    /// From the first byte of an answer until the client has taken the last one.
    std::chrono::milliseconds untilTaken{60'000};
};

}  // namespace plotix
