#pragma once

#include <cstddef>

/// How many processor cores this process may run on. Any thread.
namespace plotix {

/// At least 1. A process held to some of the machine's cores (taskset, a container's set) gets no more threads than
/// those: std::thread::hardware_concurrency counts all of them.
std::size_t coresAllowed();

}  // namespace plotix
