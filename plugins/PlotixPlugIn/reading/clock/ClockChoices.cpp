#include "plugins/PlotixPlugIn/reading/clock/ClockChoices.h"

#include "base/ZoneNames.h"

namespace plotix {

namespace {

// Stored: never change.
const QString kZone = QStringLiteral("zone");
const QString kForm = QStringLiteral("form");
const QString kChanges = QStringLiteral("changes");

struct FormRow {
    CPTHourForm form;
    const char* name;  // stored: never change
};
constexpr FormRow kForms[] = {{CPTHourForm::TwentyFour, "24-hour"}, {CPTHourForm::Locale, "locale"}};

}  // namespace

QVariantMap mapFromClockChoices(const ClockChoices& choices)
{
    QVariantMap map;
    if (!choices.zone.isEmpty())
        map.insert(kZone, choices.zone);
    for (const FormRow& row : kForms)
        if (row.form == choices.hours)
            map.insert(kForm, QString::fromLatin1(row.name));
    if (choices.marksChanges)
        map.insert(kChanges, *choices.marksChanges);
    return map;
}

ClockChoices clockChoicesFromMap(const QVariantMap& map)
{
    ClockChoices choices;
    const QString zone = map.value(kZone).toString();
    if (zone == QLatin1String(ClockChoices::kSite))
        choices.zone = zone;
    else if (const auto known = zoneNamed(zone))
        choices.zone = QString::fromUtf8(known->id());
    for (const FormRow& row : kForms)
        if (map.value(kForm).toString() == QLatin1String(row.name))
            choices.hours = row.form;
    if (const QVariant changes = map.value(kChanges); changes.metaType() == QMetaType::fromType<bool>())
        choices.marksChanges = changes.toBool();
    return choices;
}

}  // namespace plotix
