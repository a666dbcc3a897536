#include "hostapp/cli/JsonText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace plotix {

namespace {

TEST(JsonNumbers, HaveAnAnswerForWhatJsonLacks)
{
    EXPECT_EQ(jsonNumber(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(jsonNumber(-std::numeric_limits<double>::infinity()), "-1e999");
}

TEST(JsonTexts, AreEscaped)
{
    EXPECT_EQ(jsonText(QStringLiteral("a\"b\\c\nd °")), "\"a\\\"b\\\\c\\u000ad °\"");
}

}  // namespace

}  // namespace plotix
