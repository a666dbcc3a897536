#include "tests/hostapp/cli/CommandLineFixture.h"

#include "hostapp/document/SiteDocument.h"

#include <limits>

namespace plotix {

namespace {

/// A site of weather whose first property the program plans a case of.
class CaseCommandTest : public CommandLineTest {
protected:
    CaseCommandTest()
    {
        importWeather();
        document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        CasePlan& plan = m_services.casePlan;
        plan.site = document->path();
        plan.records = document->records();
        plan.siteName = "Harbour";
        plan.span = {0, 2e9};
        plan.agents = {{agent->id(), agent->uniqueIdentifier(), agent->name(), {}, {plan.span}}};
        plan.agents.front().properties.push_back(agent->siteProperties().front()->description());
        plan.trend = {0, "KTVPlotixPlugIn", "state"};
    }
    int makeCase(const QStringList& more = {})
    {
        return run(QStringList{"case", site(), "--output", path("case.plotix")} + more);
    }

    std::shared_ptr<SiteDocument> document;
};

TEST_F(CaseCommandTest, WritesTheFileAndTellsWhatIsInIt)
{
    ASSERT_EQ(makeCase({"--trend", "Week"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("case.plotix has 3 records of 1 property, 0 notes, ")) << m_output.toStdString();
    EXPECT_EQ(SiteDocument::open(path("case.plotix"))->siteName(), "Harbour");
    EXPECT_EQ(m_services.casesPlanned.front().trend, "Week");
}

TEST_F(CaseCommandTest, AsksForTheSpanGivenAndElseForNone)
{
    makeCase({"--from", "2015-01-01", "--to", "2015-01-02T12:00:00Z"});
    makeCase();
    ASSERT_EQ(m_services.casesPlanned.size(), 2U);
    EXPECT_EQ(m_services.casesPlanned[0].to, 1'420'200'000);
    EXPECT_TRUE(m_services.casesPlanned[0].from);
    EXPECT_FALSE(m_services.casesPlanned[1].from || m_services.casesPlanned[1].to);
}

TEST_F(CaseCommandTest, ItsErrorsSayWhatToDo)
{
    expectFailure({"case", site(), "--output", site()}, 1, "is the site itself");
    expectFailure({"case", site(), "--output", path("case.db")}, 2, "must end in .plotix");
    expectFailure({"case", site(), "--output", path("x.plotix"), "--from", "2015-02-01", "--to", "2015-01-01"}, 2,
                  "lies before");
    m_services.casePlan.span = {0, 100};
    expectFailure({"case", site(), "--output", path("x.plotix")}, 1,
                  "nothing was recorded between 1970-01-01T00:00:00Z and 1970-01-01T00:01:40Z");
    EXPECT_FALSE(QFile::exists(path("x.plotix")));
}

TEST_F(CaseCommandTest, CancelledItWritesNothing)
{
    m_services.progress = [](double) { return false; };
    expectFailure({"case", site(), "--output", path("case.plotix")}, 1, "cancelled");
    EXPECT_FALSE(QFile::exists(path("case.plotix")));
}

}  // namespace

}  // namespace plotix
