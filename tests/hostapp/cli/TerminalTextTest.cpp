#include "hostapp/cli/TerminalText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace plotix {
namespace {

TEST(TerminalText, OrdinaryTextStays)
{
    const std::string text = "Zulauf °C\t– 熱 🌡\nnext line";
    EXPECT_EQ(harmlessText(text), text);
}

TEST(TerminalText, ControlsAreWrittenOut)
{
    EXPECT_EQ(harmlessText("a\x1b[2Jb\r\a"), "a\\u001b[2Jb\\u000d\\u0007");
    EXPECT_EQ(harmlessText("\u009b31m\x7f"), "\\u009b31m\\u007f");
}

TEST(TerminalText, ChangesOfDirectionAreWrittenOut)
{
    EXPECT_EQ(harmlessText("\u202egnp\u202c \u2066x\u2069 \u200f"), "\\u202egnp\\u202c \\u2066x\\u2069 \\u200f");
}

TEST(TerminalText, WhatIsNoUtf8IsMarked)
{
    EXPECT_EQ(harmlessText("a\xff"
                           "b"),
              "a\uFFFDb");
}

TEST(HarmlessStreamTest, CharactersMayComeInPieces)
{
    std::ostringstream to;
    {
        HarmlessStream stream(to);
        for (const char byte : std::string("°\u202eé\x1b"))
            stream << byte;
    }
    EXPECT_EQ(to.str(), "°\\u202eé\\u001b");
}

TEST(HarmlessStreamTest, FlushingReachesTheEnd)
{
    std::ostringstream to;
    HarmlessStream stream(to);
    stream << "line" << std::endl;
    EXPECT_EQ(to.str(), "line\n");
}

}  // namespace
}  // namespace plotix
