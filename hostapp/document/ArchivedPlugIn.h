#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// A plug-in as archived in a site. A value; any thread.
namespace plotix {

struct ArchivedPlugIn {
    qint64 id = 0;  ///< 0: not stored yet
    QString className;
    QByteArray state;  ///< a keyed archive
};

}  // namespace plotix
