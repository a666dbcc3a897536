#include "hostapp/core/SiteProperty.h"
#include "hostapp/core/Units.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using plotix::SiteProperty;

class Watcher : public KTVPropertyObserver {
public:
    void observeValueForKeyPath(const QString& keyPath, KTVProperty*, const KTVPropertyChange& change,
                                ObservationTag) override
    {
        notices.append(keyPath + ": " + change.oldValue.toString() + " -> " + change.newValue.toString());
    }
    QStringList notices;
};

class SitePropertyTest : public testing::Test {
protected:
    SitePropertyTest()
    {
        QObject::connect(&property, &SiteProperty::changed, [this] { ++changes; });
        property.addObserver(&watcher, "unit", kUnit);
    }

    static SiteProperty::Description air()
    {
        SiteProperty::Description description;
        description.id = 1;
        description.name = "Air";
        description.propertyName = "air";
        description.unit = description.archivedUnit = "degC";
        return description;
    }

    SiteProperty property{air(), plotix::Units::shared()};
    Watcher watcher;
    int changes = 0;
};

TEST_F(SitePropertyTest, AUnitChangeTellsObserversAndTheDocument)
{
    property.setUnit("°F");
    EXPECT_EQ(watcher.notices, QStringList{"unit: degC -> °F"});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(property.unit(), "°F");
}

TEST_F(SitePropertyTest, SettingTheSameUnitTellsObserversButNotTheDocument)
{
    property.setUnit("degC");
    EXPECT_EQ(watcher.notices.size(), 1);
    EXPECT_EQ(changes, 0);
}

TEST_F(SitePropertyTest, TheSymbolIsTheUsualOne)
{
    EXPECT_EQ(property.unitSymbol(), "°C");
}

TEST_F(SitePropertyTest, ItHoldsNoValueOfItsOwn)
{
    EXPECT_TRUE(std::isnan(property.unitValue()));
    EXPECT_FALSE(property.isValid());
}

TEST_F(SitePropertyTest, VisibilityIsToldOnlyWhenItChanges)
{
    property.setVisible(true);
    EXPECT_EQ(changes, 0);
    property.setVisible(false);
    EXPECT_EQ(changes, 1);
}

TEST_F(SitePropertyTest, ColourObserversAreToldOldAndNew)
{
    property.addObserver(&watcher, "color", {"color"});
    property.setColor(QColor("red"));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(watcher.notices.size(), 1);
}

}  // namespace
