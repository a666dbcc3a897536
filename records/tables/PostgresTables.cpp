#include "base/Interruption.h"
#include "base/ReportableError.h"
#include "records/tables/TableDatabase.h"

#include <QtCore/QRegularExpression>

#include <bit>
#include <charconv>
#include <cstring>
#include <libpq-fe.h>
#include <limits>
#include <map>
#include <mutex>
#include <poll.h>

namespace plotix {

namespace {

using Kind = TableServer::Column::Kind;

constexpr int kSilence = 300'000;  // milliseconds without a byte of an answer; a large table is summed up meanwhile
constexpr std::size_t kRowsAtOnce = 65536;

/// The library's own words end in line breaks and begin with a severity.
QString readable(const char* message)
{
    QString line = QString::fromUtf8(message).section(QLatin1Char('\n'), 0, 0).trimmed();
    if (line.startsWith(QLatin1String("ERROR:")) || line.startsWith(QLatin1String("FATAL:")))
        line = line.mid(6).trimmed();
    return line;
}

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

/// What an address says by words; throws for a password among them.
struct Address {
    explicit Address(const QString& text) : kept(withoutUser(text))
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
            const QString why = readable(problem ? problem : "it cannot be read");
            PQfreemem(problem);
            throw ReportableError(
                QStringLiteral("“%1” is no address of a database (postgresql://HOST[:PORT]/DATABASE): %2.")
                    .arg(kept, why));
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
    QString title() const
    {
        return QStringLiteral("%1%2/%3").arg(host.isEmpty() ? QStringLiteral("localhost") : host,
                                             port.isEmpty() ? QString() : QLatin1Char(':') + port, database);
    }

    QString kept, host, port, database;
};

struct Finish {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Connection = std::unique_ptr<PGconn, Finish>;
using Result = std::unique_ptr<PGresult, Clear>;

/// Rows of doubles in the binary form of COPY.
class CopiedRows {
public:
    CopiedRows(std::size_t columns, const TableDatabase::Take& take) : m_take(take), m_columns(columns)
    {
        for (std::vector<double>& column : m_columns)
            column.reserve(kRowsAtOnce);
    }

    /// What came at once: the first time a header, then a row, or the mark of the end. False: enough.
    bool add(std::span<const char> bytes)
    {
        if (!std::exchange(m_hasHeader, true)) {
            constexpr std::size_t kFixed = 19;  // a signature, flags, the length of what follows
            if (bytes.size() < kFixed || std::memcmp(bytes.data(), "PGCOPY\n\377\r\n", 11) != 0)
                fail();
            const std::size_t more = number<std::uint32_t>(bytes.subspan(15));
            if (more > bytes.size() - kFixed)
                fail();
            bytes = bytes.subspan(kFixed + more);
        }
        if (bytes.size() < 2)
            return bytes.empty() || (fail(), false);
        const auto fields = number<std::uint16_t>(bytes);
        if (fields == 0xffff)
            return true;
        if (fields != m_columns.size())
            fail();
        bytes = bytes.subspan(2);
        for (std::vector<double>& column : m_columns) {
            if (bytes.size() < 4)
                fail();
            const auto length = number<std::uint32_t>(bytes);
            bytes = bytes.subspan(4);
            if (length == 0xffffffff) {
                column.push_back(std::numeric_limits<double>::quiet_NaN());
                continue;
            }
            if (length != 8 || bytes.size() < 8)
                fail();
            column.push_back(std::bit_cast<double>(number<std::uint64_t>(bytes)));
            bytes = bytes.subspan(8);
        }
        return m_columns.front().size() < kRowsAtOnce || flush();
    }
    bool flush()
    {
        if (m_columns.front().empty())
            return true;
        const bool goesOn = m_take(m_columns);
        for (std::vector<double>& column : m_columns)
            column.clear();
        return goesOn;
    }

private:
    template <class T>
    static T number(std::span<const char> bytes)
    {
        T value;
        std::memcpy(&value, bytes.data(), sizeof value);
        if constexpr (sizeof value == 8)
            return __builtin_bswap64(value);
        else if constexpr (sizeof value == 4)
            return __builtin_bswap32(value);
        else
            return __builtin_bswap16(value);
    }
    [[noreturn]] static void fail()
    {
        throw ReportableError(QStringLiteral("The server answers something else than the columns it was asked for."));
    }

