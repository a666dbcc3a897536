#include "ToolbarFixture.h"

#include "base/MainQueue.h"

#include <thread>

using plotix::MainQueue;

namespace {

constexpr auto kNoPlots = "<h1>REST API for Plotix</h1>You can view PNG representations of this Site Document's "
                          "available Plotix plots here.<p>";

/// Requests come from real threads, as a server makes them.
class WebService : public ToolbarFixture {
protected:
    using Submit = KTVPlotixToolbarPlugIn::SubmitLookup;

    KTVPlotixPlugIn::Ptr makeView(const QString& title, const QSize& size = {480, 360})
    {
        const auto view = KTVPlotixPlugIn::initWithAgent(host.agent(), &window(), KTVPropertyList{});
        view->setTitle(title);
        view->view()->resize(size);
        return view;
    }
    KTVPlotixPlugIn::Ptr list(const QString& title, const QSize& size = {480, 360})
    {
        const auto view = makeView(title, size);
        window().addPlugIn(view, false);
        return view;
    }
    KTVPlotixPlugIn::Ptr openWindow(const QString& title, std::shared_ptr<KTVPlugIn> content)
    {
        auto controller = std::make_shared<fakehost::FakeWindowController>(content);
        controller->window()->setWindowTitle(title);
        window().fakeDocument().addWindowController(controller);
        return std::dynamic_pointer_cast<KTVPlotixPlugIn>(content);
    }
    /// Another view with the same identifier, as in a copied archive.
    KTVPlotixPlugIn::Ptr twinOf(const KTVPlotixPlugIn& view)
    {
        fakehost::FakeArchive archive;
        fakehost::FakeEncoder encoder(archive);
        view.encodeWithCoder(encoder);
        fakehost::FakeDecoder decoder = host.decoder(archive);
        auto twin = KTVPlotixPlugIn::initWithCoder(decoder);
        window().addPlugIn(twin, false);
        return twin;
    }

    /// Runs `work` on a server thread, and the event loop here until it is done.
    template <class Work>
    static void onServerThread(Work work)
    {
        bool isDone = false;
        std::thread server([&] {
            work();
            MainQueue::main().async([&isDone] { isDone = true; });
        });
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        server.join();
    }
    GCDWebServerDataResponsePtr request(const QString& url)
    {
        GCDWebServerDataResponsePtr response;
        onServerThread([&] { response = toolbar->webServiceResponseForRequest({QUrl(url)}); });
        return response;
    }
    GCDWebServerDataResponsePtr request(const QString& url, const Submit& submit)
    {
        GCDWebServerDataResponsePtr response;
        onServerThread([&] { response = toolbar->webServiceResponseForRequest({QUrl(url)}, submit); });
        return response;
    }
    /// The main queue does not run until the request has returned.
    GCDWebServerDataResponsePtr requestWhileTheMainThreadIsBusy(const QString& url)
    {
        GCDWebServerDataResponsePtr response;
        std::thread([&] { response = toolbar->webServiceResponseForRequest({QUrl(url)}); }).join();
        return response;
    }
    static QString png(const KTVPlugIn& view)
    {
        return QStringLiteral("http://host/a/b/") + view.uniqueIdentifier() + ".png";
    }
    static QString pdf(const KTVPlugIn& view)
    {
        return QStringLiteral("http://host/") + view.uniqueIdentifier() + ".pdf";
    }
    static QSize sizeOf(const GCDWebServerDataResponsePtr& response)
    {
        return response ? QImage::fromData(response->data(), "PNG").size() : QSize();
    }
    QString advertisement(const QString& base = QStringLiteral("http://host"))
    {
        return toolbar->webServiceAdvertisementForBaseURL(base).value_or(QString());
    }
    static QString heading(const QString& base, const KTVPlugIn& view, const QString& title)
    {
        return QStringLiteral("<h2><a href=\"%1/%2.png\" target=\"_blank\">%3</a></h2>")
            .arg(base, view.uniqueIdentifier(), title);
    }

