#pragma once

#include "tests/support/fakehost/FakeAgent.h"

#include <limits>
#include <map>
#include <vector>

/// Writes record dictionaries down as a test reads them.
///
///     host.records().at(0).value("airTemperature", 20.1).value("pressure", 1013)
///                   .at(60).invalid("airTemperature").notAProperty("pressure").build();
///     host.records().times({0, 60}).column("airTemperature", {20.1, 20.3}).build();
///
/// Calls about one element refer to the last time given. A key without a value at a time gets an invalid snapshot. Keys
/// are in the order first named. Name, units, colour and kind are those of the agent's property of that key; without
/// one the name is the key and the unit empty. A value; copies are independent. Main thread only.
namespace fakehost {

class RecordBuilder {
public:
    RecordBuilder(std::weak_ptr<FakeAgent> agent, std::shared_ptr<const FakeUnitModel> units);

    RecordBuilder& at(double seconds);  ///< the next time, in the order written; need not ascend
    RecordBuilder& value(const QString& key, double value);
    /// The bits beneath an invalid snapshot have no meaning; a test may choose them.
    RecordBuilder& invalid(const QString& key, double bits = std::numeric_limits<double>::quiet_NaN());
    RecordBuilder& notAProperty(const QString& key);
    RecordBuilder& neverPlotted(const QString& key, double value);  ///< of the kind 'WPSt'
    RecordBuilder& coloured(const QString& key, double value, const QColor& color);
    /// A snapshot with a unit and a validity of its own.
    RecordBuilder& differing(const QString& key, FakeProperty::Description snapshot);

    RecordBuilder& times(const std::vector<double>& seconds);
    RecordBuilder& column(const QString& key, const std::vector<double>& values);  ///< from the first time on
    RecordBuilder& kind(const QString& key, std::uint32_t type);                   ///< of the whole column
    RecordBuilder& shortened(const QString& key, std::size_t size);  ///< the array ends after `size` elements
    RecordBuilder& withoutTime();

    KTVRecordDictionaryPtr build() const;

    /// What an archive holding exactly these records answers: the asked-for properties it knows, times within the
    /// bounds, both inclusive, absent ones open. No properties asked for, or absent ones: a dictionary without "time".
    FakeArchiveManager::Answer answer(const FakeArchiveManager::Fetch& fetch) const;

private:
    struct Column {
        std::vector<double> values;
        std::vector<bool> valid;
        std::map<std::size_t, KTVPropertyPtr> exceptions;
        std::optional<std::uint32_t> type;
        std::optional<std::size_t> size;
    };
    Column& columnNamed(const QString& key);
    std::size_t row() const;
    void set(Column& column, std::size_t index, double value, bool isValid) const;
    KTVPropertyPtr snapshot(const QString& key, double value, const QColor* color, std::uint32_t type) const;
    std::shared_ptr<KTVRecordColumn> columnOf(const QString& key, const Column& column,
                                              const std::vector<std::size_t>& rows) const;
    KTVRecordDictionaryPtr dictionary(const std::vector<QString>& keys, const std::vector<std::size_t>& rows) const;

    FakePropertyPtr agentProperty(const QString& key) const;

    std::weak_ptr<FakeAgent> m_agent;  // weak: the agent's archive manager may keep a builder
    std::shared_ptr<const FakeUnitModel> m_units;
    std::vector<double> m_times;
    std::vector<QString> m_keys;
    std::map<QString, Column> m_columns;
    bool m_hasTime = true;
};

}  // namespace fakehost
