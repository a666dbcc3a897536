#include "hostapp/core/Localization.h"
#include "hostapp/window/importing/ImportDialog.h"

#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

namespace plotix {

namespace {

/// In both languages.
class ImportDialogTextsTest : public testing::TestWithParam<const char*> {
protected:
    ImportDialogTextsTest() { QCoreApplication::installTranslator(m_texts.get()); }

    const std::unique_ptr<QTranslator> m_texts = textsOf(QLatin1String(GetParam()));
};

TEST_P(ImportDialogTextsTest, OneLetterLeadsToOneField)
{
    ImportDialog dialog({});
    dialog.setMoreToCome(2);
    QStringList letters;
    const auto add = [&letters](const QString& text) {
        const QString letter = QKeySequence::mnemonic(text).toString();
        EXPECT_TRUE(letter.isEmpty() || !letters.contains(letter)) << text.toStdString();
        letters << letter;
    };
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy())
            add(label->text());
    for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        add(button->text());
    EXPECT_GE(letters.size() - letters.count(QString()), 18);
}

TEST_P(ImportDialogTextsTest, FitsASmallScreen)
{
    ImportDialog dialog({});
    dialog.setMoreToCome(2);
    EXPECT_LE(dialog.minimumSizeHint().width(), 780);
    EXPECT_LE(dialog.minimumSizeHint().height(), 560);
}

INSTANTIATE_TEST_SUITE_P(Languages, ImportDialogTextsTest, testing::Values("en", "de"));

}  // namespace

}  // namespace plotix
