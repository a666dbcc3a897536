#include "hostapp/document/ElementMoving.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

/// The target's element at a time; nothing when it has no valid one. Times are asked in ascending order.
class Existing {
public:
    Existing(RecordStore& stored, const ElementMove& move, double from, double to)
        : m_block(*stored.read(move.toAgent, std::array{move.toProperty}, from, to))
    {
    }

    std::optional<double> at(double time)
    {
        const std::span<const double> times = m_block.times.span();
        while (m_next < times.size() && times[m_next] < time)
            ++m_next;
        const RecordBlock::Column& column = m_block.columns[0];
        if (m_next == times.size() || times[m_next] != time || !column.validity.isValid(m_next))
            return std::nullopt;
        return column.values[m_next];
    }

private:
    RecordBlock m_block;
    std::size_t m_next = 0;
};

}  // namespace

ElementsMoved moveElements(RecordStore& stored, RecordTransaction& records, const ElementMove& move, EditMeter& meter)
{
    ElementsMoved moved;
    for (const RecordOverview::Run& run : stored.overview(move.agent, {}).runs) {
        const RecordBlock block = *stored.read(move.agent, std::array{move.property}, run.t0, run.t1);
        Existing existing(stored, move, run.t0, run.t1);
        std::vector<double> times, values;
        for (std::size_t i = 0; i < block.times.size(); ++i) {
            if (!block.columns[0].validity.isValid(i))
                continue;
            const double value =
                move.converted ? move.converted(block.columns[0].values[i]) : block.columns[0].values[i];
            if (const std::optional<double> other = existing.at(block.times[i])) {
                moved.conflicts += *other != value ? 1 : 0;
                continue;
            }
            times.push_back(block.times[i]);
            values.push_back(value);
        }
        moved.values += times.size();
        if (!times.empty())
            records.store(move.toAgent, {SharedArray<double>::fromVector(std::move(times)),
                                         {{move.toProperty, SharedArray<double>::fromVector(std::move(values)), {}}}});
        meter.advance();
    }
    return moved;
}

}  // namespace plotix
