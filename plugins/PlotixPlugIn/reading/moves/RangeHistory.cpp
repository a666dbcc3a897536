#include "plugins/PlotixPlugIn/reading/moves/RangeHistory.h"

namespace plotix {

void RangeHistory::add(const QVariantMap& view)
{
    if (!m_views.empty() && m_views[m_now] == view)
        return;
    if (!m_views.empty())
        m_views.resize(m_now + 1);
    m_views.push_back(view);
    if (m_views.size() > kMost)
        m_views.erase(m_views.begin());
    m_now = m_views.size() - 1;
}

std::optional<QVariantMap> RangeHistory::back()
{
    if (!canGoBack())
        return std::nullopt;
    return m_views[--m_now];
}

std::optional<QVariantMap> RangeHistory::forward()
{
    if (!canGoForward())
        return std::nullopt;
    return m_views[++m_now];
}

}  // namespace plotix