    /// The lookup has run by the time its cell is read.
    static void runLookup(std::function<void()> lookup) { MainQueue::main().sync(lookup); }
};

// Advertisement.

TEST_F(WebService, EmptySiteAdvertisesHeadingAndSentence)
{
    EXPECT_EQ(advertisement(), kNoPlots);
}

TEST_F(WebService, AdvertisesWindowsFirstThenTheSourceList)
{
    const auto listed = list("Listed");
    const auto windowed = openWindow("Windowed", makeView("Content"));
    EXPECT_EQ(advertisement(), QLatin1String(kNoPlots) + heading("http://host", *windowed, "Windowed") +
                                   heading("http://host", *listed, "Listed"));
}

TEST_F(WebService, ListsAViewInBothPlacesTwice)
{
    const auto view = list("Week");
    openWindow("Week – Meadow", view);
    EXPECT_EQ(advertisement().count("<h2>"), 2);
    EXPECT_EQ(advertisement().count(view->uniqueIdentifier()), 2);
}

TEST_F(WebService, OnlyTrendViewsAreAdvertised)
{
    openWindow("Other", toolbar);
    window().addPlugIn(toolbar, false);
    EXPECT_EQ(advertisement(), kNoPlots);
}

TEST_F(WebService, EmptyWindowIsNotAdvertised)
{
    openWindow("Empty", nullptr);
    EXPECT_EQ(advertisement(), kNoPlots);
}

TEST_F(WebService, TitlesAreNotEscaped)
{
    openWindow("a < b", makeView("Content"));
    list("<b>&amp;</b>");
    EXPECT_TRUE(advertisement().contains(">a < b</a>"));
    EXPECT_TRUE(advertisement().contains("><b>&amp;</b></a>"));
}

TEST_F(WebService, BaseIsTakenToTheLetter)
{
    const auto view = list("Week");
    EXPECT_TRUE(advertisement("http://host/x/").contains("\"http://host/x//" + view->uniqueIdentifier() + ".png\""));
    EXPECT_TRUE(advertisement("a b").contains("\"a b/" + view->uniqueIdentifier() + ".png\""));
}

TEST_F(WebService, NoPdfIsAdvertised)
{
    list("Week");
    EXPECT_FALSE(advertisement().contains("pdf", Qt::CaseInsensitive));
}

TEST_F(WebService, AdvertisesFromAServerThreadAsWell)
{
    list("Week");
    const QString expected = advertisement();
    QString html;
    onServerThread([&] { html = toolbar->webServiceAdvertisementForBaseURL("http://host").value_or(QString()); });
    EXPECT_EQ(html, expected);
}

TEST_F(WebService, WithoutASiteWindowNothingIsAdvertisedAndNothingAnswered)
{
    const auto view = list("Week");
    toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), nullptr);
    EXPECT_EQ(advertisement(), kNoPlots);
    EXPECT_EQ(request(png(*view), runLookup), nullptr);
}

class WindowWithoutWindow : public fakehost::FakeWindowController {
public:
    using FakeWindowController::FakeWindowController;
    QWidget* window() const override { return nullptr; }
};

TEST_F(WebService, ControllerWithoutAWindowIsCalledNull)
{
    window().fakeDocument().addWindowController(std::make_shared<WindowWithoutWindow>(makeView("Content")));
    EXPECT_TRUE(advertisement().endsWith(">(null)</a></h2>"));
}

// First search.

TEST_F(WebService, AnswersPngUnderAnyPrefix)
{
    const auto view = list("Week");
    const auto response = request(png(*view));
    ASSERT_NE(response, nullptr);
    EXPECT_EQ(response->contentType(), "image/png");
    EXPECT_EQ(sizeOf(response), QSize(480, 360));
}

TEST_F(WebService, AnswersPdf)
{
    const auto view = list("Week");
    const auto response = request(pdf(*view));
    ASSERT_NE(response, nullptr);
    EXPECT_EQ(response->contentType(), "application/pdf");
    EXPECT_TRUE(response->data().startsWith("%PDF"));
}

TEST_F(WebService, TrailingSlashQueryAndFragmentAreIgnored)
{
    const auto view = list("Week");
    EXPECT_NE(request(png(*view) + "/"), nullptr);
    EXPECT_NE(request(png(*view) + "?x=.pdf#y.pdf"), nullptr);
}

class WebServiceRefusals : public WebService, public testing::WithParamInterface<const char*> {};

