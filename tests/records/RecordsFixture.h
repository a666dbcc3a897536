#pragma once

#include "records/store/RecordStore.h"
#include "tests/records/BlockFixture.h"

#include <memory>

/// Records of one agent or more in a store, whichever it is.
class RecordsFixture : public BlockFixture {
protected:
    /// The store, opened anew: nothing is cached from before.
    virtual std::shared_ptr<plotix::RecordStore> opened() = 0;

    void store(const plotix::RecordBlock& records) { storeFor(agent, records); }
    void storeFor(plotix::RowId owner, const plotix::RecordBlock& records)
    {
        const auto transaction = opened()->begin();
        transaction->store(owner, records);
        transaction->commit();
    }

    plotix::RecordBlock read(std::vector<plotix::RowId> properties, std::optional<double> from = {},
                             std::optional<double> to = {})
    {
        return *opened()->read(agent, properties, from, to);
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
    std::optional<plotix::RecordExtent> extent() { return opened()->extent(agent); }
    std::size_t count() { return countIn(*opened(), agent); }
    static std::size_t countIn(plotix::RecordStore& records, plotix::RowId owner)
    {
        return records.overview(owner, {}).records();
    }

    plotix::RowId agent = 0, air = 0, wind = 0;  ///< an agent and two properties of its own
};
