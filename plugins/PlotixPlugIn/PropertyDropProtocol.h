#pragma once

#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Takes properties dropped on a view. Held *weakly* by the drop view. Main thread only.
class PropertyDropProtocol : public WeaklyReferenced {
public:
    virtual void addProperties(const QStringList& propertyNames) = 0;  ///< keys, in the order dropped
    virtual QString dragType() const = 0;                              ///< the one type of drag data accepted
};
