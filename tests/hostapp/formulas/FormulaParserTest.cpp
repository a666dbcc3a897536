#include "hostapp/formulas/FormulaParser.h"

#include <gtest/gtest.h>

namespace plotix {
namespace {

using Kind = FormulaProblem::Kind;

FormulaProblem problemOf(const char* text)
{
    return parseFormula(QString::fromUtf8(text)).problem.value_or(FormulaProblem{Kind::Empty, -1});
}

std::string marked(const char* text)
{
    return markedText(QString::fromUtf8(text), problemOf(text)).toStdString();
}

std::vector<std::string> names(const char* text)
{
    std::vector<std::string> found;
    for (const FormulaName& name : namesIn(QString::fromUtf8(text)))
        found.push_back((name.agent ? *name.agent + "|" : QString()).toStdString() + name.property.toStdString());
    return found;
}

FormulaNode tree(const char* text)
{
    return parseFormula(QString::fromUtf8(text)).tree.value_or(FormulaNode{});
}

TEST(FormulaParserTest, ProductsComeBeforeSumsAndChainsGoLeft)
{
    const FormulaNode node = tree("a - b - c * d");
    ASSERT_EQ(node.kind, FormulaNode::Kind::Difference);
    EXPECT_EQ(node.arguments[0].kind, FormulaNode::Kind::Difference);
    EXPECT_EQ(node.arguments[1].kind, FormulaNode::Kind::Product);
}

TEST(FormulaParserTest, PowersBindTighterThanSignsAndGoRight)
{
    const FormulaNode node = tree("-a ^ b ^ c");
    ASSERT_EQ(node.kind, FormulaNode::Kind::Negative);
    EXPECT_EQ(node.arguments[0].arguments[1].kind, FormulaNode::Kind::Power);
}

TEST(FormulaParserTest, NamesWithBlanksAndSignsAreQuoted)
{
    EXPECT_EQ(names("\"Supply temperature\" - \"Room-air \"\"2\"\"\""),
              (std::vector<std::string>{"Supply temperature", "Room-air \"2\""}));
}

TEST(FormulaParserTest, AnAgentStandsBeforeAPoint)
{
    EXPECT_EQ(names("\"Roof station\".Air + Boiler.\"Supply temperature\""),
              (std::vector<std::string>{"Roof station|Air", "Boiler|Supply temperature"}));
}

TEST(FormulaParserTest, NumbersMayHaveUnits)
{
    const FormulaNode node = tree("a - 2.5e1 °C * 20 % + 3 [m/s]");
    EXPECT_EQ(node.arguments[1].text.toStdString(), "m/s");
    EXPECT_EQ(node.arguments[0].arguments[1].arguments[0].text.toStdString(), "°C");
    EXPECT_EQ(node.arguments[0].arguments[1].arguments[0].number, 25);
}

TEST(FormulaParserTest, SignsCopiedFromTextsAreUnderstood)
{
    EXPECT_EQ(tree("a − b").kind, FormulaNode::Kind::Difference);
    EXPECT_EQ(tree("a × b").kind, FormulaNode::Kind::Product);
    EXPECT_EQ(tree("a ≤ b").kind, FormulaNode::Kind::LessOrEqual);
}

TEST(FormulaParserTest, WhatIsMissingAtTheEndIsMarkedThere)
{
    EXPECT_EQ(problemOf("a - ").kind, Kind::Unfinished);
    EXPECT_EQ(marked("a -"), "a -\n   ^");
}

TEST(FormulaParserTest, WhatDoesNotBelongIsMarked)
{
    EXPECT_EQ(marked("a - * b"), "a - * b\n    ^");
    EXPECT_EQ(marked("a bcd"), "a bcd\n  ^^^");
    EXPECT_EQ(problemOf("a )").kind, Kind::Unexpected);
}

TEST(FormulaParserTest, ANameWithBlanksIsAskedToStandInQuotes)
{
    EXPECT_EQ(marked("Air Temperature"), "Air Temperature\n    ^^^^^^^^^^^");
    EXPECT_TRUE(sentenceOf(problemOf("Air Temperature")).contains(QStringLiteral("in quotation marks")));
    EXPECT_FALSE(sentenceOf(problemOf("a )")).contains(QStringLiteral("in quotation marks")));
}

TEST(FormulaParserTest, ADecimalCommaIsExplained)
{
    EXPECT_EQ(marked("a * 0,5"), "a * 0,5\n     ^");
    EXPECT_EQ(sentenceOf(problemOf("a * 0,5")).toStdString(),
              "A comma separates a function's arguments; decimals stand behind a point, as in 0.5.");
}

TEST(FormulaParserTest, OpenBracketsAndMarksAreMarkedWhereTheyBegin)
{
    EXPECT_EQ(problemOf("a * (b + c").kind, Kind::UnclosedBracket);
    EXPECT_EQ(problemOf("a * (b + c").position, 4);
    EXPECT_EQ(problemOf("a + \"b").kind, Kind::UnclosedQuote);
    EXPECT_EQ(problemOf("a + \"b").position, 4);
}

TEST(FormulaParserTest, UnknownFunctionsAndWrongArgumentsAreRefused)
{
    EXPECT_EQ(problemOf("meen(a, 1 h)").kind, Kind::UnknownFunction);
    EXPECT_EQ(problemOf("mean(a)").kind, Kind::WrongArguments);
    EXPECT_EQ(problemOf("mean()").kind, Kind::WrongArguments);
    EXPECT_EQ(problemOf("abs(a, b)").kind, Kind::WrongArguments);
}

TEST(FormulaParserTest, AnEmptyTextIsAProblem)
{
    EXPECT_EQ(problemOf("  ").kind, Kind::Empty);
}

TEST(FormulaParserTest, NestingHasAnEnd)
{
    for (const char sign : {'(', '-'})
        EXPECT_EQ(problemOf((QString(5000, QLatin1Char(sign)) + QLatin1Char('a')).toUtf8().constData()).kind,
                  Kind::TooDeep);
}

TEST(FormulaParserTest, LongChainsHaveAnEndToo)
{
    std::string chain = "a";
    for (int i = 0; i < 5000; ++i)
        chain += " + a";
    EXPECT_EQ(problemOf(chain.c_str()).kind, Kind::TooDeep);
}

TEST(FormulaParserTest, RenamingTouchesThatNameAlone)
{
    const QString text = QStringLiteral("Supply - mean(Return, 1 h) + \"Supply\" + Roof.Supply");
    const QString renamed = withNames(text, [](const FormulaName& name) -> std::optional<FormulaName> {
        if (name.agent || name.property != QLatin1String("Supply"))
            return std::nullopt;
        return FormulaName{std::nullopt, QStringLiteral("Outdoor air")};
    });
    EXPECT_EQ(renamed.toStdString(), "\"Outdoor air\" - mean(Return, 1 h) + \"Outdoor air\" + Roof.Supply");
}

TEST(FormulaParserTest, NamesAreQuotedWhereTheyHaveToBe)
{
    EXPECT_EQ(quotedName(QStringLiteral("Air_2")).toStdString(), "Air_2");
    EXPECT_EQ(quotedName(QStringLiteral("Außenluft")).toStdString(), "Außenluft");
    EXPECT_EQ(quotedName(QStringLiteral("2nd")).toStdString(), "\"2nd\"");
    EXPECT_EQ(quotedName(QStringLiteral("6\" pipe")).toStdString(), "\"6\"\" pipe\"");
}

}  // namespace
}  // namespace plotix
