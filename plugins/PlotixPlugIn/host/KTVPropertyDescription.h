#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>

#include <cstdint>

/// What is known of a property besides its values. A value; any thread.
struct KTVPropertyDescription {
    QString name;
    QString propertyName;  ///< its key
    QString archivedUnit;  ///< the unit of the values as stored; never changes once there are any
    QString unit;          ///< shown; the user's choice
    QColor color;
    std::uint32_t type = 0;
    bool visible = true;
};
