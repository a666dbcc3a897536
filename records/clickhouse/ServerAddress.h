#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <functional>
#include <optional>
#include <vector>

/// Where a site's records are on a server, and who asks for them. Values; any thread.
namespace plotix {

/// `clickhouse://[user@]host[:port][,host[:port]…][+host[:port]…]/database/site[?secure=1]`. Hosts with commas between
/// are replicas: each has all of the same, and any that can be reached serves. Shards have a plus between: each has the
/// records of some agents, the first one, the *home*, all else that belongs to the site too. Never has a password.
struct ServerAddress {
    struct Host {
        QString name;
        quint16 port = 0;

        friend bool operator==(const Host&, const Host&) = default;
    };
    static constexpr quint16 kPort = 8123, kSecurePort = 8443;

    std::vector<Host> hosts;                ///< at least one; of the home where there are several shards
    std::vector<std::vector<Host>> others;  ///< hosts of the other shards, in the order they were made
    QString user;                           ///< empty: whoever the credentials say
    QString database, site;                 ///< letters, digits and underscores, no digit first
    bool isSecure = false;                  ///< HTTPS, with the server's certificate checked
    /// Which one the hosts are, counted from 0, where this is the address of one shard out of several.
    std::optional<std::size_t> shard;

    static bool isOne(const QString& text) { return text.startsWith(QLatin1String("clickhouse://")); }
    /// Throws ReportableError, which says what is wrong.
    static ServerAddress parsed(const QString& text);

    /// Of each shard by itself, the home first.
    std::vector<ServerAddress> shardByShard() const;
    /// Of each host of all shards by itself.
    std::vector<ServerAddress> hostByHost() const;
    /// As it is parsed.
    QString text() const;
    /// "host:port/database/site" of the first host, for people; of one shard out of several, all its hosts.
    QString title() const;
    /// The same wherever the same tables are meant, for whoever keeps something about them.
    QString key() const;

    friend bool operator==(const ServerAddress&, const ServerAddress&) = default;
};

struct ServerCredentials {
    QString user;      ///< empty: the server's default one
    QString password;  ///< never written anywhere

    /// What a person typed for these hosts, else from PLOTIX_CLICKHOUSE_USER, and PLOTIX_CLICKHOUSE_PASSWORD or the
    /// first line of the file that PLOTIX_CLICKHOUSE_PASSWORD_FILE names; a user of the address comes first. Throws
    /// ReportableError for a file that cannot be read, or that others may read.
    static ServerCredentials of(const ServerAddress& address);
    /// For the address's hosts until the program ends: kept in memory alone. No password: the user's before, else the
    /// environment's. Answers what takes it back.
    static std::function<void()> enter(const ServerAddress& address, const QString& user,
                                       const std::optional<QString>& password);
    /// The user entered for the address's hosts; empty: none.
    static QString enteredUser(const ServerAddress& address);
};

}  // namespace plotix
