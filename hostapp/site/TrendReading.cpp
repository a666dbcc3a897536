#include "hostapp/site/TrendReading.h"

#include "hostapp/site/PlugInOperations.h"

namespace plotix {

namespace {

/// Names of a trend's options. Stored with it: never change.
QVariantMap recommendedReading()
{
    return {{QStringLiteral("readableLabels"), true}, {QStringLiteral("forgetsRefusedRange"), true},
            {QStringLiteral("tellsOutside"), true},   {QStringLiteral("brokenLines"), true},
            {QStringLiteral("propertyColors"), true}, {QStringLiteral("lineCommands"), true}};
}

}  // namespace

void chooseReading(KTVPlugIn* plugIn)
{
    const std::optional<QVariantMap> chosen = reading(plugIn);
    if (!chosen)
        return;
    QVariantMap options = recommendedReading();
    options.insert(*chosen);
    if (options != *chosen)
        setReading(plugIn, options);
}

}  // namespace plotix
