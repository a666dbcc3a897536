#pragma once

#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/StubTrend.h"

/// What a site window borrows, with stubs for trends; it must outlive the window. Main thread only.
struct StubbedServices {
    plotix::WindowServices services(plotix::WebServing* web = nullptr) { return {&module, &desktop, &help, web}; }

    StubModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
};
