#include "TrendViewFixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

// What stands already, and what does not yet, at each step of the view's setup, of its end and of its decoding.

namespace {

/// A property that lets a test look at the moment it is observed, and no longer observed.
class WatchedProperty : public fakehost::FakeProperty {
public:
    using FakeProperty::FakeProperty;
    void addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context) override
    {
        if (whenAdded)
            std::exchange(whenAdded, {})();
        FakeProperty::addObserver(observer, key, context);
    }
    void removeObserver(KTVPropertyObserver* observer, const QString& key) override
    {
        if (whenRemoved)
            std::exchange(whenRemoved, {})();
        FakeProperty::removeObserver(observer, key);
    }

    std::function<void()> whenAdded, whenRemoved;
};

class TrendViewOrder : public TrendViewFixture {
protected:
    ~TrendViewOrder() override { KTVHostServices::install(m_services); }

    void makeWatchedTrend()
    {
        adopt(KTVPlotixPlugIn::initWithAgent(agent(), &host().siteWindowController(), KTVPropertyList{watched},
                                             plotix::Date{kFrom}, plotix::Date{kTo}));
    }
    void whenTheOverlayIsMade(const std::function<void()>& look)
    {
        KTVHostServices services = m_services;
        services.makeMessageViewController = [look, make = m_services.makeMessageViewController] {
            look();
            return make();
        };
        KTVHostServices::install(services);
    }
    void whenFetching(const std::function<void()>& look)
    {
        host().archiveManager().answerFetchesWith([look](const auto&) {
            look();
            return Answer{};
        });
    }

    std::shared_ptr<WatchedProperty> watched = std::make_shared<WatchedProperty>(
        WatchedProperty::Description{.name = "Air Temperature", .unit = "degC"}, host().units());

private:
    KTVHostServices m_services = KTVHostServices::installed();
};

/// Looks when the date panel joins the view.
class PanelWatcher : public QObject {
public:
    PanelWatcher(KTVPlotixPlugIn& trend, std::function<void()> look) : m_trend(trend), m_look(std::move(look))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (m_look && event->type() == QEvent::ParentChange && watched == m_trend.dataClusterViewController()->view())
            std::exchange(m_look, {})();
        return false;
    }

private:
    KTVPlotixPlugIn& m_trend;
    std::function<void()> m_look;
};

TEST_F(TrendViewOrder, OverlayIsMadeBetweenTheDelegatesOfGraphAndDrops)
{
    makeTrend();
    bool hasKeyDelegate = false, hasDropDelegate = true;
    int made = 0;
    whenTheOverlayIsMade([&] {
        ++made;
        hasKeyDelegate = trend().hostView()->keyDelegate() != nullptr;
        hasDropDelegate = trend().dragDropView()->delegate() != nullptr;
    });
    open();
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(hasKeyDelegate);
    EXPECT_FALSE(hasDropDelegate);
}

TEST_F(TrendViewOrder, PropertiesAreObservedAfterTheDropDelegateAndBeforeTheButtonIsSet)
{
    makeWatchedTrend();
    bool hasOverlay = false, hasDropDelegate = false, isButtonSet = true;
    watched->whenAdded = [&] {
        hasOverlay = trend().messageViewController() != nullptr;
        hasDropDelegate = trend().dragDropView()->delegate() != nullptr;
        isButtonSet = trend().propertyDetailsDisclosureButton()->isChecked();
    };
    open();
    EXPECT_TRUE(hasOverlay);
    EXPECT_TRUE(hasDropDelegate);
    EXPECT_FALSE(isButtonSet);
}

TEST_F(TrendViewOrder, PanelJoinsAfterTheButtonIsSetAndBeforeItGetsTheDates)
{
    makeWatchedTrend();
    bool isButtonSet = false, isObserved = false;
    plotix::OptionalDate date;
    const PanelWatcher watcher(trend(), [&] {
        isButtonSet = trend().propertyDetailsDisclosureButton()->isChecked();
        isObserved = watched->observationCount() == 2;
        date = panel().fromDateValue();
    });
    open();
    EXPECT_TRUE(isButtonSet);
    EXPECT_TRUE(isObserved);
    ASSERT_TRUE(date.has_value());
    EXPECT_NE(date, plotix::Date{kFrom});
}

