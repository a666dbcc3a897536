#include "hostapp/window/MessageOverlay.h"

#include <gtest/gtest.h>

using plotix::MessageOverlay;

namespace {

class MessageOverlayTest : public testing::Test {
protected:
    void expectCentred()
    {
        const QPoint offset = overlay.view()->geometry().center() - view->rect().center();
        EXPECT_LE(std::abs(offset.x()), 1);
        EXPECT_LE(std::abs(offset.y()), 1);
    }

    void SetUp() override
    {
        view = std::make_unique<QWidget>();
        view->resize(400, 300);
    }

    std::unique_ptr<QWidget> view;
    MessageOverlay overlay;
};

TEST_F(MessageOverlayTest, StandsInTheMiddleOfTheView)
{
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    EXPECT_EQ(overlay.view()->parentWidget(), view.get());
    EXPECT_FALSE(overlay.view()->isHidden());
    expectCentred();
}

TEST_F(MessageOverlayTest, StaysInTheMiddleWhenTheViewIsResized)
{
    view->show();
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    view->resize(900, 200);
    expectCentred();
}

TEST_F(MessageOverlayTest, MovesToAnotherView)
{
    QWidget other;
    other.resize(100, 500);
    overlay.centerOnView(&other, QStringLiteral("No Data"));
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    EXPECT_EQ(overlay.view()->parentWidget(), view.get());
    expectCentred();
}

TEST_F(MessageOverlayTest, LongMessageStaysInsideTheView)
{
    overlay.centerOnView(view.get(), QStringLiteral("word ").repeated(60));
    EXPECT_LT(overlay.view()->width(), view->width());
    expectCentred();
}

TEST_F(MessageOverlayTest, RemovalLeavesTheViewWithoutIt)
{
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    removeFromSuperview(overlay.view());
    EXPECT_EQ(overlay.view()->parentWidget(), nullptr);
    EXPECT_TRUE(overlay.view()->isHidden());
}

TEST_F(MessageOverlayTest, WithoutAViewNothingHappens)
{
    overlay.centerOnView(nullptr, QStringLiteral("No Data"));
    EXPECT_TRUE(overlay.view()->isHidden());
}

TEST_F(MessageOverlayTest, OutlivesTheViewItLiesOn)
{
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    view.reset();
    EXPECT_EQ(overlay.view(), nullptr);
    QWidget other;
    overlay.centerOnView(&other, QStringLiteral("Again"));
    EXPECT_EQ(overlay.view()->parentWidget(), &other);
}

TEST_F(MessageOverlayTest, LetsTheMouseThrough)
{
    overlay.centerOnView(view.get(), QStringLiteral("No Data"));
    EXPECT_TRUE(overlay.view()->testAttribute(Qt::WA_TransparentForMouseEvents));
}

}  // namespace
