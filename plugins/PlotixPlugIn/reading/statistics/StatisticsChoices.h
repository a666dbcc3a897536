#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <map>
#include <optional>

/// What was chosen about a trend's table of statistics: which columns it has beyond its own, over what, and the limits
/// that times are counted above and below. Values; any thread.
namespace plotix {

enum class StatisticsOver {
    Fetched,  ///< everything that was read
    Visible,  ///< what the graph's times show
    Marked    ///< from mark A to mark B
};

/// In the unit that was shown when it was chosen.
struct ChosenLimit {
    double value = 0;
    QString unit;
    friend bool operator==(const ChosenLimit&, const ChosenLimit&) = default;
};

struct StatisticsChoices {
    StatisticsOver over = StatisticsOver::Fetched;
    QStringList columns;                                   ///< identifiers, in the order of figureColumns()
    bool isOffered = false;                                ///< whether the table has its heading and its header's menu
    std::map<QString, ChosenLimit> highLimits, lowLimits;  ///< by key of the property

    friend bool operator==(const StatisticsChoices&, const StatisticsChoices&) = default;
};

/// What differs from a table to which nothing was added: "over" ("visible", "marked"), "columns", "offered", "limits".
/// Stored: never change.
QVariantMap mapFromChoices(const StatisticsChoices& choices);

/// Unknown columns, and values of another kind, are passed over.
StatisticsChoices choicesFromMap(const QVariantMap& map);

}  // namespace plotix
