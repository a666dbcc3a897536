#include "base/png/PrefixCode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using plotix::PrefixBits;

class PrefixCodeTest : public testing::Test {
protected:
    void makeFrom(const std::vector<quint32>& counts, int longest)
    {
        m_counts = counts;
        m_codes.assign(counts.size(), {99, 99});
        plotix::makePrefixCode(counts, longest, m_codes);
    }

    std::vector<int> lengths() const
    {
        std::vector<int> all;
        for (const PrefixBits& code : m_codes)
            all.push_back(code.length);
        return all;
    }

    /// The fraction of all words that begin with one of the codes; 1 says that every word can be decoded.
    double filled() const
    {
        double sum = 0;
        for (const PrefixBits& code : m_codes)
            sum += code.length > 0 ? 1.0 / static_cast<double>(1U << code.length) : 0.0;
        return sum;
    }

    void expectNoCodeBeginsAnother() const
    {
        for (const PrefixBits& one : m_codes)
            for (const PrefixBits& other : m_codes)
                if (&one != &other && one.length > 0 && other.length >= one.length) {
                    EXPECT_NE(one.bits, other.bits & ((1U << one.length) - 1));
                }
    }

    const std::vector<PrefixBits>& codes() const { return m_codes; }

private:
    std::vector<quint32> m_counts;
    std::vector<PrefixBits> m_codes;
};

TEST_F(PrefixCodeTest, OftenIsShort)
{
    makeFrom({10, 1, 0, 15, 7, 20, 43}, 15);
    EXPECT_EQ(lengths(), (std::vector<int>{4, 5, 0, 3, 5, 2, 1}));
    EXPECT_EQ(filled(), 1);
    expectNoCodeBeginsAnother();
}

TEST_F(PrefixCodeTest, EquallyOftenIsEquallyLong)
{
    makeFrom(std::vector<quint32>(8, 5), 15);
    EXPECT_EQ(lengths(), std::vector<int>(8, 3));
}

TEST_F(PrefixCodeTest, CodesCountUpAndAreWrittenLowestBitFirst)
{
    makeFrom({4, 2, 1, 1}, 15);
    EXPECT_EQ(codes()[0].bits, 0b0);
    EXPECT_EQ(codes()[1].bits, 0b01);
    EXPECT_EQ(codes()[2].bits, 0b011);
    EXPECT_EQ(codes()[3].bits, 0b111);
}

TEST_F(PrefixCodeTest, NoCodeIsLongerThanAllowed)
{
    std::vector<quint32> doubling;  // left alone, code n would be n bits long
    for (quint32 bit = 0; bit < 25; ++bit)
        doubling.push_back(1U << bit);
    for (const int longest : {5, 7, 12, 15}) {
        makeFrom(doubling, longest);
        EXPECT_EQ(std::ranges::max(lengths()), longest);
        EXPECT_EQ(filled(), 1);
        expectNoCodeBeginsAnother();
    }
}

TEST_F(PrefixCodeTest, AnyCountsFillTheCode)
{
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        std::vector<quint32> counts(286);
        for (quint32& count : counts)
            count = random() % 3 == 0 ? 0 : static_cast<quint32>(random()) >> (8 + random() % 23);
        makeFrom(counts, 12);
        EXPECT_EQ(filled(), 1);
        expectNoCodeBeginsAnother();
    }
}

TEST_F(PrefixCodeTest, OneSymbolTakesOneBitAndNoneTakesNothing)
{
    makeFrom({0, 3, 0}, 15);
    EXPECT_EQ(lengths(), (std::vector<int>{0, 1, 0}));
    EXPECT_EQ(codes()[1].bits, 0);
    makeFrom({0, 0}, 15);
    EXPECT_EQ(lengths(), (std::vector<int>{0, 0}));
}

}  // namespace
