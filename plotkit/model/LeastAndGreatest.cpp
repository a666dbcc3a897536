#include "plotkit/model/LeastAndGreatest.h"

namespace plotkit {

CPTMinMax emptyMinMax()
{
    return {kBeyondAll, -kBeyondAll};
}

CPTMinMax joined(const CPTMinMax& a, const CPTMinMax& b)
{
    return {b.min < a.min ? b.min : a.min, b.max > a.max ? b.max : a.max};
}

CPTMinMax joinedPairs(const float* least, const float* greatest, std::size_t first, std::size_t last)
{
    if (last - first < 8) {
        CPTMinMax few = emptyMinMax();
        for (std::size_t pair = first; pair < last; ++pair)
            few = {least[pair] < few.min ? least[pair] : few.min, greatest[pair] > few.max ? greatest[pair] : few.max};
        return few;
    }
    MinMaxLanes lanes;
    std::size_t pair = first;
    for (; pair + 8 <= last; pair += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, least[pair + lane], greatest[pair + lane]);
    for (; pair < last; ++pair)
        lanes.take(0, least[pair], greatest[pair]);
    return lanes.result();
}

}  // namespace plotkit
