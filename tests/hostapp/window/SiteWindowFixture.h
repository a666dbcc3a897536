#pragma once

#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtWidgets/QMessageBox>

/// A window on a scratch site of one station; the plug-in module makes stubs.
class SiteWindowFixture : public testing::Test {
protected:
    SiteWindowFixture() : station(site.addStation()) {}
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void openWindow() { window = std::make_unique<plotix::SiteWindow>(site.document, services()); }
    plotix::WindowServices services() { return {&module, &desktop, &help}; }
    void reopen()
    {
        window->close();
        window.reset();
        station.reset();
        site.reopen();
        openWindow();
    }
    KTVPlugInPtr addTrend(const QString& title)
    {
        return window->controller().newTrend(site.document->agents()[0], {}, plotix::Date{0}, plotix::Date{10}, title);
    }
    StubTrend& selectedStub() { return dynamic_cast<StubTrend&>(*window->selectedPlugIn()); }
    void tick(int property)
    {
        auto& list = window->propertyList();
        list.setData(list.index(property, 0, list.index(0, 0)), Qt::Checked, Qt::CheckStateRole);
    }
    QMessageBox* shownBox()
    {
        const auto boxes = window->findChildren<QMessageBox*>();
        return boxes.isEmpty() ? nullptr : boxes.last();
    }

    ScratchSite site;
    StubModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::shared_ptr<plotix::SiteAgent> station;
    std::unique_ptr<plotix::SiteWindow> window;
};
