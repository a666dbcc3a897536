#include "plugins/PlotixPlugIn/logic/WebText.h"

#include <gtest/gtest.h>

using plotix::plugInHtmlDescription;
using plotix::webAdvertisement;
using plotix::webPathName;
using plotix::WebPathName;
using plotix::webPlotLink;

namespace {

struct PathCase {
    const char* name;
    const char* url;
    WebPathName expected;
};

class WebPathNames : public testing::TestWithParam<PathCase> {};

TEST_P(WebPathNames, TakesTheLastComponentApart)
{
    EXPECT_EQ(webPathName(QUrl(QString::fromUtf8(GetParam().url))), GetParam().expected);
}

const PathCase kPathCases[] = {
    {"Plain", "http://host/id.png", {"id", "png"}},
    {"LeadingSegmentsAreIgnored", "http://host/sites/7/plots/id.pdf", {"id", "pdf"}},
    {"QueryAndFragmentAreNoPath", "http://host/id.png?size=2.pdf#a/b.pdf", {"id", "png"}},
    {"RelativePath", "id.png", {"id", "png"}},
    {"TrailingSlashIsIgnored", "http://host/id.png/", {"id", "png"}},
    {"TrailingSlashesAreIgnored", "http://host/id.png//", {"id", "png"}},
    {"LastDotDivides", "http://host/id.tar.png", {"id.tar", "png"}},
    {"CapitalsStay", "http://host/Id.PNG", {"Id", "PNG"}},
    {"WithoutDot", "http://host/id", {"id", ""}},
    {"LeadingDotBeginsNoExtension", "http://host/.png", {".png", ""}},
    {"DotAtTheEndBeginsNoExtension", "http://host/id.", {"id.", ""}},
    {"DotDotIsNoExtensionAlone", "http://host/..png", {".", "png"}},
    {"PercentSignsAreDecoded", "http://host/a%20b%2Epng", {"a b", "png"}},
    {"DecodedOnlyOnce", "http://host/a%2520b.png", {"a%20b", "png"}},
    {"EncodedSlashStaysInTheComponent", "http://host/x/a%2Fb.png", {"a/b", "png"}},
    {"EncodedQuestionMarkStaysInTheComponent", "http://host/a%3Fb.png", {"a?b", "png"}},
    {"Utf8", "http://host/%C3%A9.png", {QString::fromUtf8("é"), "png"}},
    {"RootAlone", "http://host/", {"", ""}},
    {"WithoutPath", "http://host", {"", ""}},
    {"Nothing", "", {"", ""}},
};

INSTANTIATE_TEST_SUITE_P(Paths, WebPathNames, testing::ValuesIn(kPathCases),
                         [](const auto& one) { return one.param.name; });

TEST(WebText, LinkIsBaseSlashIdentifierAndPng)
{
    EXPECT_EQ(webPlotLink("http://host/sites/7", "id"), "http://host/sites/7/id.png");
}

TEST(WebText, BaseThatEndsInASlashGivesTwo)
{
    EXPECT_EQ(webPlotLink("http://host/", "id"), "http://host//id.png");
}

TEST(WebText, WithoutPlotsTheAdvertisementIsHeadingAndSentence)
{
    EXPECT_EQ(webAdvertisement({}),
              "<h1>REST API for Plotix</h1>You can view PNG representations of this Site Document's available Plotix "
              "plots here.<p>");
}

TEST(WebText, EveryPlotIsAHeadingWithALink)
{
    const QString html = webAdvertisement({{"http://host/1.png", "One"}, {"http://host/2.png", "Two"}});
    EXPECT_TRUE(html.endsWith("<p><h2><a href=\"http://host/1.png\" target=\"_blank\">One</a></h2>"
                              "<h2><a href=\"http://host/2.png\" target=\"_blank\">Two</a></h2>"));
}

// What serves the fragment keeps scripts from running; the text itself is the title's, to the letter.
TEST(WebText, TitlesAreNotEscaped)
{
    const QString html = webAdvertisement({{"1.png", "<script>alert(\"%1 & co\")</script>"}});
    EXPECT_TRUE(html.contains(">"
                              "<script>alert(\"%1 & co\")</script>"
                              "</a>"));
}

TEST(WebText, AbsentTitleReadsNull)
{
    EXPECT_TRUE(webAdvertisement({{"1.png", std::nullopt}}).contains(">(null)</a>"));
}

TEST(WebText, DescriptionIsATableWithTheVersions)
{
    EXPECT_EQ(plugInHtmlDescription("2.1", 42),
              "<table><tr><th colspan=2 align=center>Plotix Plug-In - Version 2.1 (42)</th></tr></table>");
}

TEST(WebText, DescriptionTakesVersionsOf64Bits)
{
    EXPECT_TRUE(plugInHtmlDescription("1", 9'000'000'000).contains("(9000000000)"));
}

TEST(WebText, AbsentShortVersionReadsNull)
{
    EXPECT_TRUE(plugInHtmlDescription(std::nullopt, 1).contains("Version (null) (1)"));
}

}  // namespace
