#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLeastContrast = 2.6;  // of a line with white paper, as the ratio of their luminances

double contrastWithWhite(const QColor& color)
{
    const double luminance =
        0.2126 * linearLight(color.redF()) + 0.7152 * linearLight(color.greenF()) + 0.0722 * linearLight(color.blueF());
    return 1.05 / (luminance + 0.05);
}

}  // namespace

double linearLight(float channel)
{
    const double value = channel;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

QColor colorOnPaper(const QColor& color)
{
    if (!color.isValid())
        return color;
    float hue = 0, saturation = 0, lightness = 0;
    color.getHslF(&hue, &saturation, &lightness);
    QColor darker = color;
    while (lightness > 0 && contrastWithWhite(darker) < kLeastContrast) {
        lightness = std::max(0.0F, lightness - 0.02F);
        darker.setHslF(std::max(0.0F, hue), saturation, lightness, color.alphaF());
    }
    return darker;
}

QColor inkColor()
{
    return QColor(0x22, 0x28, 0x30);
}

QColor gridColorOnPaper()
{
    return QColor(0xd0, 0xd4, 0xda);
}

}  // namespace plotix
