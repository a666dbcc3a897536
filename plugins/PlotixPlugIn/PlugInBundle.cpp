#include "plugins/PlotixPlugIn/PlugInBundle.h"

/// The resources stand in a static library, so they register themselves only when asked. Outside every namespace, as
/// the macro wants it.
static void initializeResources()
{
    Q_INIT_RESOURCE(PlotixPlugIn);
}

namespace plugInBundle {

QString name()
{
    return QStringLiteral("Plotix");
}

QString textDescription()
{
    // The doubled word is part of the text.
    return QStringLiteral("Plotix provides provides plotting, trending, and analytics services.");
}

QIcon icon()
{
    // Lists ask for the icon at every painting; a new one would be decoded and scaled each time.
    static const QIcon shared(QStringLiteral(":/PlotixPlugIn/icon.png"));
    return shared;
}

void registerResources()
{
    initializeResources();
}

}  // namespace plugInBundle
