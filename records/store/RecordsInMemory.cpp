#include "records/store/RecordsInMemory.h"

#include "base/ReportableError.h"
#include "records/columns/ColumnView.h"
#include "records/store/StorableBlock.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iterator>

namespace plotix {

RecordsInMemory::Turn RecordsInMemory::turn(int patience)
{
    std::unique_lock lock(m_turnMutex);
    if (!m_givenBack.wait_for(lock, std::chrono::milliseconds(patience), [this] { return !m_taken; }))
        throw ReportableError(
            QStringLiteral("The records are being written by somebody else: wait until that is done and try again."));
    m_taken = true;
    return Turn(*this);
}

RecordsInMemory::Turn::~Turn()
{
    if (!m_records)
        return;
    {
        const std::lock_guard lock(m_records->m_turnMutex);
        m_records->m_taken = false;
    }
    m_records->m_givenBack.notify_one();
}

std::shared_lock<std::shared_mutex> RecordsInMemory::whileNobodyChanges() const
{
    const std::lock_guard door(m_door);
    return std::shared_lock(m_mutex);
}

std::unique_lock<std::shared_mutex> RecordsInMemory::alone()
{
    const std::lock_guard door(m_door);
    return std::unique_lock(m_mutex);
}

void RecordsInMemory::addProperty(RowId agent, RowId property)
{
    const std::unique_lock lock = alone();
    m_properties.insert({agent, property});
}

void RecordsInMemory::requireStorable(RowId agent, const RecordBlock& block) const
{
    requireWholeRecords(block);
    requireDistinctProperties(block);
    const std::shared_lock lock = whileNobodyChanges();
    for (const RecordBlock::Column& column : block.columns)
        if (!m_properties.contains({agent, column.property}))
            refuseProperty(agent, column.property);
}

void remove(std::span<const RowId> properties, double from, double to, RecordsInMemory::Timeline& out)
{
    const double absent = absentValue();
    const auto isAbsent = [&absent](const auto& each) {
        return !each.second.valid && std::memcmp(&each.second.value, &absent, sizeof absent) == 0;
    };
    for (auto record = out.lower_bound(from); record != out.end() && record->first <= to;) {
        for (const RowId property : properties)
            record->second.erase(property);
        const bool isEmpty = std::all_of(record->second.begin(), record->second.end(), isAbsent);
        record = isEmpty ? out.erase(record) : std::next(record);
    }
}

std::vector<Amendment> RecordsInMemory::amendmentsOf(RowId property) const
{
    const std::shared_lock lock = whileNobodyChanges();
    const auto found = m_contents.amendments.find(property);
    return found != m_contents.amendments.end() ? found->second : std::vector<Amendment>();
}

Amendment add(const Amendment& amendment, std::vector<Amendment>& to,
              const std::function<bool(double from, double to)>& areNeighbours)
{
    std::erase_if(to, [&](const Amendment& each) {
        return each.kind == amendment.kind && each.from >= amendment.from && each.to <= amendment.to;
    });
    Amendment* last = nullptr;
    for (Amendment& each : to)
        if (each.kind == amendment.kind && each.to < amendment.from && (!last || each.to >= last->to))
            last = &each;
    const bool isAnyBetween = last && std::any_of(to.begin(), to.end(), [&](const Amendment& each) {
                                  return &each != last && each.to > last->to && each.from < amendment.from;
                              });
    if (last && goesOn(*last, amendment) && !isAnyBetween && areNeighbours(last->to, amendment.from)) {
        last->to = amendment.to;
        last->last = amendment.last;
        return *last;
    }
    to.push_back(amendment);
    return amendment;
}

void remove(double from, double to, std::vector<Amendment>& out)
{
    std::vector<Amendment> left;
    for (const Amendment& each : out)
        for (const Amendment& part :
             each.from <= to && each.to >= from ? without(each, from, to) : std::vector<Amendment>{each})
            left.push_back(part);
    out = std::move(left);
}

void merge(const RecordBlock& block, RecordsInMemory::Timeline& into)
{
    std::map<double, std::size_t> last;  // each time's position in the block
    for (std::size_t i = 0; i < block.times.size(); ++i) {
        last.erase(block.times[i]);  // so that the bits of the time are the last one's too
        last.emplace(block.times[i], i);
    }
    for (const auto& [time, index] : last) {
        RecordsInMemory::Elements& elements = into[time];
        for (const RecordBlock::Column& column : block.columns)
            elements[column.property] = {column.values[index], column.validity.isValid(index)};
    }
}

}  // namespace plotix
