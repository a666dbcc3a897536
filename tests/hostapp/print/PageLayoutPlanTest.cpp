#include "hostapp/print/PageLayoutPlan.h"

#include <gtest/gtest.h>

namespace plotix {
namespace {

constexpr QSizeF kA4Landscape{842, 595}, kLetterLandscape{792, 612}, kA4Upright{595, 842};

TEST(PageLayoutPlan, TenRowsStandOnOnePageOfEverySheet)
{
    for (const QSizeF& sheet : {kA4Landscape, kLetterLandscape, kA4Upright})
        for (int rows = 1; rows <= 10; ++rows)
            for (const bool note : {false, true})
                EXPECT_EQ(planPages(sheet, rows, note).pages.size(), 1U) << sheet.width() << " " << rows;
}

TEST(PageLayoutPlan, EveryRowStandsOnceAndInOrder)
{
    for (const int rows : {1, 12, 13, 40, 120, 1000}) {
        int next = 0;
        for (const PageLayoutPlan::Page& page : planPages(kA4Landscape, rows, true).pages) {
            EXPECT_EQ(page.firstRow, next);
            next += page.rows;
        }
        EXPECT_EQ(next, rows);
    }
}

TEST(PageLayoutPlan, NothingOverlapsAndAllStandsInsideTheMargins)
{
    for (const int rows : {0, 1, 10, 40}) {
        const PageLayoutPlan plan = planPages(kA4Landscape, rows, true);
        EXPECT_GE(plan.graph.top(), plan.headings.bottom());
        EXPECT_GE(plan.pages[0].table.top(), plan.graph.bottom());
        for (const PageLayoutPlan::Page& page : plan.pages)
            EXPECT_LE(page.table.bottom(), plan.footer.top());
        EXPECT_LE(plan.footer.bottom(), kA4Landscape.height() - 36);
    }
}

TEST(PageLayoutPlan, TheGraphKeepsTwoFifthsOfThePage)
{
    for (const int rows : {1, 10, 500}) {
        const PageLayoutPlan plan = planPages(kA4Landscape, rows, false);
        EXPECT_GE(plan.graph.height(), 0.4 * plan.content.height()) << rows;
    }
}

TEST(PageLayoutPlan, ATinySheetStillTakesEveryRow)
{
    const PageLayoutPlan plan = planPages({100, 100}, 3, true);
    EXPECT_EQ(plan.pages.back().firstRow + plan.pages.back().rows, 3);
}

TEST(PageLayoutPlan, APictureHasTheSizeAskedForWhereItsRowsFit)
{
    const PageLayoutPlan plan = planPicture({1200, 600}, 5, true);
    EXPECT_EQ(plan.sheet, QSizeF(1200, 600));
    EXPECT_TRUE(plan.footer.isEmpty());
    EXPECT_LE(plan.pages.front().table.bottom(), plan.content.bottom());
}

TEST(PageLayoutPlan, APictureGrowsWithItsRowsAndTheGraphKeepsItsRoom)
{
    const PageLayoutPlan plan = planPicture({1200, 600}, 60, true);
    ASSERT_EQ(plan.pages.size(), 1U);
    EXPECT_EQ(plan.pages.front().rows, 60);
    EXPECT_GT(plan.sheet.height(), 600);
    EXPECT_GE(plan.graph.height(), 240);
    EXPECT_LE(plan.pages.front().table.bottom(), plan.content.bottom());
    EXPECT_LE(plan.note.bottom(), plan.pages.front().table.top());
}

TEST(PageLayoutPlan, FootnotesStandBelowTheTableAndInsideThePage)
{
    for (const int rows : {0, 3, 12, 40}) {
        const PageLayoutPlan plan = planPages(kA4Landscape, rows, false, std::vector<double>(30, 20.0));
        int next = 0;
        for (const PageLayoutPlan::Page& page : plan.pages)
            for (std::size_t index = 0; index < page.footnotes.size(); ++index) {
                EXPECT_EQ(page.firstFootnote + static_cast<int>(index), next++);
                EXPECT_GE(page.footnotes[index].top(), page.table.bottom());
                EXPECT_LE(page.footnotes[index].bottom(), plan.footer.top());
            }
        EXPECT_EQ(next, 30);
    }
}

TEST(PageLayoutPlan, WithoutFootnotesThePlanIsAsItWas)
{
    EXPECT_EQ(planPages(kA4Landscape, 5, true).graph, planPages(kA4Landscape, 5, true, {}).graph);
    EXPECT_LT(planPages(kA4Landscape, 5, true, {40}).graph.height(), planPages(kA4Landscape, 5, true).graph.height());
    EXPECT_EQ(planPicture({800, 600}, 5, false, {40}).pages[0].footnotes.size(), 1U);
}

}  // namespace
}  // namespace plotix
