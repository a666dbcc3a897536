#pragma once

/// A range on an axis: where it starts and how far it goes. A value; any thread.
///
/// The length may be negative; then `end` lies before `location`. The default range is 0…0.
struct CPTPlotRange {
    double location = 0;  ///< seconds since 1970-01-01 UTC on x, value units on y
    double length = 0;    ///< same unit as location

    double end() const { return location + length; }
    double minLimit() const { return length < 0 ? end() : location; }
    double maxLimit() const { return length < 0 ? location : end(); }

    friend bool operator==(const CPTPlotRange&, const CPTPlotRange&) = default;
};

enum class CPTCoordinate { X = 0, Y = 1, Z = 2 };