TEST_P(WebServiceRefusals, AnswersNothing)
{
    const auto view = list("Week");
    const QString path = QString::fromLatin1(GetParam()).replace('*', view->uniqueIdentifier());
    EXPECT_EQ(request("http://host" + path), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Paths, WebServiceRefusals,
                         testing::Values("/*.PNG", "/*.Pdf", "/*.jpeg", "/*", "/*.", "/.png", "/", "", "/x*.png",
                                         "/*.png/x", "/*.png.png", "/unknown.png"));

TEST_F(WebService, IdentifiersAreCaseSensitive)
{
    const auto view = list("Week");
    const QString shouted = view->uniqueIdentifier().toUpper();
    ASSERT_NE(shouted, view->uniqueIdentifier());
    EXPECT_EQ(request("http://host/" + shouted + ".png"), nullptr);
}

TEST_F(WebService, OtherPlugInsAreNotRendered)
{
    window().addPlugIn(toolbar, false);
    EXPECT_EQ(request(png(*toolbar)), nullptr);
    EXPECT_FALSE(toolbar->isViewLoaded());
}

// The walk does not stop at a match.
TEST_F(WebService, EveryMatchIsRenderedAndTheLastIsTheAnswer)
{
    const auto view = list("Week");
    const auto twin = twinOf(*view);
    ASSERT_FALSE(twin->isViewLoaded());
    EXPECT_NE(request(png(*view)), nullptr);
    EXPECT_TRUE(twin->isViewLoaded());
    view->view()->resize(500, 400);
    twin->view()->resize(600, 410);
    EXPECT_EQ(sizeOf(request(png(*view))), QSize(600, 410));
}

TEST_F(WebService, LastMatchWithDataIsTheAnswer)
{
    const auto view = list("Week", {500, 400});
    const auto twin = twinOf(*view);
    delete twin->view();
    EXPECT_EQ(sizeOf(request(png(*view))), QSize(500, 400));
}

TEST_F(WebService, RenderingWithoutDataIsNoAnswer)
{
    const auto view = list("Week");
    delete view->view();
    EXPECT_EQ(request(png(*view)), nullptr);
}

TEST_F(WebService, ManyRequestsAtOnceAreAllAnswered)
{
    const auto view = list("Week");
    std::atomic<int> answered = 0;
    onServerThread([&] {
        std::vector<std::thread> servers;
        for (int count = 0; count < 8; ++count)
            servers.emplace_back(
                [&] { answered += toolbar->webServiceResponseForRequest({QUrl(png(*view))}) != nullptr; });
        for (std::thread& server : servers)
            server.join();
    });
    EXPECT_EQ(answered, 8);
}

// Second search.

TEST_F(WebService, ViewInAWindowIsFoundWhenTheLookupsHaveRunByThen)
{
    const auto view = openWindow("Week", makeView("Week", {500, 400}));
    const auto response = request(png(*view), runLookup);
    ASSERT_NE(response, nullptr);
    EXPECT_EQ(response->contentType(), "image/png");
    EXPECT_EQ(sizeOf(response), QSize(500, 400));
    EXPECT_TRUE(request(pdf(*view), runLookup)->data().startsWith("%PDF"));
}

// The lookups are submitted and their cells read at once; a busy main queue is never waited for.
TEST_F(WebService, SecondSearchFindsNothingWhileItsLookupsWait)
{
    const auto view = openWindow("Week", makeView("Week"));
    EXPECT_EQ(requestWhileTheMainThreadIsBusy(png(*view)), nullptr);
    drain();
}

TEST_F(WebService, WindowWhoseLookupWaitsIsSkipped)
{
    const auto view = openWindow("Week", makeView("Week"));
    std::vector<std::function<void()>> waiting;
    bool isFirst = true;
    const auto onlyTheFirstRuns = [&](std::function<void()> lookup) {
        if (std::exchange(isFirst, false))
            runLookup(std::move(lookup));
        else
            waiting.push_back(std::move(lookup));
    };
    EXPECT_EQ(request(png(*view), onlyTheFirstRuns), nullptr);
    EXPECT_EQ(waiting.size(), 1U);
}

TEST_F(WebService, UnknownNamesCostNothingOfTheMainThread)
{
    list("Week");
    EXPECT_EQ(requestWhileTheMainThreadIsBusy("http://host/unknown.png"), nullptr);
    drain();
}

TEST_F(WebService, SecondSearchIsLeftOutAfterAnAnswer)
{
    const auto view = list("Week");
    openWindow("Week", view);
    int lookups = 0;
    EXPECT_NE(request(png(*view), [&](std::function<void()>) { ++lookups; }), nullptr);
    EXPECT_EQ(lookups, 0);
}

TEST_F(WebService, LastMatchingWindowIsTheAnswer)
{
    const auto view = makeView("Week", {500, 400});
    const auto twin = twinOf(*view);
    twin->view()->resize(600, 410);
    openWindow("One", view);
    openWindow("Two", twin);
    const QString url = png(*view);
    KTVPlotixToolbarPlugIn::Ptr other;
    fakehost::FakeSiteWindowController empty(host.agent(), &host.log());
    empty.fakeDocument().addWindowController(std::make_shared<fakehost::FakeWindowController>(view));
    empty.fakeDocument().addWindowController(std::make_shared<fakehost::FakeWindowController>(twin));
    toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), &empty);
    EXPECT_EQ(sizeOf(request(url, runLookup)), QSize(600, 410));
}

