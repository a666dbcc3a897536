#include "hostapp/site/PlugInWebSite.h"

#include "base/MainQueue.h"

namespace plotix {

namespace {
constexpr auto kEveryClass = "KTVPlugIn";
constexpr auto kToolbarClass = "KTVPlotixToolbarPlugIn";
}  // namespace

class PlugInWebSite::Listed {
public:
    explicit Listed(const KTVSiteWindowController& controller)
        : m_items(controller.itemsWithRepresentedObjectsOfClass(QString::fromLatin1(kEveryClass)))
    {
        for (const KTVSourceListItemPtr& item : m_items)
            m_plugIns.push_back(item->representedObject());
    }
    ~Listed()
    {
        MainQueue::main().async([items = std::move(m_items), plugIns = std::move(m_plugIns)] {});
    }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

    const std::vector<KTVSourceListItemPtr>& items() const { return m_items; }
    const std::vector<KTVPlugInPtr>& plugIns() const { return m_plugIns; }

private:
    std::vector<KTVSourceListItemPtr> m_items;
    std::vector<KTVPlugInPtr> m_plugIns;
};

PlugInWebSite::PlugInWebSite(QString name, const KTVSiteWindowController* controller, std::vector<KTVPlugInPtr> plugIns)
    : m_name(std::move(name)), m_controller(controller), m_plugIns(std::move(plugIns))
{
    std::erase(m_plugIns, nullptr);
}

std::vector<WebView> PlugInWebSite::views() const
{
    const Listed listed(*m_controller);
    std::vector<WebView> views;
    for (std::size_t index = 0; index < listed.items().size(); ++index)
        views.push_back({listed.plugIns()[index]->uniqueIdentifier(), listed.items()[index]->title()});
    return views;
}

QString PlugInWebSite::advertisement(const QUrl& baseUrl)
{
    const Listed listed(*m_controller);
    QString fragments;
    for (const auto* plugIns : {&std::as_const(m_plugIns), &listed.plugIns()})
        for (const KTVPlugInPtr& plugIn : *plugIns)
            fragments += plugIn->webServiceAdvertisementForBaseURL(baseUrl.toString()).value_or(QString());
    return fragments;
}

std::optional<WebRendering> PlugInWebSite::rendering(const QUrl& url)
{
    const Listed listed(*m_controller);
    for (const auto* plugIns : {&std::as_const(m_plugIns), &listed.plugIns()})
        for (const KTVPlugInPtr& plugIn : *plugIns)
            if (const auto response = plugIn->webServiceResponseForRequest({url}))
                return WebRendering{response->data(), response->contentType()};
    return std::nullopt;
}

KTVPlugInPtr makeToolbarPlugIn(KTVPlugInModule& module, KTVSiteWindowController& controller)
{
    const KTVPlugInModule::Arguments arguments{controller.agent(), &controller, {}, {}, {}};
    return arguments.agent ? module.instantiate(QString::fromLatin1(kToolbarClass), arguments) : nullptr;
}

}  // namespace plotix
