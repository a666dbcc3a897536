// Writes to a site on replicas without end, to be killed, and tells what each replica has of it.
//
//     cluster_writer ADDRESS write AGENT JOURNAL      looks whether what the journal says is there, does once more what
//                                                     was begun, and goes on: records in order, late and corrected
//                                                     ones, spans removed, compactions. Ends where records are not
//                                                     what was acknowledged
//     cluster_writer ADDRESS check AGENT JOURNAL      whether exactly what was acknowledged is there, with its values;
//     what
//                                                     was begun may be there, or not. Prints how many records there are
//     cluster_writer ADDRESS compact                  compacts the site once
//
// What cannot be done just now is tried again: the same records.

#include "tests/cluster/Writing.h"
#include "tests/cluster/WrittenJournal.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string_view>
#include <thread>

namespace {

using namespace plotix;
using Kind = WrittenOperation::Kind;

/// Empty where the records are what was acknowledged, with what was begun or without.
std::string differenceIn(RecordStore& records, const WrittenAgent& agent, const WrittenJournal& journal)
{
    const RecordBlock read =
        records.read(agent.agent, agent.properties(), {}, {}).value_or(RecordBlock());  // nothing: it was cancelled
    const std::string without = journal.done().differenceTo(read);
    if (without.empty() || !journal.begun())
        return without;
    WrittenState with = journal.done();
    with.apply(*journal.begun());
    const std::string other = with.differenceTo(read);
    return other.empty() ? other
                         : without + "; with “" + WrittenOperation::nameOf(journal.begun()->kind) + "”: " + other;
}

class Writer {
public:
    Writer(std::shared_ptr<RecordStore> records, const WrittenAgent& agent)
        : m_records(std::move(records)), m_agent(agent)
    {
    }
    void perform(const WrittenOperation& operation)
    {
        switch (operation.kind) {
        case Kind::Append: append(m_plain, operation, false); return;
        case Kind::Amend: append(m_noting, operation, true); return;
        case Kind::Store:
        case Kind::Correct:
        case Kind::Remove: transact(operation); return;
        case Kind::Compact: m_records->compact({}); return;
        }
    }

private:
    void append(std::unique_ptr<RecordAppender>& appender, const WrittenOperation& operation, bool notes)
    {
        if (!appender) {
            appender = m_records->appender();
            if (notes)
                appender->noteAmendments([] { return static_cast<double>(std::time(nullptr)); });
        }
        appender->append(m_agent.agent, recordsOf(m_agent, operation));
    }
    void transact(const WrittenOperation& operation)
    {
        const std::unique_ptr<RecordTransaction> transaction = m_records->begin();
        if (operation.kind == Kind::Correct)
            transaction->noteAmendments(static_cast<double>(std::time(nullptr)));
        if (operation.kind == Kind::Remove)
            transaction->remove(m_agent.agent, m_agent.properties(), operation.first,
                                operation.first + operation.count - 1);
        else
            transaction->store(m_agent.agent, recordsOf(m_agent, operation));
        transaction->commit();
    }

    const std::shared_ptr<RecordStore> m_records;
    const WrittenAgent m_agent;
    std::unique_ptr<RecordAppender> m_plain, m_noting;
};

/// Returns where what was acknowledged is not there.
void writeForEver(const std::shared_ptr<RecordStore>& records, const WrittenAgent& agent, WrittenJournal& journal)
{
    if (const std::string difference = atLast([&] { return differenceIn(*records, agent, journal); });
        !difference.empty()) {
        std::fprintf(stderr, "DIFFERENT: %s\n", difference.c_str());
        return;
    }
    std::minstd_rand random(std::random_device{}());
    Writer writer(records, agent);
    for (;;) {
        if (!journal.begun())
            journal.begin(nextOperation(journal.done(), journal.operations() + 1, random));
        atLast([&] { writer.perform(*journal.begun()); });
        journal.end();
    }
}

int check(RecordStore& records, const WrittenAgent& agent, const WrittenJournal& journal)
{
    const std::string difference = differenceIn(records, agent, journal);
    if (!difference.empty()) {
        std::fprintf(stderr, "DIFFERENT: %s\n", difference.c_str());
        return 1;
    }
    std::printf("%d %zu\n", journal.operations(), journal.done().count());
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    try {
        const std::shared_ptr<RecordStore> records = recordsAt(arguments[1]);
        const std::string_view what = arguments[2];
        if (what == "compact") {
            records->compact({});
            return 0;
        }
        if (count < 5)
            return 2;
        const WrittenAgent agent = agentNumbered(std::atoi(arguments[3]));
        WrittenJournal journal(arguments[4]);
        if (what == "check")
            return check(*records, agent, journal);
        writeForEver(records, agent, journal);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
