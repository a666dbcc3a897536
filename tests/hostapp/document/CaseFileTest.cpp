#include "hostapp/document/CaseFile.h"

#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace plotix {

namespace {

using Reason = CaseProblem::Reason;

/// A site of a boiler with Supply, Return and a computed Spread, a record each second from 0 to 99; the 50th supply is
/// not valid. A plan of Supply and Spread from 20 to 30.
class CaseFileTest : public testing::Test {
protected:
    CaseFileTest()
    {
        {
            SiteTransaction transaction(site(), "Harbour");
            const RowId boiler = transaction.findOrCreateAgent("Boiler");
            std::vector<double> times;
            for (int i = 0; i < 100; ++i)
                times.push_back(i);
            const auto column = SharedArray<double>::fromVector(std::move(times));
            RecordBlock block{column, {}};
            for (const char* name : {"Supply", "Return"})
                block.columns.push_back({transaction.findOrCreateProperty(boiler, name, "degC").id, column, {}});
            transaction.records().store(boiler, block);
            transaction.commit();
        }
        document = SiteDocument::open(site());
        computeProperty(site(), boiler()->id(), {"Spread", {"Supply - Return"}});
        document = SiteDocument::open(site());
        plan.site = document->path();
        plan.records = document->records();
        plan.siteName = document->siteName();
        plan.siteZone = "Europe/Berlin";
        plan.agents = {{boiler()->id(), boiler()->uniqueIdentifier(), "Boiler", {}, {{20, 30}}}};
        for (const auto& property : boiler()->siteProperties())
            plan.agents.front().properties.push_back(property->description());
        plan.trend = {0, "KTVPlotixPlugIn", "state"};
        plan.trendTitle = "Day";
        plan.span = {20, 30};
    }

    QString site() const { return m_folder.filePath("site.plotix"); }
    QString target() const { return m_folder.filePath("case.plotix"); }
    QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    std::shared_ptr<SiteAgent> boiler() const { return document->agentNamed("Boiler"); }
    RowId idOf(std::size_t property) const { return plan.agents.front().properties[property].id; }

    Reason reasonOf(const QString& path)
    {
        try {
            writeCase(plan, path);
        } catch (const CaseFailure& failure) {
            return failure.problem().reason;
        }
        ADD_FAILURE() << "it was written";
        return Reason::NotWritten;
    }
    std::shared_ptr<SiteDocument> written()
    {
        EXPECT_TRUE(writeCase(plan, target()));
        return SiteDocument::open(target());
    }

    QTemporaryDir m_folder;
    std::shared_ptr<SiteDocument> document;
    CasePlan plan;
};

TEST_F(CaseFileTest, HoldsSiteAgentsPropertiesAndTheTrend)
{
    const auto made = written();
    EXPECT_EQ(made->siteName(), "Harbour");
    EXPECT_EQ(made->zone().id(), "Europe/Berlin");
    ASSERT_EQ(made->agents().size(), 1U);
    EXPECT_EQ(made->agents().front()->uniqueIdentifier(), boiler()->uniqueIdentifier());
    ASSERT_EQ(made->agents().front()->siteProperties().size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        SiteProperty::Description expected = boiler()->siteProperties()[i]->description();
        const SiteProperty::Description found = made->agents().front()->siteProperties()[i]->description();
        EXPECT_EQ(found.name, expected.name);
        EXPECT_EQ(found.unit, expected.unit);
        EXPECT_EQ(found.color, expected.color);
        EXPECT_EQ(found.formula, expected.formula);
    }
    ASSERT_EQ(made->archivedPlugIns().size(), 1U);
    EXPECT_EQ(made->archivedPlugIns().front().state, "state");
}

TEST_F(CaseFileTest, HoldsTheRecordsOfTheSpanAndOneBeforeAndAfter)
{
    const auto made = written();
    const auto extent = made->recordExtent();
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->first.seconds, 19);
    EXPECT_EQ(extent->second.seconds, 31);
    EXPECT_EQ(made->records()->overview(made->agents().front()->id(), {}).records(), 13U);
}

TEST_F(CaseFileTest, ComputedPropertiesAreWorkedOutThere)
{
    const auto made = written();
    const auto& properties = made->agents().front()->siteProperties();
    const RowId spread[] = {properties[2]->description().id};
    const auto block = made->records()->read(made->agents().front()->id(), spread, 20, 30);
    ASSERT_EQ(block->times.size(), 11U);
    EXPECT_EQ(block->columns.front().values[5], 0);
}

