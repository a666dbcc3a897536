#include "hostapp/document/AnnotationEditing.h"

#include "base/ReportableError.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace plotix {

namespace {

/// A site with an agent Roof of Air in °C and Wind, and an agent Cellar of Air.
class AnnotationEditingTest : public testing::Test {
protected:
    AnnotationEditingTest()
    {
        SiteTransaction transaction(site());
        for (const auto& [agent, property, unit] :
             {std::tuple("Roof", "Air", "°C"), std::tuple("Roof", "Wind", "m/s"), std::tuple("Cellar", "Air", "K")})
            transaction.findOrCreateProperty(transaction.findOrCreateAgent(agent), property, unit);
        transaction.commit();
        open();
    }

    QString site() const { return m_folder.filePath("site.plotix"); }
    void open() { document = SiteDocument::open(site()); }
    std::shared_ptr<SiteProperty> property(const char* name, const char* agent = "Roof") const
    {
        for (const auto& each : document->agentNamed(agent)->siteProperties())
            if (each->name() == QLatin1String(name))
                return each;
        return nullptr;
    }
    RowId id(const char* name, const char* agent = "Roof") const { return property(name, agent)->description().id; }

    void setLimit(const char* name, double value, const char* unit = "°C", const char* of = "Air",
                  const char* agent = "Roof")
    {
        changeLimits(site(), id(of, agent), [&](std::vector<SiteLimit>& limits) {
            limits.push_back({0, 0, name, value, unit, KTVLimit::Side::Above, KTVLimit::Severity::Alarm});
        });
        open();
    }
    qint64 write(const char* text, double from = 10, std::optional<double> to = {}, std::vector<qint64> properties = {})
    {
        qint64 made = 0;
        writeNote(site(), {0, from, to.value_or(from), "Ada", text, std::move(properties)}, &made);
        open();
        return made;
    }
    void undo()
    {
        undoLastEdit(site());
        open();
    }
    QStringList limits(const char* of = "Air", const char* agent = "Roof") const
    {
        QStringList told;
        for (const KTVLimit& limit :
             document->agentNamed(agent)->annotations()->limitsOf(property(of, agent)->propertyName()))
            told << QStringLiteral("%1 %2").arg(limit.name).arg(limit.value);
        return told;
    }
    QStringList notes(const char* agent = "Roof") const
    {
        QStringList told;
        for (const KTVNote& note : document->agentNamed(agent)->annotations()->notes())
            told << note.text;
        return told;
    }
    QByteArray bytes() const
    {
        QFile file(site());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// As a program of the version before left it.
    void makeOlder()
    {
        document.reset();
        Database database(site(), siteSchema(), Database::Access::ReadWrite);
        database.execute("DROP TABLE outline; DROP TABLE outlined; DROP TABLE retired; DROP TABLE run; ALTER TABLE "
                         "summary DROP COLUMN whole; DROP TABLE "
                         "amendment; DROP TABLE "
                         "value_limit; DROP TABLE note; DROP TABLE note_property; "
                         "PRAGMA user_version = 4");
    }

    std::shared_ptr<SiteDocument> document;

private:
    QTemporaryDir m_folder;
};

TEST_F(AnnotationEditingTest, ALimitIsToldInTheUnitOfTheMoment)
{
    setLimit("high", 60);
    EXPECT_EQ(limits(), QStringList("high 60"));
    property("Air")->setUnit("K");
    EXPECT_EQ(limits(), QStringList("high 333.15"));
}

TEST_F(AnnotationEditingTest, APropertyHasSeveralLimitsAndOthersHaveNone)
{
    setLimit("warning", 50);
    setLimit("alarm", 60);
    EXPECT_EQ(limits(), QStringList({"warning 50", "alarm 60"}));
    EXPECT_EQ(limits("Wind"), QStringList());
}

TEST_F(AnnotationEditingTest, ALimitWhoseNameIsTakenIsRefusedAndNothingChanges)
{
    setLimit("high", 60);
    EXPECT_THROW(setLimit("HIGH", 70), ReportableError);
    EXPECT_THROW(setLimit(" ", 70), ReportableError);
    EXPECT_EQ(limits(), QStringList("high 60"));
}

TEST_F(AnnotationEditingTest, LimitsThatChangeNamesPassEachOther)
{
    setLimit("high", 60);
    setLimit("low", 50);
    changeLimits(site(), id("Air"), [](std::vector<SiteLimit>& all) { std::swap(all[0].name, all[1].name); });
    open();
    EXPECT_EQ(limits(), QStringList({"low 60", "high 50"}));
}

TEST_F(AnnotationEditingTest, ALimitIsUndone)
{
    setLimit("high", 60);
    setLimit("higher", 70);
    undo();
    EXPECT_EQ(limits(), QStringList("high 60"));
}

TEST_F(AnnotationEditingTest, LimitsGoWithTheirPropertyAndComeBackWithIt)
{
    setLimit("high", 60);
    deleteProperty(site(), id("Air"));
    open();
    EXPECT_TRUE(document->limits().empty());
    undo();
    EXPECT_EQ(limits(), QStringList("high 60"));
}

TEST_F(AnnotationEditingTest, LimitsFollowWhatTheirPropertyIsMergedInto)
{
    setLimit("high", 60);
    setLimit("high", 330, "K", "Air", "Cellar");
    setLimit("low", 270, "K", "Air", "Cellar");
    write("cold", 10, 10, {id("Air", "Cellar")});
    mergeAgents(site(), document->agentNamed("Cellar")->id(), document->agentNamed("Roof")->id());
    open();
    ASSERT_EQ(limits().size(), 3);
    EXPECT_EQ(limits()[0], "high 60");
    EXPECT_TRUE(limits()[1].startsWith("high 2 56.85"));
    EXPECT_TRUE(limits()[2].startsWith("low -3.15"));
    EXPECT_EQ(notes(), QStringList("cold"));
}

TEST_F(AnnotationEditingTest, ANoteIsToldToTheAgentsItIsAbout)
{
    write("all", 30);
    write("wind", 20, 25, {id("Wind")});
    EXPECT_EQ(notes(), QStringList({"wind", "all"}));
    EXPECT_EQ(notes("Cellar"), QStringList("all"));
    EXPECT_EQ(document->agentNamed("Roof")->annotations()->notes()[0].propertyNames, QStringList("wind"));
}

TEST_F(AnnotationEditingTest, AChangedNoteKeepsWhenItWasCreated)
{
    const qint64 made = write("frist");
    const SiteNote before = document->notes().front();
    SiteNote changed = before;
    changed.text = "first";
    writeNote(site(), changed);
    open();
    ASSERT_EQ(document->notes().size(), 1U);
    EXPECT_EQ(document->notes().front().id, made);
    EXPECT_EQ(document->notes().front().created, before.created);
    EXPECT_GE(document->notes().front().modified, before.modified);
    undo();
    EXPECT_EQ(notes(), QStringList("frist"));
}

TEST_F(AnnotationEditingTest, ANoteIsDeletedAndComesBack)
{
    const qint64 made = write("storm", 10, 20, {id("Wind")});
    removeNotes(site(), {made});
    open();
    EXPECT_EQ(notes(), QStringList());
    undo();
    EXPECT_EQ(notes(), QStringList("storm"));
    EXPECT_EQ(document->notes().front().properties, std::vector<qint64>{id("Wind")});
}

TEST_F(AnnotationEditingTest, ANoteNeedsATextAndASpanThatEndsAfterItBegins)
{
    EXPECT_THROW(write("  "), ReportableError);
    EXPECT_THROW(write("back", 10, 9), ReportableError);
    EXPECT_THROW(removeNotes(site(), {99}), ReportableError);
    EXPECT_TRUE(editSteps(site()).empty());
}

TEST_F(AnnotationEditingTest, ANoteOutlivesTheOnlyPropertyItIsAbout)
{
    write("wind", 20, 25, {id("Wind")});
    deleteProperty(site(), id("Wind"));
    open();
    EXPECT_EQ(document->notes().size(), 1U);
    EXPECT_EQ(notes(), QStringList());  // and is not about all of them now
}

TEST_F(AnnotationEditingTest, AnOpenDocumentTellsOfNotesThatOthersWrote)
{
    const auto opened = document;
    int told = 0;
    QObject::connect(opened->agentNamed("Roof")->annotations(), &KTVAnnotations::changed, [&told] { ++told; });
    write("storm");
    opened->reload();
    opened->reload();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(opened->notes().size(), 1U);
}

TEST_F(AnnotationEditingTest, NotesOfASpanAreThoseThatOverlapIt)
{
    write("all", 30);
    write("wind", 20, 25, {id("Wind")});
    const auto within = [&](double from, double to, const char* name) {
        return notesWithin(document->notes(), from, to, {id(name)}).size();
    };
    EXPECT_EQ(within(25, 30, "Wind"), 2U);
    EXPECT_EQ(within(25, 30, "Air"), 1U);
    EXPECT_EQ(within(26, 29, "Wind"), 0U);
}

TEST_F(AnnotationEditingTest, AFileOfTheVersionBeforeHasNoneAndTakesSome)
{
    makeOlder();
    open();
    EXPECT_TRUE(document->limits().empty() && document->notes().empty());
    setLimit("high", 60);
    EXPECT_EQ(limits(), QStringList("high 60"));
}

TEST_F(AnnotationEditingTest, AnOlderFileThatMayOnlyBeReadIsLeftAsItIs)
{
    makeOlder();
    const QByteArray before = bytes();
    {
        const Database database(site(), siteSchema(), Database::Access::ReadOnly);
        EXPECT_TRUE(storedLimits(database).empty());
        EXPECT_TRUE(storedNotes(database).empty());
    }
    EXPECT_EQ(bytes(), before);
}

}  // namespace
}  // namespace plotix
