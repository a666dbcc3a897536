#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <QtCore/QPluginLoader>
#include <QtCore/QStringList>

#include <memory>

/// Finds a plug-in module at run time, checks it, and keeps it loaded.
///
/// *Owns* the loaded module's root object; plug-ins made by it must be gone before the loader. Main thread only.
namespace plotix {

class PlugInLoader {
public:
    /// The folders are searched in order for the module's file; the first file of that name counts.
    explicit PlugInLoader(QStringList folders);

    /// PLOTIX_PLUGIN_PATH (folders separated by colons) first, then the program's own "plugins" folder, then
    /// ../lib/plotix/plugins beside it.
    static QStringList defaultFolders();

    /// Loads the module, once. Throws ReportableError with one line when it is missing, broken, made for another
    /// version of the interface, or does not know `requiredClass`.
    KTVPlugInModule* load(const QString& moduleName, const QString& requiredClass);

    KTVPlugInModule* module() const { return m_module; }  ///< null before a successful load
    const QString& path() const { return m_path; }        ///< of the file found

private:
    QString findFile(const QString& moduleName) const;
    void checkIdentity() const;
    KTVPlugInModule* instantiateRoot();

    QStringList m_folders;
    QString m_path;
    QPluginLoader m_loader;
    KTVPlugInModule* m_module = nullptr;
};

}  // namespace plotix
