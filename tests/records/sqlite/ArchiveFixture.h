#pragma once

#include "records/store/RecordStore.h"
#include "storage/Database.h"

#include <QtCore/QTemporaryDir>

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

/// A site file of one or more agents in a folder that goes away with the fixture.
///
/// Values are written down as optionals: an absent one is an element that is not valid.
class ArchiveFixture : public testing::Test {
protected:
    using Values = std::vector<std::optional<double>>;

    ArchiveFixture()
    {
        plotix::Database::create(file(), "Site");
        agent = addAgent("One");
        air = addProperty(agent, "air");
        wind = addProperty(agent, "wind");
    }

    QString file() const { return folder.filePath("site.plotix"); }

    plotix::RowId addAgent(const QString& name)
    {
        plotix::Database database(file(), plotix::Database::Access::ReadWrite);
        plotix::Statement(database, "INSERT INTO agent(identifier, name) VALUES(?1, ?1)").bind(1, name).run();
        return database.lastInsertedRow();
    }
    plotix::RowId addProperty(plotix::RowId owner, const QString& key)
    {
        plotix::Database database(file(), plotix::Database::Access::ReadWrite);
        plotix::Statement(database, "INSERT INTO property(agent, name, key, unit, archived_unit, color, type, visible) "
                                    "VALUES(?1, ?2, ?2, '', '', 0, 0, 1)")
            .bind(1, owner)
            .bind(2, key)
            .run();
        return database.lastInsertedRow();
    }
    void run(const char* sql)
    {
        plotix::Database database(file(), plotix::Database::Access::ReadWrite);
        database.execute(sql);
    }
    qint64 ask(const char* sql)
    {
        plotix::Database database(file(), plotix::Database::Access::ReadOnly);
        plotix::Statement statement(database, sql);
        return statement.step() ? statement.integer(0) : -1;
    }

    static plotix::RecordBlock::Column column(plotix::RowId property, const Values& elements)
    {
        std::vector<double> values;
        std::vector<std::uint64_t> words((elements.size() + 63) / 64, 0);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            values.push_back(elements[i].value_or(-999));
            words[i / 64] |= std::uint64_t(elements[i].has_value()) << (i % 64);
        }
        return {property, plotix::SharedArray<double>::fromVector(values),
                plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(words))};
    }
    static plotix::RecordBlock block(std::vector<double> times, std::vector<plotix::RecordBlock::Column> columns)
    {
        return {plotix::SharedArray<double>::fromVector(std::move(times)), std::move(columns)};
    }
    /// Times first, first + 1, …; values equal to the times.
    static plotix::RecordBlock ramp(plotix::RowId property, double first, std::size_t count)
    {
        std::vector<double> times;
        for (std::size_t i = 0; i < count; ++i)
            times.push_back(first + static_cast<double>(i));
        return block(times, {{property, plotix::SharedArray<double>::fromVector(times), {}}});
    }

    void store(const plotix::RecordBlock& records) { storeFor(agent, records); }
    void storeFor(plotix::RowId owner, const plotix::RecordBlock& records)
    {
        plotix::RecordWriter writer(file());
        writer.store(owner, records);
        writer.commit();
    }

    plotix::RecordBlock read(std::vector<plotix::RowId> properties, std::optional<double> from = {},
                             std::optional<double> to = {})
    {
        return *plotix::RecordReader(file()).read(agent, properties, from, to);
    }
    std::vector<double> times(std::optional<double> from = {}, std::optional<double> to = {})
    {
        const auto span = read({}, from, to).times;
        return {span.span().begin(), span.span().end()};
    }
    Values values(plotix::RowId property, std::optional<double> from = {}, std::optional<double> to = {})
    {
        const plotix::RecordBlock records = read({property}, from, to);
        Values elements;
        for (std::size_t i = 0; i < records.times.size(); ++i)
            elements.push_back(records.columns[0].validity.isValid(i) ? std::optional(records.columns[0].values[i])
                                                                      : std::nullopt);
        return elements;
    }

    QTemporaryDir folder;
    plotix::RowId agent = 0, air = 0, wind = 0;
};

inline std::uint64_t bitsOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}
