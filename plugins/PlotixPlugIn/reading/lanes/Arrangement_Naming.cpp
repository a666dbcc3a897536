// How axes and lanes are named: in heads, along the axes, or not at all.
//
// What is asked for is a choice of the legend's part; who owns an axis names it.

#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"

#include <utility>

namespace plotix {

void Arrangement::GivenTitle::give(CPTXYAxis& axis, const std::optional<QString>& title)
{
    if (axis.title() != given)
        before.reset();  // somebody has named it anew
    if (!title) {
        if (before)
            axis.setTitle(*std::exchange(before, std::nullopt));
        return;
    }
    if (!before)
        before = axis.title();
    given = *title;
    if (axis.title() != given)
        axis.setTitle(given);
}

/// How axes are titled: "none", "values", "all", or empty as ever.
QString Arrangement::axisTitles() const
{
    const ReadingPart* legend = trend().part(QStringLiteral("legend"));
    return legend ? legend->chosen().value(QStringLiteral("axisTitles")).toString() : QString();
}

/// A legend and titles along the axes say what the heads of lanes do.
LaneNaming Arrangement::naming() const
{
    const ReadingPart* legend = trend().part(QStringLiteral("legend"));
    const QString titles = axisTitles();
    LaneNaming naming;
    naming.hasKeys = !legend || !legend->chosen().contains(QStringLiteral("place"));
    if (titles == QLatin1String("none"))
        naming.title = LaneNaming::Title::None;
    else if (!titles.isEmpty())
        naming.title = LaneNaming::Title::AlongAxis;
    return naming;
}

void Arrangement::nameTime()
{
    const QString titles = axisTitles();
    const bool isLeftOut = titles == QLatin1String("none") || titles == QLatin1String("values");
    m_timeTitle.give(*trend().graph()->axisSet()->firstAxis(), isLeftOut ? std::optional(QString()) : std::nullopt);
}

/// One scale that arranged itself serves one unit, and is called by it instead of "Value"; likewise where titles of
/// the value axes are asked for.
void Arrangement::nameScale(const std::vector<ArrangedLine>& lines)
{
    CPTXYAxis& axis = *trend().graph()->axisSet()->yAxis();
    const QString titles = axisTitles();
    if (titles == QLatin1String("none"))
        return m_scaleTitle.give(axis, QString());
    QStringList names, units;
    for (const ArrangedLine& line : leadingLines(lines)) {
        names << line.name;
        units << line.unitSymbol;
    }
    units.removeDuplicates();
    const QString name = commonName(names);
    const QString unit = units.size() == 1 ? units.front() : QString();
    const QString title = name.isEmpty() || unit.isEmpty() ? name + unit : QStringLiteral("%1 (%2)").arg(name, unit);
    const bool isNamed = m_kind == ArrangementKind::Automatic || !titles.isEmpty();
    m_scaleTitle.give(axis, isNamed && !title.isEmpty() ? std::optional(title) : std::nullopt);
}

}  // namespace plotix
