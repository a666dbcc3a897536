#include "base/WholeDay.h"

#include <QtCore/QDate>

#include <gtest/gtest.h>

namespace {

constexpr double kMidnight = 1'420'243'200;  // 2015-01-03, in UTC

TEST(WholeDay, EndsJustBeforeTheNextOneBegins)
{
    const plotix::OptionalDate end = plotix::lastMomentOf(QDate(2015, 1, 2));
    ASSERT_TRUE(end);
    EXPECT_LT(end->seconds, kMidnight);
    EXPECT_GT(end->seconds, kMidnight - 1e-6);
}

TEST(WholeDay, NoDayHasNoEnd)
{
    EXPECT_FALSE(plotix::lastMomentOf(QDate()));
}

}  // namespace
