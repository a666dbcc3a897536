#include "hostapp/site/TrendCase.h"

#include "base/ReportableError.h"
#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/TrendPicture.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kStart = 1'700'000'000, kDay = 86'400;

/// A site of a boiler and a roof station with three weeks of records every ten minutes, some of them not valid, and a
/// trend of the boiler.
class TrendCaseTest : public testing::Test {
protected:
    TrendCaseTest()
    {
        put("Boiler", "Supply", "°C", 60, 3);
        put("Boiler", "Return", "°C", 40, 5);
        put("Boiler", "Spare", "kW", 10, 1);
        put("Roof", "Air", "°C", 5, 8);
        put("Cellar", "Level", "m", 2, 1);
        open();
        computeProperty(path(), agent("Boiler")->id(), {"Above Air", {"Supply - Roof.Air"}});
        computeProperty(path(), agent("Boiler")->id(), {"Smoothed", {"mean(\"Above Air\", 3 h)"}});
        open();
    }

    QString path() const { return m_folder.filePath("site.plotix"); }
    QString casePath() const { return m_folder.filePath("case.plotix"); }
    void open() { document = SiteDocument::open(path()); }
    std::shared_ptr<SiteAgent> agent(const char* name) const { return document->agentNamed(name); }
    RowId idOf(const char* key, const char* of = "Boiler") const
    {
        for (const auto& property : agent(of)->siteProperties())
            if (property->propertyName() == QLatin1String(key))
                return property->description().id;
        return 0;
    }

    void put(const char* agentName, const char* name, const char* unit, double base, double swing)
    {
        SiteTransaction transaction(path(), "Works");
        const RowId to = transaction.findOrCreateAgent(agentName);
        std::vector<double> times, values;
        std::vector<std::uint64_t> valid(21 * 144 / 64 + 1, ~std::uint64_t{0});
        for (int i = 0; i < 21 * 144; ++i) {
            times.push_back(kStart + i * 600.0);
            values.push_back(base + swing * std::sin(i / 40.0));
        }
        valid[7] = 0xFFFF'0000'FFFF'FFFF;
        transaction.records().store(to, {SharedArray<double>::fromVector(std::move(times)),
                                         {{transaction.findOrCreateProperty(to, name, unit).id,
                                           SharedArray<double>::fromVector(std::move(values)),
                                           ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))}}});
        transaction.commit();
    }

    /// A trend of these properties of the boiler over the third week, with these choices.
    void store(const QStringList& keys, const QVariantMap& reading = {}, const char* title = "Week")
    {
        KTVPropertyList properties;
        for (const auto& property : agent("Boiler")->siteProperties())
            if (keys.contains(property->propertyName()))
                properties.push_back(property);
        const KTVPlugInPtr trend = requireTrend(*module(), {document, agent("Boiler"), properties,
                                                            Date{kStart + 14 * kDay}, Date{kStart + 20 * kDay}, title});
        setReading(trend.get(), reading);
        trend->view();
        PlugInStore(document, module()).store(*trend);
    }

    CasePlan plan(const CaseRequest& wanted = {})
    {
        CaseRequest request = wanted;
        request.document = document;
        return planOfStoredCase(request, module());
    }
    std::shared_ptr<SiteDocument> written(const CaseRequest& request = {})
    {
        EXPECT_TRUE(writeCase(plan(request), casePath()));
        return SiteDocument::open(casePath());
    }

    /// The one trend as the site shows it, at this span.
    QByteArray picture(const std::shared_ptr<SiteDocument>& of, double from, double to)
    {
        WorkingSite site(of, module(), WorkingSite::Use::Elsewhere);
        site.loadPlugIns();
        const KTVPlugInPtr trend = site.sourceList().items().front()->representedObject();
        setReading(trend.get(), {{"overview", QVariantMap()}});  // it shows all that is there
        site.loadViews();
        site.waitForRecords();
        showRange(trend.get(), from, to);
        site.waitForRecords();
        return pictureOf(trend, {.format = FileKind::Png, .size = {700, 400}, .density = 1, .title = "Week"});
    }
    void expectSamePicture(const CaseRequest& request = {})
    {
        const CasePlan made = plan(request);
        const auto other = written(request);
        const QByteArray expected = picture(document, made.span.first, made.span.second);
        EXPECT_FALSE(expected.isEmpty());
        EXPECT_EQ(picture(other, made.span.first, made.span.second), expected);
    }
    KTVPlugInModule* module() { return loader.load(QLatin1String(kModuleName), QLatin1String(kTrendClass)); }

    QTemporaryDir m_folder;
    PlugInLoader loader{PlugInLoader::defaultFolders()};
    std::shared_ptr<SiteDocument> document;
};

