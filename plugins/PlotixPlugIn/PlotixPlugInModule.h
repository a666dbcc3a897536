#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <QtCore/QObject>
#include <QtCore/QSizeF>
#include <QtCore/QVariant>

/// The class operations of "KTVPlotixPlugIn", for callers that reach them by name. The module *owns* it. Main thread
/// only.
class KTVPlotixPlugInClass : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Renders the named properties off screen. `properties` is a QStringList, or invalid for an absent list; the PNG
    /// data reach the target's method `selector`, which takes one QByteArray. Borrows the target.
    Q_INVOKABLE void graph(KTVAgentPtr agent, plotix::OptionalDate fromDate, plotix::OptionalDate toDate,
                           QVariant properties, QString title, QSizeF size, QObject* target, QByteArray selector);
};

/// The module's root object: its classes by name. The plug-in loader *owns* it. Main thread only.
class PlotixPlugInModule : public QObject, public KTVPlugInModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KTVPlugInModule_iid FILE "PlotixPlugInModule.json")
    Q_INTERFACES(KTVPlugInModule)
public:
    int interfaceVersion() const override { return kPlugInInterfaceVersion; }
    QStringList classNames() const override;
    KTVPlugInPtr instantiate(const QString& className, const Arguments& arguments) override;
    KTVPlugInPtr instantiate(const QString& className, KTVDecoder& decoder) override;
    QObject* classObject(const QString& className) override;

private:
    KTVPlotixPlugInClass m_trendClass;
};
