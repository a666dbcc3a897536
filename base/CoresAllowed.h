#pragma once

#include <cstddef>

/// How many processor cores this process may run on. Any thread.
namespace plotix {

/// At least 1. For a process confined to some of the machine's cores (taskset, a container) only those count;
/// std::thread::hardware_concurrency may count all of them.
std::size_t coresAllowed();

}  // namespace plotix
