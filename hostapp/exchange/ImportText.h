#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

/// What the importer says, in the language that is installed; the command line installs none. Any thread.
namespace plotix {

inline QString translated(const char* english)
{
    return QCoreApplication::translate("Import", english);
}

}  // namespace plotix
