#include "hostapp/site/NewTrend.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QDateTime>

using plotix::Date;
using plotix::rangeForNewTrend;
using plotix::titleForProperties;

namespace {

const QTimeZone kBerlin("Europe/Berlin");

Date at(const char* text)
{
    return {static_cast<double>(QDateTime(QDate::fromString(QString::fromLatin1(text).left(10), Qt::ISODate),
                                          QTime::fromString(QString::fromLatin1(text).mid(11), QStringLiteral("hh:mm")),
                                          kBerlin)
                                    .toSecsSinceEpoch())};
}

TEST(NewTrendTest, FreshRecordsShowTheLastSevenDays)
{
    const auto [from, to] = rangeForNewTrend(at("2024-06-09 23:00").seconds, at("2024-06-10 12:00"), kBerlin);
    EXPECT_EQ(from.seconds, at("2024-06-03 12:00").seconds);
    EXPECT_EQ(to.seconds, at("2024-06-10 12:00").seconds);
}

TEST(NewTrendTest, SevenDaysAreCalendarDaysAcrossTheSpringSwitch)
{
    const auto [from, to] = rangeForNewTrend({}, at("2024-04-03 12:00"), kBerlin);
    EXPECT_EQ(from.seconds, at("2024-03-27 12:00").seconds);
    EXPECT_EQ(to.seconds - from.seconds, 7 * 86'400 - 3'600);
}

TEST(NewTrendTest, OldRecordsShowTheirOwnLastSevenDays)
{
    const auto [from, to] = rangeForNewTrend(at("2013-12-30 18:00").seconds, at("2024-06-10 12:00"), kBerlin);
    EXPECT_EQ(from.seconds, at("2013-12-24 00:00").seconds);
    EXPECT_EQ(to.seconds, at("2013-12-31 00:00").seconds);
}

TEST(NewTrendTest, TitleNamesTwoPropertiesAndCountsTheRest)
{
    ScratchSite site;
    const auto station = site.addStation();
    KTVPropertyList properties;
    EXPECT_EQ(titleForProperties(properties), QStringLiteral("New Trend"));
    properties = station->properties().objects();
    EXPECT_EQ(titleForProperties({properties[0]}), QStringLiteral("Air Temperature"));
    EXPECT_EQ(titleForProperties(properties), QStringLiteral("Air Temperature and Pressure"));
    properties.push_back(station->addProperty(QStringLiteral("Wind"), {}));
    EXPECT_EQ(titleForProperties(properties), QStringLiteral("Air Temperature, Pressure and 1 more"));
}

}  // namespace
