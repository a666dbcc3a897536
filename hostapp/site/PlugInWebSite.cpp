#include "hostapp/site/PlugInWebSite.h"

#include "base/MainQueue.h"
#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/RangedPicture.h"
#include "hostapp/site/TrendPicture.h"

#include <QtCore/QFileInfo>

namespace plotix {

class PlugInWebSite::Listed {
public:
    /// `first` is asked before the views; null: nobody is.
    explicit Listed(const SourceListModel& sourceList, const KTVPlugInPtr& first = {}) : m_items(sourceList.items())
    {
        if (first)
            m_asked.push_back(first);
        for (const KTVSourceListItemPtr& item : m_items)
            m_asked.push_back(item->representedObject());
    }
    ~Listed()
    {
        MainQueue::main().async([items = std::move(m_items), asked = std::move(m_asked)] {});
    }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

    const std::vector<KTVSourceListItemPtr>& items() const { return m_items; }
    const std::vector<KTVPlugInPtr>& asked() const { return m_asked; }

private:
    std::vector<KTVSourceListItemPtr> m_items;
    std::vector<KTVPlugInPtr> m_asked;
};

PlugInWebSite::PlugInWebSite(const WorkingSite& site) : m_site(site), m_sourceList(site.sourceList())
{
    const auto update = [present = m_present, &site] { bringUpToDate(*present, site); };
    QObject::connect(site.siteDocument().get(), &SiteDocument::siteChanged, &m_life, update);
    QObject::connect(&site, &WorkingSite::toolbarPlugInsChanged, &m_life, update);
    update();
}

void PlugInWebSite::bringUpToDate(Present& present, const WorkingSite& site)
{
    const std::lock_guard guard(present.mutex);
    present.name = site.siteDocument()->siteName();
    present.toolbarPlugIn = site.toolbarPlugIns().empty() ? nullptr : site.toolbarPlugIns().front();
}

QString PlugInWebSite::name() const
{
    const std::lock_guard guard(m_present->mutex);
    return m_present->name;
}

KTVPlugInPtr PlugInWebSite::toolbarPlugIn() const
{
    const std::lock_guard guard(m_present->mutex);
    return m_present->toolbarPlugIn;
}

std::vector<WebView> PlugInWebSite::views() const
{
    const Listed listed(m_sourceList);
    std::vector<WebView> views;
    for (std::size_t index = 0; index < listed.items().size(); ++index)
        views.push_back({listed.asked()[index]->uniqueIdentifier(), listed.items()[index]->title()});
    return views;
}

std::vector<WebView> PlugInWebSite::viewsWithFootnotes() const
{
    const Listed listed(m_sourceList);
    std::vector<WebView> views;
    MainQueue::main().sync([&] {
        for (std::size_t index = 0; index < listed.items().size(); ++index) {
            const KTVPlugInPtr& plugIn = listed.asked()[index];
            views.push_back({plugIn->uniqueIdentifier(), listed.items()[index]->title(), footnoteTexts(*plugIn),
                             lacksRecords(plugIn.get())});
        }
    });
    return views;
}

QString PlugInWebSite::advertisement(const QUrl& baseUrl)
{
    const Listed listed(m_sourceList, toolbarPlugIn());
    QString fragments;
    for (const KTVPlugInPtr& plugIn : listed.asked())
        fragments += plugIn->webServiceAdvertisementForBaseURL(baseUrl.toString()).value_or(QString());
    return fragments;
}

namespace {

/// A view's picture, as its address names it.
struct AskedPicture {
    QString identifier;
    FileKind format;

    static std::optional<AskedPicture> of(const QUrl& url)
    {
        const QStringList segments = url.path().split(u'/', Qt::SkipEmptyParts);
        const QString file = segments.value(segments.size() - 1);
        const bool isPdf = file.endsWith(QLatin1String(".pdf"));
        if (!isPdf && !file.endsWith(QLatin1String(".png")))
            return std::nullopt;
        return AskedPicture{file.chopped(4), isPdf ? FileKind::Pdf : FileKind::Png};
    }
    WebRendering rendering(const QByteArray& data) const
    {
        return {data, format == FileKind::Pdf ? QStringLiteral("application/pdf") : QStringLiteral("image/png")};
    }
};

/// Of a view that lacks records, so that whoever sees nothing but the picture is told; empty: it lacks none.
QByteArray pictureThatTells(const KTVPlugInPtr& plugIn, FileKind format)
{
    QByteArray picture;
    MainQueue::main().sync([&] {
        try {
            if (lacksRecords(plugIn.get()))
                picture = pictureTelling(
                    plugIn,
                    {.format = format, .size = QSizeF(kUsualGraphSize), .density = 1, .title = titleOf(*plugIn)});
        } catch (const ReportableError&) {  // then the plug-in's own picture stands
        }
    });
    return picture;
}

}  // namespace

std::optional<WebRendering> PlugInWebSite::rendering(const QUrl& url)
{
    const Listed listed(m_sourceList, toolbarPlugIn());
    std::optional<WebRendering> found;
    for (const KTVPlugInPtr& plugIn : listed.asked())
        if (const auto response = found ? nullptr : plugIn->webServiceResponseForRequest({url}))
            found = WebRendering{response->data(), response->contentType()};
    const std::optional<AskedPicture> asked = found ? AskedPicture::of(url) : std::nullopt;
    for (const KTVPlugInPtr& plugIn : listed.asked())
        if (asked && plugIn->uniqueIdentifier() == asked->identifier)
            if (const QByteArray picture = pictureThatTells(plugIn, asked->format); !picture.isEmpty())
                return asked->rendering(picture);
    return found;
}

std::optional<WebRendering> PlugInWebSite::renderingOver(const WebRange& range, const QUrl& url)
{
    const std::optional<AskedPicture> asked = AskedPicture::of(url);
    const Listed listed(m_sourceList);
    for (const KTVPlugInPtr& plugIn : listed.asked())
        if (asked && plugIn->uniqueIdentifier() == asked->identifier) {
            const QByteArray picture = RangedPicture(m_site, plugIn, {range.from, range.to}).made(asked->format);
            if (!picture.isEmpty())
                return asked->rendering(picture);
        }
    return std::nullopt;
}

QString openToWeb(OpenSites& sites, const WorkingSite& site)
{
    return sites.add(QFileInfo(site.siteDocument()->path()).completeBaseName(), std::make_shared<PlugInWebSite>(site));
}

QString pageAddress(const QString& server, const QString& identifier)
{
    return QStringLiteral("%1sites/%2/").arg(server, identifier);
}

}  // namespace plotix
