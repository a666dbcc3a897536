#include "plugins/PlotixPlugIn/logic/TypedDate.h"

#include "tests/support/PinnedZone.h"

#include <QtCore/QTimeZone>

#include <gtest/gtest.h>

namespace {

using plotix::endOfTypedSpan;
using plotix::SpanEnd;
using plotix::typedDate;

struct Typing {
    const char* name;
    QLocale::Language language;
    QLocale::Territory territory;
    const char* text;
    const char* understood;  ///< ISO; empty: not at all
};

void PrintTo(const Typing& typing, std::ostream* stream)
{
    *stream << typing.text;
}

plotix::TypedDateSurroundings surroundings(const QLocale& locale)
{
    const plotix::DayWords words{QStringLiteral("jetzt"),
                                 QStringLiteral("heute"),
                                 QStringLiteral("gestern"),
                                 QStringLiteral("morgen"),
                                 QStringLiteral("letzt"),
                                 QStringLiteral("vor %1"),
                                 QStringLiteral("jahr jahre jahren; monat monaten; woche wochen; tag tagen; "
                                                "stunde stunden; minute minuten; sekunde sekunden")};
    return {locale, words, QDateTime({2023, 7, 5}, {8, 15, 30}), QDateTime({2024, 3, 1}, {12, 0, 7})};
}

class TypedDateTest : public testing::TestWithParam<Typing> {};

TEST_P(TypedDateTest, IsUnderstoodAsMeant)
{
    const QLocale locale(GetParam().language, GetParam().territory);
    const auto read = typedDate(QString::fromUtf8(GetParam().text), surroundings(locale));
    EXPECT_EQ((read ? read->moment.toString(Qt::ISODate) : QString()).toStdString(), GetParam().understood);
}

constexpr auto de = QLocale::German;
constexpr auto en = QLocale::English;
constexpr auto DE = QLocale::Germany;
constexpr auto US = QLocale::UnitedStates;
constexpr auto GB = QLocale::UnitedKingdom;

INSTANTIATE_TEST_SUITE_P(
    Forms, TypedDateTest,
    testing::Values(Typing{"WholeForm", de, DE, "01.02.2024 14:30:15", "2024-02-01T14:30:15"},
                    Typing{"DaysAgo", de, DE, "vor 2 Tagen", "2024-02-28T00:00:00"},
                    Typing{"DaysAgoAtATime", de, DE, "vor 2 Tagen 14:30", "2024-02-28T14:30:00"},
                    Typing{"MonthsAgo", de, DE, "vor 1 Monat", "2024-02-01T00:00:00"},
                    Typing{"HoursAgo", de, DE, "vor 36 Stunden", "2024-02-29T00:00:07"},
                    Typing{"HoursAgoAtATime", de, DE, "vor 3 Stunden 14:30", ""},
                    Typing{"AgoWithoutAUnit", de, DE, "vor 2", ""},
                    Typing{"AgoWithoutANumber", de, DE, "vor Tagen", ""},
                    Typing{"MinusDays", en, US, "-2d", "2024-02-28T12:00:07"},
                    Typing{"MinusMinutes", de, DE, "-90 min", "2024-03-01T10:30:07"},
                    Typing{"MinusWithoutAUnit", en, US, "-2", "2023-07-02T00:00:00"},
                    Typing{"WithoutSeconds", de, DE, "1.2.2024 14:30", "2024-02-01T14:30:00"},
                    Typing{"WithoutTime", de, DE, "1.2.2024", "2024-02-01T00:00:00"},
                    Typing{"YearOfTwoDigits", de, DE, "1.2.24", "2024-02-01T00:00:00"},
                    Typing{"YearOfLastCentury", de, DE, "1.2.87", "1987-02-01T00:00:00"},
                    Typing{"WithoutYear", de, DE, "1.2.", "2023-02-01T00:00:00"},
                    Typing{"WithoutYearNorDot", de, DE, "1.2", "2023-02-01T00:00:00"},
                    Typing{"WithoutYearWithTime", de, DE, "1.2. 6:05", "2023-02-01T06:05:00"},
                    Typing{"TimeAlone", de, DE, "14:30", "2023-07-05T14:30:00"},
                    Typing{"DayAlone", de, DE, "17.", "2023-07-17T00:00:00"},
                    Typing{"YearAlone", de, DE, "2021", "2021-01-01T00:00:00"},
                    Typing{"MonthAndYear", de, DE, "02/2024", "2024-02-01T00:00:00"},
                    Typing{"MonthByName", de, DE, "3. Februar 2024", "2024-02-03T00:00:00"},
                    Typing{"MonthByForeignName", de, DE, "3 Oct 2024 7:00", "2024-10-03T07:00:00"},
                    Typing{"March", de, DE, "1. März", "2023-03-01T00:00:00"},
                    Typing{"Yesterday", de, DE, "Gestern", "2024-02-29T00:00:00"},
                    Typing{"YesterdayWithTime", de, DE, "gestern 14:30", "2024-02-29T14:30:00"},
                    Typing{"Tomorrow", de, DE, "morgen", "2024-03-02T00:00:00"},
                    Typing{"Now", de, DE, "jetzt", "2024-03-01T12:00:07"},
                    Typing{"MonthFirst", en, US, "2/1/2024 2:30 PM", "2024-02-01T14:30:00"},
                    Typing{"MonthFirstShort", en, US, "2/1", "2023-02-01T00:00:00"},
                    Typing{"DottedIsDayFirstEverywhere", en, US, "1.2.2024", "2024-02-01T00:00:00"},
                    Typing{"DayFirst", en, GB, "1/2/2024", "2024-02-01T00:00:00"},
                    Typing{"NameFirst", en, US, "Feb 3, 2024 7:00", "2024-02-03T07:00:00"},
                    Typing{"HourOfTheAfternoon", en, US, "2pm", "2023-07-05T14:00:00"},
                    Typing{"Midnight", en, US, "12:00 am", "2023-07-05T00:00:00"},
                    Typing{"Iso", en, US, "2024-02-01", "2024-02-01T00:00:00"},
                    Typing{"IsoWithTime", en, US, "2024-02-01T14:30", "2024-02-01T14:30:00"},
                    Typing{"IsoWithSpaceAndFraction", de, DE, "2024-02-01 14:30:15.250", "2024-02-01T14:30:15"},
                    Typing{"Digits", de, DE, "20240201", "2024-02-01T00:00:00"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NotUnderstood, TypedDateTest,
    testing::Values(Typing{"Nothing", de, DE, "  ", ""}, Typing{"Word", de, DE, "vorgestern", ""},
                    Typing{"NoSuchDay", de, DE, "31.2.2024", ""}, Typing{"NoSuchMonth", en, US, "13/2/2024", ""},
                    Typing{"NoSuchHour", de, DE, "1.2.2024 25:00", ""}, Typing{"HalfATime", de, DE, "1.2.2024 14:", ""},
                    Typing{"ThirteenOfTwelve", en, US, "13:00 pm", ""}, Typing{"TooMany", de, DE, "1.2.3.4", ""},
                    Typing{"Rest", de, DE, "1.2.2024 14:30 x", ""}),
    [](const auto& row) { return row.param.name; });

TEST(NoSuchDateTest, ADateThatTheCalendarHasNotIsToldFromNone)
{
    const auto isNoDate = [](const char* text) {
        return plotix::namesNoSuchDate(QString::fromUtf8(text), surroundings(QLocale(de, DE)));
    };
    for (const char* text :
         {"31 Feb", "31.2.", "30. Februar 2024", "31.4.2024 14:30", "2023-02-29", "2023-02-30T10:00"})
        EXPECT_TRUE(isNoDate(text)) << text;
    for (const char* text : {"29.2.2024", "soon", "31 F", "1.2.2024 25:00", ""})
        EXPECT_FALSE(isNoDate(text)) << text;
}

// The first of March 2024 is a Friday.
INSTANTIATE_TEST_SUITE_P(
    Weekdays, TypedDateTest,
    testing::Values(Typing{"Brief", de, DE, "Di 14:35", "2024-02-27T14:35:00"},
                    Typing{"Whole", en, US, "tuesday", "2024-02-27T00:00:00"},
                    Typing{"Today", de, DE, "Freitag", "2024-03-01T00:00:00"},
                    Typing{"BeforeToday", de, DE, "letzten Freitag 8:00", "2024-02-23T08:00:00"},
                    Typing{"LastOfOtherDays", de, DE, "letzter Dienstag 14:35", "2024-02-27T14:35:00"},
                    Typing{"LastAlone", de, DE, "letzten", ""}, Typing{"BeginningOfAnyWord", de, DE, "so", ""},
                    Typing{"AndMore", de, DE, "Di Mi", ""}),
    [](const auto& row) { return row.param.name; });

TEST(TypedDateZoneTest, ATimeWithAZoneIsShownInTheUsersOwn)
{
    const auto read = typedDate(QStringLiteral("2024-02-01T14:30:00+02:00"), surroundings(QLocale::c()));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->moment.toSecsSinceEpoch(), 1706790600);
}

/// Typed where dates are shown by a zone's clocks, or by those of the process.
class TypedWhereClocksChangeTest : public testing::Test {
protected:
    static double utc(const char* iso)
    {
        return static_cast<double>(QDateTime::fromString(QLatin1String(iso), Qt::ISODate).toSecsSinceEpoch());
    }
    static double typed(const char* text, const char* zone)
    {
        plotix::TypedDateSurroundings around = surroundings(QLocale::c());
        around.shown = around.shown.toTimeZone(QTimeZone(zone));
        return secondsOf(typedDate(QLatin1String(text), around));
    }
    static double typedByProcess(const char* text, const char* zone)
    {
        const plotix::PinnedZone pinned(zone);
        return secondsOf(typedDate(QLatin1String(text), surroundings(QLocale::c())));
    }

private:
    static double secondsOf(const std::optional<plotix::TypedDate>& date)
    {
        return date && date->moment.isValid() ? static_cast<double>(date->moment.toSecsSinceEpoch()) : 0;
    }
};

TEST_F(TypedWhereClocksChangeTest, ATimeThatComesTwiceIsTheFirst)
{
    EXPECT_EQ(typed("2013-10-27 02:30", "Europe/Berlin"), utc("2013-10-27T00:30:00Z"));
    EXPECT_EQ(typedByProcess("2013-10-27 02:30", "Europe/Berlin"), utc("2013-10-27T00:30:00Z"));
    EXPECT_EQ(typed("2013-04-07 01:45", "Australia/Lord_Howe"), utc("2013-04-06T14:45:00Z"));
}

TEST_F(TypedWhereClocksChangeTest, TheSecondOneIsMeantWhereItIsEdited)
{
    plotix::TypedDateSurroundings around = surroundings(QLocale::c());
    const auto second = qint64(utc("2013-10-27T01:30:00Z"));
    around.shown = QDateTime::fromSecsSinceEpoch(second, QTimeZone("Europe/Berlin"));
    EXPECT_EQ(typedDate(QStringLiteral("2:35"), around)->moment.toSecsSinceEpoch(), second + 300);
    EXPECT_EQ(typedDate(QStringLiteral("1:30"), around)->moment.toSecsSinceEpoch(), second - 7'200);
    // In Havana midnight itself comes twice.
    around.shown = QDateTime::fromSecsSinceEpoch(qint64(utc("2013-11-03T05:30:00Z")), QTimeZone("America/Havana"));
    EXPECT_EQ(typedDate(QStringLiteral("2013-11-03"), around)->moment.toSecsSinceEpoch(),
              qint64(utc("2013-11-03T04:00:00Z")));
}

TEST_F(TypedWhereClocksChangeTest, ATimeThatIsLeftOutIsThatOfTheChange)
{
    EXPECT_EQ(typed("2013-03-31 02:30", "Europe/Berlin"), utc("2013-03-31T01:00:00Z"));
    EXPECT_EQ(typedByProcess("2013-03-31 02:30", "Europe/Berlin"), utc("2013-03-31T01:00:00Z"));
    EXPECT_EQ(typed("2011-12-30 14:00", "Pacific/Apia"), utc("2011-12-30T10:00:00Z"));
}

TEST_F(TypedWhereClocksChangeTest, ADayWhoseMidnightIsLeftOutBeginsAtTheChange)
{
    EXPECT_EQ(typed("2013-10-20", "America/Sao_Paulo"), utc("2013-10-20T03:00:00Z"));
    EXPECT_EQ(typed("2011-12-30", "Pacific/Apia"), utc("2011-12-30T10:00:00Z"));
}

TEST(TypedDateZoneTest, WhetherATimeWasWrittenIsKnown)
{
    EXPECT_FALSE(typedDate(QStringLiteral("1.2.2024"), surroundings(QLocale(de, DE)))->hasTime);
    EXPECT_TRUE(typedDate(QStringLiteral("1.2.2024 0:00"), surroundings(QLocale(de, DE)))->hasTime);
}

TEST(TypedSpanTest, EachEndTakesItsOwnPart)
{
    const QString span = QStringLiteral("2013-02-06T00:00:00+01:00/2013-02-13");
    EXPECT_EQ(endOfTypedSpan(span, SpanEnd::From), "2013-02-06T00:00:00+01:00");
    EXPECT_EQ(endOfTypedSpan(span, SpanEnd::To), "2013-02-13");
}

TEST(TypedSpanTest, WhatIsNoSpanStaysAsItIs)
{
    for (const QString text : {"2/1/2024", "2024-02-01", "1.2. 14:30", "2024-02-01/", ""})
        EXPECT_EQ(endOfTypedSpan(text, SpanEnd::To), text);
}

}  // namespace
