#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <gtest/gtest.h>

namespace {

TEST(PaperColorsTest, AFaintColourStaysFaintOnPaper)
{
    const QColor faint(255, 255, 0, 128);
    EXPECT_LT(plotix::colorOnPaper(faint).lightness(), faint.lightness());
    EXPECT_EQ(plotix::colorOnPaper(faint).alpha(), 128);
}

}  // namespace
