#include "hostapp/exchange/ImportPlan.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

namespace plotix {

namespace {

/// Milliseconds that it takes to plan so many columns, each with the name that `nameOf` gives its number.
template <class Name>
qint64 timeToPlan(int count, Name nameOf)
{
    std::vector<SourceColumn> columns{{QStringLiteral("time"), QStringLiteral("time"), {}}};
    for (int column = 0; column < count; ++column)
        columns.push_back({nameOf(column), nameOf(column), {}});
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(planImport(columns, 0, {}).columns.size(), static_cast<std::size_t>(count));
    return timer.elapsed();
}

TEST(ImportPlanTest, ThousandsOfColumnsWithOneNameTakeNoLongerThanOthers)
{
    constexpr int kCount = 5000;
    const qint64 others = timeToPlan(kCount, [](int column) { return QStringLiteral("Temp %1").arg(column); });
    const qint64 alike = timeToPlan(kCount, [](int) { return QStringLiteral("Temp"); });
    EXPECT_LT(alike, 10 * others + 200) << others << " ms with names of their own";
}

}  // namespace

}  // namespace plotix
