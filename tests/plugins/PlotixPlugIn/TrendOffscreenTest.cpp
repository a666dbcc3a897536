#include "TrendViewFixture.h"

#include "ImageReceiver.h"

#include <thread>

namespace {

/// Keeps a fetch until it is told to forget it unanswered.
class ForgetfulArchive : public KTVArchiveManager {
public:
    void fetchRecordsForProperties(const std::optional<KTVPropertyList>&, const plotix::OptionalDate&,
                                   const plotix::OptionalDate&, int, ProgressHandler,
                                   CompletionHandler completionHandler) override
    {
        m_handler = std::move(completionHandler);
    }
    void forget() { m_handler = nullptr; }

private:
    CompletionHandler m_handler;
};

class ForgetfulAgent : public KTVAgent {
public:
    mutable ForgetfulArchive archive;

    KTVPropertyCollection properties() const override { return {}; }
    QString uniqueIdentifier() const override { return QStringLiteral("forgetful"); }
    KTVArchiveManager* archiveManager() const override { return &archive; }
    std::optional<QString> siteName() const override { return std::nullopt; }
    std::optional<QString> siteLocation() const override { return std::nullopt; }
    KTVSiteWindowController* siteWindowController() const override { return nullptr; }
};

class TrendOffscreen : public TrendViewFixture {
protected:
    void ask(const std::optional<QStringList>& names, double from = kFrom, double to = kTo)
    {
        KTVPlotixPlugIn::graph(agent(), plotix::Date{from}, plotix::Date{to}, names, "Weather", {640, 480}, &m_receiver,
                               "receiveImage");
    }
    /// An off-screen object that the test holds, to see what a rebuild does without a view.
    void makeOffscreenTrend()
    {
        makeTrend();
        trend().setCompletionTarget(&m_receiver);
        trend().setCompletionSelector("receiveImage");
        trend().setGraphTitle("Weather");
        trend().setImageSize("{640, 480}");
        trend().acquirePlotFromDate(plotix::Date{kFrom}, plotix::Date{kTo});
    }
    const std::vector<QByteArray>& images() const { return m_receiver.images; }
    QImage image(std::size_t index = 0) const { return QImage::fromData(m_receiver.images.at(index), "PNG"); }

