#include "hostapp/exchange/QualityReader.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

Verdict word(std::string_view text)
{
    return verdictOf(text, QualityCode::Words);
}

std::optional<QualityCode> codeOf(const std::vector<std::string>& texts, QualityHeader header = QualityHeader::Status)
{
    return qualityCodeOf(texts, header);
}

TEST(QualityWords, AreKnownInEnglishAndGermanWhateverTheCase)
{
    EXPECT_EQ(word("GOOD"), Verdict::Good);
    EXPECT_EQ(word("gültig"), Verdict::Good);
    EXPECT_EQ(word("in Ordnung"), Verdict::Good);
    EXPECT_EQ(word("Bad"), Verdict::Bad);
    EXPECT_EQ(word("ung\xFCltig"), Verdict::Bad);  // Latin-1
    EXPECT_EQ(word("Störung"), Verdict::Bad);
    EXPECT_EQ(word("Uncertain"), Verdict::Uncertain);
    EXPECT_EQ(word("Ersatzwert"), Verdict::Uncertain);
    EXPECT_EQ(word("Pump 3"), Verdict::Unknown);
}

TEST(QualityWords, MayHaveTheirReasonBehindThem)
{
    EXPECT_EQ(word("Bad [Device Failure]"), Verdict::Bad);
    EXPECT_EQ(word("BadCommunicationError"), Verdict::Bad);
    EXPECT_EQ(word("Good, Local Override"), Verdict::Good);
    EXPECT_EQ(word("UncertainLastUsableValue"), Verdict::Uncertain);
    EXPECT_EQ(word("Badezimmer"), Verdict::Unknown);
    EXPECT_EQ(word("goods"), Verdict::Unknown);
}

TEST(QualityWords, AListInBracesIsItsWorst)
{
    EXPECT_EQ(word("{ok}"), Verdict::Good);
    EXPECT_EQ(word("{alarm,unackedAlarm}"), Verdict::Good);
    EXPECT_EQ(word("{down,stale}"), Verdict::Bad);
    EXPECT_EQ(word("{stale}"), Verdict::Uncertain);
    EXPECT_EQ(word("{ok, whatever}"), Verdict::Unknown);
}

TEST(QualityWords, NumbersAreThoseOfProcessDataExchangeIfOneSaysGood)
{
    EXPECT_EQ(codeOf({"192", "0", "64"}), QualityCode::Numbers);
    EXPECT_EQ(verdictOf("216", QualityCode::Numbers), Verdict::Good);
    EXPECT_EQ(verdictOf("68", QualityCode::Numbers), Verdict::Uncertain);
    EXPECT_EQ(verdictOf("24", QualityCode::Numbers), Verdict::Bad);
    EXPECT_EQ(verdictOf("57", QualityCode::Numbers), Verdict::Unknown);
    EXPECT_EQ(codeOf({"0", "64"}), std::nullopt);
    EXPECT_EQ(codeOf({"192", "57"}), std::nullopt);
}

TEST(QualityWords, NoughtAndOneSayNothingUnlessTheHeaderDoes)
{
    EXPECT_EQ(codeOf({"0", "1"}), std::nullopt);
    EXPECT_EQ(codeOf({"0", "1"}, QualityHeader::Quality), std::nullopt);
    EXPECT_EQ(codeOf({"0", "1"}, QualityHeader::Validity), QualityCode::Truth);
    EXPECT_EQ(codeOf({"wahr", "falsch"}, QualityHeader::Validity), QualityCode::Truth);
    EXPECT_EQ(codeOf({"true", "false"}), std::nullopt);
}

TEST(QualityWords, LettersCountWhereTheyCanMeanOneThingOnly)
{
    EXPECT_EQ(codeOf({"N", "V"}), QualityCode::ValidLetters);
    EXPECT_EQ(codeOf({"V"}), std::nullopt);  // or void
    EXPECT_EQ(codeOf({"V"}, QualityHeader::Quality), QualityCode::ValidLetters);
    EXPECT_EQ(codeOf({"B", "G", "U"}), QualityCode::GoodLetters);
    EXPECT_EQ(codeOf({"A", "P"}), QualityCode::ApprovedLetters);
    EXPECT_EQ(codeOf({"A", "M"}), std::nullopt);
}

TEST(QualityWords, StatesOfASwitchAreNone)
{
    for (const char* const state : {"on", "aus", "running", "alarm", "normal", "disabled", "offen"})
        EXPECT_EQ(codeOf({state}), std::nullopt) << state;
}

TEST(QualityReader, WhatIsUncertainOrEmptyIsGood)
{
    QualityReader reader(QualityCode::Words, {});
    EXPECT_EQ(reader.read("Uncertain"), QualityReader::Mark::Good);
    EXPECT_EQ(reader.read(""), QualityReader::Mark::Good);
    EXPECT_EQ(reader.read("--"), QualityReader::Mark::Good);
    EXPECT_EQ(reader.read("Bad"), QualityReader::Mark::Bad);
    EXPECT_EQ(reader.read("Lab"), QualityReader::Mark::Unknown);
}

TEST(QualityReader, WordsFromTheUserAreTheOnlyBadOnes)
{
    QualityReader reader(QualityCode::Words,
                         {QStringLiteral("Uncertain"), QStringLiteral("Größe"), QStringLiteral("1")});
    EXPECT_EQ(reader.read("uncertain"), QualityReader::Mark::Bad);
    EXPECT_EQ(reader.read("Gr\xF6\xDF"
                          "e"),
              QualityReader::Mark::Bad);  // Latin-1
    EXPECT_EQ(reader.read("1"), QualityReader::Mark::Bad);
    EXPECT_EQ(reader.read("Bad"), QualityReader::Mark::Good);
    EXPECT_EQ(reader.read("Lab"), QualityReader::Mark::Good);
}

}  // namespace

}  // namespace plotix