    static_assert(std::endian::native == std::endian::little, "the network's order is turned round");
    const TableDatabase::Take& m_take;
    std::vector<std::vector<double>> m_columns;
    bool m_hasHeader = false;
};

class PostgresTables final : public TableDatabase {
public:
    explicit PostgresTables(const QString& address) : m_address(address) {}

    bool select(const std::string& statement, std::size_t columns, const std::function<void()>& begin,
                const Take& take) override
    {
        begin();
        std::string copy = "COPY (";
        copy += statement;
        copy += ") TO STDOUT (FORMAT binary)";
        Connection server = begun();
        if (const Result result(PQexec(server.get(), copy.c_str())); PQresultStatus(result.get()) != PGRES_COPY_OUT)
            fail(*server);
        CopiedRows rows(columns, take);
        for (;;) {
            char* bytes = nullptr;
            const int length = PQgetCopyData(server.get(), &bytes, 1);
            if (length > 0) {
                const std::unique_ptr<char, decltype(&PQfreemem)> owned(bytes, &PQfreemem);
                if (!rows.add({bytes, static_cast<std::size_t>(length)})) {
                    cancel(*server);
                    return false;
                }
            } else if (length == 0) {
                waitForMore(*server);
            } else if (length == -1) {
                break;
            } else {
                fail(*server);
            }
        }
        while (const Result result{PQgetResult(server.get())})
            if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
                fail(*server);
        if (!rows.flush())
            return false;
        finish(std::move(server));
        return true;
    }
    std::vector<QStringList> texts(const std::string& statement) override
    {
        Connection server = begun();
        const Result result(PQexec(server.get(), statement.c_str()));
        if (PQresultStatus(result.get()) != PGRES_TUPLES_OK)
            fail(*server);
        std::vector<QStringList> rows(static_cast<std::size_t>(PQntuples(result.get())));
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (int column = 0; column < PQnfields(result.get()); ++column)
                rows[row].append(QString::fromUtf8(PQgetvalue(result.get(), static_cast<int>(row), column)));
        finish(std::move(server));
        return rows;
    }
    void closeIdle() override
    {
        const std::lock_guard lock(m_mutex);
        m_idle.clear();
    }

    QString title() const override { return m_address.title(); }
    QString address() const override { return m_address.kept; }
    QStringList tables() override
    {
        QStringList found;
        for (const QStringList& row :
             texts("SELECT CASE WHEN pg_table_is_visible(c.oid) THEN c.relname ELSE n.nspname || '.' || c.relname END "
                   "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
                   "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND n.nspname NOT LIKE 'pg\\_%' "
                   "AND n.nspname <> 'information_schema' AND has_table_privilege(c.oid, 'SELECT') ORDER BY 1"))
            found.append(row.value(0));
        return found;
    }
    std::vector<TableServer::Column> columns(const QString& table) override
    {
        std::vector<TableServer::Column> found;
        for (const QStringList& row :
             texts("SELECT attname, format_type(atttypid, NULL), typcategory FROM pg_attribute "
                   "JOIN pg_type ON pg_type.oid = atttypid WHERE attrelid = " +
                   text(QString::fromStdString(tableName(table))) +
                   "::regclass AND attnum > 0 AND NOT attisdropped ORDER BY attnum"))
            found.push_back({row.value(0), row.value(1), kindOf(row.value(1), row.value(2))});
        return found;
    }

