#include "hostapp/document/ArchivedReferences.h"

#include "hostapp/core/Coder.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/core/Units.h"

#include <gtest/gtest.h>

namespace {

using plotix::namesAgent;
using plotix::showTheSame;
using plotix::withMoved;

/// A view's state with a title, a span's end and the properties of these keys.
QByteArray state(const char* title, double to, const std::vector<const char*>& keys)
{
    plotix::Encoder encoder("agent-1");
    encoder.encodeValue("title", QString(title));
    encoder.encodeValue("toDate", to);
    KTVPropertyList properties;
    for (const char* key : keys) {
        plotix::SiteProperty::Description description;
        description.name = description.propertyName = key;
        properties.push_back(std::make_shared<plotix::SiteProperty>(description, plotix::Units::shared()));
    }
    encoder.encodeProperties("tables", properties);
    return encoder.data();
}

TEST(ArchivedReferencesTest, AnotherSpanShowsTheSame)
{
    EXPECT_TRUE(showTheSame(state("A", 1, {"air"}), state("A", 2, {"air"})));
}

TEST(ArchivedReferencesTest, AnotherTitleOrOtherPropertiesDoNot)
{
    EXPECT_FALSE(showTheSame(state("A", 1, {"air"}), state("B", 1, {"air"})));
    EXPECT_FALSE(showTheSame(state("A", 1, {"air"}), state("A", 1, {"air", "wind"})));
}

TEST(ArchivedReferencesTest, BytesThatAreNoArchiveShowTheSameWhenTheyAreEqual)
{
    EXPECT_TRUE(showTheSame("junk", "junk"));
    EXPECT_FALSE(showTheSame("junk", state("A", 1, {})));
    EXPECT_FALSE(namesAgent("junk", "junk"));
}

TEST(ArchivedReferencesTest, TheAgentOfListedPropertiesIsNamed)
{
    EXPECT_TRUE(namesAgent(state("A", 1, {"air"}), "agent-1"));
    EXPECT_FALSE(namesAgent(state("A", 1, {"air"}), "agent-2"));
}

TEST(ArchivedReferencesTest, OnlyPropertiesThatAreListedMove)
{
    EXPECT_TRUE(withMoved(state("A", 1, {"air"}), {{"agent-1", "air", "air", "agent-1", "luft", "luft"}}));
    EXPECT_FALSE(withMoved(state("A", 1, {"air"}), {{"agent-1", "wind", "wind", "agent-1", "luft", "luft"}}));
    EXPECT_FALSE(withMoved(state("A", 1, {"air"}), {{"agent-2", "air", "air", "agent-2", "luft", "luft"}}));
}

}  // namespace
