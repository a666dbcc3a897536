#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/FormulaPreview.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace plotix {

namespace {

using Values = std::vector<std::optional<double>>;

/// A site with a boiler of Supply, Return and Power, and a roof station of Air, every ten minutes.
class ComputedPropertyTest : public testing::Test {
protected:
    ComputedPropertyTest()
    {
        put("Boiler", "Supply", "°C", {60, 61, 62, 63});
        put("Boiler", "Return", "°C", {40, 40, 41, 41});
        put("Boiler", "Power", "kW", {6, 6, 12, 12});
        put("Roof", "Air", "°C", {5, 6, 7}, 300);
    }

    QString site() const { return m_folder.filePath("site.plotix"); }

    void put(const char* agentName, const char* name, const char* unit, std::vector<double> numbers, double from = 0)
    {
        SiteTransaction transaction(site());
        const RowId agent = transaction.findOrCreateAgent(agentName);
        const auto property = transaction.findOrCreateProperty(agent, name, unit);
        std::vector<double> times;
        for (std::size_t i = 0; i < numbers.size(); ++i)
            times.push_back(from + 600 * static_cast<double>(i));
        transaction.records().store(agent, {SharedArray<double>::fromVector(std::move(times)),
                                            {{property.id, SharedArray<double>::fromVector(std::move(numbers)), {}}}});
        transaction.commit();
    }
    EditOutcome compute(const char* name, const char* formula, const char* unit = "", const char* agentName = "Boiler")
    {
        return computeProperty(site(), agent(agentName)->id(),
                               {QString::fromUtf8(name), {QString::fromUtf8(formula), QString::fromUtf8(unit)}});
    }
    EditOutcome recompute(const char* name, const char* formula)
    {
        return computeProperty(site(), agent()->id(), {QString::fromUtf8(name), {QString::fromUtf8(formula)}},
                               id(name));
    }

