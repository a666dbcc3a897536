#include "tests/contract/HostUnderTest.h"
#include "tests/support/fakehost/FakeProperty.h"

#include <cmath>
#include <cstring>

namespace contract {
namespace {

QVariant roundTrip(HostUnderTest& host, const QVariant& value)
{
    QVariant read;
    host.archive([&](KTVEncoder& encoder) { encoder.encodeValue(QStringLiteral("key"), value); },
                 [&](KTVDecoder& decoder) { read = decoder.decodeValue(QStringLiteral("key")); });
    return read;
}

TEST_P(HostContract, PlainValuesComeBackEqual)
{
    const QVariantMap map{{"text", "größe"}, {"number", 7}, {"list", QVariantList{1.5, "two", false}}};
    for (const QVariant& value : {QVariant(true), QVariant(-5), QVariant(qint64(1) << 60), QVariant("Größe\n\"x\""),
                                  QVariant(QString()), QVariant(QByteArray("\x00\xff", 2)), QVariant(map)})
        EXPECT_EQ(roundTrip(*host, value), value) << value.typeName();
}

TEST_P(HostContract, DoublesComeBackBitForBit)
{
    for (const double value : {0.1, -0.0, 1.0 / 3, 5e-324, 1.7976931348623157e308, HUGE_VAL, 4.0}) {
        const QVariant read = roundTrip(*host, value);
        ASSERT_EQ(read.typeId(), QMetaType::Double) << value;
        const double back = read.toDouble();
        EXPECT_EQ(std::memcmp(&back, &value, sizeof value), 0) << value;
    }
}

TEST_P(HostContract, FloatsComeBackBitForBit)
{
    for (const float value : {0.1F, -0.0F, 20.1F, 3.4028235e38F, 4.0F}) {
        const QVariant read = roundTrip(*host, QVariant::fromValue(value));
        ASSERT_EQ(read.typeId(), QMetaType::Float) << value;
        const float back = read.toFloat();
        EXPECT_EQ(std::memcmp(&back, &value, sizeof value), 0) << value;
    }
}

TEST_P(HostContract, AMissingKeyIsNoFailure)
{
    host->archive([](KTVEncoder&) {},
                  [](KTVDecoder& decoder) {
                      const QString key = QStringLiteral("missing");
                      EXPECT_FALSE(decoder.containsKey(key));
                      EXPECT_FALSE(decoder.decodeBool(key));
                      EXPECT_FALSE(decoder.decodeValue(key).isValid());
                      EXPECT_FALSE(decoder.decodeProperties(key).has_value());
                      EXPECT_FALSE(decoder.decodeObject(key, [](plotix::KeyedDecoder&) { FAIL(); }));
                  });
}

TEST_P(HostContract, BooleansComeBack)
{
    host->archive(
        [](KTVEncoder& encoder) {
            encoder.encodeBool(QStringLiteral("yes"), true);
            encoder.encodeBool(QStringLiteral("no"), false);
        },
        [](KTVDecoder& decoder) {
            EXPECT_TRUE(decoder.decodeBool(QStringLiteral("yes")));
            EXPECT_TRUE(decoder.containsKey(QStringLiteral("no")));
            EXPECT_FALSE(decoder.decodeBool(QStringLiteral("no")));
        });
}

TEST_P(HostContract, AnObjectsKeysAreItsOwn)
{
    const QString key = QStringLiteral("key"), object = QStringLiteral("object");
    host->archive(
        [&](KTVEncoder& encoder) {
            encoder.encodeValue(key, 1);
            encoder.encodeObject(object, [&](plotix::KeyedEncoder& inner) { inner.encodeValue(key, 2); });
        },
        [&](KTVDecoder& decoder) {
            EXPECT_EQ(decoder.decodeValue(key), QVariant(1));
            QVariant read;
            EXPECT_TRUE(
                decoder.decodeObject(object, [&](plotix::KeyedDecoder& inner) { read = inner.decodeValue(key); }));
            EXPECT_EQ(read, QVariant(2));
        });
}

TEST_P(HostContract, PropertiesComeBackAsTheAgentsOwnObjects)
{
    const KTVPropertyList properties{property("pressure"), temperature()};
    std::optional<KTVPropertyList> read;
    host->archive([&](KTVEncoder& encoder) { encoder.encodeProperties(QStringLiteral("tables"), properties); },
                  [&](KTVDecoder& decoder) { read = decoder.decodeProperties(QStringLiteral("tables")); });
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(*read, properties);
}

TEST_P(HostContract, AnEmptyListOfPropertiesIsNotAMissingOne)
{
    std::optional<KTVPropertyList> read;
    host->archive([](KTVEncoder& encoder) { encoder.encodeProperties(QStringLiteral("tables"), {}); },
                  [&](KTVDecoder& decoder) { read = decoder.decodeProperties(QStringLiteral("tables")); });
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(read->empty());
}

TEST_P(HostContract, APropertyTheAgentLacksStaysListedWithoutAValue)
{
    using fakehost::FakeProperty;
    const auto stranger = std::make_shared<FakeProperty>(FakeProperty::Description{.name = "Snow Depth", .unit = "cm"},
                                                         std::make_shared<fakehost::FakeUnitModel>());
    std::optional<KTVPropertyList> read;
    host->archive([&](KTVEncoder& encoder) { encoder.encodeProperties(QStringLiteral("tables"), {stranger}); },
                  [&](KTVDecoder& decoder) { read = decoder.decodeProperties(QStringLiteral("tables")); });
    ASSERT_TRUE(read.has_value());
    ASSERT_EQ(read->size(), 1U);
    ASSERT_NE(read->front(), nullptr);
    EXPECT_EQ(read->front()->propertyName(), QStringLiteral("snowDepth"));
    EXPECT_EQ(read->front()->name(), QStringLiteral("Snow Depth"));
    EXPECT_FALSE(read->front()->isValid());
}

TEST_P(HostContract, AnAgentIsFoundByItsIdentifierAlone)
{
    host->archive([](KTVEncoder&) {},
                  [&](KTVDecoder& decoder) {
                      EXPECT_EQ(decoder.agentWithIdentifier(host->agent()->uniqueIdentifier()), host->agent());
                      EXPECT_EQ(decoder.agentWithIdentifier(QStringLiteral("nobody")), nullptr);
                  });
}

}  // namespace
}  // namespace contract
