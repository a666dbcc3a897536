#pragma once

#include "plotkit/model/CPTAxis.h"

#include <functional>
#include <vector>

/// The axes of a graph, as a list: the x and the y axis every graph has, then those that were added. The graph *owns*
/// it. Main thread only.
class CPTXYAxisSet {
public:
    CPTXYAxisSet();
    ~CPTXYAxisSet();
    CPTXYAxisSet(const CPTXYAxisSet&) = delete;
    CPTXYAxisSet& operator=(const CPTXYAxisSet&) = delete;

    CPTXYAxis* xAxis() { return m_axes[0].get(); }
    CPTXYAxis* yAxis() { return m_axes[1].get(); }
    /// The first and the last of the two axes that every graph has; added axes do not count.
    CPTXYAxis* firstAxis() { return xAxis(); }
    CPTXYAxis* lastAxis() { return yAxis(); }
    const CPTXYAxis& xAxis() const { return *m_axes[0]; }
    const CPTXYAxis& yAxis() const { return *m_axes[1]; }

    const std::vector<CPTXYAxisPtr>& axes() const { return m_axes; }
    void addAxis(const CPTXYAxisPtr& axis);     ///< null, or added already: nothing happens
    void removeAxis(const CPTXYAxisPtr& axis);  ///< one of those two, or not in the set: nothing happens

    /// Called after every change of an axis and of the list.
    void setChangeHandler(const std::function<void()>& handler);

private:
    void changed() const;

    std::vector<CPTXYAxisPtr> m_axes;
    std::function<void()> m_changeHandler;
};
