#include "plugins/PlotixPlugIn/reading/looks/LineLook.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

const QString kInterpolation = QStringLiteral("interpolation");
const QString kWidth = QStringLiteral("width");
const QString kDash = QStringLiteral("dash");
const QString kColor = QStringLiteral("color");
const QString kPointSize = QStringLiteral("pointSize");
const QString kFill = QStringLiteral("fill");          // "none", "zero" or "line"
const QString kFillLine = QStringLiteral("fillLine");  // the other line's key
const QString kFillColor = QStringLiteral("fillColor");

struct InterpolationRow {
    CPTScatterPlotInterpolation interpolation;
    const char* name;
};
constexpr InterpolationRow kInterpolations[] = {{CPTScatterPlotInterpolation::Linear, "straight"},
                                                {CPTScatterPlotInterpolation::HoldLast, "steps"},
                                                {CPTScatterPlotInterpolation::PointsOnly, "points"}};

QString nameOf(CPTScatterPlotInterpolation interpolation)
{
    return QString::fromLatin1(kInterpolations[static_cast<int>(interpolation)].name);
}

std::optional<CPTScatterPlotInterpolation> interpolationNamed(const QString& name)
{
    for (const InterpolationRow& row : kInterpolations)
        if (name == QLatin1String(row.name))
            return row.interpolation;
    return std::nullopt;
}

/// Nothing where there is no number, or one outside the limits.
std::optional<double> lengthIn(const QVariantMap& dictionary, const QString& key, double least, double most)
{
    bool isNumber = false;
    const double length = dictionary.value(key).toDouble(&isNumber);
    return isNumber && length >= least && length <= most ? std::optional(length) : std::nullopt;
}

std::optional<QColor> colorIn(const QVariantMap& dictionary, const QString& key)
{
    const QVariant value = dictionary.value(key);
    const QColor color = value.typeId() == QMetaType::QColor ? value.value<QColor>() : QColor(value.toString());
    return color.isValid() ? std::optional(color) : std::nullopt;
}

std::optional<LineFill> fillIn(const QVariantMap& dictionary)
{
    const QString kind = dictionary.value(kFill).toString();
    const QString line = dictionary.value(kFillLine).toString();
    if (kind == u"none")
        return LineFill{};
    if (kind == u"zero")
        return LineFill{LineFill::Kind::ToZero};
    return kind == u"line" && !line.isEmpty() ? std::optional(LineFill{LineFill::Kind::ToLine, line}) : std::nullopt;
}

}  // namespace

QVariantMap dictionaryFromLineLook(const LineLook& look)
{
    QVariantMap dictionary;
    if (look.interpolation)
        dictionary.insert(kInterpolation, nameOf(*look.interpolation));
    if (look.width)
        dictionary.insert(kWidth, *look.width);
    if (look.dash)
        dictionary.insert(kDash, nameOfDash(*look.dash));
    if (look.color)
        dictionary.insert(kColor, look.color->name());
    if (look.pointSize)
        dictionary.insert(kPointSize, *look.pointSize);
    if (look.fill) {
        constexpr const char* kKinds[] = {"none", "zero", "line"};
        dictionary.insert(kFill, QString::fromLatin1(kKinds[static_cast<int>(look.fill->kind)]));
        if (look.fill->kind == LineFill::Kind::ToLine)
            dictionary.insert(kFillLine, look.fill->line);
    }
    if (look.fillColor)
        dictionary.insert(kFillColor, look.fillColor->name(QColor::HexArgb));
    return dictionary;
}

LineLook lineLookFromDictionary(const QVariantMap& dictionary)
{
    LineLook look;
    look.interpolation = interpolationNamed(dictionary.value(kInterpolation).toString());
    look.width = lengthIn(dictionary, kWidth, kThinnestLine, kWidestLine);
    look.dash = dashNamed(dictionary.value(kDash).toString());
    look.color = colorIn(dictionary, kColor);
    look.pointSize = lengthIn(dictionary, kPointSize, 0, kLargestPoint);
    look.fill = fillIn(dictionary);
    look.fillColor = colorIn(dictionary, kFillColor);
    return look;
}

}  // namespace plotix
