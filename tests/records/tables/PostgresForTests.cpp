#include "tests/records/tables/PostgresForTests.h"

#include <QtCore/QDir>
#include <QtCore/QThread>

#include <grp.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <memory>
#include <stdexcept>

namespace {

QString programs()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    const QStringList found = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (found.isEmpty())
        throw std::runtime_error("PostgreSQL is not installed: ./test installs it");
    return versions.filePath(found.back() + QStringLiteral("/bin/"));
}

/// The server refuses to run as root.
void leaveRoot()
{
    if (::geteuid() == 0)
        if (const passwd* user = ::getpwnam("postgres"))
            if (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0)
                ::_exit(1);
    ::prctl(PR_SET_PDEATHSIG, SIGINT);
}

}  // namespace

PostgresForTests& PostgresForTests::running()
{
    static PostgresForTests server;
    return server;
}

PostgresForTests::PostgresForTests()
{
    const QString folder = m_folder.path();
    if (const passwd* user = ::geteuid() == 0 ? ::getpwnam("postgres") : nullptr)
        if (::chown(folder.toUtf8().constData(), user->pw_uid, user->pw_gid) != 0)
            throw std::runtime_error("the folder of the server cannot be given away");
    QProcess making;
    making.setChildProcessModifier(&leaveRoot);
    making.setWorkingDirectory(QStringLiteral("/"));
    making.start(programs() + QStringLiteral("initdb"),
                 {QStringLiteral("-D"), folder + QStringLiteral("/data"), QStringLiteral("-U"), QStringLiteral("plant"),
                  QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("--no-sync"), QStringLiteral("-E"),
                  QStringLiteral("UTF8"), QStringLiteral("--locale=C")});
    if (!making.waitForFinished(120'000) || making.exitCode() != 0)
        throw std::runtime_error("initdb fails: " + making.readAllStandardError().toStdString());
    m_process.setChildProcessModifier(&leaveRoot);
    m_process.setWorkingDirectory(QStringLiteral("/"));
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(programs() + QStringLiteral("postgres"),
                    {QStringLiteral("-D"), folder + QStringLiteral("/data"), QStringLiteral("-c"),
                     QStringLiteral("listen_addresses="), QStringLiteral("-c"),
                     QStringLiteral("unix_socket_directories=") + folder, QStringLiteral("-c"),
                     QStringLiteral("fsync=off"), QStringLiteral("-c"), QStringLiteral("timezone=Europe/Berlin")});
    const QByteArray first = address().toUtf8();
    for (int attempt = 0; attempt < 600; ++attempt, QThread::msleep(50))
        if (PQping(first.constData()) == PQPING_OK)
            return;
    throw std::runtime_error("PostgreSQL does not answer");
}

PostgresForTests::~PostgresForTests()
{
    kill();
}

void PostgresForTests::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString PostgresForTests::address() const
{
    return QStringLiteral("postgresql:///postgres?host=%1&user=plant").arg(m_folder.path());
}

void PostgresForTests::tell(const std::string& statement, const std::string& copied)
{
    const std::unique_ptr<PGconn, decltype(&PQfinish)> server(PQconnectdb(address().toUtf8().constData()), &PQfinish);
    PQsetNoticeProcessor(
        server.get(), [](void*, const char*) {}, nullptr);
    ExecStatusType status = PGRES_FATAL_ERROR;
    const auto ran = [&](PGresult* result) {
        status = PQresultStatus(result);
        PQclear(result);
    };
    ran(PQexec(server.get(), statement.c_str()));
    if (status == PGRES_COPY_IN) {
        PQputCopyData(server.get(), copied.data(), static_cast<int>(copied.size()));
        PQputCopyEnd(server.get(), nullptr);
        while (PGresult* result = PQgetResult(server.get()))
            ran(result);
    }
    if (status != PGRES_COMMAND_OK)
        throw std::runtime_error(PQerrorMessage(server.get()));
}
