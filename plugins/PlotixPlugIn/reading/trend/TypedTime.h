#pragma once

#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/logic/TypedDate.h"

#include <optional>

/// Times as people type them into a field, read as the fields of the date panel read them. Free functions; main thread
/// only.
namespace plotix {

/// The words for days in the user's language.
DayWords dayWords();

/// Seconds since 1970-01-01 UTC, by a clock; what the text leaves out is taken from `shown`. Nothing where it is not
/// understood.
std::optional<double> typedTime(const QString& text, double shown, const CPTClock& clock);

/// What is wrong with a text that is not understood, where more can be said than that: that there is no such date.
QString whyNoTime(const QString& text, double shown, const CPTClock& clock);
QString noSuchDateText();

/// The time as such a field shows it, to the second: what typedTime() reads back.
QString timeForTyping(double time, const CPTClock& clock);

}  // namespace plotix
