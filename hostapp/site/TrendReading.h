#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

/// What our host turns on to make trends easier to read. Free functions; main thread only.
namespace plotix {

enum class Reader {
    AtAWindow,  ///< is told which lines leave the permitted values, and chooses
    OfAPicture  ///< can choose nothing: all values are drawn
};

/// Turns on every option of reading that we recommend, but for those that were chosen for this trend already. A plug-in
/// without such options, or null: nothing. Calling it again changes nothing.
void chooseReading(KTVPlugIn* plugIn, Reader reader = Reader::AtAWindow);

/// The same for a trend that has just been made, which also gets what we recommend for new ones; trends of a site keep
/// the looks they were stored with.
void chooseReadingOfNew(KTVPlugIn* plugIn);

/// Gives a trend that has just been made in a window a look that suits it, such as "light", unless one was chosen for
/// it; an empty name, and "dark", are the look it has anyway. From then on the look is the trend's own, on every screen
/// and in every picture.
void chooseLookOfNew(KTVPlugIn* plugIn, const QString& look);

}  // namespace plotix