    bool isUnique(const QString& table, const QString& column) override
    {
        const std::vector<QStringList> found = texts(
            "SELECT 1 FROM pg_index JOIN pg_attribute ON attrelid = indrelid AND attnum = indkey[0] "
            "WHERE indrelid = " +
            text(QString::fromStdString(tableName(table))) +
            // Of other types two may be the same time here; rows of tables that inherit have no part in the index.
            "::regclass AND indisunique AND indisvalid AND indimmediate AND indnkeyatts = 1 AND indpred IS NULL "
            "AND atttypid IN ('timestamp'::regtype, 'timestamptz'::regtype, 'date'::regtype, 'int4'::regtype, "
            "'float8'::regtype) AND (NOT EXISTS (SELECT 1 FROM pg_inherits WHERE inhparent = indrelid) OR "
            "(SELECT relkind FROM pg_class WHERE oid = indrelid) = 'p') "
            "AND attname = " +
            text(column));
        return !found.empty();
    }

    std::string name(const QString& column) const override { return quoted(column, '"'); }
    std::string tableName(const QString& table) const override
    {
        const qsizetype dot = table.indexOf(QLatin1Char('.'));
        if (dot < 0)
            return quoted(table, '"');
        std::string full = quoted(table.first(dot), '"');
        full += '.';
        return full += quoted(table.mid(dot + 1), '"');
    }
    std::string text(const QString& text) const override
    {
        // In this form backslashes mean the same whatever the server's settings say.
        std::string all = "E";
        QString escaped = text;
        return all += quoted(escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\")), '\'');
    }
    std::string number(const TableServer::Column& column) const override
    {
        return real(column.type == QLatin1String("boolean") ? name(column.name) + "::int" : name(column.name));
    }
    std::string nameText(const TableServer::Column& column) const override
    {
        return column.type == QLatin1String("text") ? name(column.name) : name(column.name) + "::text";
    }
    std::string nothing() const override { return "NULL::float8"; }
    std::string orNull(const std::string& number) const override { return "nullif(" + number + ", 'NaN'::float8)"; }
    std::string orNaN(const std::string& number) const override { return number; }
    std::string seconds(const std::string& of, const QString& type, AttachedTable::TimeUnit unit) const override
    {
        if (type.startsWith(QLatin1String("timestamp")) || type == QLatin1String("date"))
            return "date_part('epoch', " + of + ')';
        return unit == AttachedTable::TimeUnit::Seconds ? real(of) : real(of) + " / 1000";
    }
    std::string about(const TableServer::Column& column, AttachedTable::TimeUnit unit, std::optional<double> from,
                      std::optional<double> to) const override
    {
        const bool isDay = column.type == QLatin1String("date");
        const bool isInstant = isDay || column.type.startsWith(QLatin1String("timestamp"));
        const bool isWithZone = column.type == QLatin1String("timestamp with time zone");
        const double factor = !isInstant && unit == AttachedTable::TimeUnit::Milliseconds ? 1000 : 1;
        const auto value = [&](long long number) {
            const std::string digits = std::to_string(number);
            if (!isInstant)
                return digits;
            std::string instant = "to_timestamp(" + digits + ')';
            if (!isWithZone)
                instant = '(' + instant + " AT TIME ZONE 'UTC')";
            return isDay ? instant + "::date" : instant;
        };
        std::string condition;
        if (const auto least = below(from, factor))
            condition = name(column.name) + " >= " + value(*least);
        if (const auto most = above(to, factor))
            condition = both(condition, name(column.name) + " <= " + value(*most));
        return condition;
    }
    std::string literal(double value) const override
    {
        char digits[40];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        std::string text = "'";
        text.append(digits, end.ptr);
        return text += "'::float8";
    }
    std::string atFirst(const std::string& value, const std::string& time) const override
    {
        return "(min(ARRAY[" + time + ", " + value + "]))[2]";
    }
    std::string real(const std::string& expression) const override { return '(' + expression + ")::float8"; }

private:
    static std::string quoted(const QString& text, char mark)
    {
        std::string quoted(1, mark);
        for (const char each : text.toUtf8()) {
            if (each == mark)
                quoted += mark;
            if (each != 0)
                quoted += each;
        }
        return quoted += mark;
    }
    static Kind kindOf(const QString& type, const QString& category)
    {
        if (type.startsWith(QLatin1String("timestamp")) || type == QLatin1String("date"))
            return Kind::Time;
        if (type == QLatin1String("boolean") ||
            (category == QLatin1String("N") && type != QLatin1String("money") &&
             !type.startsWith(QLatin1String("reg")) && type != QLatin1String("oid")))
            return Kind::Number;
        return category == QLatin1String("S") || category == QLatin1String("E") ? Kind::Text : Kind::Other;
    }

    Connection connected() const
    {
        const QByteArray address = m_address.kept.toUtf8(), user = EnteredUsers::here().of(m_address.kept);
        const char* const words[] = {"dbname",
                                     "fallback_application_name",
                                     "connect_timeout",
                                     "keepalives_idle",
                                     "keepalives_interval",
                                     "keepalives_count",
                                     "client_encoding",
                                     "user",
                                     nullptr};
        // An empty user is whom the environment names.
        const char* const values[] = {address.constData(), "plotix", "5", "15", "5", "3", "UTF8",
                                      user.constData(),    nullptr};
        Connection server(PQconnectdbParams(words, values, 1));
        if (PQstatus(server.get()) != CONNECTION_OK)
            throw ReportableError(
                QStringLiteral("The server “%1” cannot be reached: %2. Start it, or correct the address.")
                    .arg(title(), readable(PQerrorMessage(server.get()))));
        PQsetNoticeProcessor(
            server.get(), [](void*, const char*) {}, nullptr);
        run(*server, "SET default_transaction_read_only = on");
        run(*server, "SET TimeZone = 'UTC'");
        return server;
    }
    /// In a transaction that may only read. One that was kept and is gone meanwhile is replaced.
    Connection begun()
    {
        for (;;) {
            Connection server;
            {
                const std::lock_guard lock(m_mutex);
                if (m_idle.empty())
                    break;
                server = std::move(m_idle.back());
                m_idle.pop_back();
            }
            if (const Result result(PQexec(server.get(), kBegin)); PQresultStatus(result.get()) == PGRES_COMMAND_OK)
                return server;
        }
        Connection server = connected();
        run(*server, kBegin);
        return server;
    }
    void finish(Connection server)
    {
        run(*server, "COMMIT");
        const std::lock_guard lock(m_mutex);
        m_idle.push_back(std::move(server));
    }
    void run(PGconn& server, const char* statement) const
    {
        const Result result(PQexec(&server, statement));
        if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
            fail(server);
    }
    [[noreturn]] void fail(PGconn& server) const
    {
        const QString why = readable(PQerrorMessage(&server));
        throw ReportableError(
            PQstatus(&server) == CONNECTION_OK
                ? QStringLiteral("The server “%1” refuses: %2").arg(title(), why)
                : QStringLiteral("The server “%1” is gone: %2. Start it, and ask again.").arg(title(), why));
    }
    void waitForMore(PGconn& server) const
    {
        constexpr int kLook = 200;  // milliseconds between two looks at whether somebody wants it to end
        pollfd socket{PQsocket(&server), POLLIN, 0};
        int ready = 0;
        for (int waited = 0; ready <= 0 && waited < kSilence && !Interruption::isAsked(); waited += kLook)
            ready = ::poll(&socket, 1, kLook);
        if (ready <= 0) {
            cancel(server);
            throw ReportableError(Interruption::isAsked()
                                      ? QStringLiteral("Asking “%1” was cancelled.").arg(title())
                                      : QStringLiteral("The server “%1” has not answered for %2 minutes: ask for less.")
                                            .arg(title())
                                            .arg(kSilence / 60'000));
        }
        if (PQconsumeInput(&server) == 0)
            fail(server);
    }
    static void cancel(PGconn& server)
    {
        char why[256];
        if (PGcancel* const request = PQgetCancel(&server)) {
            PQcancel(request, why, sizeof why);
            PQfreeCancel(request);
        }
    }

    /// Nobody waits without end for whoever changes the table.
    static constexpr const char* kBegin =
        "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY; SET LOCAL lock_timeout = '10s'";
    const Address m_address;
    std::mutex m_mutex;
    std::vector<Connection> m_idle;  // under the mutex
};

}  // namespace

std::shared_ptr<TableDatabase> postgresTables(const QString& address)
{
    return std::make_shared<PostgresTables>(address);
}

}  // namespace plotix
