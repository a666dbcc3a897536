#pragma once

#include "records/clickhouse/ServerAddress.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <memory>

/// A database server of this program's own, on loopback, in a folder of its own. Started when it is first asked for,
/// ended with the program. The main thread starts it. With PLOTIX_TEST_CLICKHOUSE_PORT set it is the one that listens
/// there; several ports, with commas between, are those of replicas, and with + between those of shards. One of its own
/// has users: `keeper` ("secret"), and `looker` ("look"), who may only read.
class ServerForTests {
public:
    static ServerForTests& running();
    ~ServerForTests();

    quint16 port() const { return m_port; }
    /// Of a site that nobody else has.
    plotix::ServerAddress newSite();
    /// The same without any shard but the first.
    plotix::ServerAddress newSiteOnOneShard();
    /// The same on two shards, which may be on one server.
    plotix::ServerAddress newSiteOnShards();

    bool isOwn() const { return m_isOwn; }  ///< only then it can be killed
    void kill();                            ///< as a machine that loses its power
    void restart();                         ///< with the same data
    void standStill();                      ///< takes connections and answers nothing, until it goes on
    void goOn();

private:
    ServerForTests();
    plotix::ServerAddress newSite(const QString& hosts);
    void start();

    QTemporaryDir m_folder;
    QString m_hosts;  ///< as an address names them
    quint16 m_port = 0, m_tcpPort = 0, m_interserverPort = 0;
    QProcess m_process;
    bool m_isOwn = true;
    int m_sites = 0;
};
