#include "plugins/PlotixPlugIn/reading/looks/DistinctLines.h"

#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace plotix {

namespace {

constexpr std::size_t kColorCount = 10;

/// Five light ones, then five dark ones. The n-th of either half share a pattern a turn later.
constexpr QRgb kColors[kColorCount] = {0xFF56B4E9, 0xFFE69F00, 0xFFF0E442, 0xFFCC79A7, 0xFFDDDDDD,
                                       0xFF0072B2, 0xFFD55E00, 0xFF117733, 0xFFAA4499, 0xFF707070};

/// How far apart two colours must be in L*a*b* to be two.
constexpr double kAlike = 18;

struct Lab {
    double lightness, a, b;
};

Lab labOf(const QColor& color)
{
    const double red = linearLight(color.redF());
    const double green = linearLight(color.greenF());
    const double blue = linearLight(color.blueF());
    const auto root = [](double value) {
        return value > 216.0 / 24389 ? std::cbrt(value) : (value * 24389 / 27 + 16) / 116;
    };
    const double x = root((0.4124 * red + 0.3576 * green + 0.1805 * blue) / 0.9505);
    const double y = root(0.2126 * red + 0.7152 * green + 0.0722 * blue);
    const double z = root((0.0193 * red + 0.1192 * green + 0.9505 * blue) / 1.089);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

}  // namespace

LineMark distinctLine(std::size_t number)
{
    const std::size_t turn = number / kColorCount;
    const std::size_t color = number % kColorCount;
    // By half a turn, then on: a pattern meets the colours of the other half first.
    const std::size_t dash = color + turn * (kColorCount / 2) + turn / 2;
    return {QColor::fromRgba(kColors[color]), static_cast<LineDash>(dash % kLineDashCount)};
}

bool lookAlike(const QColor& one, const QColor& other)
{
    if (!one.isValid() || !other.isValid())
        return false;
    const Lab first = labOf(one);
    const Lab second = labOf(other);
    return std::hypot(first.lightness - second.lightness, first.a - second.a, first.b - second.b) < kAlike;
}

std::vector<LineDash> dashesWhereAlike(const std::vector<QColor>& colors)
{
    std::vector<LineDash> dashes;
    for (std::size_t line = 0; line < colors.size(); ++line) {
        std::set<int> taken;
        std::size_t alike = 0;
        for (std::size_t before = 0; before < line; ++before)
            if (lookAlike(colors[before], colors[line])) {
                taken.insert(static_cast<int>(dashes[before]));
                ++alike;
            }
        int dash = 0;
        while (dash < kLineDashCount && taken.contains(dash))
            ++dash;
        dashes.push_back(
            static_cast<LineDash>(dash < kLineDashCount ? dash : static_cast<int>(alike) % kLineDashCount));
    }
    return dashes;
}

}  // namespace plotix
