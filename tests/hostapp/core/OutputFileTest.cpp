#include "hostapp/core/OutputFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

namespace plotix {

namespace {

const QByteArray kPng("\x89PNG\r\n\x1a\n and more");
const QByteArray kPdf("%PDF-1.4 and more");
const QByteArray kSite = QByteArray("SQLite format 3").append('\0') + "pages";
const QByteArray kWorkbook("PK\x03\x04 and more");

class OutputFileTest : public testing::Test {
protected:
    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    QString given(const char* name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    QByteArray contents(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    /// Writing there is refused, and what is there stays.
    void expectRefused(FileKind kind, const char* name, OutputProblem::Reason reason)
    {
        const QByteArray before = contents(name);
        try {
            writeOutput(kind, path(name), "new");
            ADD_FAILURE() << name << " was written";
        } catch (const OutputFailure& failure) {
            EXPECT_EQ(failure.problem().reason, reason);
            EXPECT_TRUE(failure.message().contains(path(name))) << failure.message().toStdString();
        }
        EXPECT_EQ(contents(name), before);
    }

    QTemporaryDir folder;
};

TEST_F(OutputFileTest, KindsAreToldByTheFirstBytesWhateverTheName)
{
    EXPECT_EQ(kindOfFile(given("a.csv", kPng)), FileKind::Png);
    EXPECT_EQ(kindOfFile(given("b.png", kPdf)), FileKind::Pdf);
    EXPECT_EQ(kindOfFile(given("b.txt", "<?xml version=\"1.0\"?>\n<svg width=\"85mm\"/>")), FileKind::Svg);
    EXPECT_EQ(kindOfFile(given("b.svg", "<?xml version=\"1.0\"?>\n<table/>")), FileKind::Text);
    EXPECT_EQ(kindOfFile(given("c.txt", kSite)), FileKind::Database);
    EXPECT_EQ(kindOfFile(given("d.plotix", "time,a\n")), FileKind::Text);
    EXPECT_EQ(kindOfFile(given("e", kWorkbook)), FileKind::Workbook);
    EXPECT_EQ(kindOfFile(given("f.csv", {})), FileKind::Empty);
    EXPECT_EQ(kindOfFile(given("g.csv", QByteArray("a\0b", 3))), FileKind::Other);
}

TEST_F(OutputFileTest, ASpreadsheetsUtf16IsText)
{
    EXPECT_EQ(kindOfFile(given("a.csv", QByteArray("\xff\xfet\0i\0", 6))), FileKind::Text);
}

TEST_F(OutputFileTest, AFileOfItsKindIsReplaced)
{
    given("a.csv", "old");
    writeOutput(FileKind::Text, path("a.csv"), "new");
    EXPECT_EQ(contents("a.csv"), "new");
}

TEST_F(OutputFileTest, AnEmptyFileMayBecomeAnyKind)
{
    given("a.png", {});
    writeOutput(FileKind::Png, path("a.png"), kPng);
    EXPECT_EQ(contents("a.png"), kPng);
}

TEST_F(OutputFileTest, ASiteIsNeverReplacedWhateverItsName)
{
    for (const char* name : {"site.csv", "site.png", "site.pdf"})
        given(name, kSite);
    expectRefused(FileKind::Text, "site.csv", OutputProblem::Reason::OtherKind);
    expectRefused(FileKind::Png, "site.png", OutputProblem::Reason::OtherKind);
    expectRefused(FileKind::Pdf, "site.pdf", OutputProblem::Reason::OtherKind);
}

TEST_F(OutputFileTest, OneOutputDoesNotReplaceAnother)
{
    given("a.csv", kPng);
    expectRefused(FileKind::Text, "a.csv", OutputProblem::Reason::OtherKind);
    given("a.png", "time,a\n");
    expectRefused(FileKind::Png, "a.png", OutputProblem::Reason::OtherKind);
}

TEST_F(OutputFileTest, ALinkToASiteIsASite)
{
    QFile::link(given("site.plotix", kSite), path("a.csv"));
    expectRefused(FileKind::Text, "a.csv", OutputProblem::Reason::OtherKind);
}

TEST_F(OutputFileTest, NamesMustEndAsTheirKindDoes)
{
    expectRefused(FileKind::Text, "site.plotix", OutputProblem::Reason::WrongEnding);
    expectRefused(FileKind::Png, "png", OutputProblem::Reason::WrongEnding);
    EXPECT_TRUE(hasEndingOf(FileKind::Pdf, QStringLiteral("A.PDF")));
}

TEST_F(OutputFileTest, AFolderIsNotReplaced)
{
    QDir(folder.path()).mkdir(QStringLiteral("a.csv"));
    expectRefused(FileKind::Text, "a.csv", OutputProblem::Reason::NotAFile);
}

TEST_F(OutputFileTest, WhatBecomesASiteMeanwhileIsKept)
{
    OutputFile file(FileKind::Text, path("a.csv"));
    file.device().write("new");
    given("a.csv", kSite);
    EXPECT_THROW(file.commit(), OutputFailure);
    EXPECT_EQ(contents("a.csv"), kSite);
}

TEST_F(OutputFileTest, WithoutCommitThereIsNoFile)
{
    {
        OutputFile file(FileKind::Text, path("a.csv"));
        file.device().write("new");
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

/// Stands in for a full disk: files may not grow past one byte.
class NoRoomToWrite {
public:
    NoRoomToWrite()
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{1, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~NoRoomToWrite() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

TEST_F(OutputFileTest, AFullDiskIsToldInTheSystemsWordsAndKeepsWhatWasThere)
{
    given("a.csv", "old");
    for (const int size : {100, 1'000'000}) {
        try {
            const NoRoomToWrite full;
            writeOutput(FileKind::Text, path("a.csv"), QByteArray(size, 'x'));
            FAIL() << "nothing was thrown";
        } catch (const OutputFailure& failure) {
            EXPECT_TRUE(failure.message().endsWith(QStringLiteral("File too large"))) << failure.what();
        }
    }
    EXPECT_EQ(contents("a.csv"), "old");
}

TEST_F(OutputFileTest, AMissingFolderIsToldInTheSystemsWords)
{
    try {
        writeOutput(FileKind::Text, path("none/a.csv"), "new");
        FAIL() << "nothing was thrown";
    } catch (const OutputFailure& failure) {
        EXPECT_EQ(failure.problem().reason, OutputProblem::Reason::NotWritten);
        EXPECT_TRUE(failure.problem().systemError.contains(QStringLiteral("No such file"))) << failure.what();
    }
}

TEST(FileNameTest, ATitleIsAName)
{
    EXPECT_EQ(fileNameFor("Air Temperature, Größe 2", "png"), "Air Temperature, Größe 2.png");
}

TEST(FileNameTest, WhatNamesOfFilesCannotHaveIsReplaced)
{
    EXPECT_EQ(fileNameFor("1/2: <b>a\\b</b>? *\"|", "pdf"), "1-2- -b-a-b--b-- ---.pdf");
    EXPECT_EQ(fileNameFor("one\ttwo\nthree", "csv"), "one two three.csv");
}

TEST(FileNameTest, ItIsNeitherHiddenNorEmptyNorEndless)
{
    EXPECT_EQ(fileNameFor(" ..secret. ", "png"), "secret.png");
    EXPECT_EQ(fileNameFor("", "png"), "Plotix.png");
    EXPECT_EQ(fileNameFor("...", ""), "Plotix");
    EXPECT_LE(fileNameFor(QString(500, 'a'), "png").size(), 84);
}

}  // namespace

}  // namespace plotix