TEST_F(CaseFileTest, LimitsAndNotesComeOverAboutTheirProperties)
{
    plan.limits = {{7, idOf(0), "alarm", 80, "°C", KTVLimit::Side::Above, KTVLimit::Severity::Alarm}};
    plan.notes = {{9, 22, 25, "Ada", "Pump replaced", {idOf(0), 4711}, 1, 2}};
    EXPECT_EQ(writeCase(plan, target())->notes, 1U);
    const auto made = SiteDocument::open(target());
    const RowId supply = made->agents().front()->siteProperties().front()->description().id;
    ASSERT_EQ(made->limits().size(), 1U);
    EXPECT_EQ(made->limits().front().property, supply);
    EXPECT_EQ(made->limits().front().severity, KTVLimit::Severity::Alarm);
    ASSERT_EQ(made->notes().size(), 1U);
    EXPECT_EQ(made->notes().front().properties, std::vector<qint64>{supply});
    EXPECT_EQ(made->notes().front().modified, 2);
}

TEST_F(CaseFileTest, IsOneFileAndTellsWhatIsInIt)
{
    const auto contents = writeCase(plan, target());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->records, 13U);
    EXPECT_EQ(contents->properties, 3U);
    EXPECT_EQ(contents->bytes, QFile(target()).size());
    document.reset();
    plan.records.reset();
    EXPECT_EQ(files(), (QStringList{"case.plotix", "site.plotix"}));
}

TEST_F(CaseFileTest, NothingOfTheSiteIsInItButWhatIsNamed)
{
    document->setSetting("recordsThisComputer", "1");
    const auto made = written();
    EXPECT_TRUE(made->setting("recordsThisComputer").isEmpty());
    EXPECT_TRUE(editSteps(target()).empty());
    EXPECT_FALSE(editSteps(site()).empty());
}

TEST_F(CaseFileTest, AnotherCaseIsReplacedAndASiteIsNot)
{
    writeCase(plan, target());
    plan.agents.front().spans = {{20, 40}};
    EXPECT_EQ(writeCase(plan, target())->records, 23U);
    const QString other = m_folder.filePath("other.plotix");
    SiteDocument::create(other);
    EXPECT_EQ(reasonOf(other), Reason::IsNoCase);
    EXPECT_NO_THROW(SiteDocument::open(other));
    EXPECT_FALSE(files().contains("other.plotix-wal"));
}

TEST_F(CaseFileTest, TheSiteItselfIsNeverItsCase)
{
    EXPECT_EQ(reasonOf(site()), Reason::IsTheSite);
    const QString link = m_folder.filePath("link.plotix");
    QFile::link(site(), link);
    EXPECT_EQ(reasonOf(link), Reason::IsTheSite);
}

TEST_F(CaseFileTest, ACaseThatIsOpenIsLeftAlone)
{
    const auto made = written();
    made->setSite("Somebody's", {});
    EXPECT_EQ(reasonOf(target()), Reason::IsInUse);
    EXPECT_FALSE(made->isReplaced());
}

TEST_F(CaseFileTest, NamesOtherThanASitesAreRefused)
{
    EXPECT_EQ(reasonOf(m_folder.filePath("case.db")), Reason::WrongEnding);
    QDir(m_folder.path()).mkdir("folder.plotix");
    EXPECT_EQ(reasonOf(m_folder.filePath("folder.plotix")), Reason::IsNoCase);
}

TEST_F(CaseFileTest, ASpanWithoutRecordsIsRefusedWithItsTimes)
{
    plan.span = {1000, 2000};
    plan.agents.front().spans = {{1000, 2000}};
    EXPECT_EQ(reasonOf(target()), Reason::NothingRecorded);
    EXPECT_FALSE(QFile::exists(target()));
}

TEST_F(CaseFileTest, StoppedItLeavesNothingBehind)
{
    EXPECT_FALSE(writeCase(plan, target(), [](double) { return false; }));
    document.reset();
    plan.records.reset();
    EXPECT_EQ(files(), QStringList{"site.plotix"});
}

TEST_F(CaseFileTest, AFullDiskLeavesTheCaseThatWasThere)
{
    writeCase(plan, target());
    const qint64 before = QFile(target()).size();
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{100'000, limit.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    const Reason reason = reasonOf(target());
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(reason, Reason::NotWritten);
    EXPECT_EQ(QFile(target()).size(), before);
    EXPECT_NO_THROW(SiteDocument::open(target()));
}

}  // namespace

}  // namespace plotix
