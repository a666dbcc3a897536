#include "storage/RowScan.h"

#include "base/ReportableError.h"
#include "tests/storage/DatabaseFixture.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using plotix::RowScan;
using plotix::ScannedRow;

class RowScanTest : public DatabaseFixture {
protected:
    RowScanTest()
    {
        run("INSERT INTO ware VALUES(7, 'soap'), (3, 'pins'), (9, 'tea');"
            "INSERT INTO price VALUES(7, 120)");
    }
    std::vector<qint64> ids(qint64 first, qint64 last)
    {
        std::vector<qint64> found;
        scan.each(first, last, [&](const ScannedRow& row) { found.push_back(row.integer(0)); });
        return found;
    }
    static std::string textOf(std::span<const std::byte> bytes)
    {
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    plotix::Database database = opened();
    RowScan scan{database, "ware", "name"};
};

TEST_F(RowScanTest, HandsOverTheRowsBetweenTwoIdsInTheirOrder)
{
    EXPECT_EQ(ids(4, 9), (std::vector<qint64>{7, 9}));
    EXPECT_EQ(ids(1, 100), (std::vector<qint64>{3, 7, 9}));
    EXPECT_TRUE(ids(4, 6).empty());
}

TEST_F(RowScanTest, TellsWhatTheColumnsHave)
{
    RowScan all(database, "ware", "name, 0.5, NULL, 12");
    int rows = 0;
    all.each(3, 3, [&rows](const ScannedRow& row) {
        ++rows;
        EXPECT_EQ(textOf(row.bytes(1)), "pins");
        EXPECT_EQ(row.real(2), 0.5);
        EXPECT_TRUE(row.isNothing(3));
        EXPECT_EQ(row.integer(4), 12);
    });
    EXPECT_EQ(rows, 1);
}

TEST_F(RowScanTest, PassesOnWhatIsThrownAndGoesOnAfterwards)
{
    const auto fail = [](const ScannedRow&) { throw std::runtime_error("no more"); };
    EXPECT_THROW(scan.each(1, 100, fail), std::runtime_error);
    EXPECT_EQ(ids(1, 100).size(), 3U);
}

TEST_F(RowScanTest, LetsOtherStatementsRunBetweenItsRows)
{
    std::vector<qint64> found;
    scan.each(1, 100, [&](const ScannedRow& row) {
        plotix::Statement price(database, "SELECT cents FROM price WHERE ware = ?");
        if (price.bind(1, row.integer(0)).step())
            found.push_back(price.integer(0));
    });
    EXPECT_EQ(found, std::vector<qint64>{120});
}

TEST_F(RowScanTest, ItsFunctionIsNoUseToAnybodyElse)
{
    EXPECT_THROW(database.execute("SELECT plotix_row(1, 2)"), plotix::ReportableError);
    EXPECT_NO_THROW(database.execute("CREATE VIEW handed AS SELECT plotix_row(1, id) FROM ware"));
    EXPECT_THROW(database.execute("SELECT * FROM handed"), plotix::ReportableError);
}

}  // namespace
