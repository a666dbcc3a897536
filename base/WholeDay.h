#pragma once

#include "base/Date.h"

class QDate;
class QTimeZone;

/// What a date without a time means as the end of a span: that whole day. Whoever lets people write dates asks here.
namespace plotix {

/// The last moment of the day in the user's zone, or another one: just before the first one of the next day, so that a
/// span that ends there holds all of the day's records and none of the next one's. An invalid date answers nothing.
OptionalDate lastMomentOf(const QDate& day);
OptionalDate lastMomentOf(const QDate& day, const QTimeZone& zone);  ///< an invalid one is the user's

}  // namespace plotix
