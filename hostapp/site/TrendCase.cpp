#include "hostapp/site/TrendCase.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/formulas/FormulaPlan.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/ViewTitled.h"
#include "records/store/RecordStore.h"

#include <limits>
#include <set>

namespace plotix {

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();

/// Properties and spans on their way into a plan.
class Gathering {
public:
    explicit Gathering(const SiteDocument& document) : m_document(document), m_directory(document.formulaDirectory()) {}

    /// With all that it is worked out from.
    void take(RowId property)
    {
        const SiteProperty::Description* known = m_directory->propertyWithId(property);
        if (!known || !m_properties.insert(property).second || !known->formula)
            return;
        const FormulaPlan plan = planProperty(*m_directory, property);
        if (plan.program)
            for (const FormulaInput& input : plan.program->inputs)
                take(input.property);
    }

    /// The records that reading these properties takes.
    void takeSpan(RowId agent, const std::vector<RowId>& properties, const MomentSpan& span)
    {
        for (const RecordPart& part : m_document.records()->partsRead(agent, properties, span.first, span.second))
            m_spans[part.agent].emplace_back(part.from.value_or(-kOpen), part.to.value_or(kOpen));
    }

    void putInto(CasePlan& plan) const
    {
        for (const auto& agent : m_document.agents()) {
            CasePlan::Agent taken{agent->id(), agent->uniqueIdentifier(), agent->name(), {}, {}};
            for (const auto& property : agent->siteProperties())
                if (m_properties.contains(property->description().id))
                    taken.properties.push_back(property->description());
            if (taken.properties.empty())
                continue;
            if (const auto spans = m_spans.find(agent->id()); spans != m_spans.end())
                taken.spans = spans->second;
            plan.agents.push_back(std::move(taken));
        }
        for (const SiteLimit& limit : m_document.limits())
            if (m_properties.contains(limit.property))
                plan.limits.push_back(limit);
        plan.notes = notesWithin(m_document.notes(), plan.span.first, plan.span.second,
                                 {m_properties.begin(), m_properties.end()});
    }

private:
    const SiteDocument& m_document;
    std::shared_ptr<const FormulaDirectory> m_directory;
    std::set<RowId> m_properties;
    std::map<RowId, std::vector<CopiedSpan>> m_spans;  // by agent
};

std::vector<KTVPlugInPtr> storedTrends(PlugInStore& store)
{
    std::vector<KTVPlugInPtr> trends = store.load(nullptr);
    std::erase_if(trends, [](const KTVPlugInPtr& plugIn) { return isToolbarPlugIn(*plugIn); });
    return trends;
}

}  // namespace

CasePlan planOfCase(const KTVPlugIn& trend, const SiteDocument& document, const MomentSpan& span)
{
    CasePlan plan;
    plan.site = document.path();
    plan.records = document.records();
    plan.siteName = document.siteName();
    plan.siteLocation = document.siteLocation();
    plan.siteZone = document.zone().isValid() ? document.zone().id() : QByteArray();
    plan.span = span;
    plan.trendTitle = titleOf(trend);
    const QByteArray state = encodedPlugIn(trend);
    plan.trend = {0, classNameOf(trend), withDates(state, span.first, span.second).value_or(state)};
    const auto agent = trend.agent() ? document.agentWithIdentifier(trend.agent()->uniqueIdentifier()) : nullptr;
    if (!agent)
        return plan;
    Gathering gathering(document);
    std::vector<RowId> shown;
    const QStringList keys = plottedKeys(&trend);
    for (const auto& property : agent->siteProperties())
        if (keys.contains(property->propertyName()))
            shown.push_back(property->description().id);
    for (const RowId property : shown)
        gathering.take(property);
    gathering.takeSpan(agent->id(), shown, span);
    for (const MomentSpan& beside : spansBeside(&trend, span.first, span.second))
        gathering.takeSpan(agent->id(), shown, beside);
    gathering.putInto(plan);
    return plan;
}

CasePlan planOfStoredCase(const CaseRequest& request, KTVPlugInModule* module)
{
    PlugInStore store(request.document, module);
    const KTVPlugInPtr trend = viewTitled(storedTrends(store), request.trend, QStringLiteral("--trend"));
    const MomentSpan shown = shownRange(trend.get()).value_or(MomentSpan{});
    const MomentSpan span{request.from.value_or(shown.first), request.to.value_or(shown.second)};
    if (span.second < span.first)
        throw ReportableError(QStringLiteral("the span ends before it begins; give both --from and --to"));
    return planOfCase(*trend, *request.document, span);
}

}  // namespace plotix
