#pragma once

class KTVPlugInModule;
class KTVHelpManager;

namespace plotix {

class DesktopUserInterface;
class WebServing;

/// What site windows share with the rest of the program. All *borrowed*. A value; main thread only.
struct WindowServices {
    KTVPlugInModule* module = nullptr;
    DesktopUserInterface* userInterface = nullptr;
    KTVHelpManager* helpManager = nullptr;
    WebServing* webServing = nullptr;  ///< null: the program has none
};

}  // namespace plotix
