#pragma once

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/KTVPlotixToolbarPlugIn.h"
#include "tests/support/fakehost/FakeHost.h"

#include <gtest/gtest.h>

/// A toolbar plug-in in the in-memory host, and verbs to drive its sheet.
///
/// The agent has "Air Temperature" (degC, red), "Pressure" (hPa, blue) and "Wind" (m/s, green).
class ToolbarFixture : public testing::Test {
protected:
    ToolbarFixture()
    {
        host.addProperty(QStringLiteral("Air Temperature"), QStringLiteral("degC"), Qt::red);
        host.addProperty(QStringLiteral("Pressure"), QStringLiteral("hPa"), Qt::blue);
        host.addProperty(QStringLiteral("Wind"), QStringLiteral("m/s"), Qt::green);
        toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), &host.siteWindowController());
    }

    KTVPropertyPtr property(const QString& key) { return host.agent()->property(key); }
    fakehost::FakeSiteWindowController& window() { return host.siteWindowController(); }
    KTVDataClusterViewController& dates() { return *toolbar->dataClusterViewController(); }
    static void drain() { fakehost::FakeHost::drainMainQueue(); }

    // The sheet.
    void showSheet() { toolbar->showPlotixSetupWindow(); }
    QDialog& sheet() { return *toolbar->configurationWindow(); }
    template <class T>
    T* control(const char* name)
    {
        return toolbar->view()->findChild<T*>(QLatin1String(name));
    }
    QStringList rows() const
    {
        QStringList names;
        for (const SelectablePropertyPtr& row : *toolbar->selectableProperties())
            names << row->property()->name() + (row->selected() ? QStringLiteral(" +") : QString());
        return names;
    }
    void tick(std::size_t row) { toolbar->selectableProperties()->at(row)->setSelected(true); }
    void done()
    {
        toolbar->doneClicked(nullptr);
        drain();
    }
    void cancel()
    {
        toolbar->cancelClicked(nullptr);
        drain();
    }
    /// Shows the sheet, ticks the rows and presses Done.
    void makeTrend(const std::vector<std::size_t>& ticked = {})
    {
        showSheet();
        for (const std::size_t row : ticked)
            tick(row);
        done();
    }
    std::size_t trendCount() { return window().items().size(); }
    KTVPlotixPlugIn& trend(std::size_t index = 0)
    {
        return dynamic_cast<KTVPlotixPlugIn&>(*window().items().at(index)->representedObject());
    }

    // Archiving.
    fakehost::FakeArchive archived() const
    {
        fakehost::FakeArchive archive;
        fakehost::FakeEncoder encoder(archive);
        toolbar->encodeWithCoder(encoder);
        return archive;
    }
    KTVPlotixToolbarPlugIn::Ptr decoded(const fakehost::FakeArchive& archive)
    {
        fakehost::FakeDecoder decoder = host.decoder(archive);
        return KTVPlotixToolbarPlugIn::initWithCoder(decoder);
    }

    fakehost::FakeHost host;  // first, so that it outlives the plug-in
    KTVPlotixToolbarPlugIn::Ptr toolbar;
};
