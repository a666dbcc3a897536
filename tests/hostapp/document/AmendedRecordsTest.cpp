#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

namespace plotix {

namespace {

/// A site with an agent Roof of Air and Wind, and of Air again under an older name.
class AmendedRecordsTest : public testing::Test {
protected:
    AmendedRecordsTest()
    {
        put("Air", {0, 10, 20, 30});
        put("Wind", {0, 10, 20, 30});
        put("Old Air", {40, 50, 60});
    }

    QString site() const { return m_folder.filePath("site.plotix"); }
    /// The times as values, the way an import does it; after the first time of a property as another step.
    void put(const char* name, const std::vector<double>& times, double add = 0)
    {
        SiteTransaction transaction(site());
        transaction.beginStep(EditStep::Kind::Import, QStringLiteral("file.csv"));
        const RowId agent = transaction.findOrCreateAgent("Roof");
        const auto property = transaction.findOrCreateProperty(agent, name, "");
        transaction.keepForUndo(agent, {property.id}, times.front(), times.back());
        transaction.records().noteAmendments(1e6);
        std::vector<double> values = times;
        for (double& value : values)
            value += add;
        transaction.records().store(agent, {SharedArray<double>::fromVector(std::vector(times)),
                                            {{property.id, SharedArray<double>::fromVector(std::move(values)), {}}}});
        transaction.commit();
    }
    std::shared_ptr<SiteAgent> agent()
    {
        document = SiteDocument::open(site());
        return document->agentNamed("Roof");
    }
    RowId id(const char* name)
    {
        const auto owner = agent();
        for (const auto& each : owner->siteProperties())
            if (each->name() == QLatin1String(name))
                return each->description().id;
        return 0;
    }
    /// What is told of Air at a time: "late", "late corrected".
    std::string kindsAt(double time)
    {
        QStringList kinds;
        const auto owner = agent();
        for (const KTVAmendment& one : owner->amendmentsOf(owner->siteProperties().front()->propertyName(), time, time))
            kinds << (one.kind == KTVAmendment::Kind::Late ? "late" : "corrected");
        return kinds.join(' ').toStdString();
    }
    /// "late 15…15, corrected 20…20"
    std::string told(const char* name)
    {
        QStringList all;
        const auto owner = agent();
        for (const auto& each : owner->siteProperties())
            if (each->name() == QLatin1String(name))
                for (const KTVAmendment& one : owner->amendmentsOf(each->propertyName(), -1e9, 1e9))
                    all << QStringLiteral("%1 %2…%3")
                               .arg(one.kind == KTVAmendment::Kind::Late ? "late" : "corrected")
                               .arg(one.from)
                               .arg(one.to);
        return all.join(", ").toStdString();
    }

    std::shared_ptr<SiteDocument> document;

private:
    QTemporaryDir m_folder;
};

TEST_F(AmendedRecordsTest, AnAgentTellsWhatCameLateAndWhatWasCorrected)
{
    EXPECT_EQ(told("Air"), "");
    put("Air", {15, 20}, 1);
    EXPECT_EQ(told("Air"), "late 15…15, corrected 20…20");
    EXPECT_EQ(told("Wind"), "");
}

TEST_F(AmendedRecordsTest, UndoTakesBackWhatTheStepNoted)
{
    put("Air", {10}, 1);
    put("Air", {5, 10, 15}, 2);
    EXPECT_EQ(told("Air"), "late 5…5, corrected 10…10, late 15…15");
    undoLastEdit(site());
    EXPECT_EQ(told("Air"), "corrected 10…10");
    undoLastEdit(site());
    EXPECT_EQ(told("Air"), "");
}

TEST_F(AmendedRecordsTest, UndoTellsOfEachRecordOfALongerStretchAsBefore)
{
    put("Air", {12, 14, 16, 18});
    put("Air", {14, 16}, 1);
    EXPECT_EQ(told("Air"), "late 12…18, corrected 14…16");
    EXPECT_EQ(kindsAt(14), "late corrected");
    undoLastEdit(site());
    for (const double time : {12, 14, 16, 18})
        EXPECT_EQ(kindsAt(time), "late") << time;
}

TEST_F(AmendedRecordsTest, ItGoesWithItsPropertyAndComesBackWithIt)
{
    put("Air", {10}, 1);
    deleteProperty(site(), id("Air"));
    EXPECT_TRUE(recordsOfSite(site())->verify().isSound());
    undoLastEdit(site());
    EXPECT_EQ(told("Air"), "corrected 10…10");
}

TEST_F(AmendedRecordsTest, ItMovesIntoAnotherPropertyWithItsRecords)
{
    put("Old Air", {50}, 1);
    mergeProperties(site(), id("Old Air"), id("Air"));
    EXPECT_EQ(told("Air"), "corrected 50…50");
    undoLastEdit(site());
    EXPECT_EQ(told("Air"), "");
    EXPECT_EQ(told("Old Air"), "corrected 50…50");
}

TEST_F(AmendedRecordsTest, AComputedPropertyTellsOfThoseItIsWorkedOutFrom)
{
    put("Air", {10}, 1);
    computeProperty(site(), agent()->id(), {"Sum", {"Air + Wind"}});
    EXPECT_EQ(told("Sum"), "corrected 10…10");
}

TEST_F(AmendedRecordsTest, ASiteThatIsClosedTellsNothing)
{
    put("Air", {10}, 1);
    const auto kept = agent();
    document.reset();
    EXPECT_TRUE(kept->amendmentsOf("air", -1e9, 1e9).empty());
}

}  // namespace
}  // namespace plotix
