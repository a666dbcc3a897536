#include "tests/contract/HostUnderTest.h"

#include <QtCore/QCoreApplication>

#include <cmath>

namespace contract {
namespace {

using plotix::Date;
using plotix::OptionalDate;

TEST_P(HostContract, QuickRangesBeginBeforeTheyEnd)
{
    for (int number = 0; number < kQuickRangeCount; ++number) {
        OptionalDate start, end;
        host->quickRanges().dateRange(static_cast<KTVQuickRange>(number), start, end);
        ASSERT_TRUE(start && end) << number;
        EXPECT_LE(start->seconds, end->seconds) << number;
    }
}

TEST_P(HostContract, AllTimeSpansTheRecords)
{
    OptionalDate start, end;
    host->quickRanges().dateRange(KTVQuickRange::AllTime, start, end);
    EXPECT_EQ(start, Date{kTimes.front()});
    EXPECT_EQ(end, Date{kTimes.back()});
}

TEST_P(HostContract, ARangeThatCannotBeGivenLeavesTheDatesAlone)
{
    OptionalDate start = Date{1}, end = Date{2};
    host->quickRangesWithoutRecords().dateRange(KTVQuickRange::AllTime, start, end);
    EXPECT_EQ(start, Date{1});
    EXPECT_EQ(end, Date{2});
}

TEST_P(HostContract, TodayIsOneWholeDayAndFollowsYesterday)
{
    OptionalDate today, tomorrow, yesterday, end;
    host->quickRanges().dateRange(KTVQuickRange::Today, today, tomorrow);
    host->quickRanges().dateRange(KTVQuickRange::Yesterday, yesterday, end);
    ASSERT_TRUE(today && tomorrow && yesterday && end);
    EXPECT_EQ(tomorrow->seconds - today->seconds, 86'400);
    EXPECT_EQ(end, today);
}

TEST_P(HostContract, RoundsForDisplay)
{
    EXPECT_EQ(host->converter().roundedValue(54.83274, 10), 54.83);
    EXPECT_EQ(host->converter().roundedValue(1013.2534, 10), 1013.3);
    EXPECT_EQ(host->converter().roundedValue(0.00482531, 10), 0.004825);
    EXPECT_EQ(host->converter().roundedValue(4, 10), 4);
    EXPECT_EQ(host->converter().roundedValue(-1013.2534, 10), -1013.3);
    EXPECT_EQ(host->converter().roundedValue(54.83274, 0), 54.83274);
    EXPECT_TRUE(std::isnan(host->converter().roundedValue(std::nan(""), 10)));
}

TEST_P(HostContract, ATextWithoutATranslationIsItsKey)
{
    EXPECT_EQ(host->bundle().localizedString(QStringLiteral("Cancel")), QStringLiteral("Cancel"));
    EXPECT_EQ(host->bundle().localizedString(QStringLiteral("no such text")), QStringLiteral("no such text"));
    EXPECT_TRUE(host->bundle().imageNamed(QStringLiteral("no such image")).isNull());
}

/// A view with a message over it.
class MessageOverView {
public:
    explicit MessageOverView(HostUnderTest& host) : m_message(host.makeMessageViewController())
    {
        m_view.resize(400, 300);
        m_message->centerOnView(&m_view, QStringLiteral("No data in this range"));
    }
    QWidget& view() { return m_view; }
    KTVMessageViewController& message() { return *m_message; }
    /// How far the message's middle lies from the view's, in points, the larger of both directions.
    int distanceFromCentre()
    {
        QCoreApplication::sendPostedEvents();
        const QPoint off = m_message->view()->geometry().center() - m_view.rect().center();
        return std::max(std::abs(off.x()), std::abs(off.y()));
    }

private:
    QWidget m_view;
    std::unique_ptr<KTVMessageViewController> m_message;
};

TEST_P(HostContract, AMessageLiesCentredOverItsView)
{
    MessageOverView overlay(*host);
    EXPECT_EQ(overlay.message().view()->parentWidget(), &overlay.view());
    EXPECT_FALSE(overlay.message().view()->isHidden());
    EXPECT_LE(overlay.distanceFromCentre(), 1);
}

TEST_P(HostContract, AMessageStaysCentredWhenItsViewIsResized)
{
    MessageOverView overlay(*host);
    overlay.view().show();
    overlay.view().resize(800, 500);
    EXPECT_LE(overlay.distanceFromCentre(), 1);
}

TEST_P(HostContract, TakingTheMessageOutHidesItAndItCanBeShownAgain)
{
    MessageOverView overlay(*host);
    removeFromSuperview(overlay.message().view());
    EXPECT_TRUE(overlay.message().view()->isHidden());
    EXPECT_EQ(overlay.message().view()->parentWidget(), nullptr);
    overlay.message().centerOnView(&overlay.view(), QStringLiteral("Another one"));
    EXPECT_EQ(overlay.message().view()->parentWidget(), &overlay.view());
    EXPECT_LE(overlay.distanceFromCentre(), 1);
}

TEST_P(HostContract, AMessageOverNoViewDoesNothing)
{
    const auto message = host->makeMessageViewController();
    message->centerOnView(nullptr, QStringLiteral("No data"));
    EXPECT_TRUE(!message->view() || message->view()->isHidden());
}

TEST_P(HostContract, AMessageOutlivesTheViewItLiesOn)
{
    const auto message = host->makeMessageViewController();
    auto first = std::make_unique<QWidget>();
    message->centerOnView(first.get(), QStringLiteral("One"));
    first.reset();
    QWidget second;
    message->centerOnView(&second, QStringLiteral("Two"));
    ASSERT_NE(message->view(), nullptr);
    EXPECT_EQ(message->view()->parentWidget(), &second);
}

}  // namespace
}  // namespace contract
