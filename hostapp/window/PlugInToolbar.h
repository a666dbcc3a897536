#pragma once

#include "hostapp/window/GatheringToolbar.h"
#include "hostapp/window/SiteWindowController.h"

/// The toolbar of a site window: the button of every plug-in that gives one.
///
/// The plug-in makes the button and says what it does; the toolbar only places it, and names the agent when there are
/// several to confuse. *Borrows* the controller, which may end first. Main thread only.
namespace plotix {

class PlugInToolbar : public GatheringToolbar {
    Q_OBJECT
public:
    explicit PlugInToolbar(SiteWindowController& controller, QWidget* parent = nullptr);

private:
    void fill();
    QAction* named(const KTVPlugIn& plugIn, QAction* item) const;

    SiteWindowController& m_controller;
};

}  // namespace plotix
