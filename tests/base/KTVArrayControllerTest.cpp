#include "base/KTVArrayController.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using RowPtr = std::shared_ptr<std::string>;

class ArrayControllerTest : public testing::Test {
protected:
    ArrayControllerTest()
    {
        QObject::connect(controller.changes(), &KTVArrayControllerSignals::arrangedObjectsChanged,
                         [this] { ++arrangements; });
        QObject::connect(controller.changes(), &KTVArrayControllerSignals::selectionChanged, [this] { ++selections; });
    }

    RowPtr add(const char* text)
    {
        auto row = std::make_shared<std::string>(text);
        controller.addObject(row);
        return row;
    }
    std::string arranged() const { return joined(controller.arrangedObjects()); }
    std::string selected() const { return joined(controller.selectedObjects()); }
    std::string content() const { return joined(*controller.content()); }
    void sortDescending()
    {
        controller.setSortOrder([](const RowPtr& one, const RowPtr& other) { return *one > *other; });
    }

    KTVArrayController<RowPtr> controller;
    int arrangements = 0, selections = 0;

private:
    static std::string joined(const std::vector<RowPtr>& rows)
    {
        std::string text;
        for (const RowPtr& row : rows)
            text += *row;
        return text;
    }
};

TEST_F(ArrayControllerTest, IsEmptyAtFirst)
{
    EXPECT_TRUE(controller.arrangedObjects().empty());
    EXPECT_TRUE(controller.selectionIndexes().empty());
}

TEST_F(ArrayControllerTest, ShowsTheContentOrderUntilSorted)
{
    add("b"), add("a"), add("c");
    EXPECT_EQ(arranged(), "bac");
}

TEST_F(ArrayControllerTest, SortsTheArrangedOrderAndLeavesTheContentAlone)
{
    add("b"), add("a"), add("c");
    sortDescending();
    EXPECT_EQ(arranged(), "cba");
    EXPECT_EQ(content(), "bac");
}

TEST_F(ArrayControllerTest, AnEmptyOrderRestoresTheContentOrder)
{
    add("b"), add("a");
    sortDescending();
    controller.setSortOrder({});
    EXPECT_EQ(arranged(), "ba");
}

TEST_F(ArrayControllerTest, NewElementsTakeTheirPlaceInTheSortedOrder)
{
    add("a"), add("c");
    sortDescending();
    add("b");
    EXPECT_EQ(arranged(), "cba");
}

TEST_F(ArrayControllerTest, SharesItsContentWithItsMaker)
{
    auto list = std::make_shared<std::vector<RowPtr>>();
    controller.setContent(list);
    add("a");
    EXPECT_EQ(list->size(), 1U);
    controller.removeAllObjects();
    EXPECT_TRUE(list->empty());
}

TEST_F(ArrayControllerTest, ANullContentIsAnEmptyList)
{
    add("a");
    controller.setContent(nullptr);
    ASSERT_NE(controller.content(), nullptr);
    EXPECT_TRUE(controller.arrangedObjects().empty());
}

TEST_F(ArrayControllerTest, SortingKeepsTheSameElementsSelected)
{
    add("a"), add("b"), add("c");
    controller.setSelectionIndexes({0, 1});
    sortDescending();
    EXPECT_EQ(controller.selectionIndexes(), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(selected(), "ba");
}

TEST_F(ArrayControllerTest, RemovingAnElementKeepsTheOthersSelected)
{
    const RowPtr first = add("a");
    add("b"), add("c");
    controller.setSelectionIndexes({0, 2});
    controller.removeObject(first);
    EXPECT_EQ(arranged(), "bc");
    EXPECT_EQ(selected(), "c");
}

TEST_F(ArrayControllerTest, AnElementAddedInFrontLeavesTheSameOneSelected)
{
    add("a");
    sortDescending();
    controller.setSelectionIndexes({0});
    add("b");
    EXPECT_EQ(selected(), "a");
    EXPECT_EQ(selections, 2);
}

TEST_F(ArrayControllerTest, TheSelectionHoldsAlreadyWhenTheNewOrderIsTold)
{
    const RowPtr first = add("a");
    add("b");
    controller.setSelectionIndexes({1});
    std::string seen;
    QObject::connect(controller.changes(), &KTVArrayControllerSignals::arrangedObjectsChanged,
                     [&] { seen = selected(); });
    controller.removeObject(first);
    EXPECT_EQ(seen, "b");
}

TEST_F(ArrayControllerTest, RemovesByIdentityNotByText)
{
    const RowPtr first = add("same");
    const RowPtr second = add("same");
    controller.removeObject(first);
    ASSERT_EQ(controller.arrangedObjects().size(), 1U);
    EXPECT_EQ(controller.arrangedObjects()[0], second);
}

TEST_F(ArrayControllerTest, AnElementPutInTwiceIsRemovedTwice)
{
    const RowPtr row = add("a");
    controller.addObject(row);
    controller.removeObject(row);
    EXPECT_TRUE(controller.arrangedObjects().empty());
}

TEST_F(ArrayControllerTest, RemovingAStrangerTellsNobody)
{
    add("a");
    arrangements = 0;
    controller.removeObject(std::make_shared<std::string>("a"));
    EXPECT_EQ(arrangements, 0);
}

TEST_F(ArrayControllerTest, SelectionIsSortedUniqueAndInsideTheList)
{
    add("a"), add("b");
    controller.setSelectionIndexes({1, 0, 1, 7});
    EXPECT_EQ(controller.selectionIndexes(), (std::vector<std::size_t>{0, 1}));
}

TEST_F(ArrayControllerTest, TellsEachChangeOnce)
{
    add("a");
    EXPECT_EQ(arrangements, 1);
    controller.setSelectionIndexes({0});
    controller.setSelectionIndexes({0});
    EXPECT_EQ(selections, 1);
}

TEST_F(ArrayControllerTest, TakesSeveralElementsWithOneNotice)
{
    controller.addObjects({std::make_shared<std::string>("a"), std::make_shared<std::string>("b")});
    EXPECT_EQ(arranged(), "ab");
    EXPECT_EQ(arrangements, 1);
}

TEST_F(ArrayControllerTest, RemovingEverythingClearsTheSelection)
{
    add("a");
    controller.setSelectionIndexes({0});
    controller.removeAllObjects();
    EXPECT_TRUE(controller.selectionIndexes().empty());
    EXPECT_TRUE(controller.selectedObjects().empty());
}

TEST_F(ArrayControllerTest, RearrangingFollowsElementsThatChangedInPlace)
{
    const RowPtr first = add("a");
    add("b");
    controller.setSortOrder([](const RowPtr& one, const RowPtr& other) { return *one < *other; });
    first->front() = 'z';
    controller.rearrangeObjects();
    EXPECT_EQ(arranged(), "bz");
}

}  // namespace
