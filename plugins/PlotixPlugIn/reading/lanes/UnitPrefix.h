#pragma once

#include <QtCore/QString>

/// Units with a prefix that keeps numbers short: 547 MB/s instead of 547,000,000 B/s. Values and free functions; any
/// thread.
namespace plotix {

struct PrefixedUnit {
    QString symbol;     ///< "MB/s"; may be empty
    double factor = 1;  ///< a value of the unit times this is one of the prefixed unit

    friend bool operator==(const PrefixedUnit&, const PrefixedUnit&) = default;
};

/// The unit by which a value this far from zero reads as a number from 1 to 1,000, where its symbol may carry a prefix:
/// watts, joules, metres, grams, bytes and their like, by themselves or before a stroke. Numbers from 0.01 up to
/// 10,000 are short enough and stay as they are, as do all others' units: °C, %, m², ppm.
PrefixedUnit prefixedUnit(const QString& symbol, double magnitude);

}  // namespace plotix
