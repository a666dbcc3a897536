#include "base/MainQueue.h"
#include "hostapp/app/Composition.h"
#include "hostapp/app/CutFiles.h"
#include "hostapp/app/DisplayProbe.h"
#include "hostapp/app/ProgramServices.h"
#include "hostapp/cli/CommandLine.h"
#include "hostapp/core/Localization.h"
#include "hostapp/document/ServerSites.h"

#include <QtWidgets/QApplication>

#include <unistd.h>

#include <iostream>

namespace {

QStringList wordsOf(int argc, char** argv)
{
    QStringList words;
    for (int index = 1; index < argc; ++index)
        words << QString::fromLocal8Bit(argv[index]);
    return words;
}

/// Drops two messages of the toolkit: where it keeps run-time files by default, and which window requests a platform
/// without a screen cannot fulfil. A command's one line of error would be hard to find among them.
void passOverPlatformChatter(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const bool isChatter = text.startsWith(QLatin1String("This plugin does not support")) ||
                           text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"));
    if (type >= QtCriticalMsg || !isChatter)
        std::cerr << text.toStdString() << '\n';
}

}  // namespace

int main(int argc, char** argv)
{
    using plotix::Composition;
    const QStringList arguments = wordsOf(argc, argv);
    const bool desktop = plotix::commandWantsWindow(arguments) && plotix::isDisplayReachable();
    if (!desktop)
        qputenv("QT_QPA_PLATFORM", "offscreen");  // drawing works there as everywhere, and needs no server
    qInstallMessageHandler(passOverPlatformChatter);
    // The command line is ours alone: the toolkit gets the program's name and nothing to take options from.
    int toolkitCount = 1;
    QApplication application(toolkitCount, argv);
    QApplication::setApplicationName(QStringLiteral("plotix"));
    QApplication::setApplicationDisplayName(QStringLiteral("Plotix"));
    QApplication::setApplicationVersion(QStringLiteral(PLOTIX_VERSION));
    QApplication::setOrganizationName(QStringLiteral("Plotix"));
    plotix::MainQueue::main();
    plotix::explainCutFiles();
    plotix::keepWhatServersSend();
    if (plotix::commandShowsTexts(arguments))
        plotix::installLanguage(plotix::preferredLanguage([](const char* name) { return qEnvironmentVariable(name); }));
    Composition composition(desktop ? Composition::Audience::Desktop : Composition::Audience::Nobody);
    plotix::ProgramServices services(composition);
    return plotix::runCommandLine(arguments, services, {std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1});
}
