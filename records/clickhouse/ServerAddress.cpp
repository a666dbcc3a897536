#include "records/clickhouse/ServerAddress.h"

#include "base/ReportableError.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <map>
#include <mutex>

namespace plotix {

namespace {

[[noreturn]] void refuse(const QString& text, const QString& why)
{
    throw ReportableError(
        QStringLiteral("“%1” is no address of a server (clickhouse://host/database/site): %2.").arg(text, why));
}

ServerAddress::Host hostOf(const QString& text, const QString& whole, quint16 usual)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\[[0-9a-fA-F:.]+\]|[A-Za-z0-9._-]+)(?::(\d+))?$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        refuse(whole,
               text.isEmpty() ? QStringLiteral("it names no host") : QStringLiteral("“%1” is no host").arg(text));
    const uint port = match.captured(2).isEmpty() ? usual : match.captured(2).toUInt();
    if (port == 0 || port > 65535)
        refuse(whole, QStringLiteral("%1 is no port").arg(match.captured(2)));
    return {match.captured(1), static_cast<quint16>(port)};
}

void requireName(const QString& name, const QString& whole, const QString& what)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,63}$"));
    if (!form.match(name).hasMatch())
        refuse(whole, name.isEmpty() ? QStringLiteral("it names no %1").arg(what)
                                     : QStringLiteral("“%1” as a %2 has other characters than letters, digits and "
                                                      "underscores, begins with a digit, or is too long")
                                           .arg(name, what));
}

QString namesOf(const std::vector<ServerAddress::Host>& hosts)
{
    QStringList names;
    for (const ServerAddress::Host& host : hosts)
        names.append(QStringLiteral("%1:%2").arg(host.name).arg(host.port));
    return names.join(QLatin1Char(','));
}

QString hostsOf(const ServerAddress& address)
{
    QStringList shards{namesOf(address.hosts)};
    for (const std::vector<ServerAddress::Host>& hosts : address.others)
        shards.append(namesOf(hosts));
    return shards.join(QLatin1Char('+'));
}

/// What people typed, by hosts. Any thread.
struct Entered {
    struct Words {
        QString user;
        std::optional<QString> password;
    };

    static Entered& here()
    {
        static Entered entered;
        return entered;
    }
    std::optional<Words> find(const ServerAddress& address)
    {
        const std::lock_guard lock(mutex);
        const auto found = byHost.find(hostsOf(address));
        return found == byHost.end() ? std::nullopt : std::optional(found->second);
    }

    void set(const ServerAddress& address, const std::optional<Words>& words)
    {
        const std::lock_guard lock(mutex);
        if (words)
            byHost[hostsOf(address)] = *words;
        else
            byHost.erase(hostsOf(address));
    }

    std::mutex mutex;  // guards what follows
    std::map<QString, Words> byHost;
};

}  // namespace

ServerAddress ServerAddress::parsed(const QString& text)
{
    if (!isOne(text))
        refuse(text, QStringLiteral("it does not begin with clickhouse://"));
    QString rest = text.mid(13);
    // Before anything of the text is repeated in a message.
    if (const qsizetype at = rest.lastIndexOf(QLatin1Char('@')); at >= 0 && rest.first(at).contains(QLatin1Char(':')))
        throw ReportableError(QStringLiteral("A password does not belong into an address, where others see it: set "
                                             "PLOTIX_CLICKHOUSE_PASSWORD_FILE to a file that has it."));
    ServerAddress address;
    if (const qsizetype mark = rest.indexOf(QLatin1Char('?')); mark >= 0) {
        for (const QString& option : rest.mid(mark + 1).split(QLatin1Char('&'))) {
            if (option != QLatin1String("secure=1") && option != QLatin1String("secure=0"))
                refuse(text, QStringLiteral("“%1” is no option of it").arg(option));
            address.isSecure = option.endsWith(QLatin1Char('1'));
        }
        rest.truncate(mark);
    }
    const QStringList parts = rest.split(QLatin1Char('/'));
    QString hosts = parts[0];
    if (const qsizetype at = hosts.lastIndexOf(QLatin1Char('@')); at >= 0) {
        address.user = hosts.first(at);
        hosts = hosts.mid(at + 1);
    }
    for (const QString& shard : hosts.split(QLatin1Char('+'))) {
        std::vector<Host> replicas;
        for (const QString& host : shard.split(QLatin1Char(',')))
            replicas.push_back(hostOf(host, text, address.isSecure ? kSecurePort : kPort));
        if (address.hosts.empty())
            address.hosts = std::move(replicas);
        else
            address.others.push_back(std::move(replicas));
    }
    address.database = parts.value(1);
    address.site = parts.value(2);
    requireName(address.database, text, QStringLiteral("database"));
    requireName(address.site, text, QStringLiteral("site"));
    if (parts.size() > 3)
        refuse(text, QStringLiteral("something stands behind the site"));
    return address;
}

