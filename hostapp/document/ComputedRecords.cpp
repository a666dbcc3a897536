#include "hostapp/document/ComputedRecords.h"

#include "hostapp/document/ComputedReading.h"
#include "hostapp/document/MemoryBudget.h"

#include <algorithm>
#include <array>
#include <limits>

namespace plotix {

namespace {

bool isAnyOf(const std::set<RowId>& computed, std::span<const RowId> properties)
{
    return !computed.empty() &&
           std::any_of(properties.begin(), properties.end(), [&](RowId each) { return computed.contains(each); });
}

ColumnStatistics statisticsOf(const RecordColumns::Column& column)
{
    ColumnStatistics found;
    found.valid = column.total->valid;
    if (found.valid == 0)
        return found;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    found.minimum = kInfinity;
    found.maximum = -kInfinity;
    column.runs->inPieces([&found](const ValueRuns& piece) {
        for (std::size_t run = 0; run < piece.count(); ++run) {
            found.minimum = std::min(found.minimum, piece.least[run]);
            found.maximum = std::max(found.maximum, piece.greatest[run]);
        }
    });
    found.average = column.total->sum.mean(found.valid);
    return found;
}

}  // namespace

ComputedRecords::ComputedRecords(std::shared_ptr<RecordStore> stored) : m_stored(std::move(stored))
{
    setDirectory(std::make_shared<FormulaDirectory>());
}

void ComputedRecords::setDirectory(std::shared_ptr<const FormulaDirectory> directory)
{
    const auto known = std::make_shared<Site>();
    for (const FormulaDirectory::Agent& agent : directory->agents)
        for (const SiteProperty::Description& property : agent.properties)
            if (property.formula)
                known->computed.insert(property.id);
    known->directory = std::move(directory);
    const std::lock_guard lock(m_mutex);
    m_site = known;
}

std::shared_ptr<const ComputedRecords::Site> ComputedRecords::site() const
{
    const std::lock_guard lock(m_mutex);
    return m_site;
}

std::shared_ptr<const FormulaDirectory> ComputedRecords::directory() const
{
    return site()->directory;
}

std::optional<RecordExtent> ComputedRecords::extent(RowId agent)
{
    if (const std::optional<RecordExtent> own = m_stored->extent(agent))
        return own;
    const auto names = directory();
    const FormulaDirectory::Agent* known = names->agentWithId(agent);
    std::optional<RecordExtent> found;
    if (known)
        for (const SiteProperty::Description& property : known->properties)
            if (property.formula)
                if (const FormulaPlan plan = planProperty(*names, property.id); plan.program)
                    for (const qint64 other : plan.program->agents)
                        found = united(found, m_stored->extent(other));
    return found;
}

RecordOverview ComputedRecords::overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to)
{
    const auto known = site();
    if (!isAnyOf(known->computed, properties))
        return m_stored->overview(agent, properties, from, to);
    std::vector<RowId> recorded(properties.begin(), properties.end());
    std::erase_if(recorded, [&](RowId property) { return known->computed.contains(property); });
    RecordOverview overview = m_stored->overview(agent, recorded, from, to);
    std::vector<RecordOverview::Column> columns;
    auto next = overview.columns.begin();
    for (const RowId property : properties)
        if (known->computed.contains(property))
            columns.push_back({property, std::vector<RecordOverview::Summary>(overview.runs.size())});
        else
            columns.push_back(std::move(*next++));
    overview.columns = std::move(columns);
    return overview;
}

RecordIndex ComputedRecords::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                   std::optional<double> to, RecordIndex::Detail detail)
{
    const auto known = site();
    if (!isAnyOf(known->computed, properties))
        return m_stored->index(agent, properties, from, to, detail);
    std::vector<RowId> recorded(properties.begin(), properties.end());
    std::erase_if(recorded, [&](RowId property) { return known->computed.contains(property); });
    RecordIndex index = m_stored->index(agent, recorded, from, to, detail);
    for (RecordIndex::Piece& piece : index.pieces) {
        std::vector<RecordIndex::Column> columns;
        auto next = piece.columns.begin();
        for (const RowId property : properties)
            if (known->computed.contains(property))
                columns.push_back({property, RecordIndex::Source::NothingKnown, {}});
            else
                columns.push_back(std::move(*next++));
        piece.columns = std::move(columns);
    }
    return index;
}

