#pragma once

#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"
#include "plugins/PlotixPlugIn/reading/comparing/EarlierTimes.h"

#include <functional>

/// Earlier records at the times of the present ones that they stand beside. Free functions; main thread only.
namespace plotix {

/// The records of the stretches at the present times, each column under the name that `keyOf` gives to its own. Where
/// one shift serves, the columns are those of `earlier`, shared, and only times are new, once for all columns;
/// elsewhere records are taken piece by piece. Times that are those of `present` (null: not known) are shared with it.
/// Without records where none of them lies in a stretch; null where the earlier ones have no times at all, which says
/// that nothing was read.
KTVRecordDictionaryPtr recordsBeside(const KTVRecordDictionary& earlier, const std::vector<EarlierStretch>& stretches,
                                     const KTVRecordDictionary* present,
                                     const std::function<QString(const QString&)>& keyOf);

}  // namespace plotix
