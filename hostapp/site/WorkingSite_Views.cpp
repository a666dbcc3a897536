// Views told by figures and links: what a trend shows now, and showing that again.
//
// Rules of this room:
//  1. A trend that is still there is moved to the span; how it looks stays its own.
//  2. One that is gone, or shows something else by now, is made anew, with everything that was chosen.

#include "hostapp/site/WorkingSite.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/site/FigureRecipe.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendReading.h"
#include "hostapp/site/TrendSpans.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace plotix {

namespace {

class ViewText {
    Q_DECLARE_TR_FUNCTIONS(ViewText)
};

KTVPropertyList propertiesOf(const SiteAgent& agent, const ShownView& view)
{
    KTVPropertyList properties;
    for (const QString& key : view.properties)
        for (const auto& property : agent.siteProperties())
            if (property->propertyName() == key)
                properties.push_back(property);
    return properties;
}

}  // namespace

ShownView viewOf(const KTVPlugInPtr& trend, const SiteDocument& site)
{
    ShownView view;
    view.siteName = site.siteName();
    view.siteFile = QFileInfo(site.path()).fileName();
    view.trend = titleOf(*trend);
    if (const auto agent = trend->agent() ? site.agentWithIdentifier(trend->agent()->uniqueIdentifier()) : nullptr)
        view.agent = agent->name();
    view.properties = plottedKeys(trend.get());
    view.reading = reading(trend.get()).value_or(QVariantMap());
    const std::optional<TrendSpans> spans = spansOf(trend.get());
    const auto shown = spans && spans->drawn ? spans->drawn : shownRange(trend.get());
    if (shown) {
        view.from = Date{shown->first};
        view.to = Date{shown->second};
    }
    return view;
}

std::optional<MomentSpan> markedSpan(const KTVPlugIn* trend)
{
    const QVariantMap marks = reading(trend).value_or(QVariantMap()).value(QStringLiteral("marks")).toMap();
    if (!marks.contains(QStringLiteral("a")) || !marks.contains(QStringLiteral("b")))
        return std::nullopt;
    return std::minmax({marks.value(QStringLiteral("a")).toDouble(), marks.value(QStringLiteral("b")).toDouble()});
}

KTVPlugInPtr WorkingSite::copyOf(const KTVPlugIn& plugIn, const MomentSpan& dates) const
{
    const QByteArray state = encodedPlugIn(plugIn);
    const auto agent = [document = m_document.get()](const QString& identifier) -> KTVAgentPtr {
        return document->agentWithIdentifier(identifier);
    };
    Decoder decoder(withDates(state, dates.first, dates.second).value_or(state), {agent, nullptr});
    KTVPlugInPtr copy = m_module->instantiate(classNameOf(plugIn), decoder);
    chooseReading(copy.get(), reader());
    sendToReadSpans(copy.get(), "setSpanMarked", true);
    sendToReadSpans(copy.get(), "setSpanKept", true);
    return copy;
}

KTVPlugInPtr WorkingSite::showView(const ShownView& view)
{
    const std::shared_ptr<SiteAgent> agent = m_document->agentNamed(view.agent);
    if (!agent)
        throw ReportableError(
            ViewText::tr("%1 has no measurements of %2.").arg(QFileInfo(m_document->path()).fileName(), view.agent));
    const KTVPropertyList properties = propertiesOf(*agent, view);
    if (properties.empty())
        throw ReportableError(
            ViewText::tr("%1 has none of these properties: %2.").arg(view.agent, view.properties.join(u", ")));
    for (const KTVSourceListItemPtr& item : m_sourceList.items()) {
        const KTVPlugInPtr listed = item->representedObject();
        const bool isSame = titleOf(*listed) == view.trend && listed->agent() &&
                            listed->agent()->uniqueIdentifier() == agent->uniqueIdentifier() &&
                            plottedKeys(listed.get()) == view.properties;
        if (!isSame)
            continue;
        emit selectionRequested(listed);
        if (view.from && view.to)
            showRange(listed.get(), view.from->seconds, view.to->seconds);
        return listed;
    }
    const KTVPlugInPtr made = newTrend(agent, properties, view.from, view.to, view.trend);
    if (made)
        setReading(made.get(), view.reading);
    return made;
}

}  // namespace plotix