std::optional<RecordBlock> ComputedRecords::read(RowId agent, std::span<const RowId> properties,
                                                 std::optional<double> from, std::optional<double> to,
                                                 const ArchiveProgress& progress)
{
    const auto known = site();
    if (!isAnyOf(known->computed, properties))
        return m_stored->read(agent, properties, from, to, progress);
    return ComputedReading(*m_stored, *known->directory, {agent, {properties.begin(), properties.end()}, from, to})
        .read(progress);
}

std::optional<RecordColumns> ComputedRecords::columns(RowId agent, std::span<const RowId> properties,
                                                      std::optional<double> from, std::optional<double> to,
                                                      const std::shared_ptr<PageCache>& cache,
                                                      const ArchiveProgress& progress)
{
    const auto known = site();
    if (!isAnyOf(known->computed, properties))
        return m_stored->columns(agent, properties, from, to, cache, progress);
    if (!cache)
        return RecordStore::columns(agent, properties, from, to, cache, progress);
    return ComputedReading(*m_stored, *known->directory, {agent, {properties.begin(), properties.end()}, from, to})
        .columns(cache, progress);
}

std::vector<RecordPart> ComputedRecords::partsRead(RowId agent, std::span<const RowId> properties,
                                                   std::optional<double> from, std::optional<double> to)
{
    const auto known = site();
    if (!isAnyOf(known->computed, properties))
        return m_stored->partsRead(agent, properties, from, to);
    std::vector<RowId> asked(properties.begin(), properties.end());
    // What cannot be worked out reads nothing.
    std::erase_if(asked, [&](RowId property) {
        return known->computed.contains(property) && planProperty(*known->directory, property).problem;
    });
    return ComputedReading(*m_stored, *known->directory, {agent, asked, from, to}).parts();
}

std::vector<Amendment> ComputedRecords::amendments(RowId agent, std::span<const RowId> properties,
                                                   std::optional<double> from, std::optional<double> to)
{
    const auto known = site();
    std::vector<Amendment> found;
    for (const RowId property : properties) {
        const std::array asked{property};
        const bool isComputed = known->computed.contains(property);
        for (const RecordPart& part :
             isComputed ? partsRead(agent, asked, from, to) : std::vector<RecordPart>{{agent, {property}, from, to}})
            for (Amendment each : m_stored->amendments(part.agent, part.properties, from, to)) {
                each.property = property;
                found.push_back(each);
            }
    }
    return found;
}

ColumnStatistics ComputedRecords::statistics(RowId agent, RowId property, std::optional<double> from,
                                             std::optional<double> to, StatisticsFrom source)
{
    const auto known = site();
    if (!known->computed.contains(property))
        return m_stored->statistics(agent, property, from, to, source);
    const RowId asked[] = {property};
    const std::optional<RecordColumns> columns = this->columns(agent, asked, from, to, programPages());
    return statisticsOf(columns->columns.front());
}

CompactionResult ComputedRecords::compact(const CompactionRequest& request, const ArchiveProgress& progress)
{
    return m_stored->compact(request, progress);
}

VerificationResult ComputedRecords::verify(const ArchiveProgress& progress, std::uint64_t memory)
{
    return m_stored->verify(progress, memory);
}

std::optional<QString> refusalToRead(RecordStore& store, const RecordPart& wanted, std::uint64_t budget)
{
    // Of every formula a column is worked out beside those that it reads.
    for (const RecordPart& part : store.partsRead(wanted.agent, wanted.properties, wanted.from, wanted.to)) {
        const RecordOverview overview = store.overview(part.agent, {}, part.from, part.to);
        const std::size_t columns = std::max(wanted.properties.size(), part.properties.size());
        if (const auto refusal = refusalOf({overview, columns, part.from, part.to}, budget))
            return refusal;
    }
    return std::nullopt;
}

bool fitsInto(std::uint64_t bytes, RecordStore& store, const RecordPart& wanted)
{
    for (const RecordPart& part : store.partsRead(wanted.agent, wanted.properties, wanted.from, wanted.to)) {
        const std::size_t columns = std::max(wanted.properties.size(), part.properties.size());
        if (store.hasMoreThan(bytes / bytesPerRecord(columns), part.agent, part.from, part.to))
            return false;
    }
    return true;
}

std::optional<QString> refusalToReadColumns(RecordStore& store, const RecordPart& wanted, std::uint64_t budget)
{
    return store.unpacksOnDemand(wanted.properties) ? std::nullopt : refusalToRead(store, wanted, budget);
}

}  // namespace plotix
