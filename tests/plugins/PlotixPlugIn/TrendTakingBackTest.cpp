#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtWidgets/QCheckBox>

// What a user changed in a trend by hand, put back from the state it had before.

namespace {

class TrendTakingBack : public PropertyTableFixture {
protected:
    void SetUp() override
    {
        openAndDeliver({"airTemperature", "pressure"});
        show();
        before = trend->changeable();
    }
    QVariantList times() const { return trend->changeable().value("times").toList(); }

    QVariantMap before;
};

TEST_F(TrendTakingBack, AHiddenLineIsShownAgain)
{
    QCheckBox* box = trend->infoTable()->checkBoxForRow(0);
    QTest::keyClick(box, Qt::Key_Space);
    ASSERT_NE(trend->changeable(), before);
    trend->changeTo(before);
    EXPECT_FALSE(plot("airTemperature")->isHidden());
    EXPECT_TRUE(row(0).show);
    EXPECT_TRUE(trend->infoTable()->checkBoxForRow(0)->isChecked());
    EXPECT_EQ(trend->changeable(), before);
}

TEST_F(TrendTakingBack, ARemovedPropertyIsFetchedAndStandsWhereItStood)
{
    trend->infoTable()->selectRow(0);
    QTest::keyClick(trend->infoTable(), Qt::Key_Delete);
    ASSERT_EQ(propertyKeys(), QStringList("pressure"));
    trend->changeTo(before);
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_NE(plot("airTemperature"), nullptr);
}

TEST_F(TrendTakingBack, AnAddedPropertyGoesWithoutAFetch)
{
    trend->addProperties({"windSpeed"});
    deliver(twoRows({"airTemperature", "pressure", "windSpeed"}));
    host.log().clear();
    trend->changeTo(before);
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_EQ(host.log().count("archiveManager."), 0);
}

TEST_F(TrendTakingBack, ARangeMovedByKeysComesBackWithItsDates)
{
    const auto dates = trend->shownRange();
    QTest::keyClick(trend->hostView(), Qt::Key_Right);
    QTest::keyClick(trend->hostView(), '+');
    ASSERT_NE(times(), before.value("times").toList());
    trend->changeTo(before);
    EXPECT_EQ(times(), before.value("times").toList());
    EXPECT_EQ(trend->shownRange(), dates);
}

}  // namespace
