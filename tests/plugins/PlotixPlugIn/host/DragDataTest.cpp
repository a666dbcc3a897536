#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include <QtCore/QMimeData>

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(DragDataTest, KeysComeBackInOrder)
{
    const QStringList keys{"airTemperature", "", "größe", "airTemperature"};
    EXPECT_EQ(propertyNamesFromDragData(dragDataFromPropertyNames(keys)), keys);
}

TEST(DragDataTest, NoKeysAreAnEmptyListAndNotNothing)
{
    EXPECT_EQ(propertyNamesFromDragData(dragDataFromPropertyNames({})), QStringList());
}

TEST(DragDataTest, TheBytesAreTheDocumentedOnes)
{
    EXPECT_EQ(dragDataFromPropertyNames({"a", "co2"}).toHex(' ').toUpper(),
              "4B 54 56 4B 45 59 53 31 02 00 00 00 01 00 00 00 61 03 00 00 00 63 6F 32");
}

TEST(DragDataTest, EveryTruncationIsNothing)
{
    const QByteArray data = dragDataFromPropertyNames({"a", "co2"});
    for (qsizetype length = 0; length < data.size(); ++length)
        EXPECT_EQ(propertyNamesFromDragData(data.first(length)), std::nullopt) << length;
}

TEST(DragDataTest, TrailingBytesAreNothing)
{
    EXPECT_EQ(propertyNamesFromDragData(dragDataFromPropertyNames({"a"}) + '\0'), std::nullopt);
}

TEST(DragDataTest, ACountThatPromisesMoreThanThereIsCostsNothing)
{
    EXPECT_EQ(propertyNamesFromDragData("KTVKEYS1\xFF\xFF\xFF\xFF"), std::nullopt);
    EXPECT_EQ(propertyNamesFromDragData(QByteArray("KTVKEYS1\x01\0\0\0\xFF\xFF\xFF\xFFzz", 18)), std::nullopt);
}

TEST(DragDataTest, TextThatIsNotUtf8IsNothing)
{
    EXPECT_EQ(propertyNamesFromDragData(QByteArray("KTVKEYS1\x01\0\0\0\x01\0\0\0\xFF", 17)), std::nullopt);
}

TEST(DragDataTest, ForeignBytesAreNothing)
{
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(static_cast<qsizetype>(random() % 64), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        EXPECT_EQ(propertyNamesFromDragData(bytes), std::nullopt);
    }
    EXPECT_EQ(propertyNamesFromDragData("bplist00\xD4"), std::nullopt);
}

TEST(DragDataTest, AFlippedBitNeverReadsPastTheEnd)
{
    const QByteArray data = dragDataFromPropertyNames({"airTemperature", "co2"});
    for (qsizetype bit = 0; bit < data.size() * 8; ++bit) {
        QByteArray damaged = data;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        const auto keys = propertyNamesFromDragData(damaged);
        EXPECT_TRUE(!keys || keys->size() == 2);
    }
}

TEST(DragDataTest, MimeDataHoldsTheKeysUnderTheDragType)
{
    const auto mimeData = mimeDataForPropertyNames("agent-7", {"co2"});
    EXPECT_EQ(mimeData->formats(), QStringList("agent-7"));
    EXPECT_EQ(propertyNamesFromDragData(mimeData->data("agent-7")), QStringList("co2"));
}

}  // namespace
