#include "plotkit/model/CPTFormatter.h"

#include "tests/support/PinnedZone.h"

#include <QtCore/QLocale>

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// Pins locale and zone for one test and restores the environment afterwards.
class FormatterTest : public testing::Test {
protected:
    void SetUp() override { m_all = qgetenv("LC_ALL"); }
    void TearDown() override { qputenv("LC_ALL", m_all); }
    void useZone(const QByteArray& zone) { m_zone.use(zone); }
    static void useLocale(const QByteArray& locale) { qputenv("LC_ALL", locale); }
    static QString date(const char* pattern, double seconds)
    {
        return CPTTimeFormatter(QString::fromLatin1(pattern)).stringForNumber(seconds);
    }
    static QString number(const char* pattern, int digits, double value)
    {
        return CPTNumberFormatter(QString::fromLatin1(pattern), digits).stringForNumber(value);
    }

private:
    plotix::PinnedZone m_zone;
    QByteArray m_all;
};

constexpr double kNoonOfJuly4th2013 = 1372939200;  // 2013-07-04 12:00:00 UTC

TEST_F(FormatterTest, LineBreakInThePatternBreaksTheLabel)
{
    EXPECT_EQ(date("MMM-dd\nh:mma", kNoonOfJuly4th2013), u"Jul-04\n12:00PM");
}

TEST_F(FormatterTest, DatesAreWrittenInTheLocalZone)
{
    useZone("America/New_York");
    EXPECT_EQ(date("h:mma", kNoonOfJuly4th2013), u"8:00AM");
}

TEST_F(FormatterTest, DaylightSavingMovesTheLabelAnHourAtTheSwitch)
{
    useZone("Europe/Berlin");
    const double switchToSummer = 1364691600;  // 2013-03-31 01:00:00 UTC
    EXPECT_EQ(date("h:mm:ssa", switchToSummer - 1), u"1:59:59AM");
    EXPECT_EQ(date("h:mm:ssa", switchToSummer), u"3:00:00AM");
}

TEST_F(FormatterTest, RepeatedHourInAutumnIsWrittenTwice)
{
    useZone("Europe/Berlin");
    const double switchToWinter = 1382835600;  // 2013-10-27 01:00:00 UTC
    EXPECT_EQ(date("h:mma", switchToWinter - 1800), u"2:30AM");
    EXPECT_EQ(date("h:mma", switchToWinter + 1800), u"2:30AM");
}

TEST_F(FormatterTest, MonthNamesFollowTheLocale)
{
    useLocale("de_DE.UTF-8");
    EXPECT_EQ(date("MMM\ndd", 1386158400), u"Dez.\n04");
}

TEST_F(FormatterTest, PortableLocaleWritesEnglish)
{
    useLocale("POSIX");
    EXPECT_EQ(date("MMM a", 1386158400), u"Dec PM");
}

TEST_F(FormatterTest, LocaleSetByTheProgramRulesOverTheEnvironment)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    const QString decimal = number("#.##", 2, 0.5);
    QLocale::setDefault(before);
    EXPECT_EQ(decimal, u"0,50");
}

TEST_F(FormatterTest, NumberCountsFromTheReferenceDate)
{
    const CPTTimeFormatter formatter(QStringLiteral("yyyy-MM-dd HH:mm:ss"), plotix::Date{kNoonOfJuly4th2013});
    EXPECT_EQ(formatter.stringForNumber(61), u"2013-07-04 12:01:01");
    EXPECT_EQ(formatter.referenceDate().seconds, kNoonOfJuly4th2013);
}

TEST_F(FormatterTest, MomentsBefore1970AreWritten)
{
    EXPECT_EQ(date("yyyy-MM-dd HH:mm", -60), u"1969-12-31 23:59");
}

TEST_F(FormatterTest, RoundingErrorBelowAFullSecondIsNotTheSecondBefore)
{
    EXPECT_EQ(date("HH:mm:ss", 59.9999999), u"00:01:00");
}

TEST_F(FormatterTest, NotANumberAnswersAnEmptyText)
{
    EXPECT_EQ(date("h:mma", std::nan("")), QString());
    EXPECT_EQ(date("h:mma", HUGE_VAL), QString());
    EXPECT_EQ(number("#.#", 1, std::nan("")), QString());
}

TEST_F(FormatterTest, PatternThatIsNoneAnswersAnEmptyText)
{
    EXPECT_EQ(number("#0#", 0, 5), QString());
}

TEST_F(FormatterTest, NumbersHaveALeadingZeroAndTheLeastFractionDigits)
{
    EXPECT_EQ(number("#.##", 2, 0.5), u"0.50");
    EXPECT_EQ(number("#.##", 2, -12), u"-12.00");
    EXPECT_EQ(number("#.#", 1, 1013.25), u"1013.2");
}

TEST_F(FormatterTest, NumbersThatRoundToZeroHaveNoSign)
{
    EXPECT_EQ(number("#.#", 1, -1e-13), u"0.0");
    EXPECT_EQ(number("#.#", 1, -0.06), u"-0.1");
}

TEST_F(FormatterTest, LeastDigitsBeyondThePatternWiden)
{
    EXPECT_EQ(number("#.#", 3, 2.5), u"2.500");
}

TEST_F(FormatterTest, PatternIsReadBack)
{
    EXPECT_EQ(CPTTimeFormatter(QStringLiteral("MMM\ndd")).pattern(), u"MMM\ndd");
    EXPECT_EQ(CPTNumberFormatter(QStringLiteral("#.##"), 2).minimumFractionDigits(), 2);
}

}  // namespace