TEST_F(TrendCaseTest, RendersAsTheTrendDid)
{
    store({"supply", "return"});
    expectSamePicture();
}

TEST_F(TrendCaseTest, RendersAsTheTrendDidWithLanesLimitsNotesAndLooks)
{
    changeLimits(path(), idOf("supply"), [&](std::vector<SiteLimit>& limits) {
        limits.push_back({0, 0, "alarm", 62, "°C", KTVLimit::Side::Above, KTVLimit::Severity::Alarm});
    });
    writeNote(path(), {0, kStart + 15 * kDay, kStart + 15 * kDay, "Ada", "Pump replaced", {idOf("supply")}});
    open();
    store({"supply", "spare"}, {{"arrangement", QVariantMap{{"kind", "lane-per-unit"}}},
                                {"looks", QVariantMap{{"look", "paper"}}},
                                {"brokenLines", true}});
    expectSamePicture();
}

TEST_F(TrendCaseTest, RendersAsTheTrendDidWithWhatItIsComparedWith)
{
    store({"supply"}, {{"comparing", QVariantMap{{"with", QStringList{"7d", "10d"}}}}});
    expectSamePicture();
    const auto extent = SiteDocument::open(casePath())->recordExtent();
    EXPECT_NEAR(extent->first.seconds, kStart + 4 * kDay, 601);
}

TEST_F(TrendCaseTest, RendersAsTheTrendDidWithPropertiesWorkedOutOfOtherAgents)
{
    store({"smoothed"});
    expectSamePicture();
}

TEST_F(TrendCaseTest, RendersAsTheTrendDidOverAnotherSpan)
{
    store({"supply", "smoothed"});
    expectSamePicture({{}, "Week", kStart + 10 * kDay, kStart + 10.5 * kDay});
}

TEST_F(TrendCaseTest, HoldsThisTrendAndItsPropertiesAlone)
{
    store({"supply"});
    store({"return"}, {}, "Other");
    const auto made = written({{}, "week", {}, {}});
    ASSERT_EQ(made->agents().size(), 1U);
    ASSERT_EQ(made->agents().front()->siteProperties().size(), 1U);
    EXPECT_EQ(made->agents().front()->siteProperties().front()->propertyName(), "supply");
    EXPECT_EQ(made->archivedPlugIns().size(), 1U);
}

TEST_F(TrendCaseTest, OfComputedPropertiesAllThatTheyAreWorkedOutFrom)
{
    store({"smoothed"});
    const auto made = written();
    QStringList names;
    for (const auto& each : made->agents())
        for (const auto& property : each->siteProperties())
            names << each->name() + u'.' + property->name();
    EXPECT_EQ(names, (QStringList{"Boiler.Supply", "Boiler.Above Air", "Boiler.Smoothed", "Roof.Air"}));
}

TEST_F(TrendCaseTest, NotesOutsideTheSpanOrAboutOthersStayBehind)
{
    writeNote(path(), {0, kStart, kStart, "Ada", "Long ago", {}});
    writeNote(path(), {0, kStart + 15 * kDay, kStart + 15 * kDay, "Ada", "Of the cellar", {idOf("level", "Cellar")}});
    writeNote(path(), {0, kStart + 15 * kDay, kStart + 16 * kDay, "Ada", "Of all", {}});
    open();
    store({"supply"});
    const auto made = written();
    ASSERT_EQ(made->notes().size(), 1U);
    EXPECT_EQ(made->notes().front().text, "Of all");
}

TEST_F(TrendCaseTest, OpensAtItsSpan)
{
    store({"supply"});
    const auto made = written({{}, {}, kStart + 2 * kDay, kStart + 3 * kDay});
    WorkingSite site(made, module(), WorkingSite::Use::Elsewhere);
    site.loadPlugIns();
    EXPECT_EQ(shownRange(site.sourceList().items().front()->representedObject().get()),
              std::pair(kStart + 2 * kDay, kStart + 3 * kDay));
}

TEST_F(TrendCaseTest, AnUnknownTrendIsRefusedWithThoseThereAre)
{
    store({"supply"});
    try {
        plan({{}, "Month", {}, {}});
        ADD_FAILURE();
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("Week")) << error.message().toStdString();
    }
    EXPECT_THROW(plan({{}, "Week", kStart + 30 * kDay, {}}), ReportableError);
}

}  // namespace

}  // namespace plotix
