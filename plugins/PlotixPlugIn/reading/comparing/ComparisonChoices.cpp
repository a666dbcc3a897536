#include "plugins/PlotixPlugIn/reading/comparing/ComparisonChoices.h"

#include "plugins/PlotixPlugIn/reading/comparing/Comparison.h"

namespace plotix {

namespace {

const QString kWith = QStringLiteral("with");    // stored: never change
const QString kLines = QStringLiteral("lines");  // stored: never change

QStringList comparisonsFrom(const QVariant& value)
{
    QStringList comparisons;
    for (const QString& text : value.toStringList())
        if (const auto comparison = comparisonFrom(text))
            comparisons << textOf(*comparison);
    comparisons.removeDuplicates();
    return comparisons;
}

}  // namespace

QStringList ComparisonChoices::of(const QString& key) const
{
    QStringList own = all;
    if (const auto found = lines.find(key); found != lines.end())
        own << found->second;
    own.removeDuplicates();
    return own;
}

QStringList ComparisonChoices::together() const
{
    QStringList any = all;
    for (const auto& [key, own] : lines)
        any << own;
    any.removeDuplicates();
    return any;
}

QStringList ComparisonChoices::keysOf(const QString& comparison) const
{
    QStringList keys;
    if (all.contains(comparison))
        return keys;
    for (const auto& [key, own] : lines)
        if (own.contains(comparison))
            keys << key;
    return keys;
}

void ComparisonChoices::add(const QString& comparison, const QStringList& keys)
{
    for (const QString& key : keys)
        if (!of(key).contains(comparison))
            lines[key] << comparison;
}

void ComparisonChoices::remove(const QString& comparison, const QStringList& keys, const QStringList& others)
{
    if (all.removeAll(comparison) > 0)
        add(comparison, others);
    for (const QString& key : keys) {
        const auto found = lines.find(key);
        if (found == lines.end())
            continue;
        found->second.removeAll(comparison);
        if (found->second.isEmpty())
            lines.erase(found);
    }
}

QVariantMap mapFromChoices(const ComparisonChoices& choices)
{
    QVariantMap map;
    if (!choices.all.isEmpty())
        map.insert(kWith, choices.all);
    QVariantMap lines;
    for (const auto& [key, own] : choices.lines)
        lines.insert(key, own);
    if (!lines.isEmpty())
        map.insert(kLines, lines);
    return map;
}

ComparisonChoices comparisonChoicesFrom(const QVariantMap& map)
{
    ComparisonChoices choices;
    choices.all = comparisonsFrom(map.value(kWith));
    const QVariantMap lines = map.value(kLines).toMap();
    for (auto line = lines.begin(); line != lines.end(); ++line)
        if (const QStringList own = comparisonsFrom(line.value()); !own.isEmpty())
            choices.lines[line.key()] = own;
    return choices;
}

}  // namespace plotix
