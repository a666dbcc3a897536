#include "plugins/PlotixPlugIn/reading/statistics/QualityFigures.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

namespace plotix {

namespace {

bool isOn(const QVariantMap& choices, const char* name)
{
    return choices.value(QLatin1String(name)).toBool();
}

}  // namespace

QVariantMap QualityFigures::choices() const
{
    const ReadingPart* missing = m_trend.part(QStringLiteral("missing"));
    return missing ? missing->chosen() : QVariantMap();
}

bool QualityFigures::areChosen() const
{
    const QVariantMap chosen = choices();
    return isOn(chosen, "stretches") || isOn(chosen, "amended") || isOn(chosen, "strip");
}

QualityCounts QualityFigures::countsOf(const QString& key, const TimeSpan& within) const
{
    const KTVRecordDictionaryPtr records = m_trend.recordsOf(key);
    const auto column = records ? records->columnForKey(key) : nullptr;
    if (!column || !records->time())
        return {};
    const double lateBy = choices().value(QStringLiteral("lateBy")).toDouble();
    const auto found = m_counted.find(key);
    if (found != m_counted.end() && found->second.records == records && found->second.within == within &&
        found->second.lateBy == lateBy)
        return found->second.counts;
    // What is drawn to be compared is at other times than it was recorded at.
    const bool isOwn = records == m_trend.records();
    const auto amendments = isOwn ? lateByMoreThan(lateBy, m_trend.amendmentsOf(key)) : std::vector<KTVAmendment>();
    const QualityCounts counts = countQuality(*column, *records->time(), within, amendments);
    m_counted.insert_or_assign(key, Counted{records, within, lateBy, counts});
    return counts;
}

QString QualityFigures::text(const QString& key, const TimeSpan& within, const FigureTexts& texts) const
{
    const QVariantMap chosen = choices();
    const QualityCounts counts = countsOf(key, within);
    QStringList parts;
    const auto add = [&](std::int64_t count, const char* words) {
        if (count > 0)
            parts << localizedText(words).arg(texts.count(count));
    };
    if (isOn(chosen, "stretches") || isOn(chosen, "strip"))
        add(counts.notValid, QT_TRANSLATE_NOOP("Plotix", "%1 not valid"));
    if (isOn(chosen, "amended") || isOn(chosen, "strip")) {
        add(counts.late, QT_TRANSLATE_NOOP("Plotix", "%1 late"));
        add(counts.corrected, QT_TRANSLATE_NOOP("Plotix", "%1 corrected"));
    }
    return parts.isEmpty() ? FigureTexts::none() : parts.join(QStringLiteral(", "));
}

}  // namespace plotix
