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

/// What stands behind the host's class operations. Installed once by the host before it loads a module, and by a test
/// for its own duration; pointers are *borrowed* and must outlive the installation. Main thread only.
struct KTVHOST_EXPORT KTVHostServices {
    std::function<std::unique_ptr<KTVMessageViewController>()> makeMessageViewController;
    KTVHelpManager* helpManager = nullptr;
    KTVConverter* converter = nullptr;
    KTVNaturalLanguageDateCreator* dateCreator = nullptr;
    KTVBundle* mainBundle = nullptr;
    KTVUserInterface* userInterface = nullptr;
    KTVPrintInfo* printInfo = nullptr;  ///< the application's shared print settings

    /// Replaces what is installed and answers what was. Missing members are served by defaults that do nothing harmful
    /// (alerts go to stderr, save panels are cancelled, texts are their keys).
    static KTVHostServices install(KTVHostServices services);
    /// What serves now; no member is empty.
    static const KTVHostServices& installed();
};