std::vector<ServerAddress> ServerAddress::shardByShard() const
{
    ServerAddress one = *this;
    one.others.clear();
    std::vector<ServerAddress> each{one};
    if (others.empty())
        return each;
    each.front().shard = 0;
    for (const std::vector<Host>& replicas : others) {
        one.hosts = replicas;
        one.shard = each.size();
        each.push_back(one);
    }
    return each;
}

std::vector<ServerAddress> ServerAddress::hostByHost() const
{
    std::vector<ServerAddress> each;
    for (const ServerAddress& ofShard : shardByShard())
        for (const Host& host : ofShard.hosts) {
            each.push_back(ofShard);
            each.back().hosts = {host};
        }
    return each;
}

QString ServerAddress::text() const
{
    return QStringLiteral("clickhouse://%1%2/%3/%4%5")
        .arg(user.isEmpty() ? QString() : user + QLatin1Char('@'), hostsOf(*this), database, site,
             isSecure ? QStringLiteral("?secure=1") : QString());
}

QString ServerAddress::key() const
{
    return text() + QStringLiteral("#%1").arg(shard.value_or(0));
}

QString ServerAddress::title() const
{
    if (shard)
        return QStringLiteral("%1/%2/%3").arg(namesOf(hosts), database, site);
    return QStringLiteral("%1:%2/%3/%4").arg(hosts.front().name).arg(hosts.front().port).arg(database, site);
}

std::function<void()> ServerCredentials::enter(const ServerAddress& address, const QString& user,
                                               const std::optional<QString>& password)
{
    Entered& entered = Entered::here();
    const std::optional<Entered::Words> before = entered.find(address);
    const bool isSameUser = before && before->user == user;
    entered.set(address, Entered::Words{user, password || !isSameUser ? password : before->password});
    return [address, before] { Entered::here().set(address, before); };
}

QString ServerCredentials::enteredUser(const ServerAddress& address)
{
    const std::optional<Entered::Words> words = Entered::here().find(address);
    return words ? words->user : QString();
}

ServerCredentials ServerCredentials::of(const ServerAddress& address)
{
    ServerCredentials credentials{address.user, qEnvironmentVariable("PLOTIX_CLICKHOUSE_PASSWORD")};
    const std::optional<Entered::Words> words = Entered::here().find(address);
    if (words && (credentials.user.isEmpty() || credentials.user == words->user)) {
        credentials.user = words->user;
        if (words->password) {
            credentials.password = *words->password;
            return credentials;
        }
    }
    if (credentials.user.isEmpty())
        credentials.user = qEnvironmentVariable("PLOTIX_CLICKHOUSE_USER");
    const QString name = qEnvironmentVariable("PLOTIX_CLICKHOUSE_PASSWORD_FILE");
    if (name.isEmpty())
        return credentials;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw ReportableError(
            QStringLiteral("The password file “%1” cannot be read: %2.").arg(name, file.errorString()));
    if (QFileInfo(file).permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther))
        throw ReportableError(
            QStringLiteral("Others may read the password file “%1”: take that away (chmod 600).").arg(name));
    credentials.password = QString::fromUtf8(file.readLine()).trimmed();
    return credentials;
}

}  // namespace plotix
