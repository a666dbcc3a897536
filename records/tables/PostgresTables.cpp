#include "base/Interruption.h"
#include "base/ReportableError.h"
#include "records/tables/CopiedRows.h"
#include "records/tables/PostgresAddress.h"
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

struct Finish {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Connection = std::unique_ptr<PGconn, Finish>;
using Result = std::unique_ptr<PGresult, Clear>;

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
        const QByteArray address = m_address.kept.toUtf8(), user = m_address.user();
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
                    .arg(title(), readablePostgres(PQerrorMessage(server.get()))));
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
        const QString why = readablePostgres(PQerrorMessage(&server));
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
    const PostgresAddress m_address;
    std::mutex m_mutex;
    std::vector<Connection> m_idle;  // under the mutex
};

}  // namespace

std::shared_ptr<TableDatabase> postgresTables(const QString& address)
{
    return std::make_shared<PostgresTables>(address);
}

}  // namespace plotix
