#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"
#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

#include <array>

namespace {

/// The defaults of a program that has installed nothing.
class DefaultServicesTest : public testing::Test {
protected:
    DefaultServicesTest() : m_previous(KTVHostServices::install({})) {}
    ~DefaultServicesTest() override { KTVHostServices::install(m_previous); }

    KTVUserInterface& userInterface() { return *KTVHostServices::installed().userInterface; }
    static void drain()
    {
        bool reached = false;
        plotix::MainQueue::main().async([&reached] { reached = true; });
        while (!reached)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    KTVHostServices m_previous;
};

TEST_F(DefaultServicesTest, NoMemberIsEmpty)
{
    const KTVHostServices& installed = KTVHostServices::installed();
    EXPECT_TRUE(installed.makeMessageViewController);
    EXPECT_TRUE(installed.helpManager && installed.converter && installed.dateCreator && installed.mainBundle &&
                installed.userInterface);
}

TEST_F(DefaultServicesTest, ATextIsItsKey)
{
    EXPECT_EQ(KTVBundle::mainBundle()->localizedString(QStringLiteral("Cancel")), QStringLiteral("Cancel"));
    EXPECT_TRUE(KTVBundle::mainBundle()->imageNamed(QStringLiteral("icon")).isNull());
}

TEST_F(DefaultServicesTest, AModalAlertIsWrittenAndReturns)
{
    testing::internal::CaptureStderr();
    userInterface().runModal(
        {QStringLiteral("Database Access Error"), QStringLiteral("Returned object was malformed.")});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Database Access Error: Returned object was malformed.\n");
}

TEST_F(DefaultServicesTest, ASheetReturnsBeforeItsHandlerRuns)
{
    bool dismissed = false;
    testing::internal::CaptureStderr();
    userInterface().beginSheet({QStringLiteral("Title"), QStringLiteral("Text")}, nullptr, [&] { dismissed = true; });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title: Text\n");
    EXPECT_FALSE(dismissed);
    drain();
    EXPECT_TRUE(dismissed);
}

TEST_F(DefaultServicesTest, ASheetWithoutAHandlerIsFine)
{
    testing::internal::CaptureStderr();
    userInterface().beginSheet({QStringLiteral("Title"), QStringLiteral("Text")}, nullptr, {});
    drain();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title: Text\n");
}

TEST_F(DefaultServicesTest, SavePanelsAreCancelledAndNoKeyIsHeldDown)
{
    EXPECT_FALSE(userInterface().runSavePanel({QStringLiteral("png")}));
    EXPECT_EQ(userInterface().modifierFlags(), Qt::NoModifier);
}

TEST_F(DefaultServicesTest, AQuickRangeItCannotGiveLeavesTheDatesAlone)
{
    plotix::OptionalDate start = plotix::Date{1}, end;
    KTVNaturalLanguageDateCreator::dateRangeForAllTime(start, end);
    EXPECT_EQ(start, plotix::Date{1});
    EXPECT_FALSE(end);
}

TEST_F(DefaultServicesTest, MessagesAreShown)
{
    QWidget view;
    view.resize(200, 100);
    const auto message = KTVMessageViewController::create();
    message->centerOnView(&view, QStringLiteral("No data"));
    EXPECT_EQ(message->view()->parentWidget(), &view);
    EXPECT_FALSE(message->view()->isHidden());
}

TEST_F(DefaultServicesTest, InstallingAnswersWhatWasThere)
{
    KTVHostServices services;
    KTVBundle* const bundle = KTVBundle::mainBundle();
    services.mainBundle = bundle;
    EXPECT_EQ(KTVHostServices::install(services).mainBundle, bundle);
}

/// Says which range was asked for by its number.
class NumberedRanges : public KTVNaturalLanguageDateCreator {
public:
    void dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate&) const override
    {
        start = plotix::Date{static_cast<double>(range)};
    }
};

TEST_F(DefaultServicesTest, EachNamedRangeAsksForItsOwn)
{
    NumberedRanges ranges;
    KTVHostServices services;
    services.dateCreator = &ranges;
    const KTVHostServices previous = KTVHostServices::install(services);
    using Creator = KTVNaturalLanguageDateCreator;
    constexpr std::array kInMenuOrder{
        &Creator::dateRangeForToday,     &Creator::dateRangeForLast24Hours, &Creator::dateRangeForYesterday,
        &Creator::dateRangeForThisWeek,  &Creator::dateRangeForLastWeek,    &Creator::dateRangeForLast7Days,
        &Creator::dateRangeForThisMonth, &Creator::dateRangeForLastMonth,   &Creator::dateRangeForLast30Days,
        &Creator::dateRangeForThisYear,  &Creator::dateRangeForLastYear,    &Creator::dateRangeForLast12Months,
        &Creator::dateRangeForAllTime,
    };
    static_assert(kInMenuOrder.size() == kQuickRangeCount);
    for (std::size_t number = 0; number < kInMenuOrder.size(); ++number) {
        plotix::OptionalDate start, end;
        kInMenuOrder[number](start, end);
        EXPECT_EQ(start, plotix::Date{static_cast<double>(number)});
    }
    KTVHostServices::install(previous);
}

TEST(RemoveFromSuperview, TakesTheViewOutHiddenAndWithoutParent)
{
    QWidget parent;
    auto view = std::make_unique<QWidget>(&parent);
    removeFromSuperview(view.get());
    EXPECT_EQ(view->parentWidget(), nullptr);
    EXPECT_TRUE(view->isHidden());
}

TEST(RemoveFromSuperview, DoesNothingWithoutAViewOrAParent)
{
    QWidget alone;
    alone.show();
    removeFromSuperview(&alone);
    EXPECT_FALSE(alone.isHidden());
    removeFromSuperview(nullptr);
}

}  // namespace
