#include "hostapp/document/FormulaPreview.h"

#include "base/PagedReading.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <algorithm>

namespace plotix {

namespace {

/// The number of a property that is not stored yet; no stored one has it.
constexpr RowId kUnstored = kPropertyLimit;

constexpr double kFirstSpan = 3600, kNextSpan = 24 * kFirstSpan, kLastSpan = 366 * kNextSpan;  // seconds

/// The directory as it will be once the formula is kept.
std::shared_ptr<const FormulaDirectory> withFormula(const FormulaDirectory& directory, RowId agent,
                                                    const PropertyFormula& formula, const QString& unit, RowId property)
{
    const auto changed = std::make_shared<FormulaDirectory>(directory);
    for (FormulaDirectory::Agent& each : changed->agents) {
        if (each.id != agent)
            continue;
        auto known = std::find_if(each.properties.begin(), each.properties.end(),
                                  [property](const auto& one) { return one.id == property; });
        if (known == each.properties.end())
            known = each.properties.insert(known, SiteProperty::Description());
        known->id = property;
        known->formula = formula;
        known->archivedUnit = unit;
    }
    return changed;
}

void takeLast(FormulaPreview& preview, const RecordColumns& columns, std::size_t most)
{
    preview.last.clear();
    const RecordColumns::Column& column = columns.columns.front();
    const PagedReader<double> times(columns.times), values(column.values);
    for (std::size_t i = times.size(); i-- > 0 && preview.last.size() < most;)
        if (const double value = values[i]; column.validity.isValid(i))
            preview.last.emplace_back(times[i], value);
    std::reverse(preview.last.begin(), preview.last.end());
}

}  // namespace

FormulaPreview previewOf(const std::shared_ptr<RecordStore>& records,
                         const std::shared_ptr<const FormulaDirectory>& directory, RowId agent,
                         const PropertyFormula& formula, RowId property, std::size_t most,
                         const ArchiveProgress& progress)
{
    FormulaPreview preview;
    const FormulaPlan plan = planFormula(*directory, agent, formula, property);
    if (plan.problem) {
        preview.failure = sentenceOf(*plan.problem);
        return preview;
    }
    preview.unit = plan.program->unit;
    const RowId asked[] = {property > 0 ? property : kUnstored};
    ComputedRecords computed(records);
    computed.setDirectory(withFormula(*directory, agent, formula, preview.unit, asked[0]));
    std::optional<RecordExtent> extent;
    for (const qint64 each : plan.program->agents)
        extent = united(extent, records->extent(each));
    if (!extent)
        return preview;
    for (const double length : {kFirstSpan, kNextSpan, 30 * kNextSpan, kLastSpan, extent->last - extent->first}) {
        const double from = extent->last - length;
        if (const auto refusal =
                refusalToReadColumns(computed, {agent, {asked[0]}, from, extent->last}, memoryBudget())) {
            preview.failure = *refusal;
            break;
        }
        const auto columns = computed.columns(agent, asked, from, extent->last, programPages(), progress);
        if (!columns)
            break;
        takeLast(preview, *columns, most);
        if (preview.last.size() == most || from <= extent->first)
            break;
    }
    return preview;
}

}  // namespace plotix
