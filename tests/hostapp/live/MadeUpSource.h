#pragma once

#include "base/ReportableError.h"
#include "hostapp/live/ReadingSource.h"

#include <utility>

/// A source of two properties: how often it was asked, and a temperature that can fail. It measures when it is asked,
/// unless a test sets its readings.
class MadeUpSource : public plotix::ReadingSource {
public:
    QString agentName() const override { return QStringLiteral("Made Up"); }

    std::vector<plotix::SourceProperty> start(double) override
    {
        isStarted = true;
        return {{QStringLiteral("Count"), QString()}, {QStringLiteral("Temperature"), QStringLiteral("°C")}};
    }

    std::vector<plotix::Reading> read(double now) override
    {
        if (!problem.isEmpty())
            throw plotix::ReportableError(problem);
        ++looks;
        if (heard)
            return std::exchange(*heard, {});
        return {reading(now)};
    }

    void stop() override { isStarted = false; }

    plotix::Reading reading(double time) const
    {
        return {time, {looks, sensorIsThere ? std::optional(40.0) : std::nullopt}};
    }

    bool isStarted = false;
    int looks = 0;
    bool sensorIsThere = true;
    QString problem;                                    ///< why nothing can be read
    std::optional<std::vector<plotix::Reading>> heard;  ///< since it was asked last, for a source that listens
};