TEST_F(WebService, LookupsThatRunAfterThePlugInHasGoneDoNothing)
{
    const auto view = openWindow("Week", makeView("Week"));
    EXPECT_EQ(requestWhileTheMainThreadIsBusy(png(*view)), nullptr);
    toolbar.reset();
    drain();
    EXPECT_EQ(view.use_count(), 2);
}

// Lifetimes.

/// A site window that drops its items while a request holds them.
class ForgettingWindow : public fakehost::FakeSiteWindowController {
public:
    using FakeSiteWindowController::FakeSiteWindowController;
    std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString&) const override
    {
        return std::move(m_lastItems);
    }
    void giveAway(KTVPlugInPtr plugIn)
    {
        m_lastItems.push_back(std::make_shared<fakehost::FakeSourceListItem>(std::move(plugIn)));
    }

private:
    mutable std::vector<KTVSourceListItemPtr> m_lastItems;
};

class WebServiceLifetimes : public WebService {
protected:
    WebServiceLifetimes() : forgetting(host.agent(), &host.log())
    {
        toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), &forgetting);
    }
    void TearDown() override { toolbar.reset(); }

    /// Notes the thread the view ends on.
    KTVPlotixPlugIn::Ptr watchedView()
    {
        auto view = makeView("Week");
        QObject::connect(view.get(), &QObject::destroyed, [this] { endedOn = std::this_thread::get_id(); });
        return view;
    }
    bool hasEndedOnTheMainThread() const { return endedOn == std::this_thread::get_id(); }

    ForgettingWindow forgetting;
    std::thread::id endedOn;
};

TEST_F(WebServiceLifetimes, LastReferenceTakenByASearchEndsOnTheMainQueue)
{
    forgetting.giveAway(watchedView());
    EXPECT_EQ(requestWhileTheMainThreadIsBusy("http://host/other.png"), nullptr);
    EXPECT_EQ(endedOn, std::thread::id());
    drain();
    EXPECT_TRUE(hasEndedOnTheMainThread());
}

TEST_F(WebServiceLifetimes, LastReferenceOfARenderedViewEndsOnTheMainQueue)
{
    auto view = watchedView();
    const QString url = png(*view);
    forgetting.giveAway(std::move(view));
    EXPECT_NE(request(url), nullptr);
    drain();
    EXPECT_TRUE(hasEndedOnTheMainThread());
}

TEST_F(WebServiceLifetimes, LastReferenceInALookupsCellEndsOnTheMainQueue)
{
    auto view = watchedView();
    const QString url = png(*view);
    forgetting.fakeDocument().addWindowController(std::make_shared<fakehost::FakeWindowController>(std::move(view)));
    const auto lookUpAndForget = [this](const std::function<void()>& lookup) {
        MainQueue::main().sync([&] {
            lookup();
            forgetting.fakeDocument().removeWindowControllers();
        });
    };
    EXPECT_NE(request(url, lookUpAndForget), nullptr);
    drain();
    EXPECT_TRUE(hasEndedOnTheMainThread());
}

}  // namespace
