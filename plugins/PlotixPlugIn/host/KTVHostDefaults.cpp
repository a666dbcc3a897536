#include "plugins/PlotixPlugIn/host/KTVHostDefaults.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"
#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/host/PlainMessageViewController.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <cmath>
#include <cstdio>

namespace {

class NoHelp : public KTVHelpManager {
public:
    void openHelpAnchor(const QString&) override {}
};

class KeyBundle : public KTVBundle {
public:
    QString localizedString(const QString& key) const override { return key; }
    QImage imageNamed(const QString&) const override { return {}; }
    QString executableName() const override { return QCoreApplication::applicationName(); }
};

class NoQuickRanges : public KTVNaturalLanguageDateCreator {
public:
    void dateRange(KTVQuickRange, OptionalDate&, OptionalDate&) const override {}
};

class FourDigitConverter : public KTVConverter {
public:
    double roundedValue(double value, int toNearest) const override
    {
        if (toNearest < 1 || !std::isfinite(value) || value == 0)
            return value;
        const double fourDigitStep = std::pow(10.0, std::floor(std::log10(std::abs(value))) - 3);
        if (1.0 / toNearest > fourDigitStep)
            return QString::number(value, 'e', 3).toDouble();
        const double rounded = std::round(value * toNearest) / toNearest;
        return std::isfinite(rounded) ? rounded : value;
    }
};

class StandardErrorInterface : public KTVUserInterface {
public:
    void beginSheet(const KTVAlert& alert, QWidget*, std::function<void()> completionHandler) override
    {
        write(alert);
        if (completionHandler)
            plotix::MainQueue::main().async(std::move(completionHandler));
    }
    void runModal(const KTVAlert& alert) override { write(alert); }
    std::optional<QString> runSavePanel(const QStringList&) override { return std::nullopt; }
    void showSharingPicker(const QImage&, const std::weak_ptr<KTVSharingPickerDelegate>&, const QRect&, QWidget*,
                           KTVRectEdge) override
    {
    }
    Qt::KeyboardModifiers modifierFlags() const override { return Qt::NoModifier; }
    QString localizedDescription(const plotix::Date& date) const override
    {
        const auto milliseconds = static_cast<qint64>(std::llround(date.seconds * 1000));
        return QLocale().toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QLocale::LongFormat);
    }

private:
    static void write(const KTVAlert& alert)
    {
        const QByteArray line = (alert.messageText + QStringLiteral(": ") + alert.informativeText).toLocal8Bit();
        std::fprintf(stderr, "%s\n", line.constData());
    }
};

KTVHostServices makeDefaults()
{
    static NoHelp helpManager;
    static KeyBundle mainBundle;
    static NoQuickRanges dateCreator;
    static FourDigitConverter converter;
    static StandardErrorInterface userInterface;
    static KTVPrintInfo printInfo;
    KTVHostServices services;
    services.makeMessageViewController = [] { return std::make_unique<PlainMessageViewController>(); };
    services.helpManager = &helpManager;
    services.converter = &converter;
    services.dateCreator = &dateCreator;
    services.mainBundle = &mainBundle;
    services.userInterface = &userInterface;
    services.printInfo = &printInfo;
    return services;
}

}  // namespace

const KTVHostServices& defaultHostServices()
{
    static const KTVHostServices services = makeDefaults();
    return services;
}
