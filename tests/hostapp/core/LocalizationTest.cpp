#include "hostapp/core/Localization.h"

#include <QtCore/QMap>

#include <gtest/gtest.h>

using plotix::preferredLanguage;
using plotix::textsOf;

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

TEST(LocalizationTest, GermanIsBuiltIn)
{
    const auto texts = textsOf(QStringLiteral("de"));
    ASSERT_TRUE(texts);
    EXPECT_EQ(texts->translate("SiteMenus", "&File"), QStringLiteral("&Datei"));
    EXPECT_TRUE(texts->translate("SiteMenus", "&Filet").isEmpty());
}

TEST(LocalizationTest, NumberChoosesTheText)
{
    const auto english = textsOf(QStringLiteral("en")), german = textsOf(QStringLiteral("de"));
    const auto imported = [](const QTranslator& texts, int records) {
        return texts.translate("plotix::ImportSequence", "Imported %n record(s)", nullptr, records);
    };
    EXPECT_EQ(imported(*english, 1), QStringLiteral("Imported %n record"));
    EXPECT_EQ(imported(*english, 0), QStringLiteral("Imported %n records"));
    EXPECT_EQ(imported(*german, 1), QStringLiteral("%n Messzeile importiert"));
    EXPECT_EQ(imported(*german, 2), QStringLiteral("%n Messzeilen importiert"));
}

TEST(LocalizationTest, LanguageWithoutTextsHasNone)
{
    EXPECT_FALSE(textsOf(QStringLiteral("fr")));
    EXPECT_FALSE(textsOf(QString()));
}

}  // namespace
