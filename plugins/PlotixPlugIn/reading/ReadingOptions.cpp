#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

namespace plotix {

namespace {

struct Flag {
    const char* name;  // stored: never change
    std::optional<bool> ReadingOptions::*field;
};

constexpr Flag kFlags[] = {
    {"readableLabels", &ReadingOptions::readableLabels},
    {"forgetsRefusedRange", &ReadingOptions::forgetsRefusedRange},
};

}  // namespace

QVariantMap dictionaryFromReadingOptions(const ReadingOptions& options)
{
    QVariantMap dictionary;
    for (const Flag& flag : kFlags)
        if (options.*flag.field)
            dictionary.insert(QLatin1String(flag.name), *(options.*flag.field));
    return dictionary;
}

ReadingOptions mergedReadingOptions(ReadingOptions options, const QVariantMap& dictionary)
{
    for (const Flag& flag : kFlags) {
        const QVariant value = dictionary.value(QLatin1String(flag.name));
        if (value.metaType() == QMetaType::fromType<bool>())
            options.*flag.field = value.toBool();
    }
    return options;
}

}  // namespace plotix
