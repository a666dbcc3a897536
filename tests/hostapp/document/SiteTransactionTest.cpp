#include "hostapp/document/SiteTransaction.h"

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>

namespace {

using plotix::FileReplaced;
using plotix::recordsOfSite;
using plotix::ReportableError;
using plotix::RowId;
using plotix::SiteDocument;
using plotix::SiteTransaction;

class SiteTransactionTest : public testing::Test {
protected:
    QString file() const { return folder.filePath("site.plotix"); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files); }

    /// Three records of one property.
    static void fill(SiteTransaction& transaction, const char* agentName = "Roof", double first = 1)
    {
        const RowId agent = transaction.findOrCreateAgent(agentName);
        const auto air = transaction.findOrCreateProperty(agent, "Air", "degC");
        const auto values = plotix::SharedArray<double>::fromVector({first, first + 1, first + 2});
        transaction.records().store(agent, {values, {{air.id, values, {}}}});
    }

    QTemporaryDir folder;
};

TEST_F(SiteTransactionTest, CreatesTheFileWhenItIsMissing)
{
    SiteTransaction transaction(file(), "Harbour");
    EXPECT_TRUE(transaction.createdFile());
    fill(transaction);
    transaction.commit();
    EXPECT_EQ(SiteDocument::open(file())->siteName(), "Harbour");
    EXPECT_EQ(recordsOfSite(file())->overview(SiteDocument::open(file())->agents()[0]->id(), {}).records(), 3U);
}

TEST_F(SiteTransactionTest, AFileItCreatedGoesAwayWithoutCommit)
{
    {
        SiteTransaction transaction(file());
        fill(transaction);
    }
    EXPECT_EQ(files(), QStringList{});
}

TEST_F(SiteTransactionTest, AnExistingFileIsLeftAsItWasWithoutCommit)
{
    SiteDocument::create(file())->addAgent("Roof");
    {
        SiteTransaction transaction(file());
        EXPECT_FALSE(transaction.createdFile());
        fill(transaction, "Cellar");
    }
    const auto document = SiteDocument::open(file());
    EXPECT_EQ(document->agents().size(), 1U);
    EXPECT_FALSE(document->recordExtent());
}

TEST_F(SiteTransactionTest, NothingIsVisibleBeforeCommitAndEverythingAfter)
{
    const auto document = SiteDocument::create(file());
    SiteTransaction transaction(file());
    fill(transaction);
    transaction.records().commit();
    document->reload();
    EXPECT_TRUE(document->agents().empty());
    EXPECT_FALSE(document->recordExtent());
    transaction.commit();
    document->reload();
    EXPECT_EQ(document->agents().size(), 1U);
    EXPECT_TRUE(document->recordExtent());
}

TEST_F(SiteTransactionTest, TheStoredRecordsAreThoseOthersSee)
{
    SiteTransaction transaction(file());
    fill(transaction);
    const RowId agent = transaction.findOrCreateAgent("Roof");
    EXPECT_FALSE(transaction.storedRecords()->extent(agent));
    transaction.commit();
    EXPECT_TRUE(transaction.storedRecords()->extent(agent));
}

TEST_F(SiteTransactionTest, FindsWhatIsThere)
{
    SiteTransaction transaction(file());
    const RowId agent = transaction.findOrCreateAgent("Roof");
    const auto air = transaction.findOrCreateProperty(agent, "Air Temperature", "degF");
    EXPECT_EQ(transaction.findOrCreateAgent("Roof"), agent);
    EXPECT_EQ(transaction.findOrCreateProperty(agent, "Air Temperature", "K").id, air.id);
    EXPECT_EQ(transaction.findOrCreateProperty(agent, "Air Temperature", "K").archivedUnit, "°F");
    EXPECT_EQ(transaction.findOrCreateProperty(agent, "air_temperature", "").id, air.id);
    EXPECT_EQ(air.propertyName, "airTemperature");
}

