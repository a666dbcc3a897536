// What the host's web server is told: the advertisement of every trend view, and pictures of one of them.
//
// Rules of this room:
//  1. Requests come on the server's threads; every rendering, and the whole advertisement, runs on the main queue.
//  2. No reference to a host's object ends on a server's thread: all that a request has touched is handed back to the
//     main queue, because the last reference to a view takes its widgets along.
//  3. The first search reads the published source list. It does not stop at a match: every view of that identifier is
//     rendered, and the last one that gave data is the answer.
//  4. The second search does not wait for its lookups and mostly finds nothing. Waiting would make a request for an
//     unknown name cost the main queue's time once per window.

#include "plugins/PlotixPlugIn/KTVPlotixToolbarPlugIn.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/logic/WebText.h"

#include <atomic>

using plotix::MainQueue;

namespace {

using WindowControllers = std::vector<std::shared_ptr<KTVWindowController>>;

/// What a request has taken hold of. Lets go of it on the main queue, whichever thread it ends on. Declared before the
/// references it covers, so that it outlives them.
class HandedBackToMainQueue {
public:
    HandedBackToMainQueue() = default;
    ~HandedBackToMainQueue()
    {
        if (!m_kept.empty())
            MainQueue::main().async([kept = std::move(m_kept)] {});
    }
    HandedBackToMainQueue(const HandedBackToMainQueue&) = delete;
    HandedBackToMainQueue& operator=(const HandedBackToMainQueue&) = delete;

    void keep(std::shared_ptr<const void> object) { m_kept.push_back(std::move(object)); }

private:
    std::vector<std::shared_ptr<const void>> m_kept;
};

/// Written once on the main queue, read by the request at any time: the value, or null while there is none.
template <class T>
class ResultCell {
public:
    void store(T value)
    {
        m_value = std::move(value);
        m_isStored.store(true, std::memory_order_release);
    }
    const T* read() const { return m_isStored.load(std::memory_order_acquire) ? &m_value : nullptr; }

private:
    T m_value{};
    std::atomic<bool> m_isStored = false;
};

/// One request: which view in which form, and what came of it so far.
class PlotRequest {
public:
    explicit PlotRequest(plotix::WebPathName name) : m_name(std::move(name)) {}

    const GCDWebServerDataResponsePtr& response() const { return m_response; }
    void keep(std::shared_ptr<const void> object) { m_handedBack.keep(std::move(object)); }

    /// Renders the plug-in when it is the trend view asked for. The caller keeps it alive.
    void consider(KTVPlugIn* plugIn)
    {
        auto* trend = qobject_cast<KTVPlotixPlugIn*>(plugIn);
        if (trend && trend->uniqueIdentifier() == m_name.identifier)
            render(*trend);
    }

private:
    void render(KTVPlotixPlugIn& trend)
    {
        QByteArray data;
        QString type;
        MainQueue::main().sync([&] {
            if (m_name.extension == QLatin1String("pdf")) {
                data = trend.pdfRepresentation();
                type = QStringLiteral("application/pdf");
            } else if (m_name.extension == QLatin1String("png")) {
                data = trend.pngImageWithScale(1.0);
                type = QStringLiteral("image/png");
            }
        });
        if (!data.isEmpty())
            m_response = GCDWebServerDataResponse::responseWithData(data, type);
    }

