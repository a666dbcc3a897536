#include "plugins/PlotixPlugIn/reading/looks/TrendLooks.h"

#include "plugins/PlotixPlugIn/reading/looks/DistinctLines.h"
#include "plugins/PlotixPlugIn/reading/looks/LookMenus.h"
#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace plotix {

namespace {

// Stored: never change.
const QString kLook = QStringLiteral("look");
const QString kFontSize = QStringLiteral("fontSize");
const QString kMarks = QStringLiteral("marks");
const QString kLineWidth = QStringLiteral("lineWidth");
const QString kGround = QStringLiteral("ground");
const QString kTransparent = QStringLiteral("transparent");
const QString kLines = QStringLiteral("lines");

constexpr double kThinnest = 0.2, kWidest = 5;  // times
constexpr int kFillAlpha = 60;                  // of 255: lines and grid beneath stay visible

QString nameOf(LineMarks marks)
{
    constexpr const char* kMarkNames[] = {"own", "apart", "distinct"};
    return QString::fromLatin1(kMarkNames[static_cast<int>(marks)]);
}

std::optional<LineMarks> marksNamed(const QString& name)
{
    for (const LineMarks marks : {LineMarks::Own, LineMarks::Apart, LineMarks::Distinct})
        if (name == nameOf(marks))
            return marks;
    return std::nullopt;
}

std::optional<double> fontSizeFrom(const QVariant& value)
{
    bool isNumber = false;
    const double size = value.toDouble(&isNumber);
    return isNumber && size >= kSmallestText && size <= kLargestText ? std::optional(size) : std::nullopt;
}

double lineWidthFrom(const QVariant& value)
{
    const double times = value.toDouble();
    return times > 0 ? std::clamp(times, kThinnest, kWidest) : 1;
}

}  // namespace

TrendLooks::TrendLooks(ReadTrend& trend) : ReadingPart(trend), m_menus(std::make_unique<LookMenus>(*this)) {}

TrendLooks::~TrendLooks() = default;

bool TrendLooks::isChosen() const
{
    return !wish().isPlain() || m_lineWidth != 1 || m_marks || !m_lines.empty();
}

QVariantMap TrendLooks::chosen() const
{
    QVariantMap choices;
    if (m_look != GraphLook::Dark)
        choices.insert(kLook, nameOfLook(m_look));
    if (m_fontSize)
        choices.insert(kFontSize, *m_fontSize);
    if (m_lineWidth != 1)
        choices.insert(kLineWidth, m_lineWidth);
    if (m_isTransparent)
        choices.insert(kGround, kTransparent);
    if (m_marks)
        choices.insert(kMarks, nameOf(*m_marks));
    QVariantMap lines;
    for (const auto& [key, look] : m_lines)
        lines.insert(key, dictionaryFromLineLook(look));
    if (!lines.isEmpty())
        choices.insert(kLines, lines);
    return choices;
}

void TrendLooks::choose(const QVariantMap& choices)
{
    m_look = lookNamed(choices.value(kLook).toString()).value_or(GraphLook::Dark);
    m_fontSize = fontSizeFrom(choices.value(kFontSize));
    m_lineWidth = lineWidthFrom(choices.value(kLineWidth));
    m_isTransparent = choices.value(kGround).toString() == kTransparent;
    m_marks = marksNamed(choices.value(kMarks).toString());
    m_lines.clear();
    const QVariantMap lines = choices.value(kLines).toMap();
    for (auto line = lines.begin(); line != lines.end(); ++line)
        if (const LineLook look = lineLookFromDictionary(line.value().toMap()); !look.isEmpty())
            m_lines[line.key()] = look;
    changed();
}

void TrendLooks::setLook(GraphLook look)
{
    m_look = look;
    changed();
}

void TrendLooks::setFontSize(const std::optional<double>& size)
{
    m_fontSize = size ? std::optional(std::clamp(*size, kSmallestText, kLargestText)) : std::nullopt;
    changed();
}

void TrendLooks::setLineWidth(double times)
{
    m_lineWidth = lineWidthFrom(times);
    changed();
}

void TrendLooks::setTransparent(bool isTransparent)
{
    m_isTransparent = isTransparent;
    changed();
}

void TrendLooks::setMarks(LineMarks marks)
{
    m_marks = marks;
    changed();
}

LineLook TrendLooks::lineLook(const QString& key) const
{
    const auto found = m_lines.find(key);
    return found == m_lines.end() ? LineLook() : found->second;
}

void TrendLooks::setLineLook(const QString& key, const LineLook& look)
{
    setLineLooks({{key, look}});
}

void TrendLooks::setLineLooks(const std::map<QString, LineLook>& looks)
{
    for (const auto& [key, look] : looks) {
        if (look.isEmpty())
            m_lines.erase(key);
        else
            m_lines[key] = look;
    }
    changed();
}

std::vector<ReadLine> TrendLooks::lines() const
{
    std::vector<ReadLine> lines = trend().lines();
    std::erase_if(lines, [](const ReadLine& line) { return line.isCompared(); });
    return lines;
}

CPTScatterPlotPtr TrendLooks::plotOf(const QString& key) const
{
    return trend().graph() ? trend().graph()->plotWithIdentifier(key) : nullptr;
}

