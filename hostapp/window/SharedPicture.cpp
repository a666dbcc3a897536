#include "hostapp/window/SharedPicture.h"

#include "base/ReportableError.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QUrlQuery>
#include <QtGui/QDesktopServices>

namespace plotix {

namespace {

const QString kMailProgram = QStringLiteral("xdg-email");
const QString kOpeningProgram = QStringLiteral("xdg-open");  // opens addresses on every desktop

class SharedPictureText {
    Q_DECLARE_TR_FUNCTIONS(SharedPictureText)
};

[[noreturn]] void failToPassOn()
{
    throw ReportableError(SharedPictureText::tr("No program took it. Save the image instead."));
}

}  // namespace

DesktopPrograms DesktopPrograms::real()
{
    return {[](const QString& name) { return QStandardPaths::findExecutable(name); },
            [](const QString& program, const QStringList& arguments) {
                return QProcess::startDetached(program, arguments);
            },
            [](const QUrl& url) { return QDesktopServices::openUrl(url); }};
}

SharedPicture::SharedPicture(DesktopPrograms programs) : m_programs(std::move(programs)) {}

bool SharedPicture::canOpen() const
{
    return !m_programs.find(kOpeningProgram).isEmpty();
}

QString SharedPicture::mailUnavailable() const
{
    const bool available = canOpen() || !m_programs.find(kMailProgram).isEmpty();
    return available ? QString() : SharedPictureText::tr("No program for mail is set up.");
}

QString SharedPicture::openUnavailable() const
{
    return canOpen() ? QString() : SharedPictureText::tr("No program for pictures is set up.");
}

void SharedPicture::mail(const QImage& image)
{
    const QString path = write(image);
    const QString subject = SharedPictureText::tr("Trend from Plotix");
    const QString program = m_programs.find(kMailProgram);
    if (!program.isEmpty() &&
        m_programs.start(program, {QStringLiteral("--subject"), subject, QStringLiteral("--attach"), path}))
        return;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("subject"), subject);
    query.addQueryItem(QStringLiteral("body"), SharedPictureText::tr("The picture is in %1.").arg(path));
    QUrl url(QStringLiteral("mailto:"));
    url.setQuery(query);
    if (!m_programs.open(url))
        failToPassOn();
}

void SharedPicture::openWith(const QImage& image)
{
    if (!m_programs.open(QUrl::fromLocalFile(write(image))))
        failToPassOn();
}

QString SharedPicture::write(const QImage& image)
{
    if (!m_folder)
        m_folder = std::make_unique<QTemporaryDir>();
    const QString path = m_folder->filePath(QStringLiteral("trend-%1.png").arg(++m_count));
    QFile file(path);
    if (!m_folder->isValid() || !file.open(QIODevice::WriteOnly) || !writePng(file, image))
        throw ReportableError(SharedPictureText::tr("The temporary picture cannot be written."));
    return path;
}

}  // namespace plotix
