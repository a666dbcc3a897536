#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/widget/CPTGraphHostingView.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtTest/qtestspontaneevent.h>

#include <gtest/gtest.h>

/// Freezes axes, declines zooms, and writes down what is proposed and asked.
class FreezingDelegate : public CPTPlotSpaceDelegate {
public:
    bool plotSpaceShouldScaleBy(CPTXYPlotSpace*, double, QPointF) override { return scales; }
    CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                CPTCoordinate coordinate) override
    {
        log.push_back(coordinate == CPTCoordinate::X ? "x" : "y");
        if (coordinate == CPTCoordinate::Y)
            return freezesY ? space->yRange() : range;
        return freezesX ? space->xRange() : range;
    }
    void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace*, CPTCoordinate) override {}
    bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace*, QPointF) override
    {
        log.push_back("up");
        return true;
    }
    bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace*) override
    {
        log.push_back("cancelled");
        return true;
    }

    bool scales = true;
    bool freezesX = false;
    bool freezesY = false;
    QStringList log;
};

class CountingDelegate : public CPTPlotDelegate {
public:
    void didFinishDrawing(CPTScatterPlot* plot) override { drawn.push_back(plot->identifier()); }
    QStringList drawn;
};

/// A parent that collects the keys and wheel turns its child did not use.
class Parent : public QWidget {
public:
    QList<int> keys;
    int wheels = 0;
    int presses = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    void wheelEvent(QWheelEvent*) override { ++wheels; }
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

/// A view of 240 × 240 whose plot area is the square from 20 to 220, showing 0 to 200 on both axes: a point a value.
class HostingViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        graph->setPadding({10, 10, 10, 10});
        graph->setPlotAreaFramePadding({10, 10, 10, 10});
        graph->defaultPlotSpace()->setAllowsUserInteraction(true);
        show({0, 200}, {0, 200});
        parent.resize(240, 240);
        view->setGeometry(0, 0, 240, 240);
        view->setHostedGraph(graph);
        parent.show();
    }

    CPTXYPlotSpace& space() { return *graph->defaultPlotSpace(); }
    void show(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        space().setXRange(x);
        space().setYRange(y);
    }
    void drag(const QList<QPoint>& places)
    {
        QTest::mousePress(view, Qt::LeftButton, {}, places.front());
        moveOn(places);
        QTest::mouseRelease(view, Qt::LeftButton, {}, places.back());
    }
    void moveOn(const QList<QPoint>& places)
    {
        for (const QPoint& place : places) {
            QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(view->mapToGlobal(place)), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(view, &move);
        }
    }
    void turnWheel(QPointF place, QPoint angle, Qt::KeyboardModifiers modifiers = {}, QPoint pixels = {},
                   Qt::ScrollPhase phase = Qt::NoScrollPhase)
    {
        QWheelEvent event(place, view->mapToGlobal(place), pixels, angle, Qt::NoButton, modifiers, phase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);  // only turns of a real wheel go on to the parent
        qApp->notify(view, &event);
    }
    void expectRanges(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        EXPECT_NEAR(space().xRange().location, x.location, 1e-9);
        EXPECT_NEAR(space().xRange().length, x.length, 1e-9);
        EXPECT_NEAR(space().yRange().location, y.location, 1e-9);
        EXPECT_NEAR(space().yRange().length, y.length, 1e-9);
    }
    CPTScatterPlotPtr addPlot(std::vector<double> x, std::vector<float> y)
    {
        const std::size_t count = y.size();
        controllers.push_back(std::make_shared<CPTSeriesController>(std::make_shared<CPTPointSeries>(
            plotix::SharedArray<double>::fromVector(std::move(x)), plotix::SharedArray<float>::fromVector(std::move(y)),
            plotix::ValidityBitmap(), count)));
        auto plot = std::make_shared<CPTScatterPlot>();
        plot->setIdentifier(QString::number(controllers.size()));
        plot->setDelegate(&plotDelegate);
        plot->bind(CPTScatterPlotBindingXValues, controllers.back(), QStringLiteral("arrangedObjects.x"));
        plot->bind(CPTScatterPlotBindingYValues, controllers.back(), QStringLiteral("arrangedObjects.y"));
        graph->addPlot(plot);
        return plot;
    }

    FreezingDelegate delegate;
    CountingDelegate plotDelegate;
    std::vector<CPTSeriesControllerPtr> controllers;
    CPTXYGraphPtr graph = std::make_shared<CPTXYGraph>();
    Parent parent;
    CPTGraphHostingView* view = new CPTGraphHostingView(&parent);
};
