#include "plotkit/model/CPTAxisSet.h"

#include <algorithm>

CPTXYAxisSet::CPTXYAxisSet()
    : m_axes{std::make_shared<CPTXYAxis>(CPTCoordinate::X), std::make_shared<CPTXYAxis>(CPTCoordinate::Y)}
{
}

CPTXYAxisSet::~CPTXYAxisSet()
{
    for (const CPTXYAxisPtr& axis : m_axes)
        axis->setChangeHandler({});  // the axes may outlive the set
}

void CPTXYAxisSet::addAxis(const CPTXYAxisPtr& axis)
{
    if (!axis || std::find(m_axes.begin(), m_axes.end(), axis) != m_axes.end())
        return;
    m_axes.push_back(axis);
    axis->setChangeHandler(m_changeHandler);
    changed();
}

void CPTXYAxisSet::removeAxis(const CPTXYAxisPtr& axis)
{
    const auto found = std::find(m_axes.begin() + 2, m_axes.end(), axis);
    if (found == m_axes.end())
        return;
    const CPTXYAxisPtr removed = *found;  // `axis` may be a reference to the very element that goes
    m_axes.erase(found);
    removed->setChangeHandler({});
    changed();
}

void CPTXYAxisSet::setChangeHandler(const std::function<void()>& handler)
{
    m_changeHandler = handler;
    for (const CPTXYAxisPtr& axis : m_axes)
        axis->setChangeHandler(handler);
}

void CPTXYAxisSet::changed() const
{
    if (m_changeHandler)
        m_changeHandler();
}
