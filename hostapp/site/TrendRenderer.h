#pragma once

#include "hostapp/site/TrendRequest.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// Draws a trend into a PNG or PDF without showing anything. *Borrows* the module. Main thread only.
namespace plotix {

class TrendRenderer {
public:
    explicit TrendRenderer(KTVPlugInModule* module) : m_module(module) {}

    /// Draws a loaded view that is never shown; with `bare`, by the off-screen class operation. Throws ReportableError
    /// when the records cannot be read or nothing can be drawn at that size.
    QByteArray render(const RenderRequest& request) const;

private:
    QByteArray renderView(const RenderRequest& request) const;
    QByteArray renderBare(const RenderRequest& request) const;

    KTVPlugInModule* m_module;
};

}  // namespace plotix
