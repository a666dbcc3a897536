#include "plugins/PlotixPlugIn/InfoTableRow.h"

#include <gtest/gtest.h>

namespace {

InfoTableRow exampleRow()
{
    return {.show = false,
            .color = QColor(1, 2, 3, 128),
            .tableName = "Air Temperature",
            .propertyName = "airTemperature",
            .unit = "°C",
            .minimum = 0.1F,
            .maximum = 3.4e38F,
            .average = -20.39F,
            .points = 2147483647};
}

TEST(InfoTableRowTest, HasExactlyItsNineKeys)
{
    EXPECT_EQ(dictionaryFromInfoTableRow({}).keys(), (QStringList{"average", "color", "maximum", "minimum", "points",
                                                                  "propertyName", "show", "tableName", "unit"}));
}

TEST(InfoTableRowTest, ComesBackBitForBit)
{
    EXPECT_EQ(infoTableRowFromDictionary(dictionaryFromInfoTableRow(exampleRow())), exampleRow());
}

TEST(InfoTableRowTest, AnAbsentColourStaysAbsent)
{
    EXPECT_FALSE(infoTableRowFromDictionary(dictionaryFromInfoTableRow({})).color.isValid());
}

TEST(InfoTableRowTest, AMissingKeyLeavesTheOthersAsTheyWere)
{
    const QVariantMap whole = dictionaryFromInfoTableRow(exampleRow()), empty = dictionaryFromInfoTableRow({});
    for (const QString& key : whole.keys()) {
        QVariantMap lacking = whole, expected = whole;
        lacking.remove(key);
        expected[key] = empty[key];
        EXPECT_EQ(infoTableRowFromDictionary(lacking), infoTableRowFromDictionary(expected)) << key.toStdString();
    }
}

TEST(InfoTableRowTest, MissingKeysTakeTheDefaults)
{
    EXPECT_EQ(infoTableRowFromDictionary({}), InfoTableRow());
}

TEST(InfoTableRowTest, UnreadableValuesTakeTheDefaults)
{
    const QVariantMap damaged{{"minimum", "x"}, {"color", "no colour"}, {"points", QVariantList{1}}};
    EXPECT_EQ(infoTableRowFromDictionary(damaged), InfoTableRow());
}

TEST(InfoTableRowTest, ListsKeepTheirOrderAndSkipWhatIsNoRow)
{
    const InfoTableArray rows{std::make_shared<InfoTableRow>(exampleRow()), std::make_shared<InfoTableRow>()};
    QVariantList list = variantListFromInfoTableArray(rows);
    list.insert(1, "not a row");
    const InfoTableArrayPtr back = infoTableArrayFromVariantList(list);
    ASSERT_EQ(back->size(), 2U);
    EXPECT_EQ(*back->at(0), exampleRow());
    EXPECT_EQ(*back->at(1), InfoTableRow());
}

}  // namespace
