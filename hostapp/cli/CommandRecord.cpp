#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/live/sources/ReadingSources.h"
#include "hostapp/site/NewTrend.h"

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

struct RecordCommand {
    QString site;
    std::optional<double> interval;  ///< seconds; absent: a second
    std::optional<double> duration;  ///< seconds; absent: until stopped
    bool printTimes = false;
};

constexpr double kUsualInterval = 1;  // seconds

bool hasRecordedBefore(const QString& site, const QString& agentName)
{
    return QFileInfo::exists(site) && openSite(site)->agentNamed(agentName);
}

void addFirstTrend(const QString& site, const QString& agentName, CommandServices& services)
{
    const std::shared_ptr<SiteDocument> document = openSite(site);
    const std::shared_ptr<SiteAgent> agent = document->agentNamed(agentName);
    if (!agent)  // its server was not told of it yet
        return;
    services.storeTrend(requestOf(document, agent, planFirstTrend(TrendOccasion::Recorded, *agent)));
}

void runUntilStopped(const RecordCommand& command, LiveRecorder& recorder, CommandStreams streams)
{
    const StopRequest stop;
    QEventLoop loop;
    QObject::connect(&stop, &StopRequest::requested, &loop, &QEventLoop::quit);
    QObject::connect(&recorder, &LiveRecorder::statusChanged, &loop, [&] {
        const QString message = recorder.status().message;
        if (recorder.status().state == RecordingStatus::State::SiteReplaced) {
            loop.quit();  // the command fails with that message
            return;
        }
        const QString line = message.isEmpty() ? QStringLiteral("All is well again.") : message;
        streams.error << "plotix: " << line.simplified().toStdString() << std::endl;
    });
    if (command.printTimes)
        QObject::connect(&recorder, &LiveRecorder::waitingChanged, &loop, [&] {
            const RecordingStatus status = recorder.status();
            if (status.lastKept)
                streams.output << "kept " << exactNumber(*status.lastKept) << std::endl;
        });
    if (command.printTimes)
        QObject::connect(&recorder, &LiveRecorder::recorded, &loop, [&](double time) {
            streams.output << "stored " << exactNumber(time) << std::endl;  // flushed at once: a reader relies on it
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

int runCommand(RecordCommand command, CommandContext context)
{
    if (isServerAddress(command.site))
        command.site = deskFileToRecordInto(command.site);
    requireSiteName(command.site);
    std::unique_ptr<ReadingSource> source = makeReadingSource(QStringLiteral("computer"));
    const bool first = !hasRecordedBefore(command.site, source->agentName());
    const double interval = command.interval.value_or(kUsualInterval);
    LiveRecorder recorder(command.site, std::move(source), interval);
    if (first)
        addFirstTrend(command.site, recorder.agentName(), context.services);
    const std::string path = QFileInfo(command.site).absoluteFilePath().toStdString();
    context.streams.output << "Recording " << recorder.propertyNames().size() << " properties of "
                           << recorder.agentName().toStdString() << " every " << exactNumber(interval) << " s into "
                           << path << "; Ctrl-C ends it." << std::endl;
    runUntilStopped(command, recorder, context.streams);
    const RecordingStatus status = recorder.status();
    if (status.state == RecordingStatus::State::SiteReplaced)
        throw ReportableError(status.message);
    context.streams.output << "Recorded " << status.stored << (status.stored == 1 ? " record" : " records") << " into "
                           << path << '.' << std::endl;
    if (status.others > 0)
        context.streams.error
            << "plotix: " << status.others
            << " records that were kept on this disk were left out: the site has others at their times." << std::endl;
    if (status.onDisk > 0 && status.waiting + status.lost == 0)
        throw ReportableError(
            QStringLiteral(
                "%1 records are not on the server yet, and safe in %2: the next recording into this site, or "
                "“plotix store forward”, hands them over. %3")
                .arg(status.onDisk)
                .arg(status.file, status.message));
    if (status.state == RecordingStatus::State::ClockSetBack)
        throw ReportableError(status.message);
    if (const std::size_t missing = status.waiting + status.lost)
        throw ReportableError(QStringLiteral("%1 records could not be stored: %2").arg(missing).arg(status.message));
    return kCommandDone;
}

}  // namespace

Command addRecord(CLI::App& program)
{
    const auto command = std::make_shared<RecordCommand>();
    CLI::App* record = program.add_subcommand(
        "record", "Record this computer's own measurements into a site; makes the site when it is not there");
    addSite(record, command->site);
    addDuration(record, "--interval", command->interval, "Seconds from one record to the next; 1 unless given")
        ->type_name("S")
        ->check(checkInterval);
    addDuration(record, "--for", command->duration, "End after this time; without it Ctrl-C ends");
    record->add_flag("--print-times", command->printTimes,
                     "Print a record's time as soon as it is stored, in seconds since 1970-01-01 UTC");
    record->footer(
        "Examples:\n  plotix record computer.plotix\n  plotix record computer.plotix --interval 10 --for 8h");
    return {record, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
