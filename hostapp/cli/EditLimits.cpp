#include "hostapp/cli/EditLimits.h"

#include "base/ReportableError.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/Units.h"
#include "hostapp/exchange/ExactText.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace plotix {

namespace {

struct LimitText {
    QString property;
    KTVLimit::Side side;
    double value;
    QString unit;  ///< empty: the property's
};

/// The last comparison counts: a name may have such a sign in it.
std::optional<LimitText> limitFrom(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^(.+)([<>])\\s*([+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?)(?:\\s*([^\\s\\d].*))?$"));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    QString property = match.captured(1).trimmed();
    if (property.size() > 1 && property.startsWith(QLatin1Char('"')) && property.endsWith(QLatin1Char('"')))
        property = property.mid(1, property.size() - 2);
    return LimitText{property, match.captured(2) == QLatin1String(">") ? KTVLimit::Side::Above : KTVLimit::Side::Below,
                     match.captured(3).toDouble(), match.captured(4).trimmed()};
}

QString usualName(KTVLimit::Severity severity, KTVLimit::Side side)
{
    return QString::fromLatin1(severityWord(severity)) +
           (side == KTVLimit::Side::Above ? QStringLiteral(" high") : QStringLiteral(" low"));
}

QString unitOf(const LimitText& limit, const SiteProperty& property)
{
    if (limit.unit.isEmpty())
        return property.unit();
    const QString unit = Units::shared()->normalise(limit.unit).value_or(limit.unit);
    if (unit != property.unit() && !Units::shared()->areCompatible(unit, property.unit()))
        throw ReportableError(QStringLiteral("“%1” is in %2, which %3 does not convert to: give the limit in such a "
                                             "unit.")
                                  .arg(property.name(),
                                       property.unit().isEmpty() ? QStringLiteral("no unit") : property.unit(),
                                       limit.unit));
    return unit;
}

void put(std::vector<SiteLimit>& limits, SiteLimit limit)
{
    const auto same = std::find_if(limits.begin(), limits.end(), [&limit](const SiteLimit& each) {
        return each.name.compare(limit.name, Qt::CaseInsensitive) == 0;
    });
    if (same == limits.end()) {
        limits.push_back(limit);
        return;
    }
    limit.id = same->id;
    *same = limit;
}

EditOutcome removeLimit(const LimitWish& wish, const QString& site, const SiteProperty& property)
{
    return changeLimits(site, property.description().id, [&](std::vector<SiteLimit>& limits) {
        const std::size_t gone = std::erase_if(limits, [&](const SiteLimit& limit) {
            return limit.name.compare(wish.removed.trimmed(), Qt::CaseInsensitive) == 0;
        });
        QStringList known;
        for (const SiteLimit& limit : limits)
            known << QStringLiteral("“%1”").arg(limit.name);
        if (gone == 0)
            throw ReportableError(known.isEmpty()
                                      ? QStringLiteral("“%1” has no limits").arg(property.name())
                                      : QStringLiteral("“%1” has no limit “%2”; it has %3")
                                            .arg(property.name(), wish.removed, known.join(QStringLiteral(", "))));
    });
}

}  // namespace

const char* severityWord(KTVLimit::Severity severity)
{
    switch (severity) {
    case KTVLimit::Severity::Notice: return "notice";
    case KTVLimit::Severity::Warning: return "warning";
    case KTVLimit::Severity::Alarm: return "alarm";
    }
    return "";
}

QString limitText(const SiteLimit& limit)
{
    const QString value = QString::fromStdString(exactNumber(limit.value));
    return (limit.side == KTVLimit::Side::Above ? QStringLiteral("above ") : QStringLiteral("below ")) + value +
           (limit.unit.isEmpty() ? QString() : QLatin1Char(' ') + limit.unit);
}

void addLimitOptions(CLI::App* command, LimitWish& wish)
{
    addText(command, "--limit", wish.text,
            "Set a limit of a property, or change the one of that name; without a unit it is the property's")
        ->type_name("'PROPERTY > VALUE UNIT'");
    addText(command, "--limit-name", wish.name, "Of --limit: what it is called; such as “warning high” unless given")
        ->type_name("NAME");
    addChoice<KTVLimit::Severity>(command, "--severity", wish.severity,
                                  {{"notice", KTVLimit::Severity::Notice},
                                   {"warning", KTVLimit::Severity::Warning},
                                   {"alarm", KTVLimit::Severity::Alarm}},
                                  "Of --limit: how much it matters to be beyond it; warning unless given");
    addText(command, "--remove-limit", wish.removed, "Remove this limit of the property that --property says")
        ->type_name("NAME");
}

std::optional<QString> contradictionIn(const LimitWish& wish, const QString& property)
{
    if (wish.text.isEmpty() && (!wish.name.isEmpty() || wish.severity))
        return QStringLiteral("--limit-name and --severity belong to --limit");
    if (!wish.text.isEmpty() && !property.isEmpty())
        return QStringLiteral("--limit says the property itself, without --property");
    if (!wish.text.isEmpty() && !limitFrom(wish.text))
        return QStringLiteral("--limit needs a property, > or < and a value, such as 'Supply temperature > 60 °C'");
    if (!wish.removed.isEmpty() && property.isEmpty())
        return QStringLiteral("--remove-limit needs --property, whose limit it is");
    return std::nullopt;
}

EditOutcome editLimits(const LimitWish& wish, const QString& site, const SiteAgent& agent, const QString& property)
{
    if (!wish.removed.isEmpty())
        return removeLimit(wish, site, *propertiesOf(agent, {property}).front());
    const LimitText text = limitFrom(wish.text).value_or(LimitText{});
    const auto found = propertiesOf(agent, {text.property}).front();
    SiteLimit limit;
    limit.value = text.value;
    limit.unit = unitOf(text, *found);
    limit.side = text.side;
    limit.severity = wish.severity.value_or(KTVLimit::Severity::Warning);
    limit.name = wish.name.trimmed().isEmpty() ? usualName(limit.severity, limit.side) : wish.name.trimmed();
    return changeLimits(site, found->description().id,
                        [&limit](std::vector<SiteLimit>& limits) { put(limits, limit); });
}

}  // namespace plotix
