#include "records/clickhouse/LocalColumns.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

namespace plotix {

namespace {

using Column = PackedCache::Column;

class LocalColumnsTest : public testing::Test {
protected:
    LocalColumns opened(std::uint64_t bytes = 1 << 30) { return {file, bytes}; }

    static std::shared_ptr<const Column> columnOf(std::size_t bytes, int fill)
    {
        auto column = std::make_shared<Column>();
        column->codec = 3;
        column->data.assign(bytes, static_cast<std::byte>(fill));
        return column;
    }
    void keep(LocalColumns& in, std::uint64_t chunk, std::size_t bytes, int fill = 1)
    {
        in.keep(site, 7, std::array{LocalColumns::Kept{chunk, columnOf(bytes, fill)}});
    }
    std::shared_ptr<Column> find(LocalColumns& in, std::uint64_t chunk)
    {
        return in.find(site, 7, std::array{chunk}).front();
    }
    void spoil(const QByteArray& found, const QByteArray& instead)
    {
        QFile kept(file);
        ASSERT_TRUE(kept.open(QFile::ReadWrite));
        const qsizetype at = kept.readAll().indexOf(found);
        ASSERT_GE(at, 0);
        kept.seek(at);
        kept.write(instead);
    }

    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("made/columns"));
    const QString site = QStringLiteral("host:8123/database/site");
};

TEST_F(LocalColumnsTest, WhatIsKeptIsFoundByTheNextProgram)
{
    LocalColumns first = opened();
    keep(first, ~std::uint64_t{0}, 10'000);
    LocalColumns next = opened();
    const auto found = find(next, ~std::uint64_t{0});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->codec, 3);
    EXPECT_TRUE(found->valid.empty());
    EXPECT_EQ(found->data, columnOf(10'000, 1)->data);
}

TEST_F(LocalColumnsTest, AnotherSiteHasOthers)
{
    LocalColumns columns = opened();
    keep(columns, 1, 100);
    EXPECT_FALSE(columns.find(site + QStringLiteral("2"), 7, std::array{std::uint64_t{1}}).front());
    EXPECT_FALSE(columns.find(site, 8, std::array{std::uint64_t{1}}).front());
}

TEST_F(LocalColumnsTest, AByteThatChangedIsNotShown)
{
    {
        LocalColumns columns = opened();
        keep(columns, 1, 3000, 'x');
        keep(columns, 2, 100, 'y');
    }
    spoil(QByteArray(3000, 'x'), "z");
    LocalColumns columns = opened();
    EXPECT_FALSE(find(columns, 1));
    EXPECT_TRUE(find(columns, 2));
    keep(columns, 1, 3000, 'x');
    EXPECT_TRUE(find(columns, 1));
}

TEST_F(LocalColumnsTest, ADamagedFileIsMadeAnew)
{
    QDir().mkpath(QFileInfo(file).path());
    QFile other(file);
    ASSERT_TRUE(other.open(QFile::WriteOnly));
    other.write("something else");
    other.close();
    LocalColumns columns = opened();
    for (int attempt = 0; attempt < 4; ++attempt)
        keep(columns, 1, 100);
    EXPECT_TRUE(find(columns, 1));
}

TEST_F(LocalColumnsTest, ItStaysWithinItsRoom)
{
    LocalColumns columns = opened(4'000'000);
    for (std::uint64_t chunk = 1; chunk <= 200; ++chunk)
        keep(columns, chunk, 100'000);
    EXPECT_LT(QFileInfo(file).size() + QFileInfo(file + QStringLiteral("-wal")).size(), 12'000'000);
    EXPECT_FALSE(find(columns, 1));
    EXPECT_TRUE(find(columns, 200));
}

TEST_F(LocalColumnsTest, NobodyElseMayReadIt)
{
    LocalColumns columns = opened();
    keep(columns, 1, 100);
    EXPECT_EQ(QFileInfo(file).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(LocalColumnsTest, WhereNothingCanBeWrittenNothingIsKept)
{
    LocalColumns columns(QStringLiteral("/proc/none/columns"), 1 << 20);
    keep(columns, 1, 100);
    EXPECT_FALSE(find(columns, 1));
}

}  // namespace

}  // namespace plotix
