#include "base/ReportableError.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/cli/StopRequest.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/live/sources/ReadingSources.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>

#include <algorithm>
#include <chrono>
#include <limits>
#include <ostream>

/// Recording: this computer's own measurements, until the user, the system or the time asked for ends it.
namespace plotix {

namespace {

constexpr double kFirstTrendSpan = 3600;  // seconds

/// What belongs together on one axis: shares of the whole, and the load beside them.
const QStringList& firstTrendProperties()
{
    static const QStringList names = {QStringLiteral("Processor"), QStringLiteral("Memory"),
                                      QStringLiteral("Load 1 Minute")};
    return names;
}

bool hasRecordedBefore(const QString& site, const QString& agentName)
{
    return QFileInfo::exists(site) && openSite(site)->agentNamed(agentName);
}

void addFirstTrend(const QString& site, const QString& agentName, CommandServices& services)
{
    const std::shared_ptr<SiteDocument> document = openSite(site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, agentName);
    TrendRequest trend{document, agent, {}, {}, {}, agent->name()};
    for (const auto& property : propertiesOf(*agent, firstTrendProperties()))
        trend.properties.push_back(property);
    const Date now = currentDate();
    trend.from = now;
    trend.to = Date{now.seconds + kFirstTrendSpan};
    services.storeTrend(trend);
}

void runUntilStopped(const RecordCommand& command, LiveRecorder& recorder, CommandStreams streams)
{
    const StopRequest stop;
    QEventLoop loop;
    QObject::connect(&stop, &StopRequest::requested, &loop, &QEventLoop::quit);
    QObject::connect(&recorder, &LiveRecorder::statusChanged, &loop, [&] {
        const QString message = recorder.status().message;
        const QString line = message.isEmpty() ? QStringLiteral("All is well again.") : message;
        streams.error << "plotix: " << line.simplified().toStdString() << std::endl;
    });
    if (command.printTimes)
        QObject::connect(&recorder, &LiveRecorder::recorded, &loop, [&](double time) {
            streams.output << "stored " << exactNumber(time) << std::endl;  // at once: who reads it relies on it
        });
    if (command.duration) {
        constexpr double kLongestTimer = std::numeric_limits<int>::max();
        const double milliseconds = std::min(*command.duration * 1000, kLongestTimer);
        QTimer::singleShot(std::chrono::milliseconds(static_cast<qint64>(milliseconds)), &loop, &QEventLoop::quit);
    }
    recorder.start();
    loop.exec();
    recorder.stop();
}

}  // namespace

int runCommand(const RecordCommand& command, CommandContext context)
{
    std::unique_ptr<ReadingSource> source = makeReadingSource(QStringLiteral("computer"));
    const bool first = !hasRecordedBefore(command.site, source->agentName());
    LiveRecorder recorder(command.site, std::move(source), command.interval);
    if (first)
        addFirstTrend(command.site, recorder.agentName(), context.services);
    const std::string path = QFileInfo(command.site).absoluteFilePath().toStdString();
    context.streams.output << "Recording " << recorder.propertyNames().size() << " properties of "
                           << recorder.agentName().toStdString() << " every " << exactNumber(command.interval)
                           << " s into " << path << "; Ctrl-C ends it." << std::endl;
    runUntilStopped(command, recorder, context.streams);
    const RecordingStatus status = recorder.status();
    context.streams.output << "Recorded " << status.stored << (status.stored == 1 ? " record" : " records") << " into "
                           << path << '.' << std::endl;
    if (const std::size_t missing = status.waiting + status.lost)
        throw ReportableError(QStringLiteral("%1 records could not be stored: %2").arg(missing).arg(status.message));
    return kCommandDone;
}

}  // namespace plotix
