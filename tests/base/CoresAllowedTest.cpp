#include "base/CoresAllowed.h"

#include <gtest/gtest.h>

#include <sched.h>

namespace {

TEST(CoresAllowedTest, AProcessHeldToOneCoreHasOne)
{
    cpu_set_t before, one;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    CPU_ZERO(&one);
    CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(plotix::coresAllowed(), 1U);
    ASSERT_EQ(sched_setaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(plotix::coresAllowed(), static_cast<std::size_t>(CPU_COUNT(&before)));
}

}  // namespace
