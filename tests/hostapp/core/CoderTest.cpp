#include "hostapp/core/Coder.h"

#include "base/ReportableError.h"
#include "hostapp/core/SiteProperty.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace {

using plotix::Decoder;
using plotix::Encoder;
using plotix::SiteProperty;

class OneAgent : public KTVAgent {
public:
    KTVPropertyCollection properties() const override { return KTVPropertyCollection(list); }
    QString uniqueIdentifier() const override { return "agent-1"; }
    KTVArchiveManager* archiveManager() const override { return nullptr; }
    std::optional<QString> siteName() const override { return {}; }
    std::optional<QString> siteLocation() const override { return {}; }
    KTVSiteWindowController* siteWindowController() const override { return nullptr; }

    KTVPropertyList list;
};

class CoderTest : public testing::Test {
protected:
    QVariant roundTrip(const QVariant& value)
    {
        encoder.encodeValue("value", value);
        return decoder()->decodeValue("value");
    }
    std::unique_ptr<Decoder> decoder()
    {
        return std::make_unique<Decoder>(
            encoder.data(),
            Decoder::Surroundings{
                [this](const QString& identifier) { return identifier == "agent-1" ? agent : nullptr; }, nullptr});
    }
    KTVPropertyPtr addProperty(const QString& key, const QString& name)
    {
        SiteProperty::Description description;
        description.id = static_cast<qint64>(agent->list.size()) + 1;
        description.propertyName = key;
        description.name = name;
        description.unit = "°C";
        description.color = QColor("#56b4e9");
        description.type = kPropertyTypeNeverPlotted;
        description.visible = false;
        agent->list.push_back(std::make_shared<SiteProperty>(description, nullptr));
        return agent->list.back();
    }

    std::shared_ptr<OneAgent> agent = std::make_shared<OneAgent>();
    Encoder encoder{"agent-1"};
};

TEST_F(CoderTest, DoublesComeBackBitForBit)
{
    const std::uint64_t patterns[] = {0x0000000000000000, 0x8000000000000000, 0x3FB999999999999A, 0x0000000000000001,
                                      0x7FEFFFFFFFFFFFFF, 0x7FF0000000000000, 0xFFF0000000000000, 0x7FF8000000000000,
                                      0xFFF8000000000123, 0x7FF800000000BEEF, 0x41D954FC4006BCAF};
    for (const std::uint64_t pattern : patterns) {
        const QVariant back = roundTrip(std::bit_cast<double>(pattern));
        EXPECT_EQ(back.typeId(), QMetaType::Double);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(back.toDouble()), pattern);
    }
}

TEST_F(CoderTest, FloatsStayFloatsBitForBit)
{
    for (const std::uint32_t pattern : {0x00000000U, 0x80000000U, 0x3DCCCCCDU, 0x00000001U, 0x7FC00123U, 0xFF800000U}) {
        const QVariant back = roundTrip(QVariant::fromValue(std::bit_cast<float>(pattern)));
        EXPECT_EQ(back.typeId(), QMetaType::Float);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(back.value<float>()), pattern);
    }
}

TEST_F(CoderTest, PlainValuesComeBack)
{
    for (const QVariant& value :
         {QVariant(true), QVariant(-7), QVariant(std::numeric_limits<qint64>::min()), QVariant(QString("Düne \"x\"\n")),
          QVariant(QByteArray("\0\xFF", 2)), QVariant(QString()), QVariant(QByteArray())}) {
        const QVariant back = roundTrip(value);
        EXPECT_EQ(back, value);
        EXPECT_EQ(back.typeId(), value.typeId());
    }
}

TEST_F(CoderTest, LongTextsComeBack)
{
    const QString text = QString("Fjäll ").repeated(20000);
    EXPECT_EQ(roundTrip(text), QVariant(text));
}

TEST_F(CoderTest, ListsAndMapsNest)
{
    const QVariantMap row{{"show", true}, {"minimum", QVariant::fromValue(0.1F)}, {"points", 3}};
    const QVariantList rows{row, QVariantMap{}, QVariantList{1, "two"}};
    EXPECT_EQ(roundTrip(rows), QVariant(rows));
}

TEST_F(CoderTest, ColoursBecomeTheirText)
{
    EXPECT_EQ(roundTrip(QColor(1, 2, 3, 4)), QVariant(QString("#04010203")));
}

TEST_F(CoderTest, WhatArchivesDoNotKnowBecomesAbsent)
{
    EXPECT_FALSE(roundTrip(QVariant::fromValue(QPointF(1, 2))).isValid());
    EXPECT_TRUE(decoder()->containsKey("value"));
}

TEST_F(CoderTest, MissingKeysAreNoError)
{
    EXPECT_FALSE(decoder()->containsKey("nowhere"));
    EXPECT_FALSE(decoder()->decodeBool("nowhere"));
    EXPECT_FALSE(decoder()->decodeValue("nowhere").isValid());
    EXPECT_FALSE(decoder()->decodeProperties("nowhere"));
    EXPECT_FALSE(decoder()->decodeObject("nowhere", [](plotix::KeyedDecoder&) { FAIL(); }));
}

