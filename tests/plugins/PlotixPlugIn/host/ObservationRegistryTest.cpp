#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

class Observer : public KTVPropertyObserver {
public:
    explicit Observer(std::vector<std::string>* told, std::string name = "observer")
        : m_told(told), m_name(std::move(name))
    {
    }

    void observeValueForKeyPath(const QString& keyPath, KTVProperty*, const KTVPropertyChange& change,
                                ObservationTag context) override
    {
        m_told->push_back(m_name + " " + keyPath.toStdString() + " " + change.oldValue.toString().toStdString() + ">" +
                          change.newValue.toString().toStdString() + " " + std::string(context.text));
        if (reaction)
            reaction();
    }

    std::function<void()> reaction;

private:
    std::vector<std::string>* m_told;
    std::string m_name;
};

class ObservationRegistryTest : public testing::Test {
protected:
    void observe(Observer& observer, const char* key = "unit")
    {
        registry.add(&observer, QLatin1String(key), ObservationTag{"tag"});
    }
    void change(const char* key = "unit") { registry.notify(nullptr, QLatin1String(key), {"old", "new"}); }

    std::vector<std::string> told;
    KTVObservationRegistry registry;
};

using Told = std::vector<std::string>;

TEST_F(ObservationRegistryTest, TellsKeyValuesAndTag)
{
    Observer observer(&told);
    observe(observer);
    change();
    EXPECT_EQ(told, Told{"observer unit old>new tag"});
}

TEST_F(ObservationRegistryTest, OneNoticeForEachObservation)
{
    Observer observer(&told);
    observe(observer);
    observe(observer);
    change();
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(ObservationRegistryTest, OneRemovalTakesOneObservation)
{
    Observer observer(&told);
    observe(observer);
    observe(observer);
    registry.remove(&observer, QStringLiteral("unit"));
    change();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ObservationRegistryTest, RemovalTakesTheLatestAdded)
{
    Observer observer(&told);
    registry.add(&observer, QStringLiteral("unit"), ObservationTag{"first"});
    registry.add(&observer, QStringLiteral("unit"), ObservationTag{"second"});
    registry.remove(&observer, QStringLiteral("unit"));
    change();
    EXPECT_EQ(told, Told{"observer unit old>new first"});
}

TEST_F(ObservationRegistryTest, RemovingOneKeyLeavesTheOther)
{
    Observer observer(&told);
    observe(observer, "unit");
    observe(observer, "color");
    registry.remove(&observer, QStringLiteral("unit"));
    change("unit");
    change("color");
    EXPECT_EQ(told, Told{"observer color old>new tag"});
}

TEST_F(ObservationRegistryTest, RemovingAStrangerDoesNothing)
{
    Observer observer(&told), stranger(&told);
    observe(observer);
    registry.remove(&stranger, QStringLiteral("unit"));
    EXPECT_EQ(registry.count(), 1U);
}

TEST_F(ObservationRegistryTest, ANullObserverIsNotAdded)
{
    registry.add(nullptr, QStringLiteral("unit"), kUnit);
    change();
    EXPECT_EQ(registry.count(), 0U);
}

TEST_F(ObservationRegistryTest, AnObservationEndsWithItsObserver)
{
    {
        Observer observer(&told);
        observe(observer);
    }
    EXPECT_EQ(registry.count(), 0U);
    change();
    EXPECT_TRUE(told.empty());
}

TEST_F(ObservationRegistryTest, TellsInTheOrderOfAdding)
{
    Observer first(&told, "first"), second(&told, "second");
    observe(first);
    observe(second);
    change();
    EXPECT_EQ(told, (Told{"first unit old>new tag", "second unit old>new tag"}));
}

TEST_F(ObservationRegistryTest, OneRemovedDuringTheNoticeIsNotToldAnyMore)
{
    Observer first(&told, "first"), second(&told, "second");
    observe(first);
    observe(second);
    first.reaction = [&] { registry.remove(&second, QStringLiteral("unit")); };
    change();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ObservationRegistryTest, OneDeletedDuringTheNoticeIsNotToldAnyMore)
{
    Observer first(&told, "first");
    auto second = std::make_unique<Observer>(&told, "second");
    observe(first);
    observe(*second);
    first.reaction = [&] { second.reset(); };
    change();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ObservationRegistryTest, OneAddedDuringTheNoticeIsToldTheNextTime)
{
    Observer first(&told, "first"), second(&told, "second");
    observe(first);
    bool isAdded = false;
    first.reaction = [&] {
        if (!isAdded)
            observe(second);
        isAdded = true;
    };
    change();
    EXPECT_EQ(told.size(), 1U);
    change();
    EXPECT_EQ(told.size(), 3U);
}

TEST_F(ObservationRegistryTest, AnObserverMayRemoveItself)
{
    Observer observer(&told);
    observe(observer);
    observer.reaction = [&] { registry.remove(&observer, QStringLiteral("unit")); };
    change();
    change();
    EXPECT_EQ(told.size(), 1U);
}

}  // namespace
