#pragma once

#include "hostapp/app/Composition.h"
#include "hostapp/cli/CommandServices.h"
#include "hostapp/window/SiteWindow.h"

/// Implements what the command line asks the program for, by means of the composition, which it *borrows*. Main thread
/// only.
namespace plotix {

class ProgramServices : public CommandServices {
public:
    explicit ProgramServices(Composition& composition) : m_composition(composition) {}

    bool hasDisplay() const override;
    int open(const OpenRequest& request) override;
    QByteArray render(const RenderRequest& request) override;
    QByteArray report(const ReportRequest& request) override;
    CasePlan planCase(const CaseRequest& request) override;
    void serve(const ServeRequest& request) override;
    void storeTrend(const TrendRequest& trend) override;
    CommandProgress makeProgress(const QString& title) override;

private:
    int runWindow(const OpenRequest& request);
    int savePicture(const OpenRequest& request);
    WindowServices windowServices();

    Composition& m_composition;
};

}  // namespace plotix
