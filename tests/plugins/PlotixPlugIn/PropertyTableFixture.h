#pragma once

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "tests/support/fakehost/FakeHost.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

/// A trend view of some of the agent's properties, with its view loaded and its archive answered by hand.
///
/// The agent has "Air Temperature" (°C, red), "Pressure" (hPa, blue) and "Wind Speed" (no known unit, green).
class PropertyTableFixture : public testing::Test {
protected:
    PropertyTableFixture()
    {
        airTemperature = host.addProperty("Air Temperature", "degC", Qt::red);
        pressure = host.addProperty("Pressure", "hPa", Qt::blue);
        windSpeed = host.addProperty("Wind Speed", "m/s", Qt::green);
    }

    /// Makes the trend view and loads its view, which starts the first fetch.
    void open(const QStringList& propertyNames)
    {
        KTVPropertyList tables;
        for (const QString& name : propertyNames)
            tables.push_back(host.agent()->property(name));
        trend = KTVPlotixPlugIn::initWithAgent(host.agent(), &host.siteWindowController(), tables, plotix::Date{0},
                                               plotix::Date{7200});
        trend->view();
    }
    void openWithoutTables()
    {
        trend = KTVPlotixPlugIn::initWithAgent(host.agent(), &host.siteWindowController());
        trend->view();
    }
    void show()
    {
        trend->view()->show();
        trend->view()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(trend->view()));
    }

    /// Answers the fetch under way.
    void deliver(const KTVRecordDictionaryPtr& records)
    {
        host.archiveManager().answerLast({records, std::nullopt, 0});
        fakehost::FakeHost::drainMainQueue();
    }
    /// A further fetch, answered.
    void deliverAgain(const KTVRecordDictionaryPtr& records)
    {
        trend->refresh(nullptr);
        deliver(records);
    }
    /// Two rows of values for each key.
    KTVRecordDictionaryPtr twoRows(const QStringList& keys) const
    {
        auto builder = host.records();
        builder.times({0, 60});
        for (const QString& key : keys)
            builder.column(key, {10, 20});
        return builder.build();
    }
    void openAndDeliver(const QStringList& propertyNames)
    {
        open(propertyNames);
        deliver(twoRows(propertyNames));
    }

    InfoTableArrayController& controller() const { return *trend->infoTableArrayController(); }
    const InfoTableArray& displayed() const { return controller().arrangedObjects(); }
    const InfoTableRow& row(std::size_t index) const { return *displayed().at(index); }
    QStringList rowNames() const
    {
        QStringList names;
        for (const InfoTableRowPtr& row : displayed())
            names.append(row->tableName);
        return names;
    }
    QStringList propertyKeys() const
    {
        QStringList keys;
        for (const KTVPropertyPtr& property : trend->properties().value_or(KTVPropertyList()))
            keys.append(property->propertyName());
        return keys;
    }
    QStringList plotKeys() const
    {
        QStringList keys;
        for (const CPTScatterPlotPtr& plot : trend->graph()->allPlots())
            keys.append(plot->identifier());
        return keys;
    }
    CPTScatterPlotPtr plot(const QString& key) const { return trend->graph()->plotWithIdentifier(key); }
    std::size_t fetchCount() { return host.archiveManager().fetchCount(); }

    fakehost::FakeHost host;
    fakehost::FakePropertyPtr airTemperature;
    fakehost::FakePropertyPtr pressure;
    fakehost::FakePropertyPtr windSpeed;
    KTVPlotixPlugIn::Ptr trend;
};
