#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>
#include <QtGui/QImage>

/// Localised texts, image resources, names and versions of a program or module. The host *owns* its main bundle. Main
/// thread only.
class KTVHOST_EXPORT KTVBundle {
public:
    virtual ~KTVBundle();

    static KTVBundle* mainBundle();  ///< the host application's; never null

    /// The text in the user's language; a key without a translation yields the key itself.
    virtual QString localizedString(const QString& key) const = 0;
    virtual QImage imageNamed(const QString& name) const = 0;  ///< null image when there is none
    virtual QString executableName() const = 0;
};
