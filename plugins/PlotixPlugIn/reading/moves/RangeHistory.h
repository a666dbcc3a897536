#pragma once

#include <QtCore/QVariant>

#include <cstddef>
#include <optional>
#include <vector>

/// The views a person has looked at, to go back and forward among. A value; any thread.
namespace plotix {

class RangeHistory {
public:
    static constexpr std::size_t kMost = 50;  ///< older ones are forgotten

    /// The view now looked at; the same as before: nothing happens. What was ahead is forgotten.
    void add(const QVariantMap& view);
    bool canGoBack() const { return m_now > 0; }
    bool canGoForward() const { return m_now + 1 < m_views.size(); }
    /// The view before the present one, or after it, which is now the present one; nothing at either end.
    std::optional<QVariantMap> back();
    std::optional<QVariantMap> forward();

private:
    std::vector<QVariantMap> m_views;
    std::size_t m_now = 0;  // of the views; 0 when there are none
};

}  // namespace plotix