    HandedBackToMainQueue m_handedBack;
    plotix::WebPathName m_name;
    GCDWebServerDataResponsePtr m_response;
};

QString trendClassName()
{
    return QString::fromLatin1(KTVPlotixPlugIn::staticMetaObject.className());
}

void searchSourceList(PlotRequest& request, const KTVSiteWindowController* controller)
{
    if (!controller)
        return;
    const auto items = controller->itemsWithRepresentedObjectsOfClass(trendClassName());
    for (const KTVSourceListItemPtr& item : items)
        request.keep(item);
    for (const KTVSourceListItemPtr& item : items) {
        const std::shared_ptr<KTVPlugIn> plugIn = item->representedObject();
        request.keep(plugIn);
        request.consider(plugIn.get());
    }
}

void searchWindow(PlotRequest& request, const std::shared_ptr<KTVWindowController>& window,
                  const KTVPlotixToolbarPlugIn::SubmitLookup& submitLookup)
{
    const auto content = std::make_shared<ResultCell<std::shared_ptr<KTVPlugIn>>>();
    request.keep(content);
    submitLookup([window, content] { content->store(window->contentViewController()); });
    if (const auto* found = content->read())
        request.consider(found->get());
}

/// The windows are read together with their document, in the same lookup: both belong to the main thread.
void searchSeparateWindows(PlotRequest& request, const std::weak_ptr<KTVPlugIn>& plugIn,
                           const KTVPlotixToolbarPlugIn::SubmitLookup& submitLookup)
{
    const auto windows = std::make_shared<ResultCell<WindowControllers>>();
    request.keep(windows);
    submitLookup([plugIn, windows] {
        const auto alive = plugIn.lock();
        const KTVSiteWindowController* controller = alive ? alive->siteWindowController() : nullptr;
        const auto document = controller ? controller->document() : nullptr;
        windows->store(document ? document->windowControllers() : WindowControllers());
    });
    if (const WindowControllers* found = windows->read())
        for (const std::shared_ptr<KTVWindowController>& window : *found)
            searchWindow(request, window, submitLookup);
}

std::optional<QString> titleOfWindow(const KTVWindowController& controller)
{
    const QWidget* window = controller.window();
    return window ? std::optional(window->windowTitle()) : std::nullopt;
}

void advertiseSeparateWindows(std::vector<plotix::WebPlot>& plots, const KTVSiteWindowController& controller,
                              const QString& baseURL)
{
    const std::shared_ptr<KTVSiteDocument> document = controller.document();
    if (!document)
        return;
    for (const std::shared_ptr<KTVWindowController>& window : document->windowControllers()) {
        const std::shared_ptr<KTVPlugIn> content = window->contentViewController();
        if (qobject_cast<KTVPlotixPlugIn*>(content.get()))
            plots.push_back({plotix::webPlotLink(baseURL, content->uniqueIdentifier()), titleOfWindow(*window)});
    }
}

void advertiseSourceList(std::vector<plotix::WebPlot>& plots, const KTVSiteWindowController& controller,
                         const QString& baseURL)
{
    for (const KTVSourceListItemPtr& item : controller.itemsWithRepresentedObjectsOfClass(trendClassName())) {
        const std::shared_ptr<KTVPlugIn> plugIn = item->representedObject();
        if (qobject_cast<KTVPlotixPlugIn*>(plugIn.get()))
            plots.push_back({plotix::webPlotLink(baseURL, plugIn->uniqueIdentifier()), item->title()});
    }
}

}  // namespace

std::optional<QString> KTVPlotixToolbarPlugIn::webServiceAdvertisementForBaseURL(const QString& baseURL)
{
    if (MainQueue::isMainThread())
        return webServiceAdvertisementOnMainThreadForBaseURL(baseURL);
    QString html;
    MainQueue::main().sync([&] { html = webServiceAdvertisementOnMainThreadForBaseURL(baseURL); });
    return html;
}

QString KTVPlotixToolbarPlugIn::webServiceAdvertisementOnMainThreadForBaseURL(const QString& baseURL)
{
    // A view in a window of its own is also in the source list, and so is listed twice.
    std::vector<plotix::WebPlot> plots;
    if (const KTVSiteWindowController* controller = siteWindowController()) {
        advertiseSeparateWindows(plots, *controller, baseURL);
        advertiseSourceList(plots, *controller, baseURL);
    }
    return plotix::webAdvertisement(plots);
}

GCDWebServerDataResponsePtr KTVPlotixToolbarPlugIn::webServiceResponseForRequest(const KTVWebServiceRequest& request)
{
    return webServiceResponseForRequest(
        request, [](std::function<void()> lookup) { MainQueue::main().async(std::move(lookup)); });
}

GCDWebServerDataResponsePtr KTVPlotixToolbarPlugIn::webServiceResponseForRequest(const KTVWebServiceRequest& request,
                                                                                 const SubmitLookup& submitLookup)
{
    PlotRequest plot(plotix::webPathName(request.url));
    searchSourceList(plot, siteWindowController());
    if (!plot.response())
        searchSeparateWindows(plot, weak_from_this(), submitLookup);
    return plot.response();
}