    std::shared_ptr<SiteAgent> agent(const char* name = "Boiler") const
    {
        document = SiteDocument::open(site());
        return document->agentNamed(name);
    }
    std::shared_ptr<SiteProperty> property(const char* name, const char* agentName = "Boiler") const
    {
        for (const auto& each : agent(agentName)->siteProperties())
            if (each->name() == QLatin1String(name))
                return each;
        return nullptr;
    }
    RowId id(const char* name, const char* agentName = "Boiler") const
    {
        const auto found = property(name, agentName);
        return found ? found->description().id : 0;
    }
    std::string formula(const char* name, const char* agentName = "Boiler") const
    {
        return property(name, agentName)->description().formula.value_or(PropertyFormula{}).text.toStdString();
    }
    RecordBlock read(const std::vector<const char*>& names, std::optional<double> from = {},
                     std::optional<double> to = {}, const char* agentName = "Boiler") const
    {
        std::vector<RowId> ids;
        for (const char* name : names)
            ids.push_back(id(name, agentName));
        const RowId owner = agent(agentName)->id();
        return *document->records()->read(owner, ids, from, to);
    }
    Values values(const char* name, std::optional<double> from = {}, std::optional<double> to = {},
                  const char* agentName = "Boiler") const
    {
        return column(read({name}, from, to, agentName), 0);
    }
    static Values column(const RecordBlock& block, std::size_t which)
    {
        Values found;
        for (std::size_t i = 0; i < block.times.size(); ++i)
            found.push_back(block.columns[which].validity.isValid(i) ? std::optional(block.columns[which].values[i])
                                                                     : std::nullopt);
        return found;
    }
    /// What a plug-in gets for these of the boiler; `m_failure`: what the document says went wrong.
    KTVRecordDictionaryPtr fetch(const std::vector<const char*>& names)
    {
        const auto owner = agent();
        KTVPropertyList wanted;
        for (const char* name : names)
            for (const auto& each : owner->siteProperties())
                if (each->name() == QLatin1String(name))
                    wanted.push_back(each);
        QObject::connect(document.get(), &SiteDocument::recordsNotRead, document.get(),
                         [this](const QString& message, RecordFailure kind) {
                             failure = message.toStdString();
                             failureKind = kind;
                         });
        KTVRecordDictionaryPtr records;
        owner->archiveManager()->fetchRecordsForProperties(
            wanted, {}, {}, kMaximumSamplesUnlimited, {},
            [&records](KTVRecordDictionaryPtr read, double, const std::optional<KTVError>& error) {
                EXPECT_FALSE(error);
                records = std::move(read);
            });
        while (owner->siteArchiveManager()->pendingFetches() > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return records;
    }
    template <class Work>
    std::string refusal(const Work& work) const
    {
        try {
            work();
        } catch (const ReportableError& error) {
            return error.message().toStdString();
        }
        return "not refused";
    }

    mutable std::shared_ptr<SiteDocument> document;
    std::string failure;
    std::optional<RecordFailure> failureKind;

private:
    QTemporaryDir m_folder;
};

TEST_F(ComputedPropertyTest, ItIsOfferedWithNameUnitAndColour)
{
    compute("Spread", "Supply - Return");
    const auto spread = property("Spread");
    ASSERT_TRUE(spread && spread->isComputed());
    EXPECT_EQ(spread->propertyName(), "spread");
    EXPECT_EQ(spread->unit(), "K");
    EXPECT_TRUE(spread->color().isValid());
    EXPECT_EQ(values("Spread"), (Values{20, 21, 21, 22}));
}

TEST_F(ComputedPropertyTest, ASpanGivesWhatTheWholeGives)
{
    compute("Energy", "integral(Power)");
    compute("Moving", "mean(Power, 20 min)");
    compute("Day", "daily_mean(Power)");
    EXPECT_EQ(values("Energy"), (Values{0, 1, 2, 4}));
    EXPECT_EQ(values("Energy", 1200, 1300), (Values{2}));
    EXPECT_EQ(values("Moving", 1200, 1800), (Values{9, 12}));
    EXPECT_EQ(values("Day", 600, 600), (Values{9}));
}

TEST_F(ComputedPropertyTest, RecordedAndComputedOnesAreReadTogether)
{
    compute("Spread", "Supply - Return");
    const RecordBlock block = read({"Spread", "Power"}, 600, 1200);
    EXPECT_EQ(column(block, 0), (Values{21, 21}));
    EXPECT_EQ(column(block, 1), (Values{6, 12}));
}

TEST_F(ComputedPropertyTest, AnotherAgentsTimesComeIn)
{
    compute("Lift", "Supply - Roof.Air");
    const RecordBlock block = read({"Lift", "Supply"});
    ASSERT_EQ(block.times.size(), 7U);
    EXPECT_EQ(column(block, 0), (Values{{}, 55, 56, 55, 56, 55, 56}));
    EXPECT_EQ(column(block, 1), (Values{60, {}, 61, {}, 62, {}, 63}));
}

TEST_F(ComputedPropertyTest, AnAgentWithoutRecordsHasTheExtentOfThoseItsFormulasName)
{
    SiteDocument::open(site())->addAgent("Comparison");
    compute("Lift", "Boiler.Supply - Roof.Air", "", "Comparison");
    EXPECT_EQ(values("Lift", {}, {}, "Comparison").size(), 7U);
    const RowId comparison = agent("Comparison")->id();
    EXPECT_EQ(document->records()->extent(comparison), (RecordExtent{0, 1800}));
}

TEST_F(ComputedPropertyTest, OneMayBeMadeOfOthers)
{
    compute("Spread", "Supply - Return");
    compute("Half", "Spread / 2");
    EXPECT_EQ(values("Half", 600, 1200), (Values{10.5, 10.5}));
}

TEST_F(ComputedPropertyTest, CyclesAndTakenNamesAreRefused)
{
    compute("Spread", "Supply - Return");
    compute("Half", "Spread / 2");
    EXPECT_EQ(refusal([&] { recompute("Spread", "Half * 2"); }),
              "“Half” leads back to the property that is being computed.");
    EXPECT_EQ(refusal([&] { compute("Supply", "Return"); }), "“Supply” is taken: choose another name.");
    EXPECT_EQ(refusal([&] { compute("Sum", "Supply + Power"); }),
              "°C and kW do not fit together: they are different quantities.");
    EXPECT_EQ(formula("Spread"), "Supply - Return");
}

TEST_F(ComputedPropertyTest, MakingOneIsUndone)
{
    compute("Spread", "Supply - Return");
    EXPECT_EQ(undoLastEdit(site()).kind, EditStep::Kind::Compute);
    EXPECT_EQ(id("Spread"), 0);
    compute("Spread", "Return - Supply");
    EXPECT_EQ(values("Spread", 0, 0), (Values{-20}));
}

TEST_F(ComputedPropertyTest, ChangingOneIsUndoneUnitIncluded)
{
    compute("Result", "Supply - Return");
    recompute("Result", "integral(Power)");
    EXPECT_EQ(property("Result")->unit(), "kWh");
    undoLastEdit(site());
    EXPECT_EQ(formula("Result"), "Supply - Return");
    EXPECT_EQ(property("Result")->unit(), "K");
    EXPECT_EQ(values("Result", 0, 0), (Values{20}));
}

TEST_F(ComputedPropertyTest, DeletingOneIsUndone)
{
    compute("Spread", "Supply - Return");
    deleteProperty(site(), id("Spread"));
    EXPECT_EQ(id("Spread"), 0);
    undoLastEdit(site());
    EXPECT_EQ(values("Spread", 0, 0), (Values{20}));
}

TEST_F(ComputedPropertyTest, FormulasFollowARenamedPropertyOrAgent)
{
    compute("Spread", "Supply - Return");
    compute("Lift", "Supply - Roof.Air");
    const EditOutcome outcome = renameProperty(site(), id("Supply"), "Supply temperature");
    EXPECT_EQ(outcome.followed, (std::vector<QString>{"Spread", "Lift"}));
    EXPECT_TRUE(outcome.broken.empty());
    renameAgent(site(), agent("Roof")->id(), "Mast 2");
    EXPECT_EQ(formula("Spread"), "\"Supply temperature\" - Return");
    EXPECT_EQ(formula("Lift"), "\"Supply temperature\" - \"Mast 2\".Air");
    undoLastEdit(site());
    undoLastEdit(site());
    EXPECT_EQ(formula("Lift"), "Supply - Roof.Air");
}

TEST_F(ComputedPropertyTest, ARenamedOneIsFollowedToo)
{
    compute("Spread", "Supply - Return");
    compute("Half", "Spread / 2");
    computeProperty(site(), agent()->id(), {"Difference", {"Supply - Return"}}, id("Spread"));
    EXPECT_EQ(formula("Half"), "Difference / 2");
}

TEST_F(ComputedPropertyTest, WhatIsDeletedIsToldAndGivesAnErrorInsteadOfANumber)
{
    compute("Spread", "Supply - Return");
    compute("Half", "Spread / 2");
    const EditOutcome outcome = deleteProperty(site(), id("Return"));
    ASSERT_EQ(outcome.broken.size(), 2U);
    EXPECT_EQ(outcome.broken[0].first.toStdString(), "Spread");
    EXPECT_EQ(refusal([&] { values("Spread"); }), "“Spread” cannot be computed: “Boiler” has no property “Return”.");
    const RowId spread = id("Spread"), boiler = agent()->id();
    EXPECT_EQ(refusal([&] { document->records()->statistics(boiler, spread); }),
              "“Spread” cannot be computed: “Boiler” has no property “Return”.");
    undoLastEdit(site());
    EXPECT_EQ(values("Spread", 0, 0), (Values{20}));
}

TEST_F(ComputedPropertyTest, FormulasFollowAMergedProperty)
{
    compute("Spread", "Supply - Return");
    put("Boiler", "Return 2", "°C", {30}, 6000);
    mergeProperties(site(), id("Return"), id("Return 2"));
    EXPECT_EQ(formula("Spread"), "Supply - \"Return 2\"");
    EXPECT_EQ(values("Spread", 0, 0), (Values{20}));
}

TEST_F(ComputedPropertyTest, MergedAgentsKeepTheirFormulas)
{
    compute("Spread", "Supply - Return");
    compute("Lift", "Boiler.Supply - Air", "", "Roof");
    mergeAgents(site(), agent()->id(), agent("Roof")->id());
    EXPECT_EQ(formula("Spread", "Roof"), "Supply - Return");
    EXPECT_EQ(formula("Lift", "Roof"), "Supply - Air");
    EXPECT_EQ(values("Spread", 600, 600, "Roof"), (Values{21}));
    undoLastEdit(site());
    EXPECT_EQ(formula("Lift", "Roof"), "Boiler.Supply - Air");
    EXPECT_EQ(values("Spread", 600, 600), (Values{21}));
}

TEST_F(ComputedPropertyTest, ItsValuesAreNeitherMergedNorTakenOut)
{
    compute("Spread", "Supply - Return");
    EXPECT_NE(refusal([&] { mergeProperties(site(), id("Supply"), id("Spread")); }), "not refused");
    EXPECT_NE(refusal([&] { removeValues(site(), agent()->id(), {id("Spread")}, 0, 600); }), "not refused");
    EXPECT_EQ(values("Supply"), (Values{60, 61, 62, 63}));
}

TEST_F(ComputedPropertyTest, AnImportNeverWritesIntoOne)
{
    compute("Spread", "Supply - Return");
    put("Boiler", "Spread", "K", {1, 2});
    put("Boiler", "Spread", "K", {3}, 1200);
    EXPECT_EQ(values("Spread", 0, 0), (Values{20}));
    EXPECT_EQ(values("Spread 2", 0, 1200), (Values{1, 2, 3}));
    EXPECT_EQ(id("Spread 3"), 0);
}

TEST_F(ComputedPropertyTest, APlugInGetsItAsAnyOther)
{
    compute("Energy", "integral(Power)");
    const KTVRecordDictionaryPtr records = fetch({"Power", "Energy"});
    ASSERT_TRUE(records && records->columnForKey("energy"));
    EXPECT_EQ(records->time()->size(), 4U);
    EXPECT_EQ(records->columnForKey("energy")->unitValue(3), 4);
    records->columnForKey("energy")->setUnit("MWh");
    EXPECT_DOUBLE_EQ(records->columnForKey("energy")->unitValue(3), 0.004);
    EXPECT_FALSE(failureKind);
}

TEST_F(ComputedPropertyTest, WhatCannotBeWorkedOutHidesNothingElse)
{
    compute("Spread", "Supply - Return");
    deleteProperty(site(), id("Return"));
    const KTVRecordDictionaryPtr records = fetch({"Spread", "Supply"});
    ASSERT_TRUE(records && records->time());
    EXPECT_FALSE(records->columnForKey("spread"));
    EXPECT_EQ(records->columnForKey("supply")->unitValue(3), 63);
    EXPECT_EQ(failure, "“Spread” cannot be computed: “Boiler” has no property “Return”.");
    EXPECT_EQ(failureKind, RecordFailure::NotComputed);
    EXPECT_FALSE(fetch({"Spread"})->time());
}

TEST_F(ComputedPropertyTest, StatisticsAreOfItsValues)
{
    compute("Spread", "Supply - Return");
    const RowId spread = id("Spread"), owner = agent()->id();
    const ColumnStatistics found = document->records()->statistics(owner, spread, 0, 600);
    EXPECT_EQ(found.valid, 2U);
    EXPECT_EQ(found.minimum, 20);
    EXPECT_EQ(found.maximum, 21);
    EXPECT_EQ(found.average, 20.5);
    EXPECT_EQ(document->records()->overview(owner, std::array{spread}).columns.size(), 1U);
}

TEST_F(ComputedPropertyTest, PartsAreTheRecordsThatItNeeds)
{
    compute("Lift", "mean(Supply, 10 min) - Roof.Air");
    const RowId lift = id("Lift"), owner = agent()->id();
    const std::vector<RecordPart> parts = document->records()->partsRead(owner, std::array{lift}, 600, 1200);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].properties, std::vector{id("Supply")});
    EXPECT_LE(*parts[0].from, 0);
}

