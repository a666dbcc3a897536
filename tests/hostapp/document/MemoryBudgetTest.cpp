#include "hostapp/document/MemoryBudget.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>

#include <gtest/gtest.h>

namespace {

using plotix::memoryBudget;
using plotix::RecordOverview;
using plotix::sizeFromText;

constexpr double kDay = 86'400, kYear = 365 * kDay;

class MemoryBudgetTest : public testing::Test {
protected:
    ~MemoryBudgetTest() override
    {
        qunsetenv("PLOTIX_MEMORY_BUDGET");
        qunsetenv("PLOTIX_PAGE_BUDGET");
        QSettings().remove(QStringLiteral("Memory/budget"));
        QSettings().remove(QStringLiteral("Memory/pages"));
    }

    /// A record a second from `first` on, in runs of a day.
    void recordEverySecond(double first, int days)
    {
        for (int day = 0; day < days; ++day)
            overview.runs.push_back({first + day * kDay, first + (day + 1) * kDay - 1, 86'400});
    }
    QString refusal(std::uint64_t budget, std::optional<double> from = {}, std::optional<double> to = {})
    {
        return plotix::refusalOf({overview, 2, from, to}, budget).value_or(QString());
    }

    RecordOverview overview;
};

TEST_F(MemoryBudgetTest, SizesAreReadAsPeopleWriteThem)
{
    EXPECT_EQ(sizeFromText("123"), 123U);
    EXPECT_EQ(sizeFromText(" 8 GB "), 8'000'000'000U);
    EXPECT_EQ(sizeFromText("1.5t"), 1'500'000'000'000U);
    EXPECT_EQ(sizeFromText("500M"), 500'000'000U);
    EXPECT_EQ(sizeFromText("2kB"), 2000U);
}

TEST_F(MemoryBudgetTest, OtherTextIsNoSize)
{
    for (const char* text : {"", "0", "-1", "GB", "8 XB", "much", "1e99999", "99999999999999999999T"})
        EXPECT_FALSE(sizeFromText(text)) << text;
}

TEST_F(MemoryBudgetTest, TheEnvironmentComesBeforeTheSetting)
{
    QSettings().setValue(QStringLiteral("Memory/budget"), QStringLiteral("3 GB"));
    EXPECT_EQ(memoryBudget(), 3'000'000'000U);
    qputenv("PLOTIX_MEMORY_BUDGET", "2 GB");
    EXPECT_EQ(memoryBudget(), 2'000'000'000U);
    EXPECT_EQ(plotix::memoryBudgetProblem(), std::nullopt);
    qputenv("PLOTIX_MEMORY_BUDGET", "plenty");
    EXPECT_EQ(memoryBudget(), 3'000'000'000U);
    EXPECT_EQ(plotix::memoryBudgetProblem(),
              QStringLiteral("PLOTIX_MEMORY_BUDGET is “plenty”, which is no size such as 8 GB, "
                             "so it is passed over; 3.0 GB may be used"));
}

TEST_F(MemoryBudgetTest, PagesHaveABudgetOfTheirOwn)
{
    EXPECT_EQ(plotix::pageBudget(), plotix::PageCache::kDefaultBudget);
    QSettings().setValue(QStringLiteral("Memory/pages"), QStringLiteral("1 GB"));
    EXPECT_EQ(plotix::pageBudget(), 1'000'000'000U);
    qputenv("PLOTIX_PAGE_BUDGET", "40 MB");
    EXPECT_EQ(plotix::pageBudget(), 40'000'000U);
    qputenv("PLOTIX_PAGE_BUDGET", "few");
    EXPECT_TRUE(plotix::memoryBudgetProblem()->startsWith(QStringLiteral("PLOTIX_PAGE_BUDGET is “few”")));
}

TEST_F(MemoryBudgetTest, WithoutASettingItIsAPartOfTheMachine)
{
    EXPECT_GT(memoryBudget(), 100'000'000U);
}

TEST_F(MemoryBudgetTest, NothingIsRefusedThatFits)
{
    EXPECT_EQ(refusal(1), QString());
    recordEverySecond(0, 1);
    EXPECT_EQ(refusal(86'400 * 34), QString());
    EXPECT_NE(refusal(86'400 * 34 - 1), QString());
}

TEST_F(MemoryBudgetTest, ARefusalSaysWhatIsNeededAndWhatFits)
{
    recordEverySecond(0, 3650);
    EXPECT_EQ(refusal(8'000'000'000),
              "10 years of 2 properties need 10.7 GB of memory, but 8.0 GB may be used: choose a "
              "range of at most 7.4 years, or allow more with PLOTIX_MEMORY_BUDGET.");
}

TEST_F(MemoryBudgetTest, WhatFitsEndsWhereTheRequestEnds)
{
    recordEverySecond(0, 100);
    const QString text = refusal(10 * 86'400 * 34, 0, 50 * kDay);
    EXPECT_TRUE(text.startsWith("50 days of 2 properties need 146.9 MB")) << text.toStdString();
    EXPECT_TRUE(text.contains("at most 9 days") || text.contains("at most 10 days")) << text.toStdString();
}

TEST_F(MemoryBudgetTest, TimeWithoutRecordsCostsNothing)
{
    recordEverySecond(0, 20);
    recordEverySecond(kYear, 1);
    const QString text = refusal(2 * 86'400 * 34, {}, kYear + kDay);
    EXPECT_TRUE(text.contains("at most 347 days")) << text.toStdString();
}

TEST_F(MemoryBudgetTest, WhatIsPromisedFits)
{
    recordEverySecond(0, 30);
    const double kept = 7 * kDay;
    EXPECT_TRUE(refusal(7 * 86'400 * 34 + 100).contains("at most 7.0 days"));
    EXPECT_EQ(refusal(7 * 86'400 * 34 + 100, 30 * kDay - 1 - kept), QString());
}

}  // namespace
