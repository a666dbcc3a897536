// Keeps columns of a site, to be unpacked while and after others write to it: KilledArchiveTest says when.
//
//     archive_reader SITE
//
// Takes the records of both agents as promises, unpacks them once, remembers what they were and says "kept". To each
// line on its input it unpacks them anew and says "same", or what is not. Ends with its input.

#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace {

using namespace plotix;

class Kept {
public:
    Kept(RecordStore& records, const WrittenAgent& agent)
        : m_columns(*records.columns(agent.agent, agent.properties(), {}, {}, std::make_shared<PageCache>(0))),
          m_before(unpacked())
    {
    }

    /// Empty: everything is as it was, and as it was written.
    std::string complaint() const
    {
        if (m_columns.times.isResident())
            return "nothing is left to be unpacked";
        const std::vector<std::uint64_t> now = unpacked();
        if (const auto failure = m_columns.failure->message())
            return failure->toStdString();
        if (now != m_before)
            return "it reads otherwise than before";
        return isAsWritten() ? "" : "it reads otherwise than it was written";
    }

private:
    std::vector<std::uint64_t> unpacked() const
    {
        std::vector<std::uint64_t> bits;
        const auto add = [&](const PagedArray<double>& values) {
            const PagedMemory::Hold held = values.holdAll();
            for (const double value : values.span())
                bits.push_back(std::bit_cast<std::uint64_t>(value));
        };
        add(m_columns.times);
        for (const RecordColumns::Column& column : m_columns.columns)
            add(column.values);
        return bits;
    }
    bool isAsWritten() const
    {
        const std::size_t count = m_columns.times.size();
        for (std::size_t i = 0; i < count; ++i) {
            const double time = std::bit_cast<double>(m_before[i]);
            if (m_before[count + i] != std::bit_cast<std::uint64_t>(evenValue(time)) ||
                m_before[2 * count + i] != std::bit_cast<std::uint64_t>(oddValue(time)))
                return false;
        }
        return true;
    }

    RecordColumns m_columns;
    std::vector<std::uint64_t> m_before;
};

}  // namespace

int main(int count, char** arguments)
{
    if (count < 2)
        return 2;
    try {
        const auto records = recordsOfSite(QString::fromLocal8Bit(arguments[1]));
        const Kept inOrder(*records, kInOrder), late(*records, kLate);
        std::cout << "kept" << std::endl;
        for (std::string line; std::getline(std::cin, line);) {
            const std::string complaint = inOrder.complaint() + late.complaint();
            std::cout << (complaint.empty() ? "same" : complaint) << std::endl;
        }
    } catch (const ReportableError& error) {
        std::cout << "reading: " << error.what() << std::endl;
        return 1;
    }
    return 0;
}
