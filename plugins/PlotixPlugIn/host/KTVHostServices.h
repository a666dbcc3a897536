#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <functional>
#include <memory>

class KTVBundle;
class KTVConverter;
class KTVHelpManager;
class KTVMessageViewController;
class KTVNaturalLanguageDateCreator;
class KTVPrintInfo;
class KTVUserInterface;

/// The objects that answer the host's class operations. A host installs them once, before it loads a module; a test
/// installs its own while it runs. The pointers are *borrowed* and must outlive the installation. Main thread only.
struct KTVHOST_EXPORT KTVHostServices {
    std::function<std::unique_ptr<KTVMessageViewController>()> makeMessageViewController;
    KTVHelpManager* helpManager = nullptr;
    KTVConverter* converter = nullptr;
    KTVNaturalLanguageDateCreator* dateCreator = nullptr;
    KTVBundle* mainBundle = nullptr;
    KTVUserInterface* userInterface = nullptr;
    KTVPrintInfo* printInfo = nullptr;  ///< the application's shared print settings

    /// Replaces what is installed and returns what was installed before. Missing members are served by defaults that do
    /// nothing harmful (alerts go to stderr, save panels are cancelled, texts are their keys).
    static KTVHostServices install(KTVHostServices services);
    /// What is installed now; no member is empty.
    static const KTVHostServices& installed();
};
