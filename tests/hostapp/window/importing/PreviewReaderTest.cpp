#include "hostapp/window/importing/PreviewReader.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace plotix {

namespace {

class PreviewReaderTest : public testing::Test {
protected:
    /// Long enough to be read for a while, since no date tells the day from the month.
    QString writeLong()
    {
        QFile file(m_folder.filePath(QStringLiteral("long.csv")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        QByteArray rows;
        for (int row = 0; row < 10'000; ++row)
            rows += "03/04/2024;1\n";
        file.write("Date;a\n");
        for (int part = 0; part < 100; ++part)
            file.write(rows);
        return file.fileName();
    }
    static ImportOptions inOrder(DateOrder order)
    {
        ImportOptions options;
        options.dateOrder = order;
        return options;
    }
    ImportPreview answer(qsizetype index) const { return previewed[index][0].value<ImportPreview>(); }

    QTemporaryDir m_folder;
    std::unique_ptr<PreviewReader> reader = std::make_unique<PreviewReader>();
    QSignalSpy previewed{reader.get(), &PreviewReader::previewed};
    QSignalSpy progressed{reader.get(), &PreviewReader::progressed};
};

TEST_F(PreviewReaderTest, AnswersTheLastRequestAlone)
{
    const QString file = writeLong();
    reader->request(file, {});
    reader->request(file, inOrder(DateOrder::MonthFirst));
    reader->request(file, inOrder(DateOrder::DayFirst));
    ASSERT_TRUE(previewed.wait(20'000));
    QTest::qWait(100);
    EXPECT_EQ(previewed.size(), 1);
    EXPECT_EQ(answer(0).form.dateOrder, DateOrder::DayFirst);
}

TEST_F(PreviewReaderTest, AnAnswerOnItsWayIsDroppedToo)
{
    const QString file = writeLong();
    reader->request(file, inOrder(DateOrder::DayFirst));
    QThread::msleep(300);  // it has been read, and nobody has been told
    reader->request(file, inOrder(DateOrder::MonthFirst));
    ASSERT_TRUE(previewed.wait(20'000));
    QTest::qWait(100);
    EXPECT_EQ(previewed.size(), 1);
    EXPECT_EQ(answer(0).form.dateOrder, DateOrder::MonthFirst);
}

TEST_F(PreviewReaderTest, TellsHowFarItIs)
{
    reader->request(writeLong(), {});
    ASSERT_TRUE(previewed.wait(20'000));
    EXPECT_GE(progressed.size(), 5);
    EXPECT_EQ(answer(0).problem->what, ImportFinding::What::DateOrderUnknown);
}

TEST_F(PreviewReaderTest, IsSilentOnceItIsCancelled)
{
    reader->request(writeLong(), {});
    QTest::qWait(20);
    reader->cancel();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !reader->isReading(); }, 20'000));
    EXPECT_EQ(previewed.size(), 0);
}

TEST_F(PreviewReaderTest, EndsWithoutWaiting)
{
    reader->request(writeLong(), {});
    reader.reset();
    QTest::qWait(50);
    EXPECT_EQ(previewed.size(), 0);
}

}  // namespace

}  // namespace plotix
