#pragma once

#include "plotkit/model/CPTPlotLooks.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTStyles.h"

#include <QtCore/QMetaObject>

#include <functional>
#include <limits>
#include <memory>

class CPTScatterPlot;
class CPTXYPlotSpace;

/// Told when a plot has been drawn. *Borrowed* by its plots: reset it there before it goes. Main thread only.
class CPTPlotDelegate {
public:
    virtual ~CPTPlotDelegate();
    virtual void didFinishDrawing(CPTScatterPlot* plot) = 0;
};

enum class CPTScatterPlotBinding { XValues, YValues };
inline constexpr CPTScatterPlotBinding CPTScatterPlotBindingXValues = CPTScatterPlotBinding::XValues;
inline constexpr CPTScatterPlotBinding CPTScatterPlotBindingYValues = CPTScatterPlotBinding::YValues;

/// One line through the points of a series. The graph and its users *share* it. Main thread only.
class CPTScatterPlot {
public:
    CPTScatterPlot() = default;
    ~CPTScatterPlot();
    CPTScatterPlot(const CPTScatterPlot&) = delete;
    CPTScatterPlot& operator=(const CPTScatterPlot&) = delete;

    const QString& identifier() const { return m_identifier; }
    void setIdentifier(const QString& identifier) { m_identifier = identifier; }
    /// Its name for people, where the graph shows keys; empty: it has none.
    const QString& title() const { return m_title; }
    void setTitle(const QString& title);
    CPTPlotDelegate* delegate() const { return m_delegate; }
    void setDelegate(CPTPlotDelegate* delegate) { m_delegate = delegate; }

    /// The space whose ranges it is drawn by; null is the graph's default one. Held *weakly*.
    std::shared_ptr<const CPTXYPlotSpace> plotSpace() const { return m_plotSpace.lock(); }
    void setPlotSpace(const std::shared_ptr<const CPTXYPlotSpace>& space);

    const CPTLineStyle& dataLineStyle() const { return m_dataLineStyle; }
    void setDataLineStyle(const CPTLineStyle& style);

    /// Straight lines at first. A held value ends at the last point before a gap. Points are joined in the order of
    /// their elements, so a value is only held where x never decreases; elsewhere lines are straight.
    CPTScatterPlotInterpolation interpolation() const { return m_interpolation; }
    void setInterpolation(CPTScatterPlotInterpolation interpolation);

    /// The diameter of a dot at every point, in the line's colour; none at 0, which it is at first, and for anything
    /// but a positive number. Without a line the dots are then as wide as the line would be.
    double pointSize() const { return m_pointSize; }
    void setPointSize(double size);
    double drawnPointSize() const;  ///< as it is drawn; 0: no dots

    /// Nothing at first. Fills are drawn beneath all lines, over the span that both of their edges have. Without a line
    /// between the points nothing is filled.
    const CPTAreaFill& areaFill() const { return m_areaFill; }
    void setAreaFill(const CPTAreaFill& fill);

    /// A hidden plot is not drawn and reports nothing; it still counts in a fit.
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

    /// Points farther apart in x than this are not joined, where that can be seen: a gap narrower than a pixel is
    /// bridged. Infinite at first, and for anything but a positive number: all are joined, whatever lies between.
    double gapThreshold() const { return m_gapThreshold; }
    void setGapThreshold(double distance);

    /// Reads values through the controller; the key path is "arrangedObjects.x" or "arrangedObjects.y". Holds the
    /// controller *weakly*: without it there are no values. Both bindings name the same controller: binding to another
    /// one drops the other binding, a null one drops both.
    void bind(CPTScatterPlotBinding binding, const CPTSeriesControllerPtr& controller, const QString& keyPath);
    QString boundKeyPath(CPTScatterPlotBinding binding) const;
    CPTSeriesControllerPtr boundController() const { return m_controller.lock(); }

    /// The bound points; null until both bindings are made.
    CPTPointSeriesPtr series() const;

    /// The points before they were put on another scale, element by element; unless that was done the bound ones. For
    /// whoever reads values, as `series` is what is drawn.
    CPTPointSeriesPtr valueSeries() const { return m_valueSeries ? m_valueSeries : series(); }
    void setValueSeries(CPTPointSeriesPtr series) { m_valueSeries = std::move(series); }

    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    void changed() const;

    QString m_identifier;
    QString m_title;
    CPTPlotDelegate* m_delegate = nullptr;
    std::weak_ptr<const CPTXYPlotSpace> m_plotSpace;
    CPTLineStyle m_dataLineStyle;
    CPTScatterPlotInterpolation m_interpolation = CPTScatterPlotInterpolation::Linear;
    double m_pointSize = 0;
    CPTAreaFill m_areaFill;
    bool m_hidden = false;
    double m_gapThreshold = std::numeric_limits<double>::infinity();
    QString m_xKeyPath;
    QString m_yKeyPath;
    std::weak_ptr<CPTSeriesController> m_controller;
    CPTPointSeriesPtr m_valueSeries;
    QMetaObject::Connection m_connection;
    std::function<void()> m_changeHandler;
};

using CPTScatterPlotPtr = std::shared_ptr<CPTScatterPlot>;
