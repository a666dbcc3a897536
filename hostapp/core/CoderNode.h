#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>

#include <cstdint>
#include <map>
#include <vector>

/// A keyed archive in memory, and its bytes. Values; any thread.
namespace plotix {

/// What is needed to find a property again, or to list it when it no longer exists.
struct ArchivedProperty {
    QString key, name, unit;
    QColor color;
    std::uint32_t type = 0;
    bool visible = true;
};

struct CoderNode {
    enum class Kind { Value, Object, Properties };

    /// A plain value; colours become text. A value of an unsupported type becomes an absent one.
    static CoderNode of(const QVariant& value);

    const CoderNode* find(const QString& key) const;  ///< null when there is none
    void set(const QString& key, CoderNode node);

    Kind kind = Kind::Value;
    QVariant value;
    std::map<QString, CoderNode> members;
    QString agent;  ///< identifier of the agent that has the properties
    std::vector<ArchivedProperty> properties;
};

/// Requires: an object at the root.
QByteArray writeArchive(const CoderNode& root);

/// Throws ReportableError for bytes that are not an archive, are cut short, or are of a newer version.
CoderNode readArchive(const QByteArray& data);

}  // namespace plotix
