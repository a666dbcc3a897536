#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>

#include <cstdint>
#include <map>
#include <vector>

/// A keyed archive in memory, and its bytes: what a host stores of its plug-ins, and what a drag of properties carries.
/// Values; any thread. `docs/formats.md` has the grammar.
/// What is needed to find a property again, or to list it when it no longer exists.
struct KTVArchivedProperty {
    QString key, name, unit;
    QColor color;
    std::uint32_t type = 0;
    bool visible = true;
};

struct KTVHOST_EXPORT KTVArchiveNode {
    enum class Kind { Value, Object, Properties };

    /// A plain value; colours become text. A value of an unsupported type becomes an absent one.
    static KTVArchiveNode of(const QVariant& value);

    const KTVArchiveNode* find(const QString& key) const;  ///< null when there is none
    void set(const QString& key, KTVArchiveNode node);

    Kind kind = Kind::Value;
    QVariant value;
    std::map<QString, KTVArchiveNode> members;
    QString agent;  ///< identifier of the agent that has the properties
    std::vector<KTVArchivedProperty> properties;
};

/// Requires: an object at the root.
KTVHOST_EXPORT QByteArray writeKeyedArchive(const KTVArchiveNode& root);

/// Throws ReportableError for bytes that are not an archive, are cut short, or are of a newer version.
KTVHOST_EXPORT KTVArchiveNode readKeyedArchive(const QByteArray& data);