TEST_F(TrendViewOrder, AllButTheSharingButtonIsInPlaceAtTheFirstFetch)
{
    makeWatchedTrend();
    bool hasOverlay = false, isPanelThere = false;
    std::size_t observations = 0;
    plotix::OptionalDate from, to;
    whenFetching([&] {
        hasOverlay = trend().messageViewController() != nullptr;
        isPanelThere = panel().view()->parentWidget() == trend().dataClusterHostView();
        observations = watched->observationCount();
        from = panel().fromDateValue();
        to = panel().toDateValue();
        emit trend().sharingButton()->pressed();
    });
    open();
    EXPECT_TRUE(hasOverlay);
    EXPECT_TRUE(isPanelThere);
    EXPECT_EQ(observations, 2U);
    EXPECT_EQ(from, plotix::Date{kFrom});
    EXPECT_EQ(to, plotix::Date{kTo});
    EXPECT_TRUE(desktop().sharings().empty());
}

TEST_F(TrendViewOrder, LoneFromDateIsFetchedWithThePanelsOwnEnd)
{
    adopt(KTVPlotixPlugIn::initWithAgent(agent(), nullptr, KTVPropertyList{}, plotix::Date{kFrom}, std::nullopt));
    const plotix::OptionalDate tomorrow = panel().toDateValue();
    open();
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom});
    EXPECT_EQ(lastFetch().toDate, tomorrow);
}

TEST_F(TrendViewOrder, LoneToDateIsFetchedWithThePanelsOwnStart)
{
    adopt(KTVPlotixPlugIn::initWithAgent(agent(), nullptr, KTVPropertyList{}, std::nullopt, plotix::Date{4e9}));
    const plotix::OptionalDate today = panel().fromDateValue();
    open();
    EXPECT_EQ(lastFetch().fromDate, today);
    EXPECT_EQ(lastFetch().toDate, plotix::Date{4e9});
}

TEST_F(TrendViewOrder, DecodedViewFetchesTheDatesOfItsPanel)
{
    openTrend();
    panel().setFromDateValue(plotix::Date{kFrom + 0.25});
    adopt(encodedAndDecoded());
    open();
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 0.25});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo});
}

TEST_F(TrendViewOrder, AddedPropertyIsObservedBeforeItIsFetched)
{
    openTrendWithData();
    std::size_t observations = 0;
    whenFetching([&] { observations = host().agent()->property("wind")->observationCount(); });
    trend().addProperties({"wind"});
    EXPECT_EQ(observations, 2U);
}

TEST_F(TrendViewOrder, RemovedPropertyIsListedUntilItsObservationEnds)
{
    makeWatchedTrend();
    open();
    std::size_t listed = 0;
    watched->whenRemoved = [&] { listed = trend().properties()->size(); };
    trend().removePropertiesAndRefresh({"Air Temperature"});
    EXPECT_EQ(listed, 1U);
    EXPECT_TRUE(trend().properties()->empty());
}

// The end.

TEST_F(TrendViewOrder, PanelThatSomebodyKeepsHasLeftTheView)
{
    openTrend();
    const KTVDataClusterViewController::Pointer kept = trend().dataClusterViewController();
    releaseTrend();
    ASSERT_NE(kept->view(), nullptr);
    EXPECT_EQ(kept->view()->parentWidget(), nullptr);
    EXPECT_EQ(kept->delegate(), nullptr);
}

TEST_F(TrendViewOrder, OverlayAndPanelLeaveBeforeTheObserversAndTheGraphAfterThem)
{
    makeWatchedTrend();
    open();
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {20, 21}));
    const auto kept = trend().dataClusterViewController();
    const CPTXYGraphPtr graph = trend().graph();
    bool hadOverlay = true, hadPanel = true, hadGraph = false;
    watched->whenRemoved = [&] {
        hadOverlay = host().lastMessageViewController() != nullptr;
        hadPanel = kept->view() && kept->view()->parentWidget();
        hadGraph = graph->fill() != CPTFill::none();
    };
    releaseTrend();
    EXPECT_FALSE(hadOverlay);
    EXPECT_FALSE(hadPanel);
    EXPECT_TRUE(hadGraph);
    EXPECT_EQ(graph->fill(), CPTFill::none());
}

TEST_F(TrendViewOrder, ObserversGoWhileAgentAndPropertiesExist)
{
    makeWatchedTrend();
    open();
    const KTVPlotixPlugIn* ending = &trend();
    bool hadAgent = false, hadProperties = false;
    watched->whenRemoved = [&] {
        hadAgent = ending->agent() != nullptr;
        hadProperties = ending->properties().has_value();
    };
    releaseTrend();
    EXPECT_TRUE(hadAgent);
    EXPECT_TRUE(hadProperties);
}

// Archives.

/// Decodes as another one does, and keeps the keys it was asked for.
class ListeningDecoder : public KTVDecoder {
public:
    explicit ListeningDecoder(const KTVDecoder& other) : m_other(other) {}

