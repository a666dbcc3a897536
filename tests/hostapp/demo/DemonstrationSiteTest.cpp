#include "hostapp/demo/DemonstrationSite.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/demo/WeatherStation.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>

namespace plotix {

namespace {

constexpr double kLastMinute = 1'700'000'040;
constexpr double kNow = kLastMinute + 30;

class DemonstrationSiteTest : public testing::Test {
protected:
    DemonstrationOptions optionsAt(double now, const QString& folder = QStringLiteral("a")) const
    {
        DemonstrationOptions options;
        options.folder = m_folder.filePath(folder);
        options.now = Date{now};
        options.seed = 11;
        options.history = 86'400;
        return options;
    }

    static RecordBlock recordsOf(const QString& path)
    {
        const auto document = SiteDocument::open(path);
        const auto agent = document->agents().at(0);
        std::vector<RowId> ids;
        for (const auto& property : agent->siteProperties())
            ids.push_back(property->description().id);
        return plotix::recordsOfSite(path)->read(agent->id(), ids, {}, {}).value();
    }

    static void expectEqualTails(const RecordBlock& longer, const RecordBlock& shorter)
    {
        ASSERT_GE(longer.times.size(), shorter.times.size());
        const std::size_t skipped = longer.times.size() - shorter.times.size();
        for (std::size_t row = 0; row < shorter.times.size(); ++row) {
            ASSERT_EQ(longer.times[row + skipped], shorter.times[row]);
            for (std::size_t index = 0; index < kStationQuantities; ++index) {
                ASSERT_EQ(longer.columns[index].validity.isValid(row + skipped),
                          shorter.columns[index].validity.isValid(row));
                ASSERT_EQ(std::memcmp(&longer.columns[index].values[row + skipped], &shorter.columns[index].values[row],
                                      sizeof(double)),
                          0);
            }
        }
    }

