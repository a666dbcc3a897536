#include "DateRangeControllerFixture.h"

namespace {

/// The date panel in a trend view that is wide, or not.
class DatePanelFitTest : public DateRangeControllerTest {
protected:
    /// The largest width at which the labels do not fit.
    int showNarrow()
    {
        int width = 1000;
        do {
            showAt(width -= 4);
        } while (controller->fromTextField()->isVisible() && width > 100);
        return width;
    }
    /// Inside another widget, as a trend view has it: alone, its layout would not let it become narrow.
    void showAt(int width)
    {
        panel().setParent(&trendView);
        panel().resize(width, 40);
        panel().show();
        trendView.show();
        QCoreApplication::processEvents();  // hidden widgets leave the layout only when events are processed
    }
    QWidget& panel() { return *controller->view(); }
    bool isWhole(const QWidget* control)
    {
        return control->width() >= control->minimumSizeHint().width() && panel().rect().contains(control->geometry());
    }
    bool controlsAreWhole()
    {
        return isWhole(controller->fromDate()) && isWhole(controller->toDate()) &&
               isWhole(controller->quickDatePopupButton()) && isWhole(controller->refreshButton());
    }

    QWidget trendView;
};

TEST_F(DatePanelFitTest, AWidePanelHasItsLabels)
{
    showAt(1000);
    EXPECT_TRUE(controller->fromTextField()->isVisible());
    EXPECT_EQ(controller->quickDatePopupButton()->text(), "Quick Range");
    EXPECT_TRUE(controlsAreWhole());
}

TEST_F(DatePanelFitTest, ANarrowOneKeepsEveryControlWhole)
{
    EXPECT_GT(showNarrow(), 300);
    EXPECT_TRUE(controlsAreWhole());
    EXPECT_EQ(controller->quickDatePopupButton()->text(), "");
    EXPECT_FALSE(controller->quickDatePopupButton()->accessibleName().isEmpty());
}

TEST_F(DatePanelFitTest, WithTheRoomTheLabelsComeBack)
{
    showNarrow();
    showAt(1000);
    EXPECT_TRUE(controller->toTextField()->isVisible());
    EXPECT_EQ(controller->quickDatePopupButton()->text(), "Quick Range");
}

}  // namespace
