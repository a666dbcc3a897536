#include "hostapp/document/SiteDocument.h"

#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/document/PropertyPalette.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "records/store/RecordStore.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <cstdio>
#include <set>

namespace {

using plotix::ReportableError;
using plotix::SiteAgent;
using plotix::SiteDocument;

class SiteDocumentTest : public testing::Test {
protected:
    QString file() const { return folder.filePath("Harbour Light.plotix"); }
    void reopen()
    {
        document.reset();
        document = SiteDocument::open(file());
    }
    std::shared_ptr<SiteAgent> agent() const { return document->agents().at(0); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files); }

    QTemporaryDir folder;
    std::shared_ptr<SiteDocument> document = SiteDocument::create(file());
};

TEST_F(SiteDocumentTest, ANewSiteIsNamedAfterItsFile)
{
    EXPECT_EQ(document->siteName(), "Harbour Light");
    EXPECT_EQ(document->siteLocation(), "");
    EXPECT_TRUE(document->agents().empty());
    EXPECT_FALSE(document->recordExtent());
    EXPECT_FALSE(document->isReadOnly());
}

TEST_F(SiteDocumentTest, NameAndPlaceAreStored)
{
    QSignalSpy changed(document.get(), &SiteDocument::siteChanged);
    document->setSite("Mole", "54.1° N");
    EXPECT_EQ(changed.count(), 1);
    reopen();
    EXPECT_EQ(document->siteName(), "Mole");
    EXPECT_EQ(document->siteLocation(), "54.1° N");
}

