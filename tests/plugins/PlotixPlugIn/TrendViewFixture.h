#pragma once

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "tests/support/fakehost/FakeHost.h"

#include <gtest/gtest.h>

#include <limits>

/// A trend view in the in-memory host, and verbs to drive it.
///
/// The agent has "Air Temperature" (degC, red), "Pressure" (hPa, blue) and "Wind" (m/s, green). Views are made for an
/// hour from `kFrom` to `kTo`. Fetches stay open until a test answers them.
class TrendViewFixture : public testing::Test {
protected:
    using Answer = fakehost::FakeArchiveManager::Answer;
    using Where = fakehost::FakeArchiveManager::Where;

    static constexpr double kFrom = 1'357'041'600;  // 2013-01-01 12:00 UTC
    static constexpr double kTo = kFrom + 3'600;
    static constexpr double kInvalid = std::numeric_limits<double>::quiet_NaN();

    TrendViewFixture();
    ~TrendViewFixture() override;  ///< the host must have been asked on the main thread alone

    // Making.
    void makeTrend(const QStringList& keys = {"airTemperature", "pressure"});
    void makeTrendWithoutTables();
    void open() { m_trend->view(); }
    void openTrend(const QStringList& keys = {"airTemperature", "pressure"});
    void openTrendWithData();  ///< opened, and the first fetch answered with `twoProperties`
    void adopt(KTVPlotixPlugIn::Ptr trend) { m_trend = std::move(trend); }
    void releaseTrend() { m_trend.reset(); }
    KTVPlotixPlugIn& trend() { return *m_trend; }
    KTVDataClusterViewController& panel() { return *m_trend->dataClusterViewController(); }

    // The host.
    fakehost::FakeHost& host() { return m_host; }
    KTVAgentPtr agent() { return m_host.agent(); }
    KTVPropertyPtr property(const QString& key) { return m_host.agent()->property(key); }
    fakehost::FakeUserInterface& desktop() { return m_host.userInterface(); }

    // Fetching.
    int fetchCount() { return static_cast<int>(m_host.archiveManager().fetchCount()); }
    const fakehost::FakeArchiveManager::Fetch& lastFetch() { return m_host.archiveManager().lastFetch(); }
    fakehost::RecordBuilder records() const { return m_host.records(); }
    fakehost::RecordBuilder recordsAt(const std::vector<double>& times) const { return m_host.records().times(times); }
    KTVRecordDictionaryPtr twoProperties() const;
    void completeLastFetch(const Answer& answer, Where where = Where::OnThisThread);
    void answer(const KTVRecordDictionaryPtr& records, const std::optional<KTVError>& error = std::nullopt);
    void answer(const fakehost::RecordBuilder& records) { answer(records.build()); }
    void answerNothing() { answer(nullptr, std::nullopt); }
    void answerRefresh(const fakehost::RecordBuilder& records) { answerRefresh(records.build()); }
    void answerRefresh(const KTVRecordDictionaryPtr& records);
    void refreshFor(double from, double to);
    static void drain() { fakehost::FakeHost::drainMainQueue(); }

    // Looking.
    bool isBusy() { return panel().refreshButton()->text() == QLatin1String("Cancel"); }
    QString overlayText() const { return m_host.shownMessage(); }
    QStringList overlayMessages() const;
    QStringList plotIdentifiers();

    // Archiving.
    fakehost::FakeArchive archived();
    KTVPlotixPlugIn::Ptr decoded(const QVariantMap& values);
    KTVPlotixPlugIn::Ptr encodedAndDecoded();

private:
    fakehost::FakeHost m_host;  // first, so that it outlives the view
    KTVPlotixPlugIn::Ptr m_trend;
};
