#pragma once

#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"
#include "tests/support/fakehost/CallLog.h"

#include <map>

/// Quick ranges around a clock the test sets, in UTC with weeks from Monday; or whatever a test puts in their place.
///
/// All Time is refused until it is set, as a host without records refuses it. Main thread only.
namespace fakehost {

class FakeDateCreator : public KTVNaturalLanguageDateCreator {
public:
    explicit FakeDateCreator(CallLog* log) : m_log(log) {}

    void dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const override;

    plotix::Date now() const { return m_now; }
    void setNow(plotix::Date now) { m_now = now; }
    void advance(double seconds) { m_now.seconds += seconds; }

    /// From now on that range is these dates; an absent one leaves its out-argument alone.
    void setRange(KTVQuickRange range, OptionalDate start, OptionalDate end) { m_set[range] = {start, end}; }
    void refuse(KTVQuickRange range) { m_set[range] = {}; }

private:
    CallLog* m_log;                     // borrowed
    plotix::Date m_now{1'370'088'300};  // 2013-06-01 12:05:00 UTC, a Saturday
    std::map<KTVQuickRange, std::pair<OptionalDate, OptionalDate>> m_set;
};

}  // namespace fakehost
