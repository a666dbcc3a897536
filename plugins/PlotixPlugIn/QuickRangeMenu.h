#pragma once

#include <QtWidgets/QMenu>

class KTVDataClusterViewController;

/// The quick-range pop-up of a date range controller: an item a range, in the order of their
/// table, each sending the controller's operation. The parent *owns* the menu; the controller is *weak*. Main thread
/// only.
QMenu* makeQuickRangeMenu(KTVDataClusterViewController& controller, QWidget* parent);
