#pragma once

#include <QtCore/QString>

/// What a site window needs of the program's web server. The composition root chooses who does it; windows *borrow* it.
/// Main thread only.
namespace plotix {

class WorkingSite;

class WebServing {
public:
    virtual ~WebServing() = default;

    /// Shows the site to browsers on this machine; answers the address of its page. For a site that is served already:
    /// as if it had been stopped before. Throws ReportableError.
    virtual QString start(WorkingSite& site) = 0;

    /// When it returns, no request uses the site's plug-ins any more. A site that is not served: nothing happens.
    virtual void stop(WorkingSite& site) = 0;
};

}  // namespace plotix
