#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <map>

/// With what lines were chosen to be compared, by the texts of the comparisons. Values and free functions; any thread.
namespace plotix {

struct ComparisonChoices {
    QStringList all;                       ///< of every line
    std::map<QString, QStringList> lines;  ///< of single ones, by the key of the property; never empty lists

    bool isEmpty() const { return all.isEmpty() && lines.empty(); }
    QStringList of(const QString& key) const;  ///< of one line, each once
    QStringList together() const;              ///< of any, each once
    /// The properties that a comparison is about; empty: all.
    QStringList keysOf(const QString& comparison) const;

    /// `others`: the lines that are not meant, and keep a comparison that all have.
    void add(const QString& comparison, const QStringList& keys);
    void remove(const QString& comparison, const QStringList& keys, const QStringList& others);

    friend bool operator==(const ComparisonChoices&, const ComparisonChoices&) = default;
};

/// "with" and "lines"; empty without choices. Stored: never change.
QVariantMap mapFromChoices(const ComparisonChoices& choices);
/// Comparisons are written as they are stored; what is none is passed over.
ComparisonChoices comparisonChoicesFrom(const QVariantMap& map);

}  // namespace plotix
