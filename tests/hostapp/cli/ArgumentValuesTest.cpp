#include "hostapp/cli/ArgumentValues.h"

#include "hostapp/cli/CommandProgressBar.h"

#include <gtest/gtest.h>

#include <cmath>

namespace plotix {

namespace {

TEST(Sizes, AreReadFromArguments)
{
    EXPECT_EQ(sizeFromArgument(QStringLiteral("1200x600")), QSize(1200, 600));
    EXPECT_EQ(sizeFromArgument(QStringLiteral("16X16384")), QSize(16, 16384));
    for (const char* text : {"", "1200", "x", "15x600", "16385x600", "-5x5", "1200x600x2", "1e3x5"})
        EXPECT_FALSE(sizeFromArgument(QLatin1String(text))) << text;
}

TEST(ProgressLines, StayWithinTheBar)
{
    const QString title = QStringLiteral("Working");
    EXPECT_NE(progressLine(title, 0.5).find("====================                    ]  50 %"), std::string::npos);
    EXPECT_EQ(progressLine(title, -1), progressLine(title, 0));
    EXPECT_EQ(progressLine(title, 2), progressLine(title, 1));
    EXPECT_EQ(progressLine(title, std::nan("")), progressLine(title, 0));
}

}  // namespace

}  // namespace plotix