TEST_F(ComputedPropertyTest, WhatLiesWithinAPartIsNotReadTwice)
{
    compute("Moving", "mean(Power, 5 min)");
    const RowId asked[] = {id("Power"), id("Moving"), id("Supply")}, owner = agent()->id();
    EXPECT_EQ(document->records()->partsRead(owner, asked, 600, 1800).size(), 1U);
    const RecordBlock block = *document->records()->read(owner, asked, 600, 1800);
    ASSERT_EQ(block.times.size(), 3U);
    EXPECT_EQ(column(block, 0), (Values{6, 12, 12}));
    EXPECT_EQ(column(block, 2), (Values{61, 62, 63}));
    EXPECT_EQ(document->records()->partsRead(owner, asked, 600, 610).size(), 2U);
}

TEST_F(ComputedPropertyTest, AnOpenDocumentTakesUpWhatAnotherOneChanged)
{
    compute("Spread", "Supply - Return");
    const auto open = SiteDocument::open(site());
    recompute("Spread", "integral(Power)");
    open->reload();
    const auto& properties = open->agentNamed("Boiler")->siteProperties();
    EXPECT_EQ(properties.back()->description().formula->text, "integral(Power)");
    const RowId one[] = {properties.back()->description().id};
    EXPECT_EQ(column(*open->records()->read(open->agentNamed("Boiler")->id(), one, {}, {}), 0), (Values{0, 1, 2, 4}));
}

