#include "base/CoresAllowed.h"

#include <sched.h>
#include <thread>

namespace plotix {

std::size_t coresAllowed()
{
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0)
        return static_cast<std::size_t>(CPU_COUNT(&set));
    const unsigned counted = std::thread::hardware_concurrency();  // more cores than the set has room for
    return counted > 0 ? counted : 1;
}

}  // namespace plotix
