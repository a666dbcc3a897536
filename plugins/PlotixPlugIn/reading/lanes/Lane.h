#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneScale.h"
#include "plugins/PlotixPlugIn/reading/lanes/UnitPrefix.h"

#include <QtCore/QString>

#include <functional>
#include <utility>
#include <vector>

/// One lane of a graph: a strip with a plot space of its own that follows the time of the others, and a value axis.
///
/// The arrangement *owns* it; the graph *shares* space and axis until the lane goes. Main thread only.
namespace plotix {

/// Whose modifier keys hold a lane's values; asked at every move, unless they mean something else.
class LaneDelegate : public CPTPlotSpaceDelegate {
public:
    explicit LaneDelegate(std::function<bool()> heedsKeys) : m_heedsKeys(std::move(heedsKeys)) {}
    bool plotSpaceShouldScaleBy(CPTXYPlotSpace*, double, QPointF) override { return true; }
    CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                CPTCoordinate coordinate) override;
    void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace*, CPTCoordinate) override {}
    bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace*, QPointF) override { return true; }
    bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace*) override { return true; }

private:
    const std::function<bool()> m_heedsKeys;
};

/// Where a lane is named.
struct LaneNaming {
    enum class Title { InHead, AlongAxis, None } title = Title::InHead;
    bool hasKeys = true;  ///< samples of its lines in its head
    friend bool operator==(const LaneNaming&, const LaneNaming&) = default;
};

class Lane {
public:
    /// `heedsKeys`: see ReadTrend.
    Lane(CPTXYGraph& graph, QString key, std::function<bool()> heedsKeys);
    ~Lane();
    Lane(const Lane&) = delete;
    Lane& operator=(const Lane&) = delete;

    const QString& key() const { return m_key; }
    const CPTXYPlotSpacePtr& space() const { return m_space; }
    const LaneSettings& settings() const { return m_settings; }
    void setSettings(const LaneSettings& settings) { m_settings = settings; }

    /// Takes plots into the lane, whose unit and common name are given, and shows them on its own scale.
    void setPlots(const std::vector<CPTScatterPlotPtr>& plots, const QString& name, const QString& unitSymbol);
    void setStrip(double top, double bottom);
    /// Gives its plots their own points back, until the next `setPlots`: another lane may take them.
    void leaveScale();

    void setNaming(const LaneNaming& naming) { m_naming = naming; }  ///< seen with the next restyle()

    /// Fits the values by the settings.
    void fit();

    /// Takes over the looks of the graph's value axis.
    void restyle();

    QString title() const;  ///< "Temperature (°C)"
    /// A value of the lane's range, written by `write`, with the unit of its axis.
    QString valueText(double value, const std::function<QString(double)>& write) const;
    const std::vector<CPTScatterPlotPtr>& plots() const { return m_plots; }

private:
    void putOnScale();
    void updatePrefix();

    CPTXYGraph& m_graph;  // borrowed: outlives the lane
    QString m_key;
    QString m_name;
    QString m_unitSymbol;
    PrefixedUnit m_prefixed;
    LaneSettings m_settings;
    LaneDelegate m_delegate;
    CPTXYPlotSpacePtr m_space = std::make_shared<CPTXYPlotSpace>();
    CPTXYAxisPtr m_axis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
    std::vector<CPTScatterPlotPtr> m_plots;
    std::vector<CPTSeriesControllerPtr> m_plain, m_scaled;  // of the plots; scaled ones only where logarithmic
    LaneNaming m_naming;
    double m_top = 0, m_bottom = 1;
};

}  // namespace plotix
