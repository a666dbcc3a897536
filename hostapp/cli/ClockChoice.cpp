#include "hostapp/cli/ClockChoice.h"

#include "base/ReportableError.h"
#include "base/ZoneNames.h"
#include "hostapp/cli/Options.h"
#include "hostapp/document/SiteDocument.h"

namespace plotix {

namespace {

const QString kSite = QStringLiteral("site");

}  // namespace

void addZoneChoice(CLI::App* command, ClockChoice& choice)
{
    addText(command, "--zone", choice.zone,
            "Say times by these clocks: UTC, a zone like Europe/Berlin, or the site's; times given without a zone are "
            "meant so, too")
        ->type_name("NAME|UTC|site")
        ->check(checkZone);
}

void addClockChoice(CLI::App* command, ClockChoice& choice)
{
    addZoneChoice(command, choice);
    addText(command, "--hours", choice.hours, "Write hours from 0 to 23, or as your language does")
        ->type_name("24|locale")
        ->check(CLI::IsMember({"24", "locale"}));
}

QTimeZone zoneOf(const ClockChoice& choice, const SiteDocument& document)
{
    if (choice.zone != kSite)
        return zoneNamed(choice.zone).value_or(QTimeZone());
    if (!document.zone().isValid())
        throw ReportableError(
            QStringLiteral("%1 does not say its time zone; give --zone a name, or set the site's in the "
                           "window, under Name and Location")
                .arg(document.path()));
    return document.zone();
}

QVariantMap clockFrom(const ClockChoice& choice)
{
    QVariantMap clock;
    if (choice.zone == kSite)
        clock.insert(QStringLiteral("zone"), kSite);
    else if (const auto zone = zoneNamed(choice.zone))
        clock.insert(QStringLiteral("zone"), QString::fromUtf8(zone->id()));
    if (!choice.hours.isEmpty())
        clock.insert(QStringLiteral("form"),
                     choice.hours == QLatin1String("24") ? QStringLiteral("24-hour") : QStringLiteral("locale"));
    if (!clock.isEmpty())
        clock.insert(QStringLiteral("changes"), true);
    return clock;
}

std::string checkZone(const std::string& text)
{
    const QString name = QString::fromStdString(text);
    if (name == kSite || zoneNamed(name))
        return {};
    return "must be a time zone like Europe/Berlin, not " + text + "; did you mean " +
           nearestZoneName(name).toStdString() + "?";
}

}  // namespace plotix
