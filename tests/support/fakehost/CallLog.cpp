#include "tests/support/fakehost/CallLog.h"

#include "base/MainQueue.h"

#include <algorithm>

namespace fakehost {

void CallLog::note(const QString& line)
{
    pass();
    if (plotix::MainQueue::isMainThread())
        m_lines.append(line);
}

void CallLog::pass()
{
    if (!plotix::MainQueue::isMainThread())
        ++m_callsOnOtherThreads;
}

int CallLog::count(const QString& beginning) const
{
    return static_cast<int>(
        std::count_if(m_lines.begin(), m_lines.end(), [&](const QString& line) { return line.startsWith(beginning); }));
}

bool CallLog::isBefore(const QString& earlier, const QString& later) const
{
    const int first = firstIndex(earlier), second = firstIndex(later);
    return first >= 0 && second >= 0 && first < second;
}

int CallLog::firstIndex(const QString& beginning) const
{
    for (int index = 0; index < m_lines.size(); ++index)
        if (m_lines[index].startsWith(beginning))
            return index;
    return -1;
}

}  // namespace fakehost
