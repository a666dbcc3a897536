#include "tests/records/clickhouse/ServerForTests.h"

#include "records/clickhouse/ServerConnection.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>

#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace {

/// Nobody listens there now.
quint16 freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0 &&
                         ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    ::close(socket);
    if (!isBound)
        throw std::runtime_error("no port is free");
    return ntohs(address.sin_port);
}

void write(const QString& name, const QString& text)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        throw std::runtime_error("a file of the server cannot be written");
}

constexpr const char* kConfiguration = R"(<?xml version="1.0"?>
<yandex>
  <logger><level>warning</level><log>%1/log</log><errorlog>%1/errors</errorlog></logger>
  <http_port>%2</http_port><tcp_port>%3</tcp_port>
  <interserver_http_port>%4</interserver_http_port><interserver_http_host>127.0.0.1</interserver_http_host>
  <listen_host>127.0.0.1</listen_host>
  <path>%1/data/</path><tmp_path>%1/tmp/</tmp_path><user_files_path>%1/files/</user_files_path>
  <format_schema_path>%1/schemas/</format_schema_path>
  <users_config>%1/users.xml</users_config>
  <default_profile>default</default_profile><default_database>default</default_database>
  <max_concurrent_queries>100</max_concurrent_queries><mark_cache_size>67108864</mark_cache_size>
  <timezone>UTC</timezone>
</yandex>
)";

constexpr const char* kUsers = R"(<?xml version="1.0"?>
<yandex>
  <profiles><default><max_memory_usage>4000000000</max_memory_usage></default><look><readonly>1</readonly></look></profiles>
  <quotas><default/></quotas>
  <users>
    <default><password></password><networks><ip>127.0.0.1</ip></networks><profile>default</profile><quota>default</quota>
    </default>
    <keeper><password>secret</password><networks><ip>127.0.0.1</ip></networks><profile>default</profile>
      <quota>default</quota></keeper>
    <looker><password>look</password><networks><ip>127.0.0.1</ip></networks><profile>look</profile>
      <quota>default</quota></looker>
  </users>
</yandex>
)";

}  // namespace

ServerForTests& ServerForTests::running()
{
    static ServerForTests server;
    return server;
}

ServerForTests::ServerForTests() : m_port(freePort()), m_tcpPort(freePort()), m_interserverPort(freePort())
{
    if (const QString there = qEnvironmentVariable("PLOTIX_TEST_CLICKHOUSE_PORT"); !there.isEmpty()) {
        static const QRegularExpression port(QStringLiteral("(\\d+)"));
        m_port = port.match(there).captured().toUShort();
        m_hosts = QString(there).replace(port, QStringLiteral("127.0.0.1:\\1"));
        m_isOwn = false;
        return;
    }
    m_hosts = QStringLiteral("127.0.0.1:%1").arg(m_port);
    const QString folder = m_folder.path();
    for (const char* name : {"data", "tmp", "files", "schemas"})
        QDir(folder).mkdir(QLatin1String(name));
    write(folder + QStringLiteral("/config.xml"),
          QLatin1String(kConfiguration).arg(folder).arg(m_port).arg(m_tcpPort).arg(m_interserverPort));
    write(folder + QStringLiteral("/users.xml"), QLatin1String(kUsers));
    start();
}

ServerForTests::~ServerForTests()
{
    kill();
}

void ServerForTests::start()
{
    m_process.setProgram(QStringLiteral("clickhouse-server"));
    m_process.setArguments({QStringLiteral("--config-file=%1/config.xml").arg(m_folder.path())});
    m_process.setWorkingDirectory(m_folder.path());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(m_folder.filePath(QStringLiteral("stderr")));
    // Gone with this program, however it ends.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start();
    if (!m_process.waitForStarted())
        throw std::runtime_error("clickhouse-server cannot be started: ./test installs it");
    const auto address =
        plotix::ServerAddress::parsed(QStringLiteral("clickhouse://127.0.0.1:%1/default/none").arg(m_port));
    for (int attempt = 0; attempt < 600; ++attempt) {
        try {
            plotix::ServerConnection(address, {}).ask("SELECT 1");
            return;
        } catch (const std::exception&) {
            if (m_process.waitForFinished(0))
                throw std::runtime_error("clickhouse-server ended at once");
            QThread::msleep(50);
        }
    }
    throw std::runtime_error("clickhouse-server does not answer");
}

void ServerForTests::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

void ServerForTests::restart()
{
    kill();
    start();
}

void ServerForTests::standStill()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void ServerForTests::goOn()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

plotix::ServerAddress ServerForTests::newSite()
{
    return newSite(m_hosts);
}

plotix::ServerAddress ServerForTests::newSiteOnOneShard()
{
    return newSite(m_hosts.section(QLatin1Char('+'), 0, 0));
}

plotix::ServerAddress ServerForTests::newSiteOnShards()
{
    return newSite(m_hosts.contains(QLatin1Char('+')) ? m_hosts : m_hosts + QLatin1Char('+') + m_hosts);
}

plotix::ServerAddress ServerForTests::newSite(const QString& hosts)
{
    return plotix::ServerAddress::parsed(
        QStringLiteral("clickhouse://%1/plotix/site%2_%3").arg(hosts).arg(::getpid()).arg(++m_sites));
}
