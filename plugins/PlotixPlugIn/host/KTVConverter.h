#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

/// Number and text conversions of the host. Pure; any thread.
class KTVHOST_EXPORT KTVConverter {
public:
    virtual ~KTVConverter();

    /// Rounds a value for display to the nearest 1/n, but never to fewer than four significant digits:
    /// 54.83274 by 10 → 54.83, 1013.2534 → 1013.3, 0.00482531 → 0.004825, 4 → 4. n < 1, NaN and infinities answer the
    /// value itself.
    static double roundValue(double value, int toNearest);

    virtual double roundedValue(double value, int toNearest) const = 0;
};

/// The camel-case form of a display name: words split at everything that is neither letter nor digit, the first begun
/// in lower case, the others in upper: "Air Temperature" → airTemperature, wind_dir → windDir, CO2 → co2.
KTVHOST_EXPORT QString camelCaseString(const QString& text);
