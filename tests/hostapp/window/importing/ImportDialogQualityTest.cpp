#include "tests/hostapp/window/importing/ImportDialogFixture.h"

#include <QtWidgets/QCheckBox>

namespace plotix {

namespace {

constexpr const char* kJudged = "time,T,T Status,Code\n"
                                "2024-02-01T12:00:00Z,1.5,Good,0\n2024-02-01T12:01:00Z,99.5,Bad,7\n";

class ImportDialogQualityTest : public ImportDialogFixture {};

TEST_F(ImportDialogQualityTest, ValuesMarkedAsBadAreStruckOutWithTheReason)
{
    show(kJudged);
    EXPECT_EQ(column(1, 3), QStringLiteral("2 numbers, 1 of them marked as bad"));
    EXPECT_EQ(column(2, 3), QStringLiteral("says which values of “T” are bad"));
    const QModelIndex bad = rows().model()->index(1, 1);
    EXPECT_EQ(bad.data().toString(), QStringLiteral("99.5"));
    EXPECT_TRUE(bad.data(Qt::FontRole).value<QFont>().strikeOut());
    EXPECT_EQ(bad.data(Qt::ToolTipRole).toString(),
              QStringLiteral("99.5, marked as bad by “T Status”: kept, and invalid"));
    EXPECT_FALSE(rows().model()->index(0, 1).data(Qt::FontRole).isValid());
    EXPECT_EQ(field(QStringLiteral("quality")).placeholderText(), QStringLiteral("Automatic: T Status"));
}

TEST_F(ImportDialogQualityTest, AnotherColumnCanBeNamedAndTheWordsThatMeanBad)
{
    show(kJudged);
    field(QStringLiteral("quality")).setText(QStringLiteral("Code"));
    EXPECT_FALSE(canImport());
    EXPECT_EQ(problem(), QStringLiteral("Write the columns of quality as STATUS=VALUES."));
    field(QStringLiteral("quality")).setText(QStringLiteral("Code=T"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(problem().contains(QStringLiteral("enter those that do under Bad words"))) << problem().toStdString();
    QTest::keyClicks(&field(QStringLiteral("badWords")), QStringLiteral("0, 8"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(canImport());
    EXPECT_TRUE(rows().model()->index(0, 1).data(Qt::FontRole).value<QFont>().strikeOut());
    EXPECT_EQ(dialog->options().badWords, (QStringList{QStringLiteral("0"), QStringLiteral("8")}));
}

TEST_F(ImportDialogQualityTest, QualityCanBeIgnored)
{
    show(kJudged);
    for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
        if (box->text().contains(QStringLiteral("marked as bad")))
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_TRUE(dialog->options().ignoreQuality);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(column(1, 3), QStringLiteral("2 numbers"));
}

TEST_F(ImportDialogQualityTest, ShowsTheQualityOptionsItIsGiven)
{
    ImportOptions options;
    options.quality = {{QStringLiteral("Code"), QStringLiteral("T")}, {QStringLiteral("Flag"), QStringLiteral("*")}};
    options.badWords = {QStringLiteral("7")};
    options.ignoreQuality = true;
    show(kJudged);
    dialog->setOptions(options);
    const ImportOptions shown = dialog->options();
    EXPECT_EQ(shown.quality, options.quality);
    EXPECT_EQ(shown.badWords, options.badWords);
    EXPECT_TRUE(shown.ignoreQuality);
}

}  // namespace

}  // namespace plotix
