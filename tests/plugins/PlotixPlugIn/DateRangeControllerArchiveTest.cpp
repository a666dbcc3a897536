#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"
#include "tests/support/fakehost/FakeCoder.h"

namespace {

using plotix::Date;

class DateRangeControllerArchive : public DateRangeControllerTest {
protected:
    void encode()
    {
        fakehost::FakeEncoder encoder(archive);
        controller->encodeWithCoder(encoder);
    }
    KTVDataClusterViewController::Pointer decode() const
    {
        const fakehost::FakeDecoder decoder(archive, nullptr, nullptr);
        return KTVDataClusterViewController::initWithCoder(decoder);
    }

    fakehost::FakeArchive archive;
};

TEST_F(DateRangeControllerArchive, HoldsTheTwoDatesAndNothingElse)
{
    encode();
    EXPECT_EQ(archive.keys(), (QStringList{"fromDate", "toDate"}));
}

TEST_F(DateRangeControllerArchive, TheDatesComeBackToTheBit)
{
    controller->setFromDateValue(Date{1388534399.123456789});
    controller->setToDateValue(Date{-62135596800.5});
    encode();
    const auto decoded = decode();
    EXPECT_EQ(decoded->fromDateValue()->seconds, 1388534399.123456789);
    EXPECT_EQ(decoded->toDateValue()->seconds, -62135596800.5);
    EXPECT_EQ(decoded->fromDate()->dateTime().toSecsSinceEpoch(), 1388534399);
}

TEST_F(DateRangeControllerArchive, ARefusedRangeIsArchivedUnlessItIsToBeForgotten)
{
    controller->setFromDateValue(Date{1000});
    controller->setToDateValue(Date{2000});
    controller->acceptDates(nullptr);
    controller->setFromDateValue(Date{3000});
    encode();
    EXPECT_EQ(archive.value("fromDate").toDouble(), 3000);
    fakehost::FakeArchive other;
    fakehost::FakeEncoder encoder(other);
    controller->encodeWithCoder(encoder, KTVDataClusterViewController::RefusedRange::Forgotten);
    EXPECT_EQ(other.value("fromDate").toDouble(), 1000);
    EXPECT_EQ(other.value("toDate").toDouble(), 2000);
}

TEST_F(DateRangeControllerArchive, WhatIsArchivedIsWhatThePickersHoldNow)
{
    showPanel();
    edit(controller->fromDate());
    encode();
    EXPECT_EQ(archive.value("fromDate").toDouble(), controller->fromDateValue()->seconds);
}

TEST_F(DateRangeControllerArchive, AMissingDateLeavesTodaysDefault)
{
    archive.setValue("toDate", 5000.0);
    const auto decoded = decode();
    EXPECT_EQ(decoded->fromDateValue(), controller->fromDateValue());
    EXPECT_EQ(decoded->toDateValue(), Date{5000});
}

TEST_F(DateRangeControllerArchive, AnUnreadableDateLeavesTodaysDefault)
{
    archive.setValue("fromDate", "yesterday");
    EXPECT_EQ(decode()->fromDateValue(), controller->fromDateValue());
}

TEST_F(DateRangeControllerArchive, ADecodedControllerIsIdleAndHasNoDelegate)
{
    controller->refreshStarted(nullptr);
    controller->acceptDates(nullptr);
    encode();
    const auto decoded = decode();
    EXPECT_EQ(decoded->delegate(), nullptr);
    EXPECT_EQ(decoded->refreshButton()->text(), "Refresh");
    EXPECT_EQ(decoded->previousFromDate(), std::nullopt);
    EXPECT_EQ(decoded->dateChangeDelayTimer(), nullptr);
}

TEST_F(DateRangeControllerArchive, ThePanelsDatesAreArchivedAlsoWhenThePanelIsGone)
{
    controller->setFromDateValue(Date{1000.25});
    delete controller->view();
    encode();
    EXPECT_EQ(archive.value("fromDate").toDouble(), 1000.25);
}

}  // namespace
