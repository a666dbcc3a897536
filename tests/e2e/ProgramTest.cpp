#include "tests/e2e/ProgramTest.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>

namespace plotix {

void ProgramTest::SetUp()
{
    m_program = qEnvironmentVariable("PLOTIX_TEST_BINARY_DIR") + QStringLiteral("/bin/plotix");
    ASSERT_TRUE(QFileInfo::exists(m_program)) << m_program.toStdString();
}

int ProgramTest::run(const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PLOTIX_DATA_HOME"), path(QStringLiteral("home")));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));  // the program chooses, as it does for users
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
    process.start(m_program, arguments);
    const bool ended = process.waitForFinished(110'000);
    m_output = process.readAllStandardOutput();
    m_error = process.readAllStandardError();
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QJsonObject ProgramTest::runForJson(const QStringList& arguments)
{
    const int status = run(arguments);
    EXPECT_EQ(status, 0) << m_error.toStdString();
    return status == 0 ? QJsonDocument::fromJson(m_output).object() : QJsonObject();
}

QByteArray ProgramTest::contents(const QString& name) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

void ProgramTest::write(const QString& name, const QByteArray& text) const
{
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QString ProgramTest::measurements(const QString& name)
{
    QString folder = qEnvironmentVariable("PLOTIX_MEASUREMENTS");
    if (folder.isEmpty())
        folder = qEnvironmentVariable("PLOTIX_TEST_SOURCE_DIR") + QStringLiteral("/../shared/data");
    const QFileInfo file(folder + QLatin1Char('/') + name);
    return file.exists() ? file.absoluteFilePath() : QString();
}

}  // namespace plotix
