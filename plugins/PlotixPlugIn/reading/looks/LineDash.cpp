#include "plugins/PlotixPlugIn/reading/looks/LineDash.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <algorithm>

namespace plotix {

namespace {

struct DashRow {
    LineDash dash;
    const char* name;  // stored: never change
    const char* title;
    std::vector<double> lengths;  // in widths of the line
};

const DashRow kDashes[kLineDashCount] = {
    {LineDash::Solid, "solid", QT_TRANSLATE_NOOP("Plotix", "&Solid"), {}},
    {LineDash::Dashed, "dashed", QT_TRANSLATE_NOOP("Plotix", "&Dashes"), {5, 2.5}},
    {LineDash::Dotted, "dotted", QT_TRANSLATE_NOOP("Plotix", "D&ots"), {1, 1.5}},
    {LineDash::DashDot, "dash-dot", QT_TRANSLATE_NOOP("Plotix", "D&ash, Dot"), {5, 2, 1, 2}},
    {LineDash::LongDashes, "long", QT_TRANSLATE_NOOP("Plotix", "&Long Dashes"), {12, 3}},
    {LineDash::DashDotDot, "dash-dot-dot", QT_TRANSLATE_NOOP("Plotix", "Das&h, Two Dots"), {5, 2, 1, 2, 1, 2}},
    {LineDash::ShortDashes, "short", QT_TRANSLATE_NOOP("Plotix", "Sho&rt Dashes"), {2.5, 2}},
    {LineDash::LongShort, "long-short", QT_TRANSLATE_NOOP("Plotix", "Lon&g and Short Dashes"), {12, 2.5, 4, 2.5}},
    {LineDash::WideDots, "wide-dots", QT_TRANSLATE_NOOP("Plotix", "&Wide Dots"), {1, 4}},
    {LineDash::TwoDashesDot, "two-dashes-dot", QT_TRANSLATE_NOOP("Plotix", "&Two Dashes, Dot"), {5, 2, 5, 2, 1, 2}},
};

const DashRow& rowOf(LineDash dash)
{
    return kDashes[static_cast<int>(dash)];
}

}  // namespace

std::vector<double> dashLengths(LineDash dash, double width)
{
    std::vector<double> lengths = rowOf(dash).lengths;
    for (double& length : lengths)
        length *= width;
    return lengths;
}

QString nameOfDash(LineDash dash)
{
    return QString::fromLatin1(rowOf(dash).name);
}

std::optional<LineDash> dashNamed(const QString& name)
{
    const auto found = std::find_if(std::begin(kDashes), std::end(kDashes),
                                    [&](const DashRow& row) { return name == QLatin1String(row.name); });
    return found == std::end(kDashes) ? std::nullopt : std::optional(found->dash);
}

QString titleOfDash(LineDash dash)
{
    return localizedText(rowOf(dash).title);
}

}  // namespace plotix
