#pragma once

#include <cstdio>
#include <unistd.h>

/// Memory that is this process's own, for "bytes a sample". Any thread.
namespace plotix_bench {

/// Bytes in memory now that are not backed by a file; 0 where the system does not say.
inline double residentBytes()
{
    long total = 0, resident = 0, shared = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld %ld", &total, &resident, &shared) != 3)
            resident = shared = 0;
        std::fclose(file);
    }
    return static_cast<double>(resident - shared) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

}  // namespace plotix_bench
