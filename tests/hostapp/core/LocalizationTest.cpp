#include "hostapp/core/Localization.h"

#include <QtCore/QMap>

#include <gtest/gtest.h>

using plotix::preferredLanguage;
using plotix::TextTable;

namespace {

QString languageFor(const QMap<QString, QString>& variables)
{
    return preferredLanguage([&](const char* name) { return variables.value(QLatin1String(name)); });
}

TEST(LocalizationTest, LanguageFollowsTheLocale)
{
    EXPECT_EQ(languageFor({}), QStringLiteral("en"));
    EXPECT_EQ(languageFor({{"LANG", "de_DE.UTF-8"}}), QStringLiteral("de"));
    EXPECT_EQ(languageFor({{"LANG", "de_DE.UTF-8"}, {"LC_ALL", "en_GB.UTF-8"}}), QStringLiteral("en"));
    EXPECT_EQ(languageFor({{"LANG", "fr_FR.UTF-8"}}), QStringLiteral("en"));
}

TEST(LocalizationTest, ListOfLanguagesGoesBeforeTheLocale)
{
    EXPECT_EQ(languageFor({{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "fr:de:en"}}), QStringLiteral("de"));
}

TEST(LocalizationTest, PlainLocaleSpeaksEnglishWhateverTheListSays)
{
    EXPECT_EQ(languageFor({{"LC_ALL", "C.UTF-8"}, {"LANGUAGE", "de"}}), QStringLiteral("en"));
}

TEST(LocalizationTest, OwnVariableDecidesOverAll)
{
    EXPECT_EQ(languageFor({{"LC_ALL", "C"}, {"PLOTIX_LANGUAGE", "de"}}), QStringLiteral("de"));
    EXPECT_EQ(languageFor({{"LANG", "de_DE.UTF-8"}, {"PLOTIX_LANGUAGE", "en"}}), QStringLiteral("en"));
    EXPECT_EQ(languageFor({{"LANG", "de_DE.UTF-8"}, {"PLOTIX_LANGUAGE", "../de"}}), QStringLiteral("de"));
}

TEST(LocalizationTest, TableTranslatesWhateverTheContext)
{
    const TextTable table(QStringLiteral("# comment\n\nOpen\nÖffnen\n\nTwo\\nlines\nZwei\\nZeilen\n"));
    EXPECT_EQ(table.translate("A", "Open", nullptr, -1), QStringLiteral("Öffnen"));
    EXPECT_EQ(table.translate("B", "Two\nlines", nullptr, -1), QStringLiteral("Zwei\nZeilen"));
    EXPECT_TRUE(table.translate("A", "Shut", nullptr, -1).isEmpty());
}

TEST(LocalizationTest, NumberChoosesTheText)
{
    const TextTable table(QStringLiteral("%n day(s)\n%n Tag|%n Tage\n"));
    EXPECT_EQ(table.translate("", "%n day(s)", nullptr, 1), QStringLiteral("%n Tag"));
    EXPECT_EQ(table.translate("", "%n day(s)", nullptr, 0), QStringLiteral("%n Tage"));
}

TEST(LocalizationTest, EntryWithoutATranslationIsNone)
{
    EXPECT_TRUE(TextTable(QStringLiteral("Open\n\n\n")).isEmpty());
    EXPECT_TRUE(TextTable(QString()).isEmpty());
}

}  // namespace
