#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

#include "plugins/PlotixPlugIn/reading/trend/ChosenNumber.h"

namespace plotix {

namespace {

struct Flag {
    const char* name;  // stored: never change
    std::optional<bool> ReadingOptions::*field;
};

constexpr Flag kFlags[] = {
    {"forgetsRefusedRange", &ReadingOptions::forgetsRefusedRange},
    {"readableLabels", &ReadingOptions::readableLabels},
    {"tellsOutside", &ReadingOptions::tellsOutside},
    {"unlimitedValues", &ReadingOptions::unlimitedValues},
    {"brokenLines", &ReadingOptions::brokenLines},
    {"propertyColors", &ReadingOptions::propertyColors},
    {"lineCommands", &ReadingOptions::lineCommands},
};

const QString kLongestJoin = QStringLiteral("longestJoin");  // stored: never change

}  // namespace

QVariantMap dictionaryFromReadingOptions(const ReadingOptions& options)
{
    QVariantMap dictionary;
    for (const Flag& flag : kFlags)
        if (options.*flag.field)
            dictionary.insert(QLatin1String(flag.name), *(options.*flag.field));
    if (options.longestJoin)
        dictionary.insert(kLongestJoin, *options.longestJoin);
    return dictionary;
}

ReadingOptions mergedReadingOptions(ReadingOptions options, const QVariantMap& dictionary)
{
    for (const Flag& flag : kFlags) {
        const QVariant value = dictionary.value(QLatin1String(flag.name));
        if (value.metaType() == QMetaType::fromType<bool>())
            options.*flag.field = value.toBool();
    }
    const std::optional<double> longest = chosenNumber(dictionary.value(kLongestJoin));
    if (longest && *longest >= 0)
        options.longestJoin = *longest;
    return options;
}

}  // namespace plotix
