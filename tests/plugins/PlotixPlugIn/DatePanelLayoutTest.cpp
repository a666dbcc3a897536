#include "DateRangeControllerFixture.h"

#include "plugins/PlotixPlugIn/DatePanelLayout.h"

namespace {

/// The date panel in a trend view that is wide, or not.
class DatePanelLayoutTest : public DateRangeControllerTest {
protected:
    static constexpr int kNarrowest = 440;

    /// Inside another widget, as a trend view has it, and as tall as its layout wants.
    void showAt(int width)
    {
        panel().setParent(&trendView);
        panel().resize(width, panel().layout()->heightForWidth(width));
        panel().show();
        trendView.resize(panel().size());
        trendView.show();
        panel().layout()->activate();
    }
    QWidget& panel() { return *controller->view(); }
    std::vector<QWidget*> controls()
    {
        return {controller->fromTextField(),        controller->fromDate(),
                controller->toTextField(),          controller->toDate(),
                controller->quickDatePopupButton(), controller->refreshButton()};
    }
    /// Every control is seen, uncut, inside the panel and apart from the others.
    void expectAllWhole()
    {
        for (const QWidget* control : controls()) {
            EXPECT_TRUE(control->isVisible() && panel().rect().contains(control->geometry())) << panel().width();
            EXPECT_GE(control->width(), control->minimumSizeHint().width()) << panel().width();
            for (const QWidget* other : controls())
                EXPECT_TRUE(other == control || !other->geometry().intersects(control->geometry())) << panel().width();
        }
    }
    int rowCount()
    {
        std::set<int> middles;
        for (const QWidget* control : controls())
            middles.insert(control->geometry().center().y() / 10);
        return static_cast<int>(middles.size());
    }

    QWidget trendView;
};

TEST_F(DatePanelLayoutTest, AWidePanelIsOneRow)
{
    showAt(1000);
    expectAllWhole();
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(controller->refreshButton()->geometry().right(), 1000 - 12 - 1);
}

TEST_F(DatePanelLayoutTest, AtEveryWidthAllIsWholeAndHasItsText)
{
    for (int width = 1000; width >= kNarrowest; width -= 20) {
        showAt(width);
        expectAllWhole();
    }
    EXPECT_EQ(controller->fromTextField()->text(), "From");
    EXPECT_EQ(controller->quickDatePopupButton()->text(), "Quick Range");
}

TEST_F(DatePanelLayoutTest, ANarrowOneWrapsAndIsTaller)
{
    auto& layout = static_cast<DatePanelLayout&>(*panel().layout());
    EXPECT_EQ(layout.extraHeight(1000), 0);
    EXPECT_GT(layout.extraHeight(kNarrowest), 20);
    showAt(kNarrowest);
    EXPECT_GT(rowCount(), 1);
    EXPECT_GT(controller->refreshButton()->y(), controller->fromDate()->geometry().bottom());
    EXPECT_EQ(controller->quickDatePopupButton()->x(), 12);
}

TEST_F(DatePanelLayoutTest, PickersBelowEachOtherBeginAtTheSamePlace)
{
    showAt(260);
    EXPECT_EQ(controller->fromDate()->x(), controller->toDate()->x());
    EXPECT_GT(controller->toDate()->y(), controller->fromDate()->geometry().bottom());
}

TEST_F(DatePanelLayoutTest, AHiddenButtonTakesNoSpace)
{
    const int width = panel().layout()->sizeHint().width();
    controller->refreshButton()->hide();
    panel().layout()->invalidate();
    EXPECT_LE(panel().layout()->sizeHint().width(), width - controller->refreshButton()->minimumWidth());
}

TEST_F(DatePanelLayoutTest, ThePanelItselfCanBeNarrow)
{
    EXPECT_LE(panel().layout()->minimumSize().width(), kNarrowest);
}

}  // namespace
