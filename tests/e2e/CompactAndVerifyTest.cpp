#include "tests/e2e/ProgramTest.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

#include <algorithm>

namespace plotix {

namespace {

/// A site of many small imports, as its users would look after it.
class CompactAndVerify : public ProgramTest {
protected:
    static constexpr int kImports = 10, kRows = 500;

    void importInPieces()
    {
        for (int piece = 0; piece < kImports; ++piece) {
            QByteArray text = "time (s),Air Temperature (°C),Level\n";
            for (int row = 0; row < kRows; ++row)
                text += QByteArray::number(1'000'000 + (piece * kRows + row) * 60) + ',' +
                        QByteArray::number(row % 37 / 4.0) + ',' + QByteArray::number(row % 5) + '\n';
            write("piece.csv", text);
            ASSERT_EQ(run({"import", "piece.csv", "--site", "plant.plotix", "--agent", "Plant"}), 0)
                << error().toStdString();
        }
    }
    QByteArray exported()
    {
        EXPECT_EQ(run({"export", "plant.plotix", "--output", "out.csv"}), 0) << error().toStdString();
        return contents("out.csv");
    }
    int records() { return runForJson({"info", "plant.plotix", "--json"})["agents"][0]["records"].toInt(); }
};

TEST_F(CompactAndVerify, CompactingKeepsEveryDigitAndTakesNoMoreSpace)
{
    importInPieces();
    const QByteArray before = exported();
    const qint64 size = QFileInfo(path("plant.plotix")).size();
    ASSERT_EQ(run({"compact", "plant.plotix"}), 0) << error().toStdString();
    EXPECT_TRUE(output().startsWith("5000 records kept, 0 dropped.\nChunks: ")) << output().toStdString();
    EXPECT_LE(QFileInfo(path("plant.plotix")).size(), size);
    EXPECT_EQ(exported(), before);
}

TEST_F(CompactAndVerify, RecordsBeforeADateGo)
{
    importInPieces();
    ASSERT_EQ(run({"compact", "plant.plotix", "--before", "1970-01-12T22:46:40Z"}), 0) << error().toStdString();
    EXPECT_TRUE(output().startsWith("4460 records kept, 540 dropped from before 1970-01-12T22:46:40Z."))
        << output().toStdString();
    EXPECT_EQ(records(), 4460);
    EXPECT_EQ(run({"verify", "plant.plotix"}), 0) << error().toStdString();
}

TEST_F(CompactAndVerify, WhatIsKeptIsCountedBackFromTheLastRecord)
{
    importInPieces();
    ASSERT_EQ(run({"compact", "plant.plotix", "--keep", "59m"}), 0) << error().toStdString();
    EXPECT_EQ(records(), 60);
}

TEST_F(CompactAndVerify, ASoundSiteIsSaidToBe)
{
    importInPieces();
    ASSERT_EQ(run({"verify", "plant.plotix"}), 0) << error().toStdString();
    EXPECT_TRUE(output().startsWith("No damage found. 5000 records, 10000 values and ")) << output().toStdString();
}

TEST_F(CompactAndVerify, DamageIsFoundAndIsStatusOne)
{
    importInPieces();
    ASSERT_EQ(run({"compact", "plant.plotix"}), 0) << error().toStdString();
    QFile file(path("plant.plotix"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    // Rows fill a page from its end, and the records' tables are among those of the second half.
    constexpr qint64 kPage = 16'384, kSpoiled = 100;
    for (qint64 end = (file.size() / kPage / 2 + 1) * kPage; end <= file.size(); end += kPage) {
        file.seek(end - kSpoiled);
        file.write(QByteArray(kSpoiled, '\x5A'));
    }
    file.close();
    EXPECT_EQ(run({"verify", "plant.plotix"}), 1);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
}

TEST_F(CompactAndVerify, SitesThatAreNotThereAreSaidToBe)
{
    for (const char* command : {"compact", "verify"}) {
        EXPECT_EQ(run({command, "none.plotix"}), 1);
        EXPECT_TRUE(error().contains("there is no site none.plotix")) << error().toStdString();
        EXPECT_FALSE(QFileInfo::exists(path("none.plotix")));
    }
}

}  // namespace

}  // namespace plotix