QWidget* TrendLooks::window() const
{
    return trend().rootView() ? trend().rootView()->window() : nullptr;
}

std::vector<QAction*> TrendLooks::actions() const
{
    return m_menus->actions();
}

void TrendLooks::addLineItems(QMenu& menu, const QStringList& keys)
{
    m_menus->addLineItems(menu, keys);
}

void TrendLooks::changed()
{
    apply();
    if (trend().graph())
        trend().tellRestyled();  // lanes and legend take the colours of the axes, which are others now
    m_menus->update();
    emit chosenChanged();
}

/// Told by the trend, and by what this does itself.
void TrendLooks::apply()
{
    if (m_applying || !trend().graph())
        return;
    const QScopedValueRollback applying(m_applying, true);
    m_dress.wear(trend().graph(), wish());
    if (isChosen())
        dressLines();
    else
        undressLines();
}

void TrendLooks::graphReleased()
{
    m_worn.clear();
}

TrendLooks::PlotLook TrendLooks::lookOf(const CPTScatterPlot& plot)
{
    const CPTAreaFill& fill = plot.areaFill();
    return {plot.dataLineStyle(), plot.interpolation(), plot.pointSize(), fill.color, fill.isToPlot, fill.plot};
}

void TrendLooks::setLookOf(CPTScatterPlot& plot, const PlotLook& look)
{
    if (!(plot.dataLineStyle() == look.line))
        plot.setDataLineStyle(look.line);
    if (plot.interpolation() != look.interpolation)
        plot.setInterpolation(look.interpolation);
    if (plot.pointSize() != look.pointSize)
        plot.setPointSize(look.pointSize);
    const CPTAreaFill& fill = plot.areaFill();
    if (fill.color != look.fill || fill.isToPlot != look.fillsToLine || fill.plot.lock() != look.filledTo.lock())
        plot.setAreaFill({look.fill, look.fillsToLine, look.filledTo});
}

/// A colour or width that is not the one given was set by somebody else meanwhile, and is what is beneath.
TrendLooks::WornPlot& TrendLooks::wornBy(const CPTScatterPlotPtr& plot, const QString& key)
{
    const PlotLook present = lookOf(*plot);
    WornPlot& worn = m_worn[key];
    if (worn.plot.lock() != plot) {
        worn = {plot, present, present};
        return worn;
    }
    if (present.line.color != worn.now.line.color)
        worn.before.line.color = present.line.color;
    if (present.line.width != worn.now.line.width)
        worn.before.line.width = present.line.width;
    return worn;
}

void TrendLooks::dressLines()
{
    const std::vector<ReadLine> all = lines();
    std::vector<WornPlot*> worn;
    std::vector<QColor> colors;
    for (std::size_t number = 0; number < all.size(); ++number) {
        const CPTScatterPlotPtr plot = plotOf(all[number].key);
        if (!plot)
            continue;
        worn.push_back(&wornBy(plot, all[number].key));
        worn.back()->now = lookFor(all[number].key, worn.back()->before, number);
        colors.push_back(worn.back()->now.line.color);
    }
    const std::vector<LineDash> apart = dashesWhereAlike(colors);
    for (std::size_t index = 0; index < worn.size(); ++index) {
        const CPTScatterPlotPtr plot = worn[index]->plot.lock();
        CPTLineStyle& line = worn[index]->now.line;
        if (m_marks == LineMarks::Apart && !lineLook(plot->identifier()).dash)
            line.dashPattern = dashLengths(apart[index], line.width);
        setLookOf(*plot, worn[index]->now);
    }
}

void TrendLooks::undressLines()
{
    for (auto& [key, worn] : m_worn)
        if (const CPTScatterPlotPtr plot = worn.plot.lock())
            setLookOf(*plot, wornBy(plot, key).before);
    m_worn.clear();
}

TrendLooks::PlotLook TrendLooks::lookFor(const QString& key, const PlotLook& before, std::size_t number)
{
    const LineLook chosen = lineLook(key);
    PlotLook look = before;
    const LineMark mark = distinctLine(number);
    const bool isDistinct = m_marks == LineMarks::Distinct;
    const QColor color = chosen.color.value_or(isDistinct ? mark.color : before.line.color);
    look.line.color = m_look == GraphLook::Dark ? color : colorOnPaper(color);
    look.line.width = m_lineWidth * chosen.width.value_or(std::min(before.line.width, GraphDress::widestLine(wish())));
    if (chosen.dash || isDistinct)
        look.line.dashPattern = dashLengths(chosen.dash.value_or(mark.dash), look.line.width);
    look.interpolation = chosen.interpolation.value_or(before.interpolation);
    look.pointSize = chosen.pointSize.value_or(before.pointSize);
    const LineFill fill = chosen.fill.value_or(LineFill());
    if (fill.kind == LineFill::Kind::None)
        return look;
    look.fill = chosen.fillColor.value_or(look.line.color);
    if (!chosen.fillColor)
        look.fill.setAlpha(kFillAlpha);
    look.fillsToLine = fill.kind == LineFill::Kind::ToLine;
    if (look.fillsToLine)
        look.filledTo = plotOf(fill.line);
    return look;
}

}  // namespace plotix
