#include "hostapp/site/PlugInLoader.h"

#include "base/ReportableError.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>

namespace plotix {

namespace {

constexpr auto kAdvice = "Install Plotix again, or name the module's folder in PLOTIX_PLUGIN_PATH.";

/// "org.plotix.KTVPlugInModule/", without the version number after it.
QString interfaceFamily()
{
    const QString iid = QString::fromLatin1(KTVPlugInModule_iid);
    return iid.left(iid.lastIndexOf(QLatin1Char('/')) + 1);
}

[[noreturn]] void failWrongVersion(const QString& path, const QString& version)
{
    throw ReportableError(
        QStringLiteral("The plug-in module %1 was made for interface version %2; this program needs version "
                       "%3. %4")
            .arg(path, version)
            .arg(kPlugInInterfaceVersion)
            .arg(QLatin1String(kAdvice)));
}

[[noreturn]] void failBroken(const QString& path, const QString& reason)
{
    // The loader's texts may have several lines; an error is one line.
    throw ReportableError(QStringLiteral("The plug-in module %1 is broken: %2. %3")
                              .arg(path, reason.simplified(), QLatin1String(kAdvice)));
}

}  // namespace

PlugInLoader::PlugInLoader(QStringList folders) : m_folders(std::move(folders)) {}

QStringList PlugInLoader::defaultFolders()
{
    QStringList folders = qEnvironmentVariable("PLOTIX_PLUGIN_PATH").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const QString program = QCoreApplication::applicationDirPath();
    folders << program + QStringLiteral("/plugins")
            << QDir::cleanPath(program + QStringLiteral("/../lib/plotix/plugins"));
    return folders;
}

KTVPlugInModule* PlugInLoader::load(const QString& moduleName, const QString& requiredClass)
{
    if (m_module)
        return m_module;
    m_path = findFile(moduleName);
    m_loader.setFileName(m_path);
    checkIdentity();
    KTVPlugInModule* module = instantiateRoot();
    if (module->interfaceVersion() != kPlugInInterfaceVersion)
        failWrongVersion(m_path, QString::number(module->interfaceVersion()));
    if (!module->classNames().contains(requiredClass))
        failBroken(m_path, QStringLiteral("it has no class %1").arg(requiredClass));
    m_module = module;
    return m_module;
}

QString PlugInLoader::findFile(const QString& moduleName) const
{
    for (const QString& folder : m_folders) {
        const QFileInfo file(QDir(folder), moduleName + QStringLiteral(".so"));
        if (file.exists())
            return file.absoluteFilePath();
    }
    throw ReportableError(QStringLiteral("The plug-in module %1 is missing; looked in %2. %3")
                              .arg(moduleName, m_folders.join(QStringLiteral(", ")), QLatin1String(kAdvice)));
}

void PlugInLoader::checkIdentity() const
{
    // The interface is named in the file's metadata: a module for another one is refused before any of its code runs.
    const QString iid = m_loader.metaData().value(QLatin1String("IID")).toString();
    if (iid == QLatin1String(KTVPlugInModule_iid))
        return;
    if (iid.startsWith(interfaceFamily()))
        failWrongVersion(m_path, iid.mid(interfaceFamily().size()));
    failBroken(m_path, iid.isEmpty() ? QStringLiteral("it is no plug-in module")
                                     : QStringLiteral("it is a module of another kind"));
}

KTVPlugInModule* PlugInLoader::instantiateRoot()
{
    QObject* root = m_loader.instance();
    if (!root)
        failBroken(m_path, m_loader.errorString());
    auto* module = qobject_cast<KTVPlugInModule*>(root);
    if (!module)
        failBroken(m_path, QStringLiteral("its root object is of another kind"));
    return module;
}

}  // namespace plotix
