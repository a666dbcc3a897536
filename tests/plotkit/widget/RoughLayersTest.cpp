#include "tests/plotkit/widget/HostingViewFixture.h"

// Layers may draw roughly while a view is moved, and are asked again when it rests.

namespace {

/// Draws roughly wherever it may, and remembers how often it did which.
class RoughLayer : public CPTGraphLayer {
public:
    void drawInGraph(QPainter&, const plotkit::GraphGeometry& geometry) override
    {
        if (isGone)
            return;
        rough = geometry.mayBeRough;
        ++(rough ? roughDrawings : exactDrawings);
    }
    bool isRough() const override { return rough; }

    bool rough = false, isGone = false;
    int roughDrawings = 0, exactDrawings = 0;
};

class RoughLayersTest : public HostingViewTest {
protected:
    void SetUp() override
    {
        HostingViewTest::SetUp();
        graph->addLayer(layer);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
        ASSERT_TRUE(settles());
        layer->roughDrawings = layer->exactDrawings = 0;
    }
    void move(double by)
    {
        show({by, 200}, {0, 200});
        QCoreApplication::sendPostedEvents();
    }
    bool settles()
    {
        return QTest::qWaitFor([this] { return layer->exactDrawings > 0 && !view->isProvisional(); }, 20'000);
    }

    std::shared_ptr<RoughLayer> layer = std::make_shared<RoughLayer>();
};

TEST_F(RoughLayersTest, AreDrawnExactlyOnceTheViewRests)
{
    move(1);
    move(2);
    EXPECT_EQ(layer->roughDrawings, 2);
    EXPECT_EQ(layer->exactDrawings, 0);
    EXPECT_TRUE(view->isProvisional());
    EXPECT_TRUE(settles());
    EXPECT_EQ(layer->exactDrawings, 1);
}

TEST_F(RoughLayersTest, AreExactInAPicture)
{
    move(1);
    view->grab();
    view->imageOfLayer();
    view->dataForPDFRepresentationOfLayer();
    EXPECT_EQ(layer->roughDrawings, 1);
    EXPECT_EQ(layer->exactDrawings, 3);
    EXPECT_TRUE(settles());
    EXPECT_EQ(layer->exactDrawings, 4);
}

TEST_F(RoughLayersTest, OneThatDrawsNothingAnyMoreDoesNotKeepTheViewFromResting)
{
    move(1);
    ASSERT_TRUE(view->isProvisional());
    layer->isGone = true;
    EXPECT_TRUE(QTest::qWaitFor([this] { return !view->isProvisional(); }, 5'000));
}

}  // namespace
