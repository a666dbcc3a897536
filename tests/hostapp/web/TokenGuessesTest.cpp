#include "hostapp/web/TokenGuesses.h"

#include <gtest/gtest.h>

namespace plotix {
namespace {

using namespace std::chrono_literals;

class TokenGuessesTest : public testing::Test {
protected:
    void guess(int times, const QByteArray& address = "192.0.2.1")
    {
        for (int number = 0; number < times; ++number)
            guesses.wasWrong(address, now);
    }
    std::chrono::seconds wait(const QByteArray& address = "192.0.2.1") const
    {
        return guesses.waitOf(address, now).value_or(0s);
    }

    TokenGuesses guesses;
    TokenGuesses::Moment now = TokenGuesses::Moment() + 24h;
};

TEST_F(TokenGuessesTest, AFewMistakesAreFree)
{
    guess(TokenGuesses::kFree);
    EXPECT_EQ(wait(), 0s);
}

TEST_F(TokenGuessesTest, EachFurtherOneDoublesTheWaitUpToAMinute)
{
    guess(TokenGuesses::kFree);
    for (const auto expected : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
        guess(1);
        EXPECT_EQ(wait(), expected);
        now += expected;
        EXPECT_EQ(wait(), 0s);
    }
}

TEST_F(TokenGuessesTest, OtherAddressesDoNotWait)
{
    guess(20);
    EXPECT_EQ(wait("192.0.2.2"), 0s);
}

TEST_F(TokenGuessesTest, ANetworkOfTheLongAddressesIsOne)
{
    guess(20, "2001:db8::1");
    EXPECT_GT(wait("2001:db8::abcd"), 0s);
    EXPECT_EQ(wait("2001:db8:0:1::1"), 0s);
}

TEST_F(TokenGuessesTest, TheRightTokenEndsIt)
{
    guess(20);
    guesses.wasRight("192.0.2.1");
    guess(1);
    EXPECT_EQ(wait(), 0s);
}

TEST_F(TokenGuessesTest, OldMistakesAreForgotten)
{
    guess(20);
    now += TokenGuesses::kForgotten + 1s;
    guess(1);
    EXPECT_EQ(wait(), 0s);
}

TEST_F(TokenGuessesTest, ManyAddressesCostNoMoreThanSome)
{
    guess(20, "10.255.255.255");
    now += 1s;
    for (unsigned number = 0; number < TokenGuesses::kMostAddresses; ++number)
        guess(1, "10.0." + QByteArray::number(number / 256) + '.' + QByteArray::number(number % 256));
    EXPECT_EQ(wait("10.255.255.255"), 0s);
}

}  // namespace
}  // namespace plotix
