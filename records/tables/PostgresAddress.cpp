#include "records/tables/PostgresAddress.h"

#include "base/ReportableError.h"

#include <QtCore/QRegularExpression>

#include <libpq-fe.h>
#include <map>
#include <mutex>
#include <string_view>

namespace plotix {

namespace {

/// Users that addresses named, by what is left of the address. Any thread.
class EnteredUsers {
public:
    static EnteredUsers& here()
    {
        static EnteredUsers users;
        return users;
    }
    void set(const QString& address, const QString& user)
    {
        const std::lock_guard lock(m_mutex);
        m_users[address] = user;
    }
    QByteArray of(const QString& address)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_users.find(address);
        return found == m_users.end() ? QByteArray() : found->second.toUtf8();
    }

private:
    std::mutex m_mutex;
    std::map<QString, QString> m_users;  // under the mutex
};

QString withoutUser(QString address)
{
    static const QRegularExpression before(QStringLiteral("^(postgres(?:ql)?://)[^@/?]*@"));
    static const QRegularExpression option(QStringLiteral("([?&])user=[^&]*&?"));
    address.replace(before, QStringLiteral("\\1")).replace(option, QStringLiteral("\\1"));
    while (address.endsWith(QLatin1Char('?')) || address.endsWith(QLatin1Char('&')))
        address.chop(1);
    return address;
}

[[noreturn]] void refusePassword()
{
    throw ReportableError(
        QStringLiteral("A password does not belong into an address, where others see it: write it into ~/.pgpass, "
                       "or set PGPASSWORD."));
}

}  // namespace

QString readablePostgres(const char* message)
{
    QString line = QString::fromUtf8(message).section(QLatin1Char('\n'), 0, 0).trimmed();
    if (line.startsWith(QLatin1String("ERROR:")) || line.startsWith(QLatin1String("FATAL:")))
        line = line.mid(6).trimmed();
    return line;
}

PostgresAddress::PostgresAddress(const QString& text) : kept(withoutUser(text))
{
    // Before anything could repeat it.
    const QString place = text.section(QLatin1Char('?'), 0, 0);
    if (text.contains(QLatin1String("password="), Qt::CaseInsensitive) ||
        (place.contains(QLatin1Char('@')) && place.section(QLatin1Char('@'), 0, -2).count(QLatin1Char(':')) > 1))
        refusePassword();
    char* problem = nullptr;
    PQconninfoOption* const options = PQconninfoParse(text.toUtf8().constData(), &problem);
    if (!options) {
        // The library's message may repeat what stands where a password would.
        const QString why = readablePostgres(problem ? problem : "it cannot be read");
        PQfreemem(problem);
        throw ReportableError(
            QStringLiteral("“%1” is no address of a database (postgresql://HOST[:PORT]/DATABASE): %2.").arg(kept, why));
    }
    QString user;
    bool hasPassword = false;
    for (const PQconninfoOption* each = options; each->keyword; ++each) {
        const std::string_view word = each->keyword;
        const QString value = QString::fromUtf8(each->val ? each->val : "");
        if (value.isEmpty())
            continue;
        hasPassword = hasPassword || word == "password" || word == "sslpassword";
        if (word == "host" || word == "hostaddr")
            host = value;
        else if (word == "port")
            port = value;
        else if (word == "dbname")
            database = value;
        else if (word == "user")
            user = value;
    }
    PQconninfoFree(options);
    if (hasPassword)
        refusePassword();
    if (database.isEmpty())
        throw ReportableError(
            QStringLiteral("“%1” names no database: write postgresql://HOST[:PORT]/DATABASE.").arg(kept));
    if (!user.isEmpty())
        EnteredUsers::here().set(kept, user);
}
QString PostgresAddress::title() const
{
    return QStringLiteral("%1%2/%3").arg(host.isEmpty() ? QStringLiteral("localhost") : host,
                                         port.isEmpty() ? QString() : QLatin1Char(':') + port, database);
}

QByteArray PostgresAddress::user() const
{
    return EnteredUsers::here().of(kept);
}

}  // namespace plotix
