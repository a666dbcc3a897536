#include "hostapp/live/sources/ReadingSources.h"

#include "base/ReportableError.h"
#include "tests/hostapp/live/MadeUpSource.h"

#include <gtest/gtest.h>

#include <array>

namespace plotix {

namespace {

constexpr std::array<const char*, 1> kNeeds = {"address"};
constexpr ReadingSourceKind kWithAddress = {
    "made up", kNeeds,
    [](const SourceSettings&) -> std::unique_ptr<ReadingSource> { return std::make_unique<MadeUpSource>(); }};

TEST(ReadingSources, AreMadeByName)
{
    EXPECT_EQ(makeReadingSource(QStringLiteral("computer"))->agentName(), QStringLiteral("This Computer"));
}

TEST(ReadingSources, AnUnknownNameIsAnErrorThatListsThoseThereAre)
{
    try {
        makeReadingSource(QStringLiteral("moon"));
        FAIL() << "nothing was thrown";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains(QStringLiteral("“moon”"))) << error.what();
        EXPECT_TRUE(error.message().contains(QStringLiteral("computer"))) << error.what();
    }
}

TEST(ReadingSources, WhatASourceNeedsMustBeThere)
{
    EXPECT_THROW(makeReadingSource(kWithAddress), ReportableError);
    EXPECT_TRUE(makeReadingSource(kWithAddress, {{QStringLiteral("address"), QStringLiteral("10.0.0.1")}}));
}

}  // namespace

}  // namespace plotix
