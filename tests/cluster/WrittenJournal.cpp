#include "tests/cluster/WrittenJournal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace plotix {

namespace {

constexpr int kLongest = 60'000;  // records: then all are removed, so that looking at them stays quick
constexpr std::array kNames{"append", "store", "amend", "correct", "remove", "compact"};

double evenOf(int time, int number)
{
    return evenValue(time) + 1000.0 * number;
}

double oddOf(int time, int number)
{
    return oddValue(time + 1e7 * number);
}

bool isSame(double one, double other)
{
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

}  // namespace

const char* WrittenOperation::nameOf(Kind kind)
{
    return kNames[kind];
}

void WrittenState::apply(const WrittenOperation& operation)
{
    if (operation.kind == WrittenOperation::Compact)
        return;
    const auto first = static_cast<std::size_t>(operation.first);
    const auto end = first + static_cast<std::size_t>(operation.count);
    const bool removes = operation.kind == WrittenOperation::Remove;
    if (!removes && m_numbers.size() < end)
        m_numbers.resize(end, 0);
    for (std::size_t time = first; time < std::min(end, m_numbers.size()); ++time)
        m_numbers[time] = removes ? 0 : operation.number;
    while (!m_numbers.empty() && m_numbers.back() == 0)
        m_numbers.pop_back();
}

std::size_t WrittenState::count() const
{
    return m_numbers.size() - static_cast<std::size_t>(std::count(m_numbers.begin(), m_numbers.end(), 0));
}

std::string WrittenState::differenceTo(const RecordBlock& read) const
{
    const std::span<const double> times = read.times.span();
    std::size_t at = 0;
    for (int time = 0; time < end(); ++time) {
        const int number = m_numbers[static_cast<std::size_t>(time)];
        if (number == 0)
            continue;
        if (at == times.size() || times[at] > time)
            return "the record at " + std::to_string(time) + " of operation " + std::to_string(number) + " is lost";
        if (times[at] < time)
            break;
        const double even = read.columns[0].values[at], odd = read.columns[1].values[at];
        if (!isSame(even, evenOf(time, number)) || !isSame(odd, oddOf(time, number))) {
            std::ostringstream said;
            said << "the record at " << time << " has " << even << " and " << odd << ", not those of operation "
                 << number;
            return said.str();
        }
        ++at;
    }
    if (at == times.size())
        return {};
    std::ostringstream said;
    said << "there is a record at " << times[at] << " that ought not to be, record " << at << " of " << times.size();
    return said.str();
}

WrittenOperation nextOperation(const WrittenState& state, int number, std::minstd_rand& random)
{
    using Kind = WrittenOperation::Kind;
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const int end = state.end();
    const auto within = [&](Kind kind, int longest) {
        return WrittenOperation{kind, below(end), 1 + below(longest), number};
    };
    if (end > kLongest)
        return {Kind::Remove, 0, end, number};
    const int draw = end == 0 ? below(64) : below(100);
    if (draw < 40)
        return {Kind::Append, end, 1 + below(50), number};
    if (draw < 46)
        return {Kind::Append, end + 1 + below(100), 1 + below(50), number};
    if (draw < 57)
        return {Kind::Append, end, 3000, number};
    if (draw < 64)
        return {Kind::Store, end, 1100 + below(5000), number};
    if (draw < 78)
        return within(Kind::Amend, 30);
    if (draw < 86)
        return within(Kind::Correct, 3000);
    if (draw < 93)
        return within(Kind::Remove, 3000);
    return {Kind::Compact, 0, 0, number};
}

RecordBlock recordsOf(const WrittenAgent& agent, const WrittenOperation& operation)
{
    std::vector<double> times, even, odd;
    for (int time = operation.first; time < operation.first + operation.count; ++time) {
        times.push_back(time);
        even.push_back(evenOf(time, operation.number));
        odd.push_back(oddOf(time, operation.number));
    }
    return {SharedArray<double>::fromVector(std::move(times)),
            {{agent.even, SharedArray<double>::fromVector(std::move(even)), {}},
             {agent.even + 1, SharedArray<double>::fromVector(std::move(odd)), {}}}};
}

WrittenJournal::WrittenJournal(std::string file) : m_file(std::move(file))
{
    std::ifstream stream(m_file);
    std::string line;
    while (std::getline(stream, line) && !stream.eof()) {  // at the end: without the end of the line
        std::istringstream words(line);
        std::string name;
        words >> name;
        if (name == "done") {
            if (m_begun)
                m_done.apply(*m_begun);
            m_begun.reset();
            ++m_operations;
            continue;
        }
        const auto* const found = std::find(kNames.begin(), kNames.end(), name);
        WrittenOperation operation;
        if (found == kNames.end() || !(words >> operation.number >> operation.first >> operation.count))
            continue;  // cut short, and the next one was written behind it
        operation.kind = static_cast<WrittenOperation::Kind>(found - kNames.begin());
        m_begun = operation;
    }
}

void WrittenJournal::add(const std::string& line) const
{
    std::FILE* const file = std::fopen(m_file.c_str(), "a");
    if (!file || std::fputs((line + "\n").c_str(), file) < 0 || std::fclose(file) != 0)
        throw std::runtime_error("the journal cannot be written");
}

void WrittenJournal::begin(const WrittenOperation& operation)
{
    std::ostringstream line;
    line << WrittenOperation::nameOf(operation.kind) << ' ' << operation.number << ' ' << operation.first << ' '
         << operation.count;
    add(line.str());
    m_begun = operation;
}

void WrittenJournal::end()
{
    add("done");
    m_done.apply(*m_begun);
    m_begun.reset();
    ++m_operations;
}

}  // namespace plotix
