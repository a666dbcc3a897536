#pragma once

#include <QtCore/QString>

/// How the numbers of the statistics table read as text. A free function over values; any thread.
namespace plotix {

/// The shortest decimal text that reads back to the same single-precision number, without grouping and in every
/// language with a point: "20.1", "1013.25", "-0.5". From 1e15 on and below 1e-5 with an exponent: "1e+20".
/// Infinities and NaN: "inf", "-inf", "nan".
QString numberText(float number);

}  // namespace plotix
