#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QStringList>
#include <QtCore/QtPlugin>

/// What a loadable module offers the host: its classes by name.
///
/// The module's root object implements it; the loader *owns* that object. Main thread only.
class KTVHOST_EXPORT KTVPlugInModule {
public:
    virtual ~KTVPlugInModule();

    /// The version of this interface the module was built against.
    virtual int interfaceVersion() const = 0;
    virtual QStringList classNames() const = 0;

    /// What a new plug-in is made with. Absent tables mean something else than empty ones.
    struct Arguments {
        KTVAgentPtr agent;
        KTVSiteWindowController* siteWindowController = nullptr;
        std::optional<KTVPropertyList> tables;
        plotix::OptionalDate fromDate;
        plotix::OptionalDate toDate;
    };

    /// Null for an unknown class, or when the class declines.
    virtual KTVPlugInPtr instantiate(const QString& className, const Arguments& arguments) = 0;
    virtual KTVPlugInPtr instantiate(const QString& className, KTVDecoder& decoder) = 0;

    /// An object whose invokable methods are the class operations of `className`; null when it has none. *Borrowed*.
    virtual QObject* classObject(const QString& className) = 0;
};

inline constexpr int kPlugInInterfaceVersion = 1;
#define KTVPlugInModule_iid "org.plotix.KTVPlugInModule/1"
Q_DECLARE_INTERFACE(KTVPlugInModule, KTVPlugInModule_iid)

Q_DECLARE_METATYPE(KTVAgentPtr)
Q_DECLARE_METATYPE(plotix::OptionalDate)
