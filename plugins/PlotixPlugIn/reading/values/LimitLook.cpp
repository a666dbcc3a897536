#include "plugins/PlotixPlugIn/reading/values/LimitLook.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

struct SeverityColors {
    QColor onDark, onLight;
};

const SeverityColors& colorsOf(KTVLimit::Severity severity)
{
    static const std::array<SeverityColors, 3> colors{{{QColor(120, 205, 210), QColor(10, 115, 130)},
                                                       {QColor(255, 190, 90), QColor(165, 95, 0)},
                                                       {QColor(255, 125, 110), QColor(200, 35, 25)}}};
    return colors[static_cast<std::size_t>(severity)];
}

}  // namespace

QColor limitColor(KTVLimit::Severity severity, bool onDark)
{
    return onDark ? colorsOf(severity).onDark : colorsOf(severity).onLight;
}

QString limitText(const KTVLimit& limit, const ValueTexts& texts, const QString& unitSymbol)
{
    return limit.name + QLatin1Char(' ') + texts.value(limit.value, unitSymbol);
}

std::optional<KTVLimit> limitPassed(const std::vector<KTVLimit>& limits, double value)
{
    std::optional<KTVLimit> passed;
    for (const KTVLimit& limit : limits) {
        if (!limit.isBeyond(value))
            continue;
        const bool isFarther =
            passed && passed->severity == limit.severity && passed->side == limit.side && passed->isBeyond(limit.value);
        if (!passed || limit.severity > passed->severity || isFarther)
            passed = limit;
    }
    return passed;
}

std::optional<KTVLimit> innermostLimit(const std::vector<KTVLimit>& limits, KTVLimit::Side side)
{
    std::optional<KTVLimit> innermost;
    for (const KTVLimit& limit : limits)
        if (limit.side == side && (!innermost || limit.isBeyond(innermost->value)))
            innermost = limit;
    return innermost;
}

}  // namespace plotix
