#include "hostapp/site/FigureSettings.h"

#include <QtCore/QSettings>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kMillimetresPerInch = 25.4;
constexpr auto kPresetsKey = "FigurePresets";  // stored, as all below: never change
constexpr std::array kUnitNames{"mm", "pt", "px"};
const QString kUnit = QStringLiteral("unit");
const QString kWidth = QStringLiteral("width");
const QString kHeight = QStringLiteral("height");
const QString kDots = QStringLiteral("dpi");
const QString kLook = QStringLiteral("look");
const QString kFontSize = QStringLiteral("fontSize");
const QString kLegend = QStringLiteral("legend");
const QString kAxisTitles = QStringLiteral("axisTitles");
const QString kLineWidth = QStringLiteral("lineWidth");
const QString kTransparent = QStringLiteral("transparent");
const QString kValueLine = QStringLiteral("valueLine");
const QString kNone = QStringLiteral("none");

/// The value line's box would cover a good part of a small figure.
std::vector<FigurePreset> ours()
{
    using Unit = FigureSettings::Unit;
    return {{QStringLiteral("paper-column"),
             {85, 60, Unit::Millimetres, 300, QStringLiteral("paper"), 7, QStringLiteral("below"),
              QStringLiteral("values"), 0, false, kNone},
             true},
            {QStringLiteral("slide"),
             {254, 143, Unit::Millimetres, 150, QStringLiteral("light"), 18, QStringLiteral("below"),
              QStringLiteral("values"), 1.5, false, kNone},
             true},
            {QStringLiteral("report"),
             {160, 90, Unit::Millimetres, 300, QStringLiteral("paper"), 9, QStringLiteral("below"),
              QStringLiteral("values"), 0, false, kNone},
             true},
            {QStringLiteral("web"), {1200, 600, Unit::Pixels, 72}, true}};
}

double inchesOf(double length, const FigureSettings& settings)
{
    switch (settings.unit) {
    case FigureSettings::Unit::Millimetres: return length / kMillimetresPerInch;
    case FigureSettings::Unit::Points: return length / kPointsPerInch;
    case FigureSettings::Unit::Pixels: return length / std::max(1, settings.dotsPerInch);
    }
    return 0;
}

/// Of these words, or none.
QString wordOf(const QVariant& value, const QStringList& words)
{
    return words.contains(value.toString()) ? value.toString() : QString();
}

double within(const QVariant& value, double least, double most, double otherwise)
{
    const double number = value.toDouble();
    return number >= least && number <= most ? number : otherwise;
}

/// `key` set to a word, taken away for the word that is no choice.
void choose(QVariantMap& part, const QString& key, const QString& word, const QString& noChoice)
{
    if (word == noChoice)
        part.remove(key);
    else if (!word.isEmpty())
        part.insert(key, word);
}

}  // namespace

QSizeF pointsOf(const FigureSettings& settings)
{
    return {inchesOf(settings.width, settings) * kPointsPerInch, inchesOf(settings.height, settings) * kPointsPerInch};
}

QSizeF pixelsOf(const FigureSettings& settings)
{
    return pointsOf(settings) * (settings.dotsPerInch / kPointsPerInch);
}

QVariantMap readingOf(const FigureSettings& settings, const QVariantMap& present)
{
    const QString looksKey = QStringLiteral("looks"), legendKey = QStringLiteral("legend");
    QVariantMap looks = present.value(looksKey).toMap();
    QVariantMap legend = present.value(legendKey).toMap();
    choose(looks, QStringLiteral("look"), settings.look, QStringLiteral("dark"));
    if (settings.fontSize > 0)
        looks.insert(QStringLiteral("fontSize"), settings.fontSize);
    if (settings.lineWidth > 0)
        looks.insert(QStringLiteral("lineWidth"), settings.lineWidth);
    if (settings.isTransparent)
        looks.insert(QStringLiteral("ground"), QStringLiteral("transparent"));
    choose(legend, QStringLiteral("place"), settings.legend, QStringLiteral("none"));
    choose(legend, QStringLiteral("axisTitles"), settings.axisTitles, QStringLiteral("usual"));
    QVariantMap line = present.value(kValueLine).toMap();
    QVariantMap reading;
    if (settings.valueLine == kNone && line.remove(QStringLiteral("held")) > 0)
        reading.insert(kValueLine, line);
    if (looks != present.value(looksKey).toMap())
        reading.insert(looksKey, looks);
    if (legend != present.value(legendKey).toMap())
        reading.insert(legendKey, legend);
    return reading;
}

