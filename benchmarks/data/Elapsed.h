#pragma once

#include <chrono>

/// A clock for benchmarks that take their times themselves. A value; any thread.
namespace plotix_bench {

/// Runs from its construction on.
class Elapsed {
public:
    double seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count(); }

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

}  // namespace plotix_bench