TEST_F(SiteDocumentTest, TheZoneOfItsClocksIsStoredAndToldByItsAgents)
{
    KTVSiteClock& clock = *document->addAgent("Roof")->siteClock();
    QSignalSpy changed(&clock, &KTVSiteClock::changed);
    EXPECT_FALSE(clock.zone().isValid());
    document->setZone(QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(clock.zone(), QTimeZone("Asia/Kathmandu"));
    reopen();
    EXPECT_EQ(document->zone(), QTimeZone("Asia/Kathmandu"));
    document->setZone({});
    reopen();
    EXPECT_FALSE(document->zone().isValid());
}

TEST_F(SiteDocumentTest, AgentsAndPropertiesAreStoredInTheirOrder)
{
    document->addAgent("Roof")->addProperty("Air Temperature", "degC");
    agent()->addProperty("Wind", "m/s", kPropertyTypeNeverPlotted);
    const QString identifier = agent()->uniqueIdentifier();
    reopen();
    ASSERT_EQ(agent()->siteProperties().size(), 2U);
    EXPECT_EQ(agent()->name(), "Roof");
    EXPECT_EQ(agent()->uniqueIdentifier(), identifier);
    EXPECT_EQ(agent()->siteProperties()[0]->propertyName(), "airTemperature");
    EXPECT_EQ(agent()->siteProperties()[0]->unit(), "°C");
    EXPECT_EQ(agent()->siteProperties()[1]->type(), kPropertyTypeNeverPlotted);
    EXPECT_EQ(agent()->properties().objectForKey("wind"), agent()->siteProperties()[1]);
}

TEST_F(SiteDocumentTest, AgentsAreFoundByNameAndIdentifier)
{
    const auto roof = document->addAgent("Roof");
    EXPECT_EQ(document->agentNamed("Roof"), roof);
    EXPECT_EQ(document->agentWithIdentifier(roof->uniqueIdentifier()), roof);
    EXPECT_EQ(document->agentNamed("roof"), nullptr);
    EXPECT_EQ(document->agentWithIdentifier(""), nullptr);
}

TEST_F(SiteDocumentTest, AgentNamesAreUniqueAndNotEmpty)
{
    document->addAgent("Roof");
    EXPECT_THROW(document->addAgent("Roof"), ReportableError);
    EXPECT_THROW(document->addAgent(" "), ReportableError);
    EXPECT_EQ(document->agents().size(), 1U);
}

TEST_F(SiteDocumentTest, NamesAreNumberedSoThatTheirCamelCaseIsAlwaysTheKey)
{
    const auto roof = document->addAgent("Roof");
    for (const char* name : {"Air", "air", "Air", "time", "°"}) {
        const auto property = roof->addProperty(name, "");
        EXPECT_EQ(property->propertyName(), camelCaseString(property->name()));
    }
    EXPECT_EQ(roof->siteProperties()[1]->name(), "air 2");
    EXPECT_EQ(roof->siteProperties()[2]->propertyName(), "air3");
    EXPECT_EQ(roof->siteProperties()[3]->propertyName(), "time2");
    EXPECT_FALSE(roof->siteProperties()[4]->propertyName().isEmpty());
}

TEST_F(SiteDocumentTest, TheSameKeyMayStandInTwoAgents)
{
    EXPECT_EQ(document->addAgent("A")->addProperty("Air", "")->propertyName(), "air");
    EXPECT_EQ(document->addAgent("B")->addProperty("Air", "")->propertyName(), "air");
}

TEST_F(SiteDocumentTest, NewPropertiesGetDifferentColoursInTurn)
{
    const auto roof = document->addAgent("Roof");
    std::set<QRgb> colours;
    for (std::size_t i = 0; i < plotix::kPaletteSize; ++i)
        colours.insert(roof->addProperty(QString("p%1").arg(i), "")->color().rgba());
    EXPECT_EQ(colours.size(), plotix::kPaletteSize);
    EXPECT_EQ(roof->addProperty("again", "")->color(), roof->siteProperties()[0]->color());
}

TEST_F(SiteDocumentTest, UnitColourAndVisibilityAreStoredAtOnce)
{
    const auto air = document->addAgent("Roof")->addProperty("Air", "°C");
    air->setUnit("°F");
    air->setColor(QColor(1, 2, 3, 4));
    air->setVisible(false);
    const auto other = SiteDocument::open(file())->agents().at(0)->siteProperties().at(0);
    EXPECT_EQ(other->unit(), "°F");
    EXPECT_EQ(other->description().archivedUnit, "°C");
    EXPECT_EQ(other->color(), QColor(1, 2, 3, 4));
    EXPECT_FALSE(other->visible());
}

TEST_F(SiteDocumentTest, AChangeWhileAnotherWritesIsStoredLaterWithoutWaiting)
{
    const auto air = document->addAgent("Roof")->addProperty("Air", "°C");
    {
        const auto import = document->records()->begin();
        air->setUnit("°F");
        EXPECT_EQ(SiteDocument::open(file())->agents().at(0)->siteProperties().at(0)->unit(), "°C");
    }
    air->setColor(Qt::red);
    const auto other = SiteDocument::open(file())->agents().at(0)->siteProperties().at(0);
    EXPECT_EQ(other->unit(), "°F");
    EXPECT_EQ(other->color(), QColor(Qt::red));
}

TEST_F(SiteDocumentTest, AChangeThatHadToWaitIsTriedAgainByItself)
{
    const auto air = document->addAgent("Roof")->addProperty("Air", "°C");
    const auto storedUnit = [this] { return SiteDocument::open(file())->agents()[0]->siteProperties()[0]->unit(); };
    {
        const auto import = document->records()->begin();
        air->setUnit("°F");
    }
    EXPECT_EQ(storedUnit(), "°C");
    QDeadlineTimer patience(10000);
    while (storedUnit() != "°F" && !patience.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(storedUnit(), "°F");
}

TEST_F(SiteDocumentTest, PlugInsKeepTheirOrderAndAreReplacedInPlace)
{
    const qint64 first = document->storePlugIn({0, "KTVPlotixPlugIn", QByteArray("one\0x", 5)});
    document->storePlugIn({0, "KTVPlotixPlugIn", "two"});
    document->storePlugIn({first, "KTVPlotixPlugIn", "three"});
    reopen();
    const auto plugIns = document->archivedPlugIns();
    ASSERT_EQ(plugIns.size(), 2U);
    EXPECT_EQ(plugIns[0].state, "three");
    EXPECT_EQ(plugIns[0].id, first);
    EXPECT_EQ(plugIns[1].state, "two");
    document->removePlugIn(first);
    EXPECT_EQ(document->archivedPlugIns().size(), 1U);
}

TEST_F(SiteDocumentTest, PlugInStatesKeepEveryByte)
{
    const QByteArray state("a\0b\xFF", 4);
    document->storePlugIn({0, "KTVPlotixPlugIn", state});
    document->storePlugIn({0, "KTVPlotixPlugIn", {}});
    EXPECT_EQ(document->archivedPlugIns()[0].state, state);
    EXPECT_TRUE(document->archivedPlugIns()[1].state.isEmpty());
}

TEST_F(SiteDocumentTest, SettingsAreSmallNamedValues)
{
    EXPECT_TRUE(document->setting("geometry").isEmpty());
    document->setSetting("geometry", "1");
    document->setSetting("geometry", "2");
    reopen();
    EXPECT_EQ(document->setting("geometry"), "2");
}

TEST_F(SiteDocumentTest, TheRecordExtentSpansEveryAgent)
{
    for (const char* name : {"A", "B"}) {
        const auto added = document->addAgent(name);
        const auto property = added->addProperty("p", "");
        const double first = name[0] == 'A' ? 100 : 300;
        const auto writer = document->records()->begin();
        writer->store(added->id(), {plotix::SharedArray<double>::fromVector({first, first + 50}), {}});
        writer->commit();
    }
    ASSERT_TRUE(document->recordExtent());
    EXPECT_EQ(document->recordExtent()->first.seconds, 100);
    EXPECT_EQ(document->recordExtent()->second.seconds, 350);
}

TEST_F(SiteDocumentTest, TheAgentReportsItsSite)
{
    document->addAgent("Roof");
    document->setSite("Mole", "Pier 4");
    EXPECT_EQ(agent()->siteName(), "Mole");
    EXPECT_EQ(agent()->siteLocation(), "Pier 4");
    EXPECT_NE(agent()->archiveManager(), nullptr);
}

TEST_F(SiteDocumentTest, AnAgentMayOutliveItsDocument)
{
    const auto roof = document->addAgent("Roof");
    const auto air = roof->addProperty("Air", "°C");
    document.reset();
    EXPECT_FALSE(roof->siteName());
    EXPECT_THROW(roof->addProperty("Wind", ""), ReportableError);
    air->setUnit("°F");
    EXPECT_EQ(roof->properties().objects().size(), 1U);
}

TEST_F(SiteDocumentTest, AClosedSiteIsOneFile)
{
    document->addAgent("Roof")->addProperty("Air", "°C");
    document.reset();
    EXPECT_EQ(files(), QStringList{"Harbour Light.plotix"});
}

TEST_F(SiteDocumentTest, AClosedSiteIsOneFileAlsoWhileAnAgentLivesOn)
{
    document->addAgent("Roof");
    const std::shared_ptr<SiteAgent> survivor = agent();
    document->recordExtent();
    document.reset();
    EXPECT_EQ(files(), QStringList("Harbour Light.plotix"));
}

TEST_F(SiteDocumentTest, CreatingOverAFileIsRefusedAndLeavesIt)
{
    document->addAgent("Roof");
    EXPECT_THROW(SiteDocument::create(file()), ReportableError);
    reopen();
    EXPECT_EQ(document->agents().size(), 1U);
}

TEST_F(SiteDocumentTest, AColourChosenHereLeavesAUnitChosenInAnotherProgram)
{
    const auto here = document->addAgent("Station")->addProperty("Air", "°C");
    const auto other = SiteDocument::open(file());
    other->agents().front()->siteProperties().front()->setUnit("°F");
    here->setColor(Qt::red);
    const auto stored = SiteDocument::open(file())->agents().front()->siteProperties().front();
    EXPECT_EQ(stored->unit(), "°F");
    EXPECT_EQ(stored->color(), QColor(Qt::red));
    EXPECT_TRUE(QTest::qWaitFor([&] { return here->unit() == "°F"; }, 5'000));
}

TEST_F(SiteDocumentTest, AReplacedFileIsToldOnceAndNeitherFileIsWritten)
{
    document->addAgent("Roof");
    const QString other = folder.filePath("other.plotix");
    SiteDocument::create(other)->addAgent("Cellar");
    QSignalSpy replaced(document.get(), &SiteDocument::replaced);
    ASSERT_EQ(std::rename(qPrintable(other), qPrintable(file())), 0);
    EXPECT_THROW(document->setSetting("x", "y"), plotix::FileReplaced);
    EXPECT_TRUE(replaced.wait(5000));
    EXPECT_TRUE(document->isReadOnly());
    EXPECT_EQ(agent()->name(), "Roof");
    EXPECT_THROW(document->recordExtent(), plotix::FileReplaced);
    EXPECT_FALSE(replaced.wait(1200));
    EXPECT_EQ(replaced.count(), 1);
    document.reset();
    EXPECT_EQ(SiteDocument::open(file())->agents()[0]->name(), "Cellar");
    EXPECT_EQ(files(), QStringList("Harbour Light.plotix"));
}

TEST_F(SiteDocumentTest, AReadOnlyFileCanBeViewedButNotChanged)
{
    document->addAgent("Roof")->addProperty("Air", "°C");
    document.reset();
    QFile::setPermissions(file(), QFile::ReadOwner);
    document = SiteDocument::open(file());
    EXPECT_TRUE(document->isReadOnly());
    EXPECT_THROW(document->addAgent("Other"), ReportableError);
    EXPECT_THROW(document->setSetting("x", "y"), ReportableError);
    EXPECT_THROW(document->storePlugIn({0, "c", "s"}), ReportableError);
    agent()->siteProperties()[0]->setUnit("°F");
    EXPECT_EQ(agent()->siteProperties()[0]->unit(), "°F");
    document.reset();
    EXPECT_EQ(SiteDocument::open(file())->agents()[0]->siteProperties()[0]->unit(), "°C");
}

}  // namespace
