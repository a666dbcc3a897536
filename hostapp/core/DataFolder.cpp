#include "hostapp/core/DataFolder.h"

#include <QtCore/QStandardPaths>

namespace plotix {

QString dataFolder()
{
    const QString chosen = qEnvironmentVariable("PLOTIX_DATA_HOME");
    return chosen.isEmpty()
               ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/plotix")
               : chosen;
}

}  // namespace plotix
