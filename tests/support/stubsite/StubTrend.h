#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <QtCore/QStringList>

/// A trend view whose graph is a red rectangle: records what is sent to it. Made by StubModule under the trend view's
/// class name. Main thread only.
class StubTrend : public KTVPlugIn {
    Q_OBJECT
public:
    static std::shared_ptr<StubTrend> make(const KTVPlugInModule::Arguments& arguments)
    {
        std::shared_ptr<StubTrend> trend(new StubTrend);
        trend->m_arguments = arguments;
        return trend->initWithAgent(arguments.agent, arguments.siteWindowController) ? trend : nullptr;
    }
    static std::shared_ptr<StubTrend> make(KTVDecoder& decoder)
    {
        std::shared_ptr<StubTrend> trend(new StubTrend);
        return trend->initWithCoder(decoder) ? trend : nullptr;
    }

    QString name() const override { return QStringLiteral("Stub"); }
    bool isDeletable() const override { return true; }
    bool isRenamable() const override { return true; }
    bool isUndockable() const override { return true; }

    Q_INVOKABLE void refresh(QObject*) { m_log << QStringLiteral("refresh"); }
    Q_INVOKABLE void fitAll(QObject*) { m_log << QStringLiteral("fitAll"); }
    Q_INVOKABLE QImage graphImageWithSize(const QSizeF& size, double density, const QString&)
    {
        if (!m_hasGraph)
            return {};
        QImage image((size * density).toSize(), QImage::Format_RGB32);
        image.fill(Qt::red);
        return image;
    }

    Q_INVOKABLE void exportToPNG(QObject*) { m_log << QStringLiteral("exportToPNG"); }
    void loseGraph() { m_hasGraph = false; }  ///< as before the first answer

    Q_INVOKABLE QVariantMap reading() const { return m_reading; }
    Q_INVOKABLE void setReading(const QVariantMap& options)
    {
        m_reading.insert(options);
        ++m_readingCount;
    }

    int readingCount() const { return m_readingCount; }  ///< how often options were chosen

    const QStringList& log() const { return m_log; }
    const KTVPlugInModule::Arguments& arguments() const { return m_arguments; }

private:
    StubTrend() = default;
    QStringList m_log;
    bool m_hasGraph = true;
    KTVPlugInModule::Arguments m_arguments;
    QVariantMap m_reading;
    int m_readingCount = 0;
};

class StubModule : public KTVPlugInModule {
public:
    int interfaceVersion() const override { return kPlugInInterfaceVersion; }
    QStringList classNames() const override { return {QStringLiteral("KTVPlotixPlugIn"), QStringLiteral("StubTrend")}; }
    KTVPlugInPtr instantiate(const QString& className, const Arguments& arguments) override
    {
        return classNames().contains(className) ? StubTrend::make(arguments) : nullptr;
    }
    KTVPlugInPtr instantiate(const QString& className, KTVDecoder& decoder) override
    {
        return classNames().contains(className) ? StubTrend::make(decoder) : nullptr;
    }
    QObject* classObject(const QString&) override { return nullptr; }
};

/// Makes new trends of a test's own class under any name; brings none back.
template <class Trend>
class ModuleOf : public StubModule {
public:
    KTVPlugInPtr instantiate(const QString&, const Arguments& arguments) override { return Trend::make(arguments); }
    KTVPlugInPtr instantiate(const QString&, KTVDecoder&) override { return nullptr; }
};
