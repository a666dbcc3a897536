#include "hostapp/document/ChangedMeanwhile.h"
#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"
#include "tests/records/clickhouse/ServerForTests.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace plotix {

namespace {

/// Two desks at one site on a server, which change the same thing.
class ChangedMeanwhileOnServerTest : public testing::Test {
protected:
    ChangedMeanwhileOnServerTest()
    {
        storeServer(address)->create();
        mine = deskIn(folder);
        SiteTransaction transaction(mine);
        agent = transaction.findOrCreateAgent("Boiler");
        property = transaction.findOrCreateProperty(agent, "Heat", "m").id;
        transaction.commit();
        note.from = note.to = 100;
        note.author = "Anna";
        note.text = "pump off";
        writeNote(mine, note);
        theirs = deskIn(other);
    }
    ~ChangedMeanwhileOnServerTest() override { qunsetenv("PLOTIX_DATA_HOME"); }

    QString deskIn(const QTemporaryDir& data)
    {
        qputenv("PLOTIX_DATA_HOME", data.path().toUtf8());
        return deskFileOf(address);
    }
    static SiteNote noteOf(const QString& desk) { return SiteDocument::open(desk)->notes().front(); }
    static SiteNote with(SiteNote note, const char* text)
    {
        note.text = QString::fromUtf8(text);
        return note;
    }
    std::vector<SiteLimit> limitAt(double value) const { return {{0, property, "high", value, "m"}}; }
    /// What is there now, as whoever comes second is told.
    template <class Kind, class Work>
    static Kind told(const Work& work)
    {
        try {
            work();
        } catch (const ChangedMeanwhile& changed) {
            return std::get<Kind>(changed.theirs());
        }
        ADD_FAILURE() << "the second one was stored over the first one";
        return {};
    }

    QTemporaryDir folder, other;
    const QString address = ServerForTests::running().newSite().text();
    QString mine, theirs;
    RowId agent = 0, property = 0;
    SiteNote note;
};

TEST_F(ChangedMeanwhileOnServerTest, WhoChangesANoteSecondIsToldWhatIsThereAndStoresNothing)
{
    const SiteNote seen = noteOf(mine);
    rewriteNote(theirs, noteOf(theirs), with(seen, "pump on again"));
    const SiteNote now = told<SiteNote>([&] { rewriteNote(mine, seen, with(seen, "pump broken")); });
    EXPECT_EQ(now.text, "pump on again");
    bringUpToDate(mine, address);
    EXPECT_EQ(noteOf(mine).text, "pump on again");
    rewriteNote(mine, now, with(now, "pump broken"));
    EXPECT_EQ(noteOf(mine).text, "pump broken");
}

TEST_F(ChangedMeanwhileOnServerTest, ANoteThatIsGoneIsTold)
{
    const SiteNote seen = noteOf(mine);
    removeNotes(theirs, {noteOf(theirs).id});
    told<std::monostate>([&] { rewriteNote(mine, seen, with(seen, "pump broken")); });
}

TEST_F(ChangedMeanwhileOnServerTest, WhoSetsLimitsSecondIsTold)
{
    replaceLimits(theirs, property, {}, limitAt(80));
    const auto now = told<std::vector<SiteLimit>>([&] { replaceLimits(mine, property, {}, limitAt(90)); });
    ASSERT_EQ(now.size(), 1U);
    EXPECT_EQ(now[0].value, 80);
    replaceLimits(mine, property, now, limitAt(90));
    EXPECT_EQ(SiteDocument::open(mine)->limits().front().value, 90);
}

TEST_F(ChangedMeanwhileOnServerTest, WhoChangesAFormulaSecondIsTold)
{
    computeProperty(mine, agent, {"Twice", {"Heat * 2"}});
    bringUpToDate(theirs, address);
    const auto seen = SiteDocument::open(mine)->agents().front()->siteProperties().back()->description();
    changeComputed(theirs, agent, {"Twice", {"Heat + Heat"}}, seen);
    const auto now = told<SiteProperty::Description>([&] {
        changeComputed(mine, agent, {"Twice", {"2 * Heat"}}, seen);
    });
    EXPECT_EQ(now.formula->text, "Heat + Heat");
    EXPECT_NO_THROW(changeComputed(mine, agent, {"Twice", {"2 * Heat"}}, now));
}

}  // namespace

}  // namespace plotix