TEST_F(SiteTransactionTest, WorksOnAnotherThread)
{
    const auto document = SiteDocument::create(file());
    std::thread([this] {
        SiteTransaction transaction(file());
        fill(transaction);
        transaction.commit();
    }).join();
    document->reload();
    EXPECT_EQ(document->agents().size(), 1U);
}

TEST_F(SiteTransactionTest, ReloadKeepsTheObjectsThereAre)
{
    const auto document = SiteDocument::create(file());
    const auto roof = document->addAgent("Roof");
    const auto air = roof->addProperty("Air", "degC");
    {
        SiteTransaction transaction(file());
        fill(transaction);
        transaction.findOrCreateProperty(transaction.findOrCreateAgent("Roof"), "Wind", "m/s");
        fill(transaction, "Cellar");
        transaction.commit();
    }
    QSignalSpy agents(document.get(), &SiteDocument::agentsChanged);
    QSignalSpy properties(roof.get(), &plotix::SiteAgent::propertiesChanged);
    document->reload();
    document->reload();
    EXPECT_EQ(agents.count(), 1);
    EXPECT_EQ(properties.count(), 1);
    EXPECT_EQ(document->agents()[0], roof);
    EXPECT_EQ(roof->siteProperties()[0], air);
    EXPECT_EQ(roof->siteProperties()[1]->propertyName(), "wind");
    EXPECT_EQ(document->agents()[1]->name(), "Cellar");
}

TEST_F(SiteTransactionTest, PropertiesFoundByReloadAreStoredWhenTheyChange)
{
    const auto document = SiteDocument::create(file());
    {
        SiteTransaction transaction(file());
        fill(transaction);
        transaction.commit();
    }
    document->reload();
    document->agents()[0]->siteProperties()[0]->setUnit("K");
    EXPECT_EQ(SiteDocument::open(file())->agents()[0]->siteProperties()[0]->unit(), "K");
}

TEST_F(SiteTransactionTest, ARefusedFileIsNotRemoved)
{
    QFile foreign(file());
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write("not a site at all, just some text that is long enough to be looked at");
    foreign.close();
    EXPECT_THROW(SiteTransaction{file()}, ReportableError);
    EXPECT_EQ(files(), QStringList{"site.plotix"});
}

TEST_F(SiteTransactionTest, AFileReplacedMeanwhileGetsNothing)
{
    SiteDocument::create(file());
    const QString other = folder.filePath("other.plotix");
    SiteDocument::create(other)->addAgent("Other");
    {
        SiteTransaction transaction(file());
        fill(transaction);
        ASSERT_EQ(std::rename(qPrintable(other), qPrintable(file())), 0);
        EXPECT_THROW(transaction.commit(), FileReplaced);
    }
    EXPECT_EQ(SiteDocument::open(file())->agents().size(), 1U);
    EXPECT_EQ(SiteDocument::open(file())->agents()[0]->name(), "Other");
}

TEST_F(SiteTransactionTest, AFileThatCameForOneItMadeIsNotRemoved)
{
    const QString other = folder.filePath("other.plotix");
    SiteDocument::create(other);
    {
        SiteTransaction transaction(file());
        ASSERT_EQ(std::rename(qPrintable(other), qPrintable(file())), 0);
    }
    EXPECT_NO_THROW(SiteDocument::open(file()));
    EXPECT_EQ(files(), QStringList{"site.plotix"});
}

TEST_F(SiteTransactionTest, TwoAtOnceAreOneTooMany)
{
    SiteDocument::create(file());
    const SiteTransaction transaction(file());
    EXPECT_THROW(SiteTransaction{file()}, ReportableError);
}

TEST_F(SiteTransactionTest, SeveralAgentsFillUpTogether)
{
    {
        SiteTransaction transaction(file());
        for (int i = 0; i < 100; ++i)
            for (const char* name : {"A", "B", "C"})
                fill(transaction, name, i * 3.0);
        transaction.commit();
    }
    const auto document = SiteDocument::open(file());
    for (const auto& agent : document->agents())
        EXPECT_EQ(recordsOfSite(file())->overview(agent->id(), {}).records(), 300U);
}

}  // namespace
