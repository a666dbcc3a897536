#pragma once

#include <chrono>
#include <cstddef>

/// How much one client, and all of them together, may cost. A value.
namespace plotix {

struct HttpLimits {
    std::size_t connections = 384;             ///< all together
    std::size_t connectionsPerAddress = 192;   ///< of one client's address
    std::size_t memoryPerConnection = 16'384;  ///< bytes for the request's line and headers, and what is read with them
    std::size_t waitingRequests = 256;         ///< for a worker; beyond them 503
    int workers = 2;                           ///< each has at most one rendering on the main queue

    /// From the connection, or from the end of the last answer, until a request's headers are whole.
    std::chrono::milliseconds untilRequest{15'000};
    /// From the first byte of an answer until the client has taken the last one.
    std::chrono::milliseconds untilTaken{60'000};
};

}  // namespace plotix