TEST_F(ComputedPropertyTest, AFileOfTheVersionBeforeIsReadAndUpgraded)
{
    {
        Database database(site(), siteSchema(), Database::Access::ReadWrite);
        database.execute("DROP TABLE outline; DROP TABLE outlined; DROP TABLE retired; DROP TABLE run; ALTER TABLE "
                         "summary DROP COLUMN whole; DROP TABLE "
                         "amendment; DROP TABLE "
                         "value_limit; DROP TABLE note; DROP TABLE note_property; "
                         "DROP TABLE formula;"
                         "PRAGMA user_version = 3");
    }
    EXPECT_EQ(values("Supply", 0, 0), (Values{60}));
    compute("Spread", "Supply - Return");
    EXPECT_EQ(values("Spread", 0, 0), (Values{20}));
}

TEST_F(ComputedPropertyTest, APreviewThatNobodyWaitsForEnds)
{
    int asked = 0;
    const FormulaPreview ended = previewOf(document->records(), document->formulaDirectory(), agent()->id(),
                                           {"integral(Power)"}, 0, 2, [&asked](double) { return ++asked > 100; });
    EXPECT_TRUE(ended.last.empty());
    EXPECT_GE(asked, 1);
}

TEST_F(ComputedPropertyTest, APreviewTellsWhatAFormulaComesToBeforeItIsStored)
{
    compute("Spread", "Supply - Return");
    const RowId boiler = agent()->id();
    const auto preview = [&](const char* formula, RowId property) {
        return previewOf(document->records(), document->formulaDirectory(), boiler, {formula}, property, 2);
    };
    EXPECT_EQ(preview("integral(Power)", 0).unit.toStdString(), "kWh");
    EXPECT_EQ(preview("integral(Power)", 0).last, (std::vector<std::pair<double, double>>{{1200, 2}, {1800, 4}}));
    EXPECT_EQ(preview("Spread * 2", 0).last.back(), (std::pair<double, double>{1800, 44}));
    EXPECT_EQ(preview("Supply - Roof.Air", id("Spread")).last.back(), (std::pair<double, double>{1800, 56}));
    EXPECT_FALSE(preview("Spread * 2", id("Spread")).failure.isEmpty());
    EXPECT_EQ(formula("Spread"), "Supply - Return");
}

}  // namespace
}  // namespace plotix
