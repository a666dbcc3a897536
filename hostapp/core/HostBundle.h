#pragma once

#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtCore/QStringList>

/// The application's main bundle: localised texts, images by name, the program's name. Main thread only.
///
/// Texts come from the installed translators (context "Plotix"), so that adding a language takes one translation file.
/// Images are looked up by name in the image folders, the latest added first, then in the program's own resources.
namespace plotix {

class HostBundle : public KTVBundle {
public:
    HostBundle();

    QString localizedString(const QString& key) const override;
    QImage imageNamed(const QString& name) const override;
    QString executableName() const override;

    void addImageFolder(const QString& folder);

private:
    QStringList m_imageFolders;
};

}  // namespace plotix
