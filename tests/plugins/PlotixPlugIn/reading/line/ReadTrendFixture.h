#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/line/LinePart.h"
#include "tests/plugins/PlotixPlugIn/TrendViewFixture.h"
#include "tests/support/PinnedZone.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QTest>

/// A trend on a screen with three lines of a record a minute, and hands that point, click and press keys in it.
///
/// Air temperature runs 0, 1, … 60 °C over the hour; pressure is 1000 hPa at even minutes and 1002 at odd ones, with
/// nothing recorded from minute 20 to 40; wind is 5 m/s throughout.
class ReadTrendFixture : public TrendViewFixture {
protected:
    static constexpr double kMinute = 60;

    void SetUp() override
    {
        m_zone.use("UTC");
        makeTrend({"airTemperature", "pressure", "wind"});
        trend().setReading({{"brokenLines", true}});
        open();
        answer(minutes());
        trend().view()->resize(900, 700);
        trend().view()->show();
        drain();
    }

    fakehost::RecordBuilder minutes() const
    {
        std::vector<double> times, air, pressure, wind;
        for (int minute = 0; minute <= 60; ++minute) {
            times.push_back(kFrom + minute * kMinute);
            air.push_back(minute);
            pressure.push_back(minute > 20 && minute < 40 ? kInvalid : 1000 + 2 * (minute % 2));
            wind.push_back(5);
        }
        return recordsAt(times).column("airTemperature", air).column("pressure", pressure).column("wind", wind);
    }

    KTVGraphHostingView& graphView() { return *trend().hostView(); }
    plotkit::GraphGeometry geometry() { return graphView().geometryShown(*trend().graph()); }
    QObject& part(const QString& key) { return *qobject_cast<plotix::TrendReader*>(trend().trendReader())->part(key); }
    QVariantMap chosen(const QString& key) { return trend().reading().value(key).toMap(); }

    static double minute(double count) { return kFrom + count * kMinute; }
    /// Where a minute stands in the view, at half its height.
    QPointF at(double minuteCount)
    {
        const plotkit::GraphGeometry where = geometry();
        const double x = where.pointForValue(where.graph.plotSpace(), {minute(minuteCount), 0}).x();
        return {x, where.plotArea.center().y()};
    }
    void moveTo(const QPointF& place, Qt::MouseButtons buttons = {})
    {
        QMouseEvent move(QEvent::MouseMove, place, graphView().mapToGlobal(place), Qt::NoButton, buttons, {});
        QApplication::sendEvent(&graphView(), &move);
    }
    void click(const QPointF& place) { QTest::mouseClick(&graphView(), Qt::LeftButton, {}, place.toPoint()); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        graphView().setFocus();
        QTest::keyClick(&graphView(), key, modifiers);
    }
    QAction* action(const QString& text)
    {
        for (QAction* each : trend().readingActions())
            if (each->text().remove(QLatin1Char('&')) == text)
                return each;
        ADD_FAILURE() << "no action " << text.toStdString();
        return nullptr;
    }

private:
    plotix::PinnedZone m_zone;
};
