#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

TEST(ReadingOptionsTest, NothingIsChosenAtFirst)
{
    static const ReadingOptions kNone;
    EXPECT_FALSE(kNone.hasReadableLabels());
    EXPECT_TRUE(dictionaryFromReadingOptions({}).isEmpty());
}

TEST(ReadingOptionsTest, OptionsSurviveTheirDictionary)
{
    for (const bool choice : {false, true}) {
        const ReadingOptions options{.readableLabels = choice, .tellsOutside = !choice, .unlimitedValues = choice};
        EXPECT_EQ(mergedReadingOptions({}, dictionaryFromReadingOptions(options)), options);
    }
}

TEST(ReadingOptionsTest, WholeNumbersAreNumbersToo)
{
    EXPECT_EQ(mergedReadingOptions({}, {{"longestJoin", qlonglong(300)}}).longestJoin, 300);
    EXPECT_EQ(mergedReadingOptions({}, {{"longestJoin", "300"}}), ReadingOptions());
}

TEST(ReadingOptionsTest, MergingLeavesWhatIsNotNamed)
{
    const ReadingOptions chosen{.readableLabels = true};
    EXPECT_EQ(mergedReadingOptions(chosen, {{"unknown", true}}), chosen);
    EXPECT_EQ(mergedReadingOptions(chosen, {{"readableLabels", "yes"}}), chosen);
}

}  // namespace
