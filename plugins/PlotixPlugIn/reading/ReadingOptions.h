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

    bool hasReadableLabels() const { return readableLabels.value_or(false); }

    friend bool operator==(const ReadingOptions&, const ReadingOptions&) = default;
};

/// The options that were chosen, by the names they are archived and reached by. Stored: never change.
QVariantMap dictionaryFromReadingOptions(const ReadingOptions& options);

/// `options` with those of the dictionary chosen; unknown names, and values of another kind, change nothing.
ReadingOptions mergedReadingOptions(ReadingOptions options, const QVariantMap& dictionary);

}  // namespace plotix
