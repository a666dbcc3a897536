#pragma once

#include "hostapp/core/Converter.h"
#include "hostapp/core/HostBundle.h"
#include "hostapp/core/QuickRanges.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/LocalWebServing.h"
#include "hostapp/site/PlugInLoader.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

#include <memory>
#include <vector>

/// The composition root: builds the host's services, installs them, and loads the plug-in module on first need.
///
/// *Owns* everything it builds; lives as long as the program. Main thread only, inside the QApplication.
namespace plotix {

class Composition {
public:
    enum class Audience { Desktop, Nobody };  ///< Nobody: alerts go to stderr, save panels answer nothing

    explicit Composition(Audience audience, QStringList plugInFolders = PlugInLoader::defaultFolders());
    ~Composition();
    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;

    Audience audience() const { return m_audience; }

    /// Throws ReportableError when the module cannot be loaded.
    KTVPlugInModule* module();

    DesktopUserInterface& userInterface() { return m_userInterface; }
    HelpManager& helpManager() { return m_helpManager; }
    WebServing& webServing() { return m_webServing; }

    /// From now on "All Time" includes the document's records, as long as it is open.
    void documentOpened(const std::shared_ptr<SiteDocument>& document);

private:
    std::optional<std::pair<Date, Date>> extentOfOpenDocuments() const;
    void installServices();

    Audience m_audience;
    PlugInLoader m_loader;
    HostBundle m_bundle;
    Converter m_converter;
    QuickRanges m_quickRanges;
    DesktopUserInterface m_userInterface;
    HelpManager m_helpManager;
    LocalWebServing m_webServing;
    KTVPrintInfo m_printInfo;
    std::vector<std::weak_ptr<SiteDocument>> m_documents;
    KTVHostServices m_previousServices;
};

}  // namespace plotix
