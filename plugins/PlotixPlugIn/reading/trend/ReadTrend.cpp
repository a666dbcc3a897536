#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

namespace plotix {

ReadTrend::~ReadTrend() = default;

std::optional<ReadLine> lineWithKey(const ReadTrend& trend, const QString& key)
{
    for (ReadLine& line : trend.lines())
        if (line.key == key)
            return std::move(line);
    return std::nullopt;
}

}  // namespace plotix
