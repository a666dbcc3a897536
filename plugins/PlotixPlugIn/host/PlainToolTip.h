#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

/// A text, such as one with names in it, as a tool tip that shows it as it is. Any thread.
///
/// Tool tips are taken for rich text where they look like it, and a name may: "<b>x</b> & y". Such a text comes back as
/// rich text that looks like the plain one, any other as it was.
KTVHOST_EXPORT QString plainToolTip(const QString& text);
