#pragma once

#include <QtWidgets/QMenu>

class KTVDataClusterViewController;

/// The quick-range pop-up of a date range controller: one item per range, in the order of their table. Each calls the
/// controller's operation for its range. The parent *owns* the menu; the controller is *weak*. Main thread only.
QMenu* makeQuickRangeMenu(KTVDataClusterViewController& controller, QWidget* parent);