    bool containsKey(const QString& key) const override { return m_other.containsKey(heard(key)); }
    bool decodeBool(const QString& key) const override { return m_other.decodeBool(heard(key)); }
    QVariant decodeValue(const QString& key) const override { return m_other.decodeValue(heard(key)); }
    bool decodeObject(const QString& key, const std::function<void(plotix::KeyedDecoder&)>& read) const override
    {
        return m_other.decodeObject(heard(key), read);
    }
    std::optional<KTVPropertyList> decodeProperties(const QString& key) const override
    {
        return m_other.decodeProperties(heard(key));
    }
    KTVAgentPtr agentWithIdentifier(const QString& name) const override { return m_other.agentWithIdentifier(name); }
    KTVSiteWindowController* siteWindowController() const override { return m_other.siteWindowController(); }

    mutable QStringList keys;  ///< each once, in the order first asked for

private:
    const QString& heard(const QString& key) const
    {
        if (!keys.contains(key))
            keys.append(key);
        return key;
    }
    const KTVDecoder& m_other;
};

TEST_F(TrendViewOrder, KeysAreReadInTheOrderTheyAreWrittenIn)
{
    openTrendWithData();
    const fakehost::FakeArchive archive = archived();
    const fakehost::FakeDecoder decoder = host().decoder(archive);
    ListeningDecoder listening(decoder);
    ASSERT_NE(KTVPlotixPlugIn::initWithCoder(listening), nullptr);
    // Whatever was chosen beyond these is asked for as well, and was not written.
    listening.keys.removeIf([&](const QString& key) { return !archive.contains(key); });
    const auto own = [](const QStringList& keys) { return keys.mid(keys.indexOf("tables")); };
    EXPECT_EQ(own(listening.keys), own(archive.keys()));
}

// Names inside the values are stored too: renamed on both sides they would still come back from a new archive.
TEST_F(TrendViewOrder, NamesInsideTheArchivedValuesAreStored)
{
    openTrendWithData();
    const fakehost::FakeArchive archive = archived();
    EXPECT_EQ(archive.object("plotRangeForY")->keys(), (QStringList{"location", "length"}));
    EXPECT_EQ(archive.object("dataClusterViewController")->keys(), (QStringList{"fromDate", "toDate"}));
    const QVariantMap layout = archive.value("tableColumns").toMap();
    EXPECT_EQ(layout.keys(), (QStringList{"columns", "sortAscending", "sortColumn"}));
    EXPECT_EQ(layout["columns"].toList().at(2).toMap().keys(), (QStringList{"identifier", "width"}));
    EXPECT_EQ(layout["columns"].toList().at(2).toMap()["identifier"], "tableName");
}

TEST_F(TrendViewOrder, AbsentListIsWrittenAsAnEmptyOne)
{
    makeTrendWithoutTables();
    const auto tables = archived().properties("tables");
    ASSERT_TRUE(tables.has_value());
    EXPECT_TRUE(tables->empty());
}

/// An archive that has lost one key.
class TrendArchiveWithout : public TrendViewFixture, public testing::WithParamInterface<const char*> {};

TEST_P(TrendArchiveWithout, KeepsEveryOtherKeyAndTakesItsFallback)
{
    openTrendWithData();
    panel().setFromDateValue(plotix::Date{kFrom - 60});
    fakehost::FakeArchive archive = archived();
    const QString missing = GetParam();
    archive.remove(missing);
    fakehost::FakeDecoder decoder = host().decoder(archive);
    const KTVPlotixPlugIn::Ptr copy = KTVPlotixPlugIn::initWithCoder(decoder);
    ASSERT_NE(copy, nullptr);
    ASSERT_TRUE(copy->properties().has_value());
    EXPECT_EQ(copy->properties()->size(), missing == "tables" ? 0U : 2U);
    const bool hasDates = copy->dataClusterViewController()->fromDateValue() == plotix::Date{kFrom - 60};
    EXPECT_EQ(hasDates, missing != "dataClusterViewController");
    EXPECT_EQ(copy->propertyDetailsShowing(), missing != "propertyDetailsShowing");
    EXPECT_EQ(copy->plotRangeForY(), missing == "plotRangeForY" ? CPTPlotRange() : trend().plotRangeForY());
    EXPECT_EQ(copy->infoTableArray()->size(), missing == "infoTableArray" ? 0U : 2U);
    EXPECT_EQ(copy->tableColumns().has_value(), missing != "tableColumns");
    EXPECT_EQ(copy->dataClusterViewController()->delegate(), copy.get());
}

INSTANTIATE_TEST_SUITE_P(OneKey, TrendArchiveWithout,
                         testing::Values("tables", "dataClusterViewController", "propertyDetailsShowing",
                                         "plotRangeForY", "infoTableArray", "tableColumns"),
                         [](const auto& key) { return std::string(key.param); });

}  // namespace
