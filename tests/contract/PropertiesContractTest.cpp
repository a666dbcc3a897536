#include "tests/contract/HostUnderTest.h"

#include <QtCore/QStringList>

#include <cmath>

namespace contract {
namespace {

class NoticeLog : public KTVPropertyObserver {
public:
    void observeValueForKeyPath(const QString& keyPath, KTVProperty* object, const KTVPropertyChange& change,
                                ObservationTag context) override
    {
        keys.append(keyPath);
        last = change;
        lastObject = object;
        lastTag = context;
    }
    QStringList keys;
    KTVPropertyChange last;
    KTVProperty* lastObject = nullptr;
    ObservationTag lastTag;
};

const QString kUnitKey = QStringLiteral("unit");
const QString kColorKey = QStringLiteral("color");

TEST_P(HostContract, PropertiesAreEnumeratedInOrderAndFoundByKey)
{
    const auto properties = host->agent()->properties();
    ASSERT_EQ(properties.objects().size(), 2U);
    EXPECT_EQ(properties.objects()[0], properties.objectForKey(QStringLiteral("airTemperature")));
    EXPECT_EQ(properties.objects()[1], properties.objectForKey(QStringLiteral("pressure")));
    EXPECT_EQ(properties.objectForKey(QStringLiteral("Air Temperature")), nullptr);
}

TEST_P(HostContract, TheKeyIsTheCamelCaseFormOfTheName)
{
    const KTVPropertyCollection properties = host->agent()->properties();
    for (const KTVPropertyPtr& one : properties.objects())
        EXPECT_EQ(one->propertyName(), camelCaseString(one->name()));
}

TEST_P(HostContract, AnAgentsPropertyHasNoValueOfItsOwn)
{
    EXPECT_TRUE(std::isnan(temperature()->unitValue()));
    EXPECT_FALSE(temperature()->isValid());
    EXPECT_TRUE(temperature()->visible());
}

TEST_P(HostContract, AUnitHasASymbolForPeople)
{
    EXPECT_EQ(temperature()->unitSymbol(), QStringLiteral("°C"));
}

TEST_P(HostContract, AUnitChangeIsToldWithOldAndNewValue)
{
    NoticeLog log;
    const QString before = temperature()->unit();
    temperature()->addObserver(&log, kUnitKey, kUnit);
    temperature()->setUnit(QStringLiteral("K"));
    EXPECT_EQ(log.keys, QStringList{kUnitKey});
    EXPECT_EQ(log.last.oldValue.toString(), before);
    EXPECT_EQ(log.last.newValue.toString(), QStringLiteral("K"));
    EXPECT_EQ(log.lastObject, temperature().get());
    EXPECT_EQ(log.lastTag, kUnit);
}

TEST_P(HostContract, AColourChangeIsToldWithOldAndNewValue)
{
    NoticeLog log;
    const QColor before = temperature()->color();
    temperature()->addObserver(&log, kColorKey, ObservationTag{"mine"});
    host->setColor(QStringLiteral("airTemperature"), QColor(1, 2, 3));
    EXPECT_EQ(log.keys, QStringList{kColorKey});
    EXPECT_EQ(log.last.oldValue.value<QColor>(), before);
    EXPECT_EQ(log.last.newValue.value<QColor>(), QColor(1, 2, 3));
    EXPECT_EQ(log.lastTag.text, "mine");
    EXPECT_EQ(temperature()->color(), QColor(1, 2, 3));
}

TEST_P(HostContract, OneNoticeForEachObservation)
{
    NoticeLog log;
    temperature()->addObserver(&log, kUnitKey, kUnit);
    temperature()->addObserver(&log, kUnitKey, kUnit);
    temperature()->setUnit(QStringLiteral("K"));
    EXPECT_EQ(log.keys.size(), 2);
    temperature()->removeObserver(&log, kUnitKey);
    temperature()->setUnit(QStringLiteral("degF"));
    EXPECT_EQ(log.keys.size(), 3);
}

TEST_P(HostContract, EndingOneKeysObservationLeavesTheOthers)
{
    NoticeLog log;
    temperature()->addObserver(&log, kUnitKey, kUnit);
    temperature()->addObserver(&log, kColorKey, ObservationTag{"color"});
    temperature()->removeObserver(&log, kUnitKey);
    temperature()->setUnit(QStringLiteral("K"));
    host->setColor(QStringLiteral("airTemperature"), QColor(1, 2, 3));
    EXPECT_EQ(log.keys, QStringList{kColorKey});
}

TEST_P(HostContract, AnObservationEndsWithItsObserver)
{
    auto log = std::make_unique<NoticeLog>();
    temperature()->addObserver(log.get(), kUnitKey, kUnit);
    log.reset();
    temperature()->setUnit(QStringLiteral("K"));
    EXPECT_EQ(temperature()->unit(), QStringLiteral("K"));
}

TEST_P(HostContract, AnotherPropertysChangeIsNotTold)
{
    NoticeLog log;
    temperature()->addObserver(&log, kUnitKey, kUnit);
    property("pressure")->setUnit(QStringLiteral("Pa"));
    EXPECT_TRUE(log.keys.isEmpty());
}

TEST_P(HostContract, TheAgentIsIdentified)
{
    EXPECT_FALSE(host->agent()->uniqueIdentifier().isEmpty());
}

}  // namespace
}  // namespace contract
