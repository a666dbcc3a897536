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
    options.insert(QStringLiteral("missing"),
                   QVariantMap{{QStringLiteral("stretches"), true}, {QStringLiteral("amended"), true}});
    options.insert(QStringLiteral("clock"), QVariantMap{{QStringLiteral("changes"), true}});
    if (reader == Reader::OfAPicture)
        options.insert(QStringLiteral("unlimitedValues"), true);
    if (reader == Reader::AtAWindow) {
        options.insert(QStringLiteral("valueLine"), QVariantMap{{QStringLiteral("shown"), true}});
        options.insert(QStringLiteral("moves"),
                       QVariantMap{{QStringLiteral("gestures"), true}, {QStringLiteral("bounded"), true}});
    }
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

void chooseLookOfNew(KTVPlugIn* plugIn, const QString& look)
{
    const QString looksKey = QStringLiteral("looks"), lookKey = QStringLiteral("look");
    const std::optional<QVariantMap> chosen = reading(plugIn);
    if (!chosen || look.isEmpty() || look == QLatin1String("dark"))
        return;
    QVariantMap looks = chosen->value(looksKey).toMap();
    if (looks.contains(lookKey))
        return;
    looks.insert(lookKey, look);
    setReading(plugIn, {{looksKey, looks}});
}

void chooseReadingOfNew(KTVPlugIn* plugIn)
{
    const std::optional<QVariantMap> chosen = reading(plugIn);
    if (!chosen)
        return;
    QVariantMap options{
        {QStringLiteral("arrangement"), QVariantMap{{QStringLiteral("kind"), QStringLiteral("automatic")}}},
        {QStringLiteral("overview"), QVariantMap{{QStringLiteral("shown"), true}}}};
    options.removeIf([&chosen](const auto& option) { return chosen->contains(option.key()); });
    if (!options.isEmpty())
        setReading(plugIn, options);
    chooseReading(plugIn);
}

}  // namespace plotix
