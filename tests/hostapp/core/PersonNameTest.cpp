#include "hostapp/core/PersonName.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

TEST(PersonNameTest, TheFullNameIsTheFirstPartOfTheComment)
{
    EXPECT_EQ(fullNameOf("Ada Lovelace,Room 1,,", "ada"), "Ada Lovelace");
    EXPECT_EQ(fullNameOf("& Lovelace", "ada"), "Ada Lovelace");
}

TEST(PersonNameTest, WithoutOneItIsTheAccount)
{
    EXPECT_EQ(fullNameOf(",,", "ada"), "ada");
    EXPECT_EQ(fullNameOf("", ""), "");
}

}  // namespace
}  // namespace plotix