    QTemporaryDir m_folder;
};

TEST_F(DemonstrationSiteTest, HoldsOneStationUpToTheMoment)
{
    const DemonstrationSite site = openDemonstrationSite(optionsAt(kNow));
    EXPECT_TRUE(site.created);
    EXPECT_EQ(site.records, 1440U);
    const auto document = SiteDocument::open(site.path);
    ASSERT_EQ(document->agents().size(), 1U);
    EXPECT_EQ(document->agents()[0]->name(), QLatin1String(kStationAgentName));
    EXPECT_EQ(document->agents()[0]->siteProperties().size(), kStationQuantities);
    const RecordBlock records = recordsOf(site.path);
    EXPECT_EQ(records.times[records.times.size() - 1], kLastMinute);
}

TEST_F(DemonstrationSiteTest, UsesUnitsThatAreKnown)
{
    const auto document = SiteDocument::open(openDemonstrationSite(optionsAt(kNow)).path);
    const auto& properties = document->agents()[0]->siteProperties();
    for (std::size_t index = 0; index < kStationQuantities; ++index) {
        const QString unit =
            QString::fromUtf8(kStationChannels[index].unit.data(), std::ssize(kStationChannels[index].unit));
        EXPECT_EQ(properties[index]->unit(), unit);
        EXPECT_TRUE(Units::shared()->normalise(unit)) << unit.toStdString();
    }
}

TEST_F(DemonstrationSiteTest, GoesOnWithoutASeam)
{
    openDemonstrationSite(optionsAt(kNow));
    const DemonstrationSite continued = openDemonstrationSite(optionsAt(kNow + 7200));
    EXPECT_FALSE(continued.created);
    EXPECT_EQ(continued.records, 120U);
    const DemonstrationSite later = openDemonstrationSite(optionsAt(kNow + 7200, QStringLiteral("b")));
    expectEqualTails(recordsOf(continued.path), recordsOf(later.path));
}

TEST_F(DemonstrationSiteTest, HasNothingToAddWithinTheMinuteOrWhenTheClockWentBack)
{
    openDemonstrationSite(optionsAt(kNow));
    EXPECT_EQ(openDemonstrationSite(optionsAt(kNow)).records, 0U);
    EXPECT_EQ(openDemonstrationSite(optionsAt(kNow - 3600)).records, 0U);
}

TEST_F(DemonstrationSiteTest, CancellingLeavesNothingBehind)
{
    EXPECT_THROW(openDemonstrationSite(optionsAt(kNow), [](double) { return false; }), ReportableError);
    EXPECT_TRUE(QDir(m_folder.filePath(QStringLiteral("a"))).isEmpty());
}

TEST_F(DemonstrationSiteTest, CancellingAContinuationLeavesTheSiteAsItWas)
{
    const QString path = openDemonstrationSite(optionsAt(kNow)).path;
    EXPECT_THROW(openDemonstrationSite(optionsAt(kNow + 7200), [](double) { return false; }), ReportableError);
    EXPECT_EQ(recordsOf(path).times.size(), 1440U);
}

TEST_F(DemonstrationSiteTest, AppearsOnlyWhenItIsDecorated)
{
    const QString expected = demonstrationSitePath(optionsAt(kNow));
    bool wasDecorated = false;
    openDemonstrationSite(optionsAt(kNow), {}, [&](const QString& path) {
        wasDecorated = true;
        EXPECT_FALSE(QFile::exists(expected));
        SiteDocument::open(path)->setSite(QStringLiteral("Decorated"), {});
    });
    EXPECT_TRUE(wasDecorated);
    EXPECT_EQ(SiteDocument::open(expected)->siteName(), QStringLiteral("Decorated"));
    EXPECT_EQ(QDir(m_folder.filePath(QStringLiteral("a"))).entryList(QDir::Files), QStringList{"Demonstration.plotix"});
}

TEST_F(DemonstrationSiteTest, AFailedDecorationLeavesNothingBehind)
{
    const auto fail = [](const QString&) { throw ReportableError(QStringLiteral("no")); };
    EXPECT_THROW(openDemonstrationSite(optionsAt(kNow), {}, fail), ReportableError);
    EXPECT_TRUE(QDir(m_folder.filePath(QStringLiteral("a"))).isEmpty());
}

TEST_F(DemonstrationSiteTest, SuggestsTrendsOfPropertiesThatItHas)
{
    const auto document = SiteDocument::open(openDemonstrationSite(optionsAt(kNow)).path);
    const KTVPropertyCollection properties = document->agents()[0]->properties();
    ASSERT_GE(suggestedTrends().size(), 2U);
    for (const SuggestedTrend& trend : suggestedTrends())
        for (const QString& key : trend.propertyNames)
            EXPECT_TRUE(properties.objectForKey(key)) << key.toStdString();
}

TEST_F(DemonstrationSiteTest, ProgressRisesToOne)
{
    double last = 0;
    openDemonstrationSite(optionsAt(kNow), [&last](double fraction) {
        EXPECT_GE(fraction, last);
        last = fraction;
        return true;
    });
    EXPECT_EQ(last, 1);
}

TEST_F(DemonstrationSiteTest, LiesInTheFolderTheEnvironmentNames)
{
    qputenv("PLOTIX_DATA_HOME", m_folder.path().toUtf8());
    EXPECT_EQ(demonstrationSitePath(), m_folder.filePath(QStringLiteral("Demonstration.plotix")));
    qunsetenv("PLOTIX_DATA_HOME");
    EXPECT_NE(demonstrationSitePath(), m_folder.filePath(QStringLiteral("Demonstration.plotix")));
}

TEST_F(DemonstrationSiteTest, FillingInNeedsASite)
{
    EXPECT_THROW(fillInStation(m_folder.filePath(QStringLiteral("none.plotix")), Date{kNow}), ReportableError);
    EXPECT_FALSE(QFile::exists(m_folder.filePath(QStringLiteral("none.plotix"))));
}

}  // namespace

}  // namespace plotix
