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

struct OccasionRow {
    const char* name;
    plotix::TrendOccasion occasion;
    QStringList properties;  ///< of the agent below
    const char *from, *to;
    const char* title;
    bool isFollowed;
};

/// An agent with everything the rule depends on, with records from March to May, asked on the tenth of June at noon.
class NewTrendRuleTest : public testing::TestWithParam<OccasionRow> {
protected:
    NewTrendRuleTest() : agent(site.document->addAgent(QStringLiteral("Computer")))
    {
        agent->addProperty(QStringLiteral("Memory"), QStringLiteral("%"));
        agent->addProperty(QStringLiteral("Load 1 Minute"), {});
        agent->addProperty(QStringLiteral("Load 5 Minutes"), {});
        agent->addProperty(QStringLiteral("Humidity"), QStringLiteral("%"))->setVisible(false);
        agent->addProperty(QStringLiteral("Notes"), {}, kPropertyTypeNeverPlotted);
    }
    plotix::TrendPlan trend(const KTVPropertyList& properties) const
    {
        const std::pair records(at("2024-03-01 00:00"), at("2024-05-31 23:00"));
        return planTrend(GetParam().occasion, agent->name(), properties, records, at("2024-06-10 12:00"), kBerlin);
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> agent;
};

TEST_P(NewTrendRuleTest, IsOneForAllOutlets)
{
    const plotix::TrendPlan made = trend(agent->properties().objects());
    QStringList names;
    for (const KTVPropertyPtr& property : made.properties)
        names << property->name();
    EXPECT_EQ(names, GetParam().properties);
    EXPECT_EQ(made.from.seconds, at(GetParam().from).seconds);
    EXPECT_EQ(made.to.seconds, at(GetParam().to).seconds);
    EXPECT_EQ(made.title, QLatin1String(GetParam().title));
    EXPECT_EQ(made.isFollowed, GetParam().isFollowed);
}

using enum plotix::TrendOccasion;
INSTANTIATE_TEST_SUITE_P(
    Occasions, NewTrendRuleTest,
    testing::Values(
        OccasionRow{"Chosen",
                    Chosen,
                    {"Memory", "Load 1 Minute", "Load 5 Minutes", "Humidity", "Notes"},
                    "2024-05-25 00:00",
                    "2024-06-01 00:00",
                    "Memory, Load 1 Minute and 3 more",
                    false},
        OccasionRow{"Imported",
                    Imported,
                    {"Memory", "Load 1 Minute", "Load 5 Minutes"},
                    "2024-03-01 00:00",
                    "2024-05-31 23:00",
                    "Computer",
                    false},
        OccasionRow{"Recorded",
                    Recorded,
                    {"Memory", "Load 1 Minute"},
                    "2024-06-10 12:00",
                    "2024-06-10 13:00",
                    "Computer",
                    false},
        OccasionRow{
            "Watched", Watched, {"Memory", "Load 1 Minute"}, "2024-06-10 11:50", "2024-06-10 12:00", "Computer", true}),
    [](const auto& row) { return row.param.name; });

TEST(NewTrendTest, LiveRecordsWithoutSharesShowWhatTheyHave)
{
    ScratchSite site;
    const auto station = site.addStation();
    EXPECT_EQ(plotix::planFirstTrend(Watched, *station).properties.size(), 2U);
}

TEST(NewTrendTest, ImportedWithoutRecordsShowsTheLastSevenDays)
{
    const plotix::TrendPlan made =
        planTrend(Imported, QStringLiteral("Empty"), {}, {}, at("2024-06-10 12:00"), kBerlin);
    EXPECT_EQ(made.from.seconds, at("2024-06-03 12:00").seconds);
    EXPECT_EQ(made.to.seconds, at("2024-06-10 12:00").seconds);
}

class NewTrendBesideTest : public testing::Test {
protected:
    static plotix::TrendSpan span(const char* from, const char* to) { return std::pair(at(from), at(to)); }
    const plotix::TrendSpan records = span("2024-01-01 00:00", "2024-06-01 00:00");
    const plotix::TrendPlan plan{{}, at("2024-05-25 00:00"), at("2024-06-01 00:00"), QStringLiteral("Air")};
};

TEST_F(NewTrendBesideTest, ShowsTheTimesOfTheTrendItIsMadeBeside)
{
    const auto made = planBeside(plan, span("2024-02-01 00:00", "2024-02-03 00:00"), {}, records);
    EXPECT_EQ(made.from, at("2024-02-01 00:00"));
    EXPECT_EQ(made.to, at("2024-02-03 00:00"));
}

TEST_F(NewTrendBesideTest, IsNeverEmptyForTheSakeOfTheOther)
{
    const auto made = planBeside(plan, span("2013-02-01 00:00", "2013-02-03 00:00"), {}, records);
    EXPECT_EQ(made.from, plan.from);
    EXPECT_EQ(planBeside(plan, {}, {}, records).to, plan.to);
}

TEST_F(NewTrendBesideTest, SaysTimesByTheSameClockAndTakesOverNoOtherChoice)
{
    const QVariantMap clock{{"zone", "Asia/Kathmandu"}};
    const auto made = planBeside(plan, {}, {{"clock", clock}, {"marks", QVariantMap{{"a", 1.0}}}}, records);
    EXPECT_EQ(made.reading, (QVariantMap{{"clock", clock}}));
}

}  // namespace
