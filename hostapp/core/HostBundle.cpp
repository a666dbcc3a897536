#include "hostapp/core/HostBundle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

/// A static library's resources must be registered; the macro works only outside namespaces.
static void registerImages()
{
    Q_INIT_RESOURCE(HostImages);
}

namespace plotix {

namespace {

constexpr const char* kTranslationContext = "Plotix";
constexpr const char* kResourceFolder = ":/plotix/images";
constexpr const char* kImageKinds[] = {"png", "svg", "jpg"};

}  // namespace

HostBundle::HostBundle() : m_imageFolders{QString::fromLatin1(kResourceFolder)}
{
    registerImages();
}

QString HostBundle::localizedString(const QString& key) const
{
    return QCoreApplication::translate(kTranslationContext, key.toUtf8().constData());
}

QImage HostBundle::imageNamed(const QString& name) const
{
    // A name is not a path: it must not lead out of the image folders.
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return {};
    for (const QString& folder : m_imageFolders)
        for (const char* kind : kImageKinds) {
            const QString file = QDir(folder).filePath(name + QLatin1Char('.') + QLatin1String(kind));
            if (QFileInfo::exists(file))
                return QImage(file);
        }
    return {};
}

QString HostBundle::executableName() const
{
    return QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

void HostBundle::addImageFolder(const QString& folder)
{
    m_imageFolders.prepend(folder);
}

}  // namespace plotix
