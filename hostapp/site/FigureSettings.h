#pragma once

#include "hostapp/core/OutputFile.h"

#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <optional>
#include <vector>

/// How a figure is wanted: its size, how dense it is, and how the graph looks in it. Values and free functions; main
/// thread only where settings are read or written.
///
/// What is empty, or 0, is as the trend has it. Names of members in the user's settings are stored: never change.
namespace plotix {

struct FigureSettings {
    enum class Unit { Millimetres, Points, Pixels };

    double width = 85, height = 60;  ///< in `unit`
    Unit unit = Unit::Millimetres;
    int dotsPerInch = 300;  ///< of a PNG; also what a size in pixels is reckoned by
    QString look{};         ///< "dark", "light", "paper"
    double fontSize = 0;    ///< points
    QString legend{};       ///< "none", "below", "right"
    QString axisTitles{};   ///< "usual", "none", "values", "all"
    double lineWidth = 0;   ///< times the usual one
    bool isTransparent = false;
    QString valueLine{};  ///< "none": left out, also where the trend holds it

    friend bool operator==(const FigureSettings&, const FigureSettings&) = default;
};

QSizeF pointsOf(const FigureSettings& settings);
QSizeF pixelsOf(const FigureSettings& settings);

/// The trend's options of reading as the figure needs them: those of `present`, with what the settings say. Only parts
/// that the settings change are answered.
QVariantMap readingOf(const FigureSettings& settings, const QVariantMap& present);

struct FigurePreset {
    QString name;  ///< for people to type; those of the user are also shown by it
    FigureSettings settings;
    bool isOurs = false;  ///< cannot be saved over nor deleted
};

/// Ours first ("paper-column", "slide", "report", "web"), then those of the user by name.
std::vector<FigurePreset> figurePresets();
std::optional<FigureSettings> figurePresetNamed(const QString& name);

/// A name that is empty or ours: nothing happens, and false.
bool saveFigurePreset(const QString& name, const FigureSettings& settings);
void deleteFigurePreset(const QString& name);

QVariantMap mapOf(const FigureSettings& settings);
FigureSettings figureSettingsFrom(const QVariantMap& map);  ///< what is unknown or out of its limits is passed over

}  // namespace plotix
