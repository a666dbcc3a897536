#include "tests/support/FormerSite.h"
#include "storage/Database.h"
#include "tests/e2e/ProgramTest.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtGui/QImage>

namespace plotix {

namespace {

/// A site that a program of the first or the second version left, in the hands of this one.
class FormerSiteTest : public ProgramTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        formersite::create(path("old.plotix"), GetParam());
    }
    int recordCount() const { return GetParam() == 1 ? 3 : 20; }

    void succeed(const QStringList& arguments) { ASSERT_EQ(run(arguments), 0) << error().toStdString(); }
    QByteArray exported()
    {
        succeed({"export", "old.plotix", "--output", "out.csv"});
        return contents("out.csv");
    }
    QByteArray drawn()
    {
        succeed({"render", "old.plotix", "--size", "600x300", "--zone", "UTC", "--output", "out.png"});
        return contents("out.png");
    }
    void import(const QByteArray& rows)
    {
        write("more.csv", "time (s),Air,Wind\n" + rows);
        succeed({"import", "more.csv", "--site", "old.plotix", "--agent", "One"});
    }
    int records() { return runForJson({"info", "old.plotix", "--json"})["agents"][0]["records"].toInt(); }
    void expectSound()
    {
        succeed({"verify", "old.plotix"});
        EXPECT_TRUE(output().startsWith("No damage found.")) << output().toStdString();
    }
    /// Of the file's first page, where SQLite keeps it.
    int version() { return static_cast<unsigned char>(contents("old.plotix").at(63)); }
};

TEST_P(FormerSiteTest, IsOpenedAndReadAndStaysAsItIs)
{
    const QByteArray before = contents("old.plotix");
    EXPECT_EQ(records(), recordCount());
    EXPECT_TRUE(exported().contains("1970-01-01T00:00:10Z,1.5,")) << exported().toStdString();
    expectSound();
    EXPECT_EQ(contents("old.plotix"), before);
    EXPECT_EQ(version(), GetParam());
}

TEST_P(FormerSiteTest, IsDrawn)
{
    const QImage image = QImage::fromData(drawn());
    int ofAir = 0;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            ofAir += image.pixelColor(x, y) == QColor(0x56, 0xB4, 0xE9) ? 1 : 0;
    EXPECT_GT(ofAir, 0);
}

TEST_P(FormerSiteTest, TakesNewAndLateRecords)
{
    import("20,2,3\n300,4,5\n");
    EXPECT_GT(version(), 7);
    EXPECT_EQ(records(), recordCount() + 1);
    const QByteArray text = exported();
    EXPECT_TRUE(text.contains("1970-01-01T00:00:20Z,2,3")) << text.toStdString();
    EXPECT_TRUE(text.contains("1970-01-01T00:05:00Z,4,5"));
    EXPECT_TRUE(text.contains("1970-01-01T00:00:30Z,-0.25,"));
    expectSound();
}

TEST_P(FormerSiteTest, IsTheSameAfterCompacting)
{
    const QByteArray text = exported(), picture = drawn();
    succeed({"compact", "old.plotix"});
    EXPECT_GT(version(), 7);
    EXPECT_EQ(exported(), text);
    EXPECT_EQ(drawn(), picture);
    expectSound();
}

INSTANTIATE_TEST_SUITE_P(Versions, FormerSiteTest, testing::Values(1, 2));

}  // namespace

}  // namespace plotix
