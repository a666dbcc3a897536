#pragma once

#include <QtCore/QVariant>

#include <optional>

/// What makes a trend easier to read than the contract asks for, one option a field. Values; any thread.
///
/// An option that nobody has chosen is absent and counts as off: such a trend looks and is archived exactly as it
/// always did. The host chooses, see KTVPlotixPlugIn::setReading.
namespace plotix {

struct ReadingOptions {
    /// Digits and dates by what it takes to tell ticks apart, in the user's locale; room for the labels; titles beside
    /// the plots; the table's numbers likewise.
    std::optional<bool> readableLabels = {};

    /// A range that was refused, one that ends before it begins, is not archived: the range accepted last is.
    std::optional<bool> forgetsRefusedRange = {};

    /// A notice names the lines that the longest or shortest permitted range of values does not show.
    std::optional<bool> tellsOutside = {};
    /// The range of values may be of any length.
    std::optional<bool> unlimitedValues = {};
    /// A line is broken where nothing was recorded.
    std::optional<bool> brokenLines = {};
    /// The longest distance between points that are joined all the same, seconds; 0, or absent: far above the usual
    /// one, see LineGaps.h. Only with `brokenLines`.
    std::optional<double> longestJoin = {};
    /// Lines, and the table's swatches, in the colours that their properties have now, not those of the moment a row
    /// was made or the records were fetched: the two always agree.
    std::optional<bool> propertyColors = {};
    /// Menus on graph and table, and keys in the table, that choose which lines are shown.
    std::optional<bool> lineCommands = {};

    bool hasBrokenLines() const { return brokenLines.value_or(false); }
    bool hasReadableLabels() const { return readableLabels.value_or(false); }
    bool hasPropertyColors() const { return propertyColors.value_or(false); }
    bool hasLineCommands() const { return lineCommands.value_or(false); }
    bool doesTellOutside() const { return tellsOutside.value_or(false); }
    bool hasUnlimitedValues() const { return unlimitedValues.value_or(false); }

    friend bool operator==(const ReadingOptions&, const ReadingOptions&) = default;
};

/// The options that were chosen, by the names they are archived and reached by. Stored: never change.
QVariantMap dictionaryFromReadingOptions(const ReadingOptions& options);

/// `options` with those of the dictionary chosen; unknown names, and values of another kind, change nothing.
ReadingOptions mergedReadingOptions(ReadingOptions options, const QVariantMap& dictionary);

}  // namespace plotix
