#include "hostapp/document/SiteEditing.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/ReplacedValues.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace plotix {

namespace {

using Values = std::vector<std::optional<double>>;

/// A site with an agent Roof of Air in °C and Wind, and a view of them.
class SiteEditingTest : public testing::Test {
protected:
    SiteEditingTest()
    {
        put("Roof", "Air", "°C", {1, 2, 3}, {10, 20, 30});
        put("Roof", "Wind", "m/s", {1, 2, 3}, {5, 6, 7});
    }

    QString site() const { return m_folder.filePath("site.plotix"); }

    void put(const char* agentName, const char* name, const char* unit, const std::vector<double>& times,
             const std::vector<double>& values)
    {
        SiteTransaction transaction(site());
        const RowId agent = transaction.findOrCreateAgent(agentName);
        const auto property = transaction.findOrCreateProperty(agent, name, unit);
        transaction.records().store(agent, {SharedArray<double>::fromVector(std::vector(times)),
                                            {{property.id, SharedArray<double>::fromVector(std::vector(values)), {}}}});
        transaction.commit();
    }
    /// So many that they are worked on in several parts.
    void putMany(const char* name)
    {
        std::vector<double> times, numbers;
        for (int i = 0; i < 40'000; ++i) {
            times.push_back(100 + i);
            numbers.push_back(std::sin(i) * 1e-3);
        }
        put("Roof", name, "°C", times, numbers);
    }
    std::shared_ptr<SiteAgent> agent(const char* name = "Roof") const
    {
        m_open = SiteDocument::open(site());
        return m_open->agentNamed(name);
    }
    RowId id(const char* property, const char* agentName = "Roof") const
    {
        const auto owner = agent(agentName);
        if (!owner)
            return 0;
        for (const auto& each : owner->siteProperties())
            if (each->name() == QLatin1String(property))
                return each->description().id;
        return 0;
    }
    /// At every time of the agent; nothing where there is no value.
    Values values(const char* property, const char* agentName = "Roof") const
    {
        const RowId which = id(property, agentName);
        const auto block = recordsOfSite(site())->read(agent(agentName)->id(), std::span(&which, 1), {}, {});
        Values found;
        for (std::size_t i = 0; i < block->times.size(); ++i)
            found.push_back(block->columns[0].validity.isValid(i) ? std::optional(block->columns[0].values[i])
                                                                  : std::nullopt);
        return found;
    }
    /// Stores a view of these properties' keys.
    void addView(const std::vector<const char*>& names)
    {
        const auto owner = agent();
        Encoder encoder(owner->uniqueIdentifier());
        KTVPropertyList list;
        for (const char* name : names)
            for (const auto& each : owner->siteProperties())
                if (each->name() == QLatin1String(name))
                    list.push_back(each);
        encoder.encodeProperties("tables", list);
        encoder.encodeValue("agent", owner->uniqueIdentifier());
        m_open->storePlugIn({0, "View", encoder.data()});
    }
    /// Names of what the view shows; those that are gone in brackets.
    QStringList shown() const
    {
        const auto document = SiteDocument::open(site());
        QStringList names;
        for (const ArchivedPlugIn& plugIn : document->archivedPlugIns()) {
            const Decoder decoder(
                plugIn.state, {[&](const QString& identifier) { return document->agentWithIdentifier(identifier); }});
            const std::optional<KTVPropertyList> listed = decoder.decodeProperties("tables");
            EXPECT_TRUE(listed);
            const KTVPropertyList properties = listed.value_or(KTVPropertyList{});
            for (const KTVPropertyPtr& each : properties) {
                const auto* stored = dynamic_cast<const SiteProperty*>(each.get());
                names << (stored->description().id > 0 ? each->name() : '(' + each->name() + ')');
            }
        }
        return names;
    }
    void expectAsBefore() const
    {
        EXPECT_EQ(values("Air"), (Values{10, 20, 30}));
        EXPECT_EQ(values("Wind"), (Values{5, 6, 7}));
        EXPECT_TRUE(recordsOfSite(site())->verify().isSound());
    }

private:
    QTemporaryDir m_folder;
    mutable std::shared_ptr<SiteDocument> m_open;
};

TEST_F(SiteEditingTest, ARenamedPropertyKeepsItsValues)
{
    renameProperty(site(), id("Air"), "Outdoor Air");
    EXPECT_EQ(values("Outdoor Air"), (Values{10, 20, 30}));
    EXPECT_EQ(agent()->siteProperties()[0]->propertyName(), "outdoorAir");
}

TEST_F(SiteEditingTest, ViewsOfARenamedPropertyGoOn)
{
    addView({"Wind", "Air"});
    renameProperty(site(), id("Air"), "Outdoor Air");
    EXPECT_EQ(shown(), (QStringList{"Wind", "Outdoor Air"}));
}

TEST_F(SiteEditingTest, WhatComesUnderTheOldNameGoesToTheRenamedProperty)
{
    renameProperty(site(), id("Air"), "Outdoor Air");
    renameAgent(site(), agent()->id(), "Mast");
    put("Roof", "Air", "°C", {4}, {40});
    EXPECT_EQ(values("Outdoor Air", "Mast"), (Values{10, 20, 30, 40}));
    EXPECT_FALSE(agent("Roof"));
}

TEST_F(SiteEditingTest, ANameThatIsTakenOrEmptyIsRefused)
{
    EXPECT_THROW(renameProperty(site(), id("Air"), "wind"), ReportableError);
    EXPECT_THROW(renameProperty(site(), id("Air"), "  "), ReportableError);
    EXPECT_THROW(renameProperty(site(), id("Air"), "Time"), ReportableError);
    put("Cellar", "Air", "°C", {1}, {8});
    EXPECT_THROW(renameAgent(site(), agent()->id(), "Cellar"), ReportableError);
    EXPECT_TRUE(editSteps(site()).empty());
    expectAsBefore();
}

TEST_F(SiteEditingTest, RenamingIsUndone)
{
    addView({"Air"});
    renameProperty(site(), id("Air"), "Outdoor Air");
    EXPECT_EQ(undoLastEdit(site()).kind, EditStep::Kind::Rename);
    EXPECT_EQ(shown(), QStringList{"Air"});
    expectAsBefore();
    EXPECT_THROW(undoLastEdit(site()), ReportableError);
}

TEST_F(SiteEditingTest, MergingFillsWhatTheOtherLacks)
{
    put("Roof", "Temperature", "°F", {3, 4, 5}, {86, 50, 68});
    const EditOutcome outcome = mergeProperties(site(), id("Temperature"), id("Air"));
    EXPECT_EQ(outcome.values, 2U);
    EXPECT_EQ(outcome.conflicts, 0U);
    ASSERT_EQ(values("Air").size(), 5U);
    EXPECT_NEAR(*values("Air")[3], 10, 1e-9);
    EXPECT_NEAR(*values("Air")[4], 20, 1e-9);
    EXPECT_EQ(id("Temperature"), 0);
}

TEST_F(SiteEditingTest, WhereBothHaveValuesTheOtherKeepsItsOwn)
{
    put("Roof", "Temperature", "°C", {2, 9}, {77, 90});
    const EditOutcome outcome = mergeProperties(site(), id("Temperature"), id("Air"));
    EXPECT_EQ(outcome.conflicts, 1U);
    EXPECT_EQ(values("Air"), (Values{10, 20, 30, 90}));
}

TEST_F(SiteEditingTest, ViewsOfAMergedPropertyShowTheOtherOnce)
{
    put("Roof", "Temperature", "°C", {9}, {90});
    addView({"Temperature", "Wind", "Air"});
    mergeProperties(site(), id("Temperature"), id("Air"));
    EXPECT_EQ(shown(), (QStringList{"Air", "Wind"}));
}

TEST_F(SiteEditingTest, UnitsThatDoNotConvertAreNotMerged)
{
    EXPECT_THROW(mergeProperties(site(), id("Wind"), id("Air")), ReportableError);
    EXPECT_THROW(mergeProperties(site(), id("Air"), id("Air")), ReportableError);
    expectAsBefore();
}

TEST_F(SiteEditingTest, MergingIsUndone)
{
    put("Roof", "Temperature", "°C", {2, 9}, {77, 90});
    addView({"Temperature"});
    mergeProperties(site(), id("Temperature"), id("Air"));
    undoLastEdit(site());
    EXPECT_EQ(values("Air"), (Values{10, 20, 30, std::nullopt}));
    EXPECT_EQ(values("Temperature"), (Values{std::nullopt, 77, std::nullopt, 90}));
    EXPECT_EQ(shown(), QStringList{"Temperature"});
}

TEST_F(SiteEditingTest, AgentsMergePropertyByProperty)
{
    put("Mast", "Air", "°F", {4}, {50});
    put("Mast", "Rain", "mm", {4, 5}, {1, 2});
    mergeAgents(site(), agent("Mast")->id(), agent("Roof")->id());
    EXPECT_FALSE(agent("Mast"));
    EXPECT_EQ(values("Rain"), (Values{std::nullopt, std::nullopt, std::nullopt, 1, 2}));
    EXPECT_NEAR(*values("Air")[3], 10, 1e-9);
    put("Mast", "Rain", "mm", {6}, {3});
    EXPECT_EQ(values("Rain").back(), 3);
    EXPECT_TRUE(recordsOfSite(site())->verify().isSound());
}

TEST_F(SiteEditingTest, WhatComesUnderTheNamesOfAMergedPropertyGoesToTheOther)
{
    put("Roof", "Temperature", "°C", {9}, {90});
    renameProperty(site(), id("Temperature"), "Warmth");
    mergeProperties(site(), id("Warmth"), id("Air"));
    put("Roof", "Warmth", "°C", {10}, {100});
    put("Roof", "Temperature", "°C", {11}, {110});
    EXPECT_EQ(values("Air"), (Values{10, 20, 30, 90, 100, 110}));
}

TEST_F(SiteEditingTest, WhatComesUnderTheNamesOfAMergedAgentGoesToTheOther)
{
    put("Mast", "Rain", "mm", {4}, {1});
    put("Mast", "Temperature", "°C", {4}, {40});
    renameProperty(site(), id("Rain", "Mast"), "Rainfall");
    renameAgent(site(), agent("Mast")->id(), "Pole");
    mergeAgents(site(), agent("Pole")->id(), agent("Roof")->id());
    put("Mast", "Rain", "mm", {5}, {2});
    put("Pole", "Rainfall", "mm", {6}, {3});
    EXPECT_FALSE(agent("Mast") || agent("Pole"));
    EXPECT_EQ(values("Rainfall"), (Values{std::nullopt, std::nullopt, std::nullopt, 1, 2, 3}));
}

TEST_F(SiteEditingTest, WhatComesUnderTheOldNameOfADeletedPropertyIsAnew)
{
    renameProperty(site(), id("Air"), "Outdoor Air");
    deleteProperty(site(), id("Outdoor Air"));
    put("Roof", "Air", "°C", {4}, {40});
    EXPECT_EQ(values("Air"), (Values{std::nullopt, std::nullopt, std::nullopt, 40}));
}

TEST_F(SiteEditingTest, MergingAgentsIsUndone)
{
    put("Mast", "Air", "°C", {4}, {40});
    put("Mast", "Rain", "mm", {4, 5}, {1, 2});
    addView({"Air"});
    mergeAgents(site(), agent("Roof")->id(), agent("Mast")->id());
    EXPECT_EQ(shown(), QStringList{"Air"});
    undoLastEdit(site());
    expectAsBefore();
    EXPECT_EQ(values("Rain", "Mast"), (Values{1, 2}));
    EXPECT_EQ(shown(), QStringList{"Air"});
}

TEST_F(SiteEditingTest, ADeletedPropertyGoesWithItsValues)
{
    EXPECT_EQ(deleteProperty(site(), id("Air")).values, 3U);
    EXPECT_EQ(id("Air"), 0);
    EXPECT_EQ(values("Wind"), (Values{5, 6, 7}));
    EXPECT_TRUE(recordsOfSite(site())->verify().isSound());
    undoLastEdit(site());
    expectAsBefore();
}

TEST_F(SiteEditingTest, ADeletedAgentTakesItsViewsAlongAndUndoBringsThemBack)
{
    addView({"Air", "Wind"});
    deleteAgent(site(), agent()->id());
    EXPECT_FALSE(agent());
    EXPECT_EQ(shown(), QStringList());
    EXPECT_FALSE(recordsOfSite(site())->extent());
    undoLastEdit(site());
    EXPECT_EQ(shown(), (QStringList{"Air", "Wind"}));
    expectAsBefore();
}

TEST_F(SiteEditingTest, ValuesOfASpanAreTakenOutAndComeBack)
{
    EXPECT_EQ(removeValues(site(), agent()->id(), {id("Air")}, 2, 2).values, 1U);
    EXPECT_EQ(values("Air"), (Values{10, std::nullopt, 30}));
    EXPECT_EQ(values("Wind"), (Values{5, 6, 7}));
    undoLastEdit(site());
    expectAsBefore();
}

TEST_F(SiteEditingTest, RecordsWithoutAnyValueLeftGo)
{
    removeValues(site(), agent()->id(), {id("Air"), id("Wind")}, 2, {});
    EXPECT_EQ(values("Air"), Values{10});
    undoLastEdit(site());
    expectAsBefore();
}

TEST_F(SiteEditingTest, StepsAreUndoneFromTheLastOneOn)
{
    removeValues(site(), agent()->id(), {id("Air")}, 1, 1);
    renameProperty(site(), id("Wind"), "Gusts");
    deleteProperty(site(), id("Air"));
    EXPECT_EQ(editSteps(site()).size(), 3U);
    for (int i = 0; i < 3; ++i)
        undoLastEdit(site());
    expectAsBefore();
}

TEST_F(SiteEditingTest, OnlyTheLatestStepsAreKept)
{
    for (int i = 0; i < EditJournal::kMostSteps + 3; ++i)
        renameProperty(site(), id(i % 2 == 0 ? "Air" : "Luft"), i % 2 == 0 ? "Luft" : "Air");
    EXPECT_EQ(editSteps(site()).size(), std::size_t{EditJournal::kMostSteps});
}

TEST_F(SiteEditingTest, ManyRecordsComeBackBitForBit)
{
    putMany("Air");
    const Values before = values("Air");
    removeValues(site(), agent()->id(), {id("Air")}, 5'000, 35'000);
    EXPECT_NE(values("Air"), before);
    undoLastEdit(site());
    EXPECT_EQ(values("Air"), before);
}

TEST_F(SiteEditingTest, ProgressRisesToTheEnd)
{
    putMany("Outside");
    std::vector<double> fractions;
    mergeProperties(site(), id("Outside"), id("Air"), [&](double fraction) {
        fractions.push_back(fraction);
        return true;
    });
    EXPECT_GT(fractions.size(), 8U);
    EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
    EXPECT_EQ(fractions.back(), 1);
}

TEST_F(SiteEditingTest, WhateverIsCancelledLeavesTheSiteAsItWas)
{
    putMany("Outside");
    const Values air = values("Air"), outside = values("Outside");
    const RowId roof = agent()->id(), from = id("Outside"), into = id("Air");
    const auto late = [](double fraction) { return fraction < 0.7; };
    EXPECT_THROW(mergeProperties(site(), from, into, late), EditCancelled);
    EXPECT_THROW(deleteProperty(site(), from, late), EditCancelled);
    EXPECT_THROW(deleteAgent(site(), roof, late), EditCancelled);
    EXPECT_THROW(removeValues(site(), roof, {from}, {}, {}, late), EditCancelled);
    EXPECT_EQ(values("Air"), air);
    EXPECT_EQ(values("Outside"), outside);
    EXPECT_TRUE(editSteps(site()).empty());
}

TEST_F(SiteEditingTest, AnUndoThatIsCancelledMayBeTriedAgain)
{
    putMany("Outside");
    const Values outside = values("Outside");
    deleteProperty(site(), id("Outside"));
    EXPECT_THROW(undoLastEdit(site(), [](double fraction) { return fraction < 0.7; }), EditCancelled);
    EXPECT_EQ(id("Outside"), 0);
    ASSERT_EQ(editSteps(site()).size(), 1U);
    undoLastEdit(site());
    EXPECT_EQ(values("Outside"), outside);
}

TEST_F(SiteEditingTest, ReplacedValuesAreThoseThatWouldDiffer)
{
    const auto block = [&](std::vector<double> times, std::vector<double> air) {
        return RecordBlock{SharedArray<double>::fromVector(std::move(times)),
                           {{id("Air"), SharedArray<double>::fromVector(std::move(air)), {}}}};
    };
    const RowId roof = agent()->id();
    const auto store = recordsOfSite(site());
    EXPECT_EQ(replacedValues(*store, roof, block({1, 2, 3}, {10, 21, 30})).values, 1U);
    EXPECT_EQ(replacedValues(*store, roof, block({1, 2, 3}, {10, 21, 30})).properties, 1U);
    EXPECT_EQ(replacedValues(*store, roof, block({1, 2, 3}, {10, 20, 30})).values, 0U);
    EXPECT_EQ(replacedValues(*store, roof, block({0, 2.5, 4}, {1, 1, 1})).values, 0U);
}

TEST_F(SiteEditingTest, WhatFillsAGapReplacesNothing)
{
    put("Roof", "Rain", "mm", {2}, {1});
    const RecordBlock block{SharedArray<double>::fromVector({1, 2, 3}),
                            {{id("Rain"), SharedArray<double>::fromVector({7, 8, 9}), {}}}};
    EXPECT_EQ(replacedValues(*recordsOfSite(site()), agent()->id(), block).values, 1U);
}

}  // namespace

}  // namespace plotix
