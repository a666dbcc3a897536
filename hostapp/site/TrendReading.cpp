#include "hostapp/site/TrendReading.h"

#include "hostapp/site/PlugInOperations.h"

namespace plotix {

namespace {

/// Names of a trend's options. Stored with it: never change.
QVariantMap recommendedReading(Reader reader)
{
    QVariantMap options{{QStringLiteral("readableLabels"), true},
                        {QStringLiteral("forgetsRefusedRange"), true},
                        {QStringLiteral("tellsOutside"), true},
                        {QStringLiteral("brokenLines"), true},
                        {QStringLiteral("propertyColors"), true},
                        {QStringLiteral("lineCommands"), true},
                        {QStringLiteral("statistics"), QVariantMap{{QStringLiteral("offered"), true}}}};
    options.insert(QStringLiteral("looks"), QVariantMap{{QStringLiteral("marks"), QStringLiteral("apart")}});
    if (reader == Reader::OfAPicture)
        options.insert(QStringLiteral("unlimitedValues"), true);
    else
        options.insert(QStringLiteral("valueLine"), QVariantMap{{QStringLiteral("shown"), true}});
    return options;
}

}  // namespace

void chooseReading(KTVPlugIn* plugIn, Reader reader)
{
    const std::optional<QVariantMap> chosen = reading(plugIn);
    if (!chosen)
        return;
    QVariantMap options = recommendedReading(reader);
    options.insert(*chosen);
    if (options != *chosen)
        setReading(plugIn, options);
}

}  // namespace plotix
