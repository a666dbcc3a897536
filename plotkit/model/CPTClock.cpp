#include "plotkit/model/CPTClock.h"

#include <QtCore/QDateTime>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

namespace plotkit {

namespace {

constexpr double kCalendarLimit = 8.0e12;  // seconds; well inside what offsets are known for
constexpr qint64 kDay = 86'400;            // seconds; clocks are changed by a day at most
constexpr int kMinute = 60, kHour = 3'600;

QDateTime utcMoment(double seconds)
{
    const double known = std::abs(seconds) <= kCalendarLimit ? seconds : 0.0;
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(known)), Qt::UTC);
}

/// What the system's clocks were found to show: each question goes to its files, and a graph that is panned asks for
/// the same moments frame by frame. Where the system's zone is another one, that is seen within a second, and at once
/// where the environment names it. Each thread has its own.
class SystemOffsets {
public:
    int at(const QDateTime& utc)
    {
        forgetWhatIsOld();
        const auto [known, isNew] = m_known.try_emplace(utc.toSecsSinceEpoch());
        if (isNew)
            known->second = utc.toLocalTime().offsetFromUtc();
        return known->second;
    }

private:
    using Clock = std::chrono::steady_clock;

    void forgetWhatIsOld()
    {
        constexpr std::size_t kMost = 10'000;
        constexpr auto kAge = std::chrono::seconds(1);
        const Clock::time_point now = Clock::now();
        const QByteArray named = qgetenv("TZ");
        if (now - m_since < kAge && named == m_named && m_known.size() < kMost)
            return;
        m_known.clear();
        m_since = now;
        m_named = named;
    }

    std::unordered_map<qint64, int> m_known;  // seconds since 1970 to seconds east
    Clock::time_point m_since;
    QByteArray m_named;
};

}  // namespace

int offsetAt(const QTimeZone& zone, double moment)
{
    const QDateTime utc = utcMoment(moment);
    if (zone.isValid())
        return zone.offsetFromUtc(utc);
    thread_local SystemOffsets offsets;
    return offsets.at(utc);
}

// The toolkit leaves open which of two moments it answers, and where clocks jump by a day it answers neither.
double momentOfLocal(const QTimeZone& zone, double local)
{
    const double before = offsetAt(zone, local - kDay);
    const double after = offsetAt(zone, local + kDay);
    const double early = local - before, late = local - after;
    if (before == after)
        return offsetAt(zone, early) == before ? early : local - offsetAt(zone, early);
    if (offsetAt(zone, early) == before)
        return early;
    if (offsetAt(zone, late) == after)
        return late;
    // Left out: clocks were put forward past it.
    double low = std::min(early, late), high = std::max(early, late);
    while (high - low > 1) {
        const double middle = std::floor((low + high) / 2);
        (offsetAt(zone, middle) == after ? high : low) = middle;
    }
    return std::floor(high);
}

bool isShownTwice(const QTimeZone& zone, double moment)
{
    const int present = offsetAt(zone, moment);
    const int before = offsetAt(zone, moment - kDay), after = offsetAt(zone, moment + kDay);
    const double earlier = moment + present - before, later = moment + present - after;
    return (before > present && offsetAt(zone, earlier) == before) ||
           (after < present && offsetAt(zone, later) == after);
}

QString offsetText(int seconds)
{
    const QString utc = QStringLiteral("UTC");
    if (seconds == 0)
        return utc;
    const int length = std::abs(seconds);
    QString text = utc + (seconds < 0 ? QChar(0x2212) : QLatin1Char('+')) + QString::number(length / kHour);
    if (const int minutes = length % kHour / kMinute; minutes != 0)
        text += QStringLiteral(":%1").arg(minutes, 2, 10, QLatin1Char('0'));
    return text;
}

}  // namespace plotkit
