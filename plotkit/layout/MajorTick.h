#pragma once

namespace plotkit {

/// A major tick: its number counted from the origin stays the same while the range moves, which keeps thinning stable.
/// A value; any thread.
struct MajorTick {
    double number;
    double value;
};

}  // namespace plotkit
