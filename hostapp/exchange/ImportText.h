#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

/// What the importer says, in the language that is installed; the command line installs none. Any thread.
namespace plotix {

class ImportText {
    Q_DECLARE_TR_FUNCTIONS(ImportText)
};

}  // namespace plotix
