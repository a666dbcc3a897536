#include "records/store/MemoryWriting.h"

#include "base/ReportableError.h"
#include "records/store/AmendmentFinder.h"

#include <cmath>
#include <functional>

namespace plotix {

namespace {

using Contents = RecordsInMemory::Contents;

std::function<bool(double, double)> neighboursIn(const AmendmentFinder& before, RowId agent, RowId property)
{
    return [before = std::make_shared<AmendmentFinder>(before), agent, property](double from, double to) {
        return before->hasNothingBetween(agent, property, from, to);
    };
}

void note(RowId agent, const RecordBlock& block, double now, AmendmentFinder before, Contents& into)
{
    const Records ordered = Records::ordered(RecordsView::of(block));
    for (const Amendment& amendment : before.find(agent, ordered.view(), now))
        add(amendment, into.amendments[amendment.property], neighboursIn(before, agent, amendment.property));
}

class MemoryTransaction final : public RecordTransaction {
public:
    MemoryTransaction(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf)
        : m_records(std::move(records)), m_storeOf(std::move(storeOf)), m_turn(m_records->turn(kWritersPatience))
    {
    }

    void store(RowId agent, const RecordBlock& block) override
    {
        requireOpen();
        m_records->requireStorable(agent, block);
        m_steps.emplace_back([this, agent, block, now = m_now](Contents& contents) {
            if (now)
                note(agent, block, *now, before(), contents);
            merge(block, contents.timelines[agent]);
        });
    }
    void remove(RowId agent, std::span<const RowId> properties, std::optional<double> lower,
                std::optional<double> upper) override
    {
        requireOpen();
        m_steps.emplace_back([agent, which = std::vector(properties.begin(), properties.end()),
                              begin = lower.value_or(-HUGE_VAL), end = upper.value_or(HUGE_VAL)](Contents& contents) {
            plotix::remove(which, begin, end, contents.timelines[agent]);
            for (const RowId property : which)
                plotix::remove(begin, end, contents.amendments[property]);
        });
    }
    void noteAmendments(double now) override { m_now = now; }
    void addAmendment(RowId agent, const Amendment& amendment) override
    {
        requireOpen();
        m_steps.emplace_back([this, agent, amendment](Contents& contents) {
            add(amendment, contents.amendments[amendment.property], neighboursIn(before(), agent, amendment.property));
        });
    }
    void prepare() override {}
    void commit() override
    {
        m_before = std::make_shared<RecordsInMemory>(m_records->copied());
        m_records->changed([this](Contents& contents) {
            for (const auto& step : m_steps)
                step(contents);
        });
        m_before.reset();
        m_steps.clear();
        m_turn.reset();
    }

private:
    void requireOpen() const
    {
        if (!m_turn)
            throw ReportableError(QStringLiteral("These records were stored already: begin again to store more."));
    }

    AmendmentFinder before() const { return AmendmentFinder(m_storeOf(m_before)); }

    std::shared_ptr<RecordsInMemory> m_records;
    StoreOfRecords m_storeOf;
    std::shared_ptr<RecordsInMemory> m_before;    // while it is committed: as it was
    std::optional<RecordsInMemory::Turn> m_turn;  // nothing: committed
    std::optional<double> m_now;                  // absent: nothing is noted
    std::vector<std::function<void(Contents&)>> m_steps;
};

class MemoryAppender final : public RecordAppender {
public:
    MemoryAppender(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf)
        : m_records(std::move(records)), m_storeOf(std::move(storeOf))
    {
    }

    void append(RowId agent, const RecordBlock& block) override
    {
        const RecordsInMemory::Turn turn = m_records->turn(m_patience);
        m_records->requireStorable(agent, block);
        AmendmentFinder before(m_storeOf(m_clock ? std::make_shared<RecordsInMemory>(m_records->copied()) : m_records));
        m_records->changed([&](Contents& contents) {
            if (m_clock)
                note(agent, block, m_clock(), std::move(before), contents);
            merge(block, contents.timelines[agent]);
        });
    }
    void noteAmendments(std::function<double()> clock) override { m_clock = std::move(clock); }
    void setPatience(int milliseconds) override { m_patience = milliseconds; }

private:
    std::shared_ptr<RecordsInMemory> m_records;
    StoreOfRecords m_storeOf;
    std::function<double()> m_clock;  // empty: nothing is noted
    int m_patience = kWritersPatience;
};

}  // namespace

std::unique_ptr<RecordTransaction> transactionOn(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf)
{
    return std::make_unique<MemoryTransaction>(std::move(records), std::move(storeOf));
}

std::unique_ptr<RecordAppender> appenderTo(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf)
{
    return std::make_unique<MemoryAppender>(std::move(records), std::move(storeOf));
}

}  // namespace plotix
