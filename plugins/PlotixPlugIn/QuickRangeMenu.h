#pragma once

#include <QtWidgets/QMenu>

class KTVDataClusterViewController;

/// The quick-range pop-up of a date range controller: thirteen items in the order of the controller's operations, each
/// sending one of them. The parent *owns* the menu; the controller is *weak*. Main thread only.
QMenu* makeQuickRangeMenu(KTVDataClusterViewController& controller, QWidget* parent);
