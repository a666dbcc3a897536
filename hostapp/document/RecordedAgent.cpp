#include "hostapp/document/RecordedAgent.h"

#include "base/Date.h"
#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"
#include "hostapp/document/SiteTransaction.h"

#include <algorithm>
#include <bit>

namespace plotix {

namespace {

constexpr int kAppendersPatience = 200;  // milliseconds for another writer; the next attempt comes soon

/// Of the same columns.
bool isSameRecord(const RecordBlock& one, std::size_t at, const RecordBlock& other, std::size_t otherAt)
{
    for (std::size_t column = 0; column < one.columns.size(); ++column) {
        const RecordBlock::Column &mine = one.columns[column], &theirs = other.columns[column];
        const bool isValid = mine.validity.isValid(at);
        if (isValid != theirs.validity.isValid(otherAt))
            return false;
        if (isValid &&
            std::bit_cast<std::uint64_t>(mine.values[at]) != std::bit_cast<std::uint64_t>(theirs.values[otherAt]))
            return false;
    }
    return true;
}

bool hasValues(const RecordBlock& block, std::size_t record)
{
    return std::any_of(block.columns.begin(), block.columns.end(),
                       [record](const RecordBlock::Column& column) { return column.validity.isValid(record); });
}

/// Those records of the block. Requires: they are some of it.
RecordBlock chosen(const RecordBlock& block, const std::vector<std::size_t>& records)
{
    const auto valuesOf = [&](const SharedArray<double>& all) {
        std::vector<double> some;
        some.reserve(records.size());
        for (const std::size_t record : records)
            some.push_back(all[record]);
        return SharedArray<double>::fromVector(std::move(some));
    };
    RecordBlock some{valuesOf(block.times), {}};
    for (const RecordBlock::Column& column : block.columns) {
        std::vector<std::uint64_t> valid((records.size() + 63) / 64, 0);
        for (std::size_t i = 0; i < records.size(); ++i)
            valid[i / 64] |= std::uint64_t{column.validity.isValid(records[i])} << (i % 64);
        some.columns.push_back({column.property, valuesOf(column.values),
                                ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))});
    }
    return some;
}

}  // namespace

FoundAgent findOrMake(const QString& site, const RecordedAgent& agent)
{
    SiteTransaction transaction(site);
    FoundAgent found{transaction.findOrCreateAgent(agent.name), {}};
    for (const RecordedAgent::Property& property : agent.properties)
        found.properties.push_back(
            transaction.findOrCreateProperty(found.agent, property.name, property.unit, property.type).id);
    transaction.commit();
    return found;
}

RowId knownAgent(const QString& site, const QString& name)
{
    Database database(site, siteSchema(), Database::Access::BestAvailable);
    const std::optional<SiteStore::Agent> agent = SiteStore(database).agentOnceNamed(name);
    return agent ? agent->id : 0;
}

RecordBlock blockFor(const FoundAgent& agent, const RecordBlock& byPlace)
{
    RecordBlock block = byPlace;
    for (RecordBlock::Column& column : block.columns)
        column.property = agent.properties[static_cast<std::size_t>(column.property) - 1];
    return block;
}

void AgentAppender::open()
{
    if (!m_found)
        m_found = findOrMake(m_site, m_agent);
    if (!m_records)
        m_records = recordsOfSite(m_site);
    if (!m_appender) {
        m_appender = m_records->appender();
        m_appender->setPatience(kAppendersPatience);
        m_appender->noteAmendments([] { return currentDate().seconds; });
    }
}

void AgentAppender::append(const RecordBlock& byPlace)
{
    try {
        open();
        m_appender->append(m_found->agent, blockFor(*m_found, byPlace));
    } catch (...) {
        m_appender.reset();  // the connection itself may be the cause
        m_found.reset();     // or somebody took the agent away
        throw;
    }
}

std::size_t AgentAppender::appendWhatIsNew(const RecordBlock& byPlace)
{
    if (byPlace.times.size() == 0)
        return 0;
    std::size_t others = 0;
    std::vector<std::size_t> fresh;
    try {
        open();
        const RecordBlock block = blockFor(*m_found, byPlace);
        const double first = block.times[0], last = block.times[block.times.size() - 1];
        const auto times = m_records->read(m_found->agent, {}, first, last);
        RecordBlock there;
        if (times && times->times.size() > 0) {
            std::vector<RowId> properties;
            for (const RecordBlock::Column& column : block.columns)
                properties.push_back(column.property);
            there = m_records->read(m_found->agent, properties, first, last).value_or(RecordBlock());
        }
        std::size_t next = 0;
        for (std::size_t record = 0; record < block.times.size(); ++record) {
            while (next < there.times.size() && there.times[next] < block.times[record])
                ++next;
            if (next == there.times.size() || there.times[next] != block.times[record])
                fresh.push_back(record);
            else if (isSameRecord(block, record, there, next))
                continue;
            else if (hasValues(there, next))
                ++others;
            else  // another property's record: both count
                fresh.push_back(record);
        }
    } catch (...) {
        m_appender.reset();
        m_found.reset();
        throw;
    }
    if (fresh.size() == byPlace.times.size())
        append(byPlace);
    else if (!fresh.empty())
        append(chosen(byPlace, fresh));
    return others;
}

}  // namespace plotix
