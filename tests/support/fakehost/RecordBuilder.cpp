#include "tests/support/fakehost/RecordBuilder.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <numeric>

namespace fakehost {
namespace {

plotix::ValidityBitmap bitmapOf(const std::vector<bool>& valid)
{
    std::vector<std::uint64_t> words((valid.size() + 63) / 64);
    for (std::size_t index = 0; index < valid.size(); ++index)
        if (valid[index])
            words[index / 64] |= std::uint64_t{1} << (index % 64);
    return plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(std::move(words)));
}

}  // namespace

RecordBuilder::RecordBuilder(std::weak_ptr<FakeAgent> agent, std::shared_ptr<const FakeUnitModel> units)
    : m_agent(std::move(agent)), m_units(std::move(units))
{
}

RecordBuilder& RecordBuilder::at(double seconds)
{
    m_times.push_back(seconds);
    return *this;
}

RecordBuilder& RecordBuilder::value(const QString& key, double value)
{
    set(columnNamed(key), row(), value, true);
    return *this;
}

RecordBuilder& RecordBuilder::invalid(const QString& key, double bits)
{
    set(columnNamed(key), row(), bits, false);
    return *this;
}

RecordBuilder& RecordBuilder::notAProperty(const QString& key)
{
    columnNamed(key).exceptions[row()] = nullptr;
    return *this;
}

RecordBuilder& RecordBuilder::neverPlotted(const QString& key, double value)
{
    columnNamed(key).exceptions[row()] = snapshot(key, value, nullptr, kPropertyTypeNeverPlotted);
    return *this;
}

RecordBuilder& RecordBuilder::coloured(const QString& key, double value, const QColor& color)
{
    columnNamed(key).exceptions[row()] = snapshot(key, value, &color, 0);
    return *this;
}

RecordBuilder& RecordBuilder::differing(const QString& key, FakeProperty::Description snapshot)
{
    snapshot.propertyName = key;
    columnNamed(key).exceptions[row()] = std::make_shared<FakeProperty>(std::move(snapshot), m_units);
    return *this;
}

RecordBuilder& RecordBuilder::times(const std::vector<double>& seconds)
{
    m_times.insert(m_times.end(), seconds.begin(), seconds.end());
    return *this;
}

RecordBuilder& RecordBuilder::column(const QString& key, const std::vector<double>& values)
{
    Column& column = columnNamed(key);
    for (std::size_t index = 0; index < values.size(); ++index)
        set(column, index, values[index], true);
    return *this;
}

RecordBuilder& RecordBuilder::kind(const QString& key, std::uint32_t type)
{
    columnNamed(key).type = type;
    return *this;
}

RecordBuilder& RecordBuilder::shortened(const QString& key, std::size_t size)
{
    columnNamed(key).size = size;
    return *this;
}

RecordBuilder& RecordBuilder::withoutTime()
{
    m_hasTime = false;
    return *this;
}

KTVRecordDictionaryPtr RecordBuilder::build() const
{
    std::vector<std::size_t> rows(m_times.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return dictionary(m_keys, rows);
}

FakeArchiveManager::Answer RecordBuilder::answer(const FakeArchiveManager::Fetch& fetch) const
{
    if (!fetch.properties || fetch.properties->empty())
        return {.records = std::make_shared<KTVRecordDictionary>()};
    std::vector<QString> keys;
    for (const KTVPropertyPtr& property : *fetch.properties)
        if (m_columns.contains(property->propertyName()))
            keys.push_back(property->propertyName());
    std::vector<std::size_t> rows;
    for (std::size_t index = 0; index < m_times.size(); ++index) {
        const double time = m_times[index];
        if ((!fetch.fromDate || time >= fetch.fromDate->seconds) && (!fetch.toDate || time <= fetch.toDate->seconds))
            rows.push_back(index);
    }
    return {.records = dictionary(keys, rows)};
}

RecordBuilder::Column& RecordBuilder::columnNamed(const QString& key)
{
    if (!m_columns.contains(key))
        m_keys.push_back(key);
    return m_columns[key];
}

std::size_t RecordBuilder::row() const
{
    assert(!m_times.empty() && "give a time first");
    return m_times.size() - 1;
}

void RecordBuilder::set(Column& column, std::size_t index, double value, bool isValid) const
{
    if (column.values.size() <= index) {
        column.values.resize(index + 1, std::numeric_limits<double>::quiet_NaN());
        column.valid.resize(index + 1, false);
    }
    column.values[index] = value;
    column.valid[index] = isValid;
}

FakePropertyPtr RecordBuilder::agentProperty(const QString& key) const
{
    const auto agent = m_agent.lock();
    return agent ? agent->property(key) : nullptr;
}

KTVPropertyPtr RecordBuilder::snapshot(const QString& key, double value, const QColor* color, std::uint32_t type) const
{
    const FakePropertyPtr property = agentProperty(key);
    FakeProperty::Description description{.name = property ? property->name() : key,
                                          .unit = property ? property->archivedUnit() : QString(),
                                          .propertyName = key,
                                          .type = type,
                                          .value = value};
    if (color)
        description.color = *color;
    auto made = std::make_shared<FakeProperty>(description, m_units);
    if (property)
        made->setUnit(property->unit());
    return made;
}

std::shared_ptr<KTVRecordColumn> RecordBuilder::columnOf(const QString& key, const Column& column,
                                                         const std::vector<std::size_t>& rows) const
{
    const std::size_t size = std::min(column.size.value_or(rows.size()), rows.size());
    std::vector<double> values(size, std::numeric_limits<double>::quiet_NaN());
    std::vector<bool> valid(size, false);
    for (std::size_t index = 0; index < size; ++index) {
        if (rows[index] < column.values.size()) {
            values[index] = column.values[rows[index]];
            valid[index] = column.valid[rows[index]];
        }
    }
    KTVRecordColumn::Descriptor descriptor;
    descriptor.name = descriptor.propertyName = key;
    if (const FakePropertyPtr property = agentProperty(key)) {
        descriptor = {.name = property->name(),
                      .propertyName = key,
                      .archivedUnit = property->archivedUnit(),
                      .unit = property->unit(),
                      .color = property->color(),
                      .type = property->type(),
                      .visible = property->visible()};
    }
    descriptor.type = column.type.value_or(descriptor.type);
    auto made = std::make_shared<KTVRecordColumn>(
        descriptor, plotix::SharedArray<double>::fromVector(std::move(values)), bitmapOf(valid), m_units);
    for (std::size_t index = 0; index < size; ++index)
        if (const auto exception = column.exceptions.find(rows[index]); exception != column.exceptions.end())
            made->setException(index, exception->second);
    return made;
}

KTVRecordDictionaryPtr RecordBuilder::dictionary(const std::vector<QString>& keys,
                                                 const std::vector<std::size_t>& rows) const
{
    auto records = std::make_shared<KTVRecordDictionary>();
    if (m_hasTime) {
        std::vector<double> times;
        for (const std::size_t index : rows)
            times.push_back(m_times[index]);
        records->setTime(plotix::SharedArray<double>::fromVector(std::move(times)));
    }
    for (const QString& key : keys)
        records->setColumn(key, columnOf(key, m_columns.at(key), rows));
    return records;
}

}  // namespace fakehost
