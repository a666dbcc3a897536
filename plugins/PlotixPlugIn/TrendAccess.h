#pragma once

#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include <map>

class KTVPlotixPlugIn;
namespace plotix {
class TrendReader;
}

/// A trend view as the parts of its reading see it. The trend view *owns* it; it *borrows* the trend view. Main thread
/// only.
class TrendAccess : public plotix::ReadTrend {
public:
    explicit TrendAccess(KTVPlotixPlugIn& plugIn) : m_plugIn(plugIn) {}

    CPTXYGraphPtr graph() const override;
    KTVRecordDictionaryPtr records() const override;
    KTVAnnotations* annotations() const override;
    QStringList propertyNames() const override;
    std::vector<plotix::ReadLine> lines() const override;
    KTVRecordDictionaryPtr recordsOf(const QString& key) const override;
    const std::vector<KTVAmendment>& amendmentsOf(const QString& key) const override;
    void setAddedLines(std::vector<plotix::AddedLine> lines) override;
    void readBeside(const QStringList& keys, const plotix::TimeSpan& span,
                    const std::shared_ptr<plotix::RecordsRead>& read,
                    std::function<void(const KTVRecordDictionaryPtr& records)> done) override;
    void setBusy(bool isBusy) override;
    CPTClock clock() const override { return m_clock; }
    void setClock(const CPTClock& clock) override;
    KTVSiteClock* siteClock() const override;
    CPTGraphHostingView* graphView() const override;
    QWidget* rootView() const override;
    std::optional<plotix::TimeSpan> dates() const override;
    std::optional<plotix::TimeSpan> readSpan() const override;
    std::optional<plotix::TimeSpan> recordedSpan() const override;
    void showTimes(const plotix::TimeSpan& times) override;
    void showValues(CPTXYPlotSpace& space, const CPTPlotRange& values) override;
    bool movesByItself() const override;
    bool heedsKeys() const override;
    void readDates(const plotix::TimeSpan& dates) override;
    void fit() override;
    plotix::ReadingPart* part(const QString& key) const override;
    std::optional<plotix::TimeSpan> markedSpan() const override { return m_markedSpan; }
    void setMarkedSpan(const std::optional<plotix::TimeSpan>& span) override;
    void tellRestyled() override;

private:
    plotix::ReadLine ownLine(const CPTScatterPlot& plot) const;

    KTVPlotixPlugIn& m_plugIn;
    bool m_isAsked = false;  // a part asks for a range right now
    std::vector<plotix::AddedLine> m_added;
    std::optional<plotix::TimeSpan> m_markedSpan;
    mutable std::weak_ptr<const KTVRecordDictionary> m_amended;  // the records that the amendments below are about
    mutable std::map<QString, std::vector<KTVAmendment>> m_amendments;
    CPTClock m_clock;
};