std::vector<FigurePreset> figurePresets()
{
    std::vector<FigurePreset> presets = ours();
    const QVariantMap saved = QSettings().value(QLatin1String(kPresetsKey)).toMap();
    for (auto preset = saved.begin(); preset != saved.end(); ++preset)
        presets.push_back({preset.key(), figureSettingsFrom(preset.value().toMap())});
    return presets;
}

std::optional<FigureSettings> figurePresetNamed(const QString& name)
{
    for (const FigurePreset& preset : figurePresets())
        if (preset.name == name)
            return preset.settings;
    return std::nullopt;
}

bool saveFigurePreset(const QString& name, const FigureSettings& settings)
{
    const std::vector<FigurePreset> own = ours();
    if (name.trimmed().isEmpty() ||
        std::any_of(own.begin(), own.end(), [&](const FigurePreset& each) { return each.name == name.trimmed(); }))
        return false;
    QSettings stored;
    QVariantMap saved = stored.value(QLatin1String(kPresetsKey)).toMap();
    saved.insert(name.trimmed(), mapOf(settings));
    stored.setValue(QLatin1String(kPresetsKey), saved);
    return true;
}

void deleteFigurePreset(const QString& name)
{
    QSettings stored;
    QVariantMap saved = stored.value(QLatin1String(kPresetsKey)).toMap();
    if (saved.remove(name) > 0)
        stored.setValue(QLatin1String(kPresetsKey), saved);
}

QVariantMap mapOf(const FigureSettings& settings)
{
    return {{kUnit, QString::fromLatin1(kUnitNames[static_cast<std::size_t>(settings.unit)])},
            {kWidth, settings.width},
            {kHeight, settings.height},
            {kDots, settings.dotsPerInch},
            {kLook, settings.look},
            {kFontSize, settings.fontSize},
            {kLegend, settings.legend},
            {kAxisTitles, settings.axisTitles},
            {kLineWidth, settings.lineWidth},
            {kTransparent, settings.isTransparent},
            {kValueLine, settings.valueLine}};
}

FigureSettings figureSettingsFrom(const QVariantMap& map)
{
    FigureSettings settings;
    const auto unit = std::find(kUnitNames.begin(), kUnitNames.end(), map.value(kUnit).toString());
    if (unit != kUnitNames.end())
        settings.unit = static_cast<FigureSettings::Unit>(unit - kUnitNames.begin());
    settings.width = within(map.value(kWidth), 1, 32'767, settings.width);
    settings.height = within(map.value(kHeight), 1, 32'767, settings.height);
    settings.dotsPerInch = int(within(map.value(kDots), 36, 2400, settings.dotsPerInch));
    settings.look = wordOf(map.value(kLook), {"dark", "light", "paper"});
    settings.fontSize = within(map.value(kFontSize), 5, 36, 0);
    settings.legend = wordOf(map.value(kLegend), {"none", "below", "right"});
    settings.axisTitles = wordOf(map.value(kAxisTitles), {"usual", "none", "values", "all"});
    settings.lineWidth = within(map.value(kLineWidth), 0.2, 5, 0);
    settings.isTransparent = map.value(kTransparent).toBool();
    settings.valueLine = wordOf(map.value(kValueLine), {kNone});
    return settings;
}

}  // namespace plotix
