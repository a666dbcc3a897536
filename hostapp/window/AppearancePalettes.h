#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

/// The colours of the two looks, light and dark. Values; any thread.
namespace plotix {

/// What a look is made of; the palette and the style sheet take their colours from here.
struct LookColours {
    QColor window;
    QColor base;           ///< behind lists and texts
    QColor alternateBase;  ///< behind every other row
    QColor button;
    QColor text;
    QColor dimText;
    QColor accent;
    QColor link;
    QColor line;       ///< between regions
    QColor hover;      ///< laid over a row below the pointer
    QColor boxEdge;    ///< of a tick box
    QColor quietText;  ///< in the status bar
};

const LookColours& darkLook();
const LookColours& lightLook();

QPalette paletteOf(const LookColours& look);

}  // namespace plotix
