#include "tests/cluster/WrittenJournal.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

namespace plotix {

namespace {

using Kind = WrittenOperation::Kind;

constexpr WrittenOperation kTen{Kind::Append, 0, 10, 1};

/// Ten records that were acknowledged, and what is read of them.
class WrittenJournalTest : public testing::Test {
protected:
    WrittenJournalTest() { m_state.apply(kTen); }

    static RecordBlock read(const WrittenOperation& operation) { return recordsOf({1, 1}, operation); }
    std::string file() const { return m_folder.filePath("journal").toStdString(); }
    WrittenJournal journalOf(const char* text) const
    {
        std::ofstream(file()) << text;
        return WrittenJournal(file());
    }

    QTemporaryDir m_folder;
    WrittenState m_state;
};

TEST_F(WrittenJournalTest, WhatIsThereAsItWasWrittenIsNoDifference)
{
    EXPECT_EQ(m_state.differenceTo(read(kTen)), "");
}

TEST_F(WrittenJournalTest, ALostRecordIsToldWhereverItIs)
{
    EXPECT_NE(m_state.differenceTo(read({Kind::Append, 0, 9, 1})), "");
    EXPECT_NE(m_state.differenceTo(read({Kind::Append, 1, 9, 1})), "");
    EXPECT_NE(m_state.differenceTo(RecordBlock()), "");
}

TEST_F(WrittenJournalTest, ARecordTooManyIsTold)
{
    EXPECT_NE(m_state.differenceTo(read({Kind::Append, 0, 11, 1})), "");
}

TEST_F(WrittenJournalTest, ValuesOfAnEarlierOperationAreTold)
{
    m_state.apply({Kind::Correct, 3, 1, 2});
    EXPECT_NE(m_state.differenceTo(read(kTen)), "");
}

TEST_F(WrittenJournalTest, ARemovedRecordThatIsThereIsTold)
{
    m_state.apply({Kind::Remove, 9, 1, 2});
    EXPECT_NE(m_state.differenceTo(read(kTen)), "");
    EXPECT_EQ(m_state.differenceTo(read({Kind::Append, 0, 9, 1})), "");
}

TEST_F(WrittenJournalTest, OnlyWhatWasAcknowledgedIsDone)
{
    const WrittenJournal journal = journalOf("append 1 0 10\ndone\nstore 2 10 5\n");
    EXPECT_EQ(journal.done().count(), 10U);
    EXPECT_EQ(journal.begun()->number, 2);
}

TEST_F(WrittenJournalTest, ALineThatWasCutShortDoesNotCount)
{
    EXPECT_FALSE(journalOf("append 1 0 10\ndone\nremove 2 0 1").begun().has_value());
    EXPECT_TRUE(journalOf("append 1 0 10\ndone").begun().has_value());
}

TEST_F(WrittenJournalTest, WhatIsWrittenIsReadAgain)
{
    WrittenJournal journal(file());
    journal.begin(kTen);
    journal.end();
    EXPECT_EQ(WrittenJournal(file()).done().differenceTo(read(kTen)), "");
}

}  // namespace

}  // namespace plotix
