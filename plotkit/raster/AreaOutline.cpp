#include "plotkit/raster/AreaOutline.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

/// A height in steps below the clip's top, cut to the clip.
class HeightSteps {
public:
    explicit HeightSteps(const QRect& clip)
        : m_top(static_cast<float>(clip.top())), m_most(static_cast<float>(clip.height()))
    {
    }
    qint32 operator()(float y) const
    {
        const float below = std::clamp(y - m_top, 0.0F, m_most);
        return static_cast<qint32>(below * static_cast<float>(RasterKernels::kRowSteps) + 0.5F);
    }

private:
    float m_top, m_most;
};

}  // namespace

void outlineArea(StrokeOutline& outline, const AreaColumns& area, const StrokeArea& within)
{
    constexpr int kPerPixel = LineColumns::kPerPixel;
    constexpr auto kBlock = static_cast<std::size_t>(RasterKernels::kLanes * kPerPixel);
    const double offset = (within.clip.left() - area.left) * kPerPixel;
    const double whole = std::floor(offset);
    outline.perPixel = kPerPixel;
    outline.phase = offset - whole;
    const auto targets = static_cast<std::size_t>(within.width() * kPerPixel + 1);
    const std::size_t room = (targets + kBlock - 1) / kBlock * kBlock + RasterKernels::kLanes;
    outline.top.assign(room, 0);
    outline.bottom.assign(room, 0);

    // Target 0 is the column that begins at or before the lead.
    const double first = whole - within.lead * kPerPixel;
    const auto count = static_cast<double>(area.top.size());
    const double from = std::clamp(-first, 0.0, static_cast<double>(targets));
    const double to = std::clamp(count - first, from, static_cast<double>(targets));
    const HeightSteps steps(within.clip);
    for (auto target = static_cast<std::size_t>(from); target < static_cast<std::size_t>(to); ++target) {
        const auto column = static_cast<std::size_t>(first + static_cast<double>(target));
        outline.top[target] = steps(area.top[column]);
        outline.bottom[target] = steps(area.bottom[column]);
    }
}

}  // namespace plotkit
