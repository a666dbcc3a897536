#include "hostapp/app/Composition.h"

#include "base/ReportableError.h"
#include "hostapp/print/Paper.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/window/MessageOverlay.h"

#include <algorithm>

namespace plotix {

namespace {

/// A site that cannot be read, because its file is gone, say, is left out of "All Time"; a fetch from it reports the
/// error.
std::optional<std::pair<Date, Date>> readableExtent(const SiteDocument& document)
{
    try {
        return document.recordExtent();
    } catch (const ReportableError&) {
        return std::nullopt;
    }
}

}  // namespace

Composition::Composition(Audience audience, QStringList plugInFolders)
    : m_audience(audience),
      m_loader(std::move(plugInFolders)),
      m_quickRanges({{}, {}, {}, [this] { return extentOfOpenDocuments(); }})
{
    installServices();
}

Composition::~Composition()
{
    KTVHostServices::install(m_previousServices);
}

void Composition::installServices()
{
    KTVHostServices services;
    services.makeMessageViewController = [] { return std::make_unique<MessageOverlay>(); };
    services.converter = &m_converter;
    services.dateCreator = &m_quickRanges;
    services.mainBundle = &m_bundle;
    m_printInfo.setPaperSize(paperSize(usualPaper()));
    services.printInfo = &m_printInfo;
    if (m_audience == Audience::Desktop) {
        services.userInterface = &m_userInterface;
        services.helpManager = &m_helpManager;
    }
    m_previousServices = KTVHostServices::install(std::move(services));
}

KTVPlugInModule* Composition::module()
{
    return m_loader.load(QString::fromLatin1(kModuleName), QString::fromLatin1(kTrendClass));
}

void Composition::documentOpened(const std::shared_ptr<SiteDocument>& document)
{
    std::erase_if(m_documents, [](const auto& one) { return one.expired(); });
    m_documents.push_back(document);
}

std::optional<std::pair<Date, Date>> Composition::extentOfOpenDocuments() const
{
    std::optional<std::pair<Date, Date>> extent;
    for (const auto& weak : m_documents) {
        const auto document = weak.lock();
        const auto own = document ? readableExtent(*document) : std::nullopt;
        if (!own)
            continue;
        if (!extent)
            extent = own;
        extent->first = Date{std::min(extent->first.seconds, own->first.seconds)};
        extent->second = Date{std::max(extent->second.seconds, own->second.seconds)};
    }
    return extent;
}

}  // namespace plotix