TEST_F(CoderTest, ObjectsHaveKeysOfTheirOwn)
{
    encoder.encodeBool("flag", true);
    encoder.encodeObject("inner", [](plotix::KeyedEncoder& inner) {
        inner.encodeBool("flag", false);
        inner.encodeObject("deeper", [](plotix::KeyedEncoder& deeper) { deeper.encodeValue("x", 1.5); });
    });
    bool read = decoder()->decodeObject("inner", [](plotix::KeyedDecoder& inner) {
        EXPECT_TRUE(inner.containsKey("flag"));
        EXPECT_FALSE(inner.decodeBool("flag"));
        EXPECT_TRUE(inner.decodeObject(
            "deeper", [](plotix::KeyedDecoder& deeper) { EXPECT_EQ(deeper.decodeValue("x"), QVariant(1.5)); }));
    });
    EXPECT_TRUE(read);
    EXPECT_TRUE(decoder()->decodeBool("flag"));
}

TEST_F(CoderTest, AnEmptyObjectIsThere)
{
    encoder.encodeObject("empty", {});
    EXPECT_TRUE(decoder()->decodeObject("empty", {}));
    EXPECT_FALSE(decoder()->decodeValue("empty").isValid());
}

TEST_F(CoderTest, PropertiesResolveToTheAgentsOwnObjects)
{
    const KTVPropertyPtr air = addProperty("air", "Air");
    const KTVPropertyPtr wind = addProperty("wind", "Wind");
    encoder.encodeProperties("tables", {wind, air});
    EXPECT_EQ(decoder()->decodeProperties("tables"), (KTVPropertyList{wind, air}));
}

TEST_F(CoderTest, APropertyThatIsGoneStaysListed)
{
    encoder.encodeProperties("tables", {addProperty("air", "Air"), addProperty("wind", "Wind")});
    agent->list.pop_back();
    const auto properties = decoder()->decodeProperties("tables");
    ASSERT_EQ(properties->size(), 2U);
    EXPECT_EQ(properties->at(0), agent->list[0]);
    EXPECT_EQ(properties->at(1)->propertyName(), "wind");
    EXPECT_EQ(properties->at(1)->name(), "Wind");
    EXPECT_EQ(properties->at(1)->unitSymbol(), "°C");
    EXPECT_EQ(properties->at(1)->color(), QColor("#56b4e9"));
    EXPECT_EQ(properties->at(1)->type(), kPropertyTypeNeverPlotted);
    EXPECT_FALSE(properties->at(1)->visible());
    EXPECT_FALSE(properties->at(1)->isValid());
}

TEST_F(CoderTest, WithoutTheAgentEveryPropertyIsAPlaceholder)
{
    encoder.encodeProperties("tables", {addProperty("air", "Air")});
    const Decoder lonely(encoder.data(), {});
    EXPECT_NE(lonely.decodeProperties("tables")->at(0), agent->list[0]);
    EXPECT_EQ(lonely.decodeProperties("tables")->at(0)->propertyName(), "air");
    EXPECT_EQ(lonely.agentWithIdentifier("agent-1"), nullptr);
}

TEST_F(CoderTest, AnEmptyPropertiesListIsThere)
{
    encoder.encodeProperties("tables", {});
    EXPECT_EQ(decoder()->decodeProperties("tables"), KTVPropertyList{});
}

TEST_F(CoderTest, AKeyWrittenTwiceKeepsTheLaterValue)
{
    encoder.encodeValue("x", 1);
    encoder.encodeValue("x", 2);
    EXPECT_EQ(decoder()->decodeValue("x"), QVariant(2));
}

TEST_F(CoderTest, EqualStatesAreEqualBytes)
{
    Encoder other("agent-1");
    encoder.encodeValue("a", 1);
    encoder.encodeValue("b", 2.5);
    other.encodeValue("b", 2.5);
    other.encodeValue("a", 1);
    EXPECT_EQ(encoder.data(), other.data());
}

TEST_F(CoderTest, BytesThatAreNoArchiveAreRefused)
{
    for (const QByteArray& bytes : {QByteArray(), QByteArray("hello"), QByteArray(64, '\xFF'), QByteArray(100, '\x81')})
        EXPECT_THROW(Decoder(bytes, {}), plotix::ReportableError);
}

TEST_F(CoderTest, AnArchiveCutShortAnywhereIsRefused)
{
    encoder.encodeValue("rows", QVariantList{1.5, "two", QVariantMap{{"x", true}}});
    encoder.encodeProperties("tables", {addProperty("air", "Air")});
    const QByteArray whole = encoder.data();
    for (int length = 0; length < whole.size(); ++length)
        EXPECT_THROW(Decoder(whole.left(length), {}), plotix::ReportableError) << length;
}

TEST_F(CoderTest, NestingWithoutEndIsRefused)
{
    QByteArray hostile = encoder.data();
    hostile.chop(1);             // the map of no members …
    hostile.append('\xA1');      // … becomes one of one,
    hostile.append("\x61x", 2);  // "x":
    hostile.append(QByteArray(100000, '\x81'));
    EXPECT_THROW(Decoder(hostile, {}), plotix::ReportableError);
}

TEST_F(CoderTest, AnArchiveOfANewerVersionSaysSo)
{
    QByteArray newer = encoder.data();
    const int version = static_cast<int>(newer.indexOf("plotix-archive")) + 14;
    ASSERT_EQ(newer[version], '\x01');
    newer[version] = '\x02';
    try {
        Decoder decoder(newer, {});
        FAIL() << "was read";
    } catch (const plotix::ReportableError& error) {
        EXPECT_TRUE(error.message().contains("newer"));
    }
}

}  // namespace
