#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

#include <QtCore/QMimeData>

#include <gtest/gtest.h>

#include <random>

namespace {

const QByteArray kOldFraming = QByteArray::fromHex("4B54564B4559533102000000010000006103000000636F32");

QByteArray archived(const QVariant& root, const QString& key = "root")
{
    KTVArchiveNode archive;
    archive.kind = KTVArchiveNode::Kind::Object;
    archive.set(key, KTVArchiveNode::of(root));
    return writeKeyedArchive(archive);
}

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
    EXPECT_EQ(dragDataFromPropertyNames({"a", "co2"}).toHex(),
              "d9d9f7836e706c6f7469782d6172636869766501d9504fa164726f6f7482616163636f32");
}

TEST(DragDataTest, TheyAreAKeyedArchiveOfAList)
{
    EXPECT_EQ(dragDataFromPropertyNames({"a", "co2"}), archived(QVariantList{"a", "co2"}));
    EXPECT_EQ(propertyNamesFromDragData(archived(QVariantList{"a", "co2"})), (QStringList{"a", "co2"}));
}

TEST(DragDataTest, AnArchiveOfAnythingElseIsNothing)
{
    EXPECT_EQ(propertyNamesFromDragData(archived("a")), std::nullopt);
    EXPECT_EQ(propertyNamesFromDragData(archived(QVariantList{"a", 7})), std::nullopt);
    EXPECT_EQ(propertyNamesFromDragData(archived(QVariantList{"a"}, "keys")), std::nullopt);
    EXPECT_EQ(propertyNamesFromDragData(dragDataFromPropertyNames({"a"}) + '\0'), std::nullopt);
}

TEST(DragDataTest, TheOldFramingIsReadForEver)
{
    EXPECT_EQ(propertyNamesFromDragData(kOldFraming), (QStringList{"a", "co2"}));
    EXPECT_EQ(propertyNamesFromDragData(kOldFraming + '\0'), std::nullopt);
}

TEST(DragDataTest, EveryTruncationIsNothing)
{
    for (const QByteArray& data : {kOldFraming, dragDataFromPropertyNames({"a", "co2"})})
        for (qsizetype length = 0; length < data.size(); ++length)
            EXPECT_EQ(propertyNamesFromDragData(data.first(length)), std::nullopt) << length;
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
