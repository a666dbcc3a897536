#include "hostapp/site/TrendColors.h"

#include "hostapp/document/PropertyPalette.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <set>

namespace {

class TrendColorsTest : public testing::Test {
protected:
    TrendColorsTest() : station(site.addStation())
    {
        for (int number = 0; number < 4; ++number)
            station->addProperty(QStringLiteral("Level %1").arg(number), QStringLiteral("m"));
        properties = station->properties().objects();
    }
    static void paint(const KTVPropertyPtr& property, const QColor& color)
    {
        dynamic_cast<plotix::SiteProperty&>(*property).setColor(color);
    }
    std::set<QRgb> colors() const
    {
        std::set<QRgb> found;
        for (const KTVPropertyPtr& property : properties)
            found.insert(property->color().rgb());
        return found;
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station;
    KTVPropertyList properties;
};

TEST_F(TrendColorsTest, EqualColoursAreToldApartAndTheFirstKeepsIts)
{
    for (const KTVPropertyPtr& property : properties)
        paint(property, Qt::red);
    plotix::tellLinesApart(properties);
    EXPECT_EQ(colors().size(), properties.size());
    EXPECT_EQ(properties.front()->color(), QColor(Qt::red));
}

TEST_F(TrendColorsTest, LinesThatWereThereBeforeKeepTheirs)
{
    for (const KTVPropertyPtr& property : properties)
        paint(property, Qt::red);
    plotix::tellLinesApart(properties, properties.size() - 1);
    EXPECT_EQ(colors().size(), 2U);
    EXPECT_NE(properties.back()->color(), QColor(Qt::red));
}

TEST_F(TrendColorsTest, ColoursOfOthersAreTakenOnlyWhereNoneIsFree)
{
    const KTVPropertyList two{properties[0], properties[1]};
    paint(two[1], two[0]->color());
    plotix::tellLinesApart(two, 1, properties);
    for (std::size_t other = 2; other < properties.size(); ++other)
        EXPECT_NE(two[1]->color(), properties[other]->color());
    paint(two[1], two[0]->color());
    KTVPropertyList all;
    for (std::size_t position = 0; position < plotix::kPaletteSize; ++position) {
        all.push_back(station->addProperty(QStringLiteral("Other %1").arg(position), {}));
        paint(all.back(), plotix::paletteColor(position));
    }
    plotix::tellLinesApart(two, 1, all);
    EXPECT_NE(two[1]->color(), two[0]->color());
}

TEST_F(TrendColorsTest, DifferentColoursStay)
{
    const std::set<QRgb> before = colors();
    ASSERT_EQ(before.size(), properties.size());
    plotix::tellLinesApart(properties);
    EXPECT_EQ(colors(), before);
}

TEST_F(TrendColorsTest, ANewPropertyGetsAColourThatNoOtherHas)
{
    paint(properties.front(), plotix::paletteColor(properties.size()));
    const auto added = station->addProperty(QStringLiteral("Another"), {});
    EXPECT_FALSE(colors().contains(added->color().rgb()));
}

TEST_F(TrendColorsTest, MoreLinesThanColoursAreNoMistake)
{
    for (std::size_t number = 0; number < plotix::kPaletteSize + 3; ++number)
        station->addProperty(QStringLiteral("More %1").arg(number), {});
    properties = station->properties().objects();
    plotix::tellLinesApart(properties);
    EXPECT_EQ(colors().size(), plotix::kPaletteSize);
}

}  // namespace
