#pragma once

#include "plugins/PlotixPlugIn/reading/comparing/ComparingPart.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"
#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

/// Lines beside what they were earlier, in a trend on a screen. A day earlier every value was 10 less.
class ComparingFixture : public ReadTrendFixture {
protected:
    static constexpr double kDay = 86'400;

    void compareWith(const QStringList& comparisons)
    {
        trend().setReading({{"comparing", QVariantMap{{"with", comparisons}}}});
    }
    void compareWithADayEarlier()
    {
        compareWith({"1d"});
        answer(dayEarlier());
    }
    fakehost::RecordBuilder dayEarlier(double less = 10, double before = kDay) const
    {
        std::vector<double> times, air, pressure, wind;
        for (int minute = 0; minute <= 60; ++minute) {
            times.push_back(kFrom - before + minute * kMinute);
            air.push_back(minute - less);
            pressure.push_back(1000 - less);
            wind.push_back(5 - less);
        }
        return recordsAt(times).column("airTemperature", air).column("pressure", pressure).column("wind", wind);
    }
    fakehost::RecordBuilder nothingRecorded() const
    {
        return recordsAt({}).column("airTemperature", {}).column("pressure", {}).column("wind", {});
    }
    void answerFetch(int number, const fakehost::RecordBuilder& records)
    {
        host().archiveManager().answer(static_cast<std::size_t>(number), {records.build(), std::nullopt});
        drain();
    }
    plotix::ComparingPart& comparing() { return dynamic_cast<plotix::ComparingPart&>(part("comparing")); }
    std::vector<plotix::ReadLine> lines()
    {
        return dynamic_cast<plotix::MarksPart&>(part("marks")).readTrend().lines();
    }
    QStringList names()
    {
        QStringList names;
        for (const plotix::ReadLine& line : lines())
            names << line.name;
        return names;
    }
    CPTScatterPlotPtr plot(const QString& key) { return trend().graph()->plotWithIdentifier(key); }
    CPTScatterPlotPtr airEarlier() { return plot(plotix::comparedKey("airTemperature", "1d")); }
    plotix::TableFigures& table() { return *qobject_cast<plotix::TrendReader*>(trend().trendReader())->tableFigures(); }
    QString cell(const QString& identifier, const QString& key = "airTemperature")
    {
        table().finish();
        return table().cell(key, identifier).text.replace(QChar(QChar::Nbsp), ' ');
    }
    QStringList columns()
    {
        table().finish();
        QStringList identifiers;
        for (const auto& column : table().columns())
            identifiers << column.identifier;
        return identifiers;
    }
    QString valuesAt(double minuteCount)
    {
        trend().setReading({{"valueLine", QVariantMap{{"held", minute(minuteCount)}}}});
        action("Copy Values at the Line")->trigger();
        return QGuiApplication::clipboard()->text().replace(QChar(QChar::Nbsp), ' ');
    }
};
