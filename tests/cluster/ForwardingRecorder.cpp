// Records into a site on a server that comes and goes, to be killed, and tells afterwards whether everything is there.
//
//     forwarding_recorder ADDRESS record    a record some twenty milliseconds apart, until it is killed; prints the
//     time
//                                           of each that was reported as stored or as kept, once it was
//     forwarding_recorder ADDRESS check     reads the times from the standard input, and looks that the site has all of
//                                           them, every value as it was recorded, and nothing as late or corrected;
//                                           prints how many there are
//
// Values follow from times, so that each can be told to be right by itself.

#include "base/Date.h"
#include "base/ReportableError.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/live/Recording.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <set>
#include <string_view>

namespace {

using namespace plotix;

constexpr int kApart = 20;  // milliseconds
constexpr int kProperties = 5;

std::optional<double> valueAt(double time, int property)
{
    const double value = std::fmod(time * 1000, 1009) * (property + 1);
    return std::fmod(value, 7) < 1 ? std::nullopt : std::optional(value);
}

class CountedSource final : public ReadingSource {
public:
    QString agentName() const override { return QStringLiteral("Counted"); }
    std::vector<SourceProperty> start(double) override
    {
        std::vector<SourceProperty> properties;
        for (int i = 0; i < kProperties; ++i)
            properties.push_back({QStringLiteral("Value %1").arg(i), QString()});
        return properties;
    }
    std::vector<Reading> read(double now) override
    {
        Reading reading{now, {}};
        for (int i = 0; i < kProperties; ++i)
            reading.values.push_back(valueAt(now, i));
        return {reading};
    }
};

int record(const QString& address)
{
    Recording recording(deskFileToRecordInto(address), std::make_unique<CountedSource>(), kApart / 1000.0);
    for (;;) {
        const double now = std::floor(currentDate().seconds * 1000) / 1000;
        const RecordingStatus status = recording.record(now);
        const bool isSafe = status.waiting == 0 && status.state != RecordingStatus::State::ClockSetBack;
        if (isSafe)
            std::printf("%.17g\n", now);
        std::fflush(stdout);
        QThread::msleep(kApart);
    }
}

int fail(double time, const char* what)
{
    std::fprintf(stderr, "the record at %.17g %s\n", time, what);
    return 1;
}

int check(const QString& address)
{
    const auto document = SiteDocument::open(deskFileOf(address));
    const auto agent = document->agentNamed(QStringLiteral("Counted"));
    if (!agent)
        return fail(0, "has no agent");
    std::vector<RowId> properties;
    for (const auto& property : agent->siteProperties())
        properties.push_back(property->description().id);
    const RecordBlock block = *document->records()->read(agent->id(), properties, {}, {});
    std::set<double> there;
    for (std::size_t i = 0; i < block.times.size(); ++i) {
        const double time = block.times[i];
        if (!there.insert(time).second)
            return fail(time, "is there twice");
        for (int property = 0; property < kProperties; ++property) {
            const RecordBlock::Column& column = block.columns[static_cast<std::size_t>(property)];
            const std::optional<double> wanted = valueAt(time, property);
            if (column.validity.isValid(i) != wanted.has_value() || (wanted && column.values[i] != *wanted))
                return fail(time, "has another value");
        }
    }
    double time = 0;
    while (std::cin >> time)
        if (!there.contains(time))
            return fail(time, "was reported and is not there");
    if (!document->records()->amendments(agent->id(), properties).empty())
        return fail(document->records()->amendments(agent->id(), properties).front().from, "is late or corrected");
    std::printf("%zu\n", there.size());
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    if (count < 3)
        return 2;
    try {
        const QString address = QString::fromLocal8Bit(arguments[1]);
        return std::string_view(arguments[2]) == "check" ? check(address) : record(address);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
