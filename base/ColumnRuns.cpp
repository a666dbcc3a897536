#include "base/ColumnRuns.h"

#include <algorithm>
#include <utility>

namespace plotix {

namespace {

class PlainRuns final : public KeptRuns {
public:
    explicit PlainRuns(ValueRuns runs) : m_runs(std::move(runs)) {}
    std::size_t count() const override { return m_runs.count(); }
    void inPieces(const Take& take) const override { take(m_runs); }
    void piecesOf(std::size_t first, std::size_t end, const TakeFrom& take) const override
    {
        end = std::min(end, count());
        if (first >= end)
            return;
        if (first == 0 && end == count()) {
            take(m_runs, 0);
            return;
        }
        const auto part = [&](const std::vector<double>& all) {
            return std::vector<double>(all.data() + first, all.data() + end);
        };
        take({part(m_runs.least), part(m_runs.greatest), part(m_runs.first)}, first);
    }

private:
    const ValueRuns m_runs;
};

class JoinedRuns final : public KeptRuns {
public:
    explicit JoinedRuns(std::vector<std::shared_ptr<const KeptRuns>> pieces) : m_pieces(std::move(pieces))
    {
        for (const auto& piece : m_pieces) {
            m_begins.push_back(m_count);
            m_count += piece->count();
        }
    }
    std::size_t count() const override { return m_count; }
    void inPieces(const Take& take) const override
    {
        for (const auto& piece : m_pieces)
            piece->inPieces(take);
    }
    void piecesOf(std::size_t first, std::size_t end, const TakeFrom& take) const override
    {
        const auto after = std::upper_bound(m_begins.begin(), m_begins.end(), first);
        for (auto piece = static_cast<std::size_t>(after - m_begins.begin()) - (m_begins.empty() ? 0 : 1);
             piece < m_pieces.size() && m_begins[piece] < end; ++piece) {
            const std::size_t begin = m_begins[piece];
            m_pieces[piece]->piecesOf(
                first - std::min(first, begin), end - begin,
                [&](const ValueRuns& part, std::size_t firstRun) { take(part, begin + firstRun); });
        }
    }
    void inLongRuns(const Take& take) const override
    {
        for (const auto& piece : m_pieces)
            piece->inLongRuns(take);
    }

private:
    const std::vector<std::shared_ptr<const KeptRuns>> m_pieces;
    std::vector<std::size_t> m_begins;
    std::size_t m_count = 0;
};

void appendTo(std::vector<double>& all, const std::vector<double>& next)
{
    all.insert(all.end(), next.begin(), next.end());
}

}  // namespace

void ValueRuns::reserve(std::size_t runs)
{
    for (auto* each : {&least, &greatest, &first})
        each->reserve(runs);
}

void ValueRuns::append(const ValueRuns& next)
{
    appendTo(least, next.least);
    appendTo(greatest, next.greatest);
    appendTo(first, next.first);
}

void KeptRuns::piecesOf(std::size_t first, std::size_t end, const TakeFrom& take) const
{
    std::size_t begin = 0;
    inPieces([&](const ValueRuns& piece) {
        if (begin < end && begin + piece.count() > first)
            take(piece, begin);
        begin += piece.count();
    });
}

ValueRuns KeptRuns::unpacked() const
{
    ValueRuns all;
    all.reserve(count());
    inPieces([&all](const ValueRuns& piece) { all.append(piece); });
    return all;
}

std::shared_ptr<const KeptRuns> KeptRuns::of(ValueRuns runs)
{
    return std::make_shared<const PlainRuns>(std::move(runs));
}

std::shared_ptr<const KeptRuns> KeptRuns::joined(std::vector<std::shared_ptr<const KeptRuns>> pieces)
{
    return pieces.size() == 1 ? pieces.front() : std::make_shared<const JoinedRuns>(std::move(pieces));
}

}  // namespace plotix
