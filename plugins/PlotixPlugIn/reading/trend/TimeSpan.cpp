#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <cmath>

namespace plotix {

namespace {

constexpr double kSameMoment = 0.01;  // seconds

}  // namespace

bool isSameSpan(const TimeSpan& one, const TimeSpan& other)
{
    return std::abs(one.from - other.from) < kSameMoment && std::abs(one.to - other.to) < kSameMoment;
}

}  // namespace plotix
