#include "tests/hostapp/exchange/formats/ImportFixture.h"

#include <sys/resource.h>

namespace plotix {

namespace {

/// Files that are large in one way or another, or claim to be.
class LargeImportTest : public ImportFixture {
protected:
    /// Kilobytes that this process has taken at most.
    static long peakMemory()
    {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    }
};

TEST_F(LargeImportTest, TwoThousandEqualHeadersGetNumbers)
{
    const ImportSummary summary =
        import("time" + QByteArray(",T").repeated(2000) + "\n2024-01-01" + QByteArray(",1").repeated(2000) + "\n");
    ASSERT_EQ(summary.columns.size(), 2000U);
    EXPECT_EQ(summary.columns.front().propertyName, QStringLiteral("t"));
    EXPECT_EQ(summary.columns.back().propertyName, QStringLiteral("t2000"));
}

TEST_F(LargeImportTest, ATableWhoseFirstRowsExceedTheSampleIsRead)
{
    QByteArray header = "time", row;
    for (int column = 0; column < 5000; ++column) {
        header += ",Supply Temperature " + QByteArray::number(column) + " (°C)";
        row += ',' + QByteArray::number(column * 1.0001, 'f', 8);
    }
    ASSERT_GT(header.size(), 2 * 65'536);
    const ImportSummary summary = import(header + "\n2024-01-01" + row + "\n2024-01-02" + row + '\n');
    EXPECT_EQ(summary.records, 2U);
    ASSERT_EQ(summary.columns.size(), 5000U);
    EXPECT_EQ(summary.columns.back().unit, QStringLiteral("°C"));
    EXPECT_DOUBLE_EQ(values(QStringLiteral("supplyTemperature4999"))[1].value(), 4999 * 1.0001);
}

TEST_F(LargeImportTest, ALongFormMayBeCancelledWhileItsQuantitiesAreJoined)
{
    QByteArray text = "time;name;value\n";
    for (int hour = 0; hour < 10; ++hour)
        for (int quantity = 0; quantity < 50; ++quantity)
            text += "2024-01-01 0" + QByteArray::number(hour) + ":00;Q" + QByteArray::number(quantity) + ";1\n";
    int callsAtTheEnd = 0;
    importFile(write(text), site(), {}, [&](qint64 done, qint64 total) {
        callsAtTheEnd += done == total ? 1 : 0;
        return true;
    });
    EXPECT_GE(callsAtTheEnd, 50);  // at least once for each
}

TEST_F(LargeImportTest, ASpreadsheetThatClaimsALargeSizeTakesNoMemoryForIt)
{
    QFile original(QStringLiteral(PLOTIX_SOURCE_DIR "/tests/data/exports/sheet_dates.xlsx"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    QByteArray bytes = original.readAll();
    int patched = 0;
    for (qsizetype entry = bytes.indexOf("PK\x01\x02"); entry >= 0; entry = bytes.indexOf("PK\x01\x02", entry + 1))
        if (bytes.mid(entry + 46, 14) == "xl/worksheets/") {
            bytes.replace(entry + 24, 4, "\xf0\xff\xff\xff");  // nearly four gigabytes
            ++patched;
        }
    ASSERT_GE(patched, 1);
    const QString claiming = m_folder.filePath(QStringLiteral("claiming.xlsx"));
    QFile file(claiming);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush());
    const long before = peakMemory();
    findingOf([&] { importFile(claiming, site(), m_options); });  // read or refused
    EXPECT_LT(peakMemory() - before, 500'000);
}

}  // namespace

}  // namespace plotix
