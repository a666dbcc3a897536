#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// A module for the loader's tests: what it claims to be is chosen when it is compiled.
class TestModule : public QObject, public KTVPlugInModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_MODULE_IID)
    Q_INTERFACES(KTVPlugInModule)
public:
    int interfaceVersion() const override { return TEST_MODULE_VERSION; }
    QStringList classNames() const override { return {QStringLiteral(TEST_MODULE_CLASS)}; }
    KTVPlugInPtr instantiate(const QString&, const Arguments&) override { return nullptr; }
    KTVPlugInPtr instantiate(const QString&, KTVDecoder&) override { return nullptr; }
    QObject* classObject(const QString&) override { return nullptr; }
};