    ImageReceiver m_receiver;
};

TEST_F(TrendOffscreen, TargetReceivesAPngOfTheSizeAsked)
{
    ask(QStringList{"airTemperature", "pressure"});
    EXPECT_TRUE(images().empty());
    answer(twoProperties());
    ASSERT_EQ(images().size(), 1U);
    EXPECT_EQ(image().size(), QSize(640, 480));
}

TEST_F(TrendOffscreen, PropertiesFoundAreFetchedInTheListsOrder)
{
    ask(QStringList{"pressure", "unknown", "airTemperature"});
    const KTVPropertyList expected{property("pressure"), property("airTemperature")};
    EXPECT_EQ(lastFetch().properties, expected);
    answer(twoProperties());
}

TEST_F(TrendOffscreen, AbsentListAsksNothing)
{
    ask(std::nullopt);
    EXPECT_EQ(fetchCount(), 0);
}

TEST_F(TrendOffscreen, UnknownPropertiesAskNothing)
{
    ask(QStringList{"unknown"});
    ask(QStringList{});
    EXPECT_EQ(fetchCount(), 0);
    EXPECT_TRUE(images().empty());
}

TEST_F(TrendOffscreen, RangeWithoutDataStillGivesAnImage)
{
    ask(QStringList{"airTemperature"});
    answer(recordsAt({}).build());
    ASSERT_EQ(images().size(), 1U);
    EXPECT_EQ(image().size(), QSize(640, 480));
}

TEST_F(TrendOffscreen, IllegalRangeShowsNothingAndCallsNobody)
{
    ask(QStringList{"airTemperature"}, kTo, kFrom);
    drain();
    EXPECT_EQ(fetchCount(), 0);
    EXPECT_TRUE(desktop().sheets().empty());
    EXPECT_TRUE(images().empty());
}

TEST_F(TrendOffscreen, ViewIsNeverLoadedAndNothingIsFetchedTwice)
{
    makeOffscreenTrend();
    answer(twoProperties());
    EXPECT_FALSE(trend().isViewLoaded());
    EXPECT_EQ(trend().hostView(), nullptr);
    EXPECT_EQ(trend().messageViewController(), nullptr);
    EXPECT_EQ(fetchCount(), 1);
}

TEST_F(TrendOffscreen, AxesKeepTheThemesStylingButForTheValueAxisPlacement)
{
    makeOffscreenTrend();
    answer(twoProperties());
    CPTXYAxisSet& axes = *trend().graph()->axisSet();
    EXPECT_EQ(axes.xAxis()->title(), QString());
    EXPECT_EQ(axes.xAxis()->labelingPolicy(), CPTAxisLabelingPolicy::Automatic);
    EXPECT_EQ(axes.yAxis()->title(), QString());
    EXPECT_EQ(axes.yAxis()->majorIntervalLength(), 20);
    EXPECT_EQ(axes.yAxis()->orthogonalPosition(), 86'400);
}

TEST_F(TrendOffscreen, PlotsAndFitAreAsOnScreen)
{
    makeOffscreenTrend();
    answer(twoProperties());
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
    EXPECT_EQ(trend().graph()->defaultPlotSpace()->xRange(), (CPTPlotRange{kFrom, kTo - kFrom}));
}

// The target stays: a further rebuild reports again, with 18 points more above the plot area.
TEST_F(TrendOffscreen, FurtherRebuildReportsAgain)
{
    makeOffscreenTrend();
    answer(twoProperties());
    trend().updatePlotData(trend().plotData());
    EXPECT_EQ(images().size(), 2U);
    EXPECT_EQ(trend().completionTarget(), &m_receiver);
    EXPECT_EQ(trend().graph()->plotAreaFrame().padding.top, 56);
}

TEST_F(TrendOffscreen, PendingFetchAloneKeepsTheObject)
{
    makeOffscreenTrend();
    const std::weak_ptr<KTVPlugIn> weak = trend().weak_from_this();
    releaseTrend();
    EXPECT_FALSE(weak.expired());
    completeLastFetch({twoProperties(), {}});
    EXPECT_FALSE(weak.expired());
    drain();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(images().size(), 1U);
}

TEST_F(TrendOffscreen, ObjectDiesOnTheMainThreadAfterAnAnswerOnAnother)
{
    makeOffscreenTrend();
    std::thread::id destroyedOn;
    QObject::connect(&trend(), &QObject::destroyed, [&] { destroyedOn = std::this_thread::get_id(); });
    releaseTrend();
    completeLastFetch({twoProperties(), {}}, Where::OnWorkerThread);
    drain();
    EXPECT_EQ(destroyedOn, std::this_thread::get_id());
    EXPECT_EQ(images().size(), 1U);
}

TEST_F(TrendOffscreen, ObjectDiesOnTheMainThreadWhenTheArchiveForgetsTheFetch)
{
    const auto forgetful = std::make_shared<ForgetfulAgent>();
    adopt(KTVPlotixPlugIn::initWithAgent(forgetful, nullptr, KTVPropertyList{property("pressure")}));
    trend().setCompletionTarget(&m_receiver);
    trend().acquirePlotFromDate(plotix::Date{kFrom}, plotix::Date{kTo});
    std::thread::id destroyedOn;
    QObject::connect(&trend(), &QObject::destroyed, [&] { destroyedOn = std::this_thread::get_id(); });
    releaseTrend();
    std::thread([&] { forgetful->archive.forget(); }).join();
    EXPECT_EQ(destroyedOn, std::thread::id());
    drain();
    EXPECT_EQ(destroyedOn, std::this_thread::get_id());
    EXPECT_TRUE(images().empty());
}

TEST_F(TrendOffscreen, TargetThatHasGoneIsNotCalled)
{
    makeTrend();
    {
        ImageReceiver shortLived;
        trend().setCompletionTarget(&shortLived);
        trend().setCompletionSelector("receiveImage");
        trend().acquirePlotFromDate(plotix::Date{kFrom}, plotix::Date{kTo});
    }
    answer(twoProperties());
    EXPECT_EQ(trend().completionTarget(), nullptr);
}

TEST_F(TrendOffscreen, OrdinaryViewHasNoTarget)
{
    openTrendWithData();
    EXPECT_EQ(trend().completionTarget(), nullptr);
    EXPECT_EQ(trend().graph()->title(), QString());
}

}  // namespace
