#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerConnection.h"
#include "records/tables/TableDatabase.h"

#include <QtCore/QRegularExpression>

#include <limits>
#include <mutex>

namespace plotix {

namespace {

using Kind = TableServer::Column::Kind;

const QLatin1String kNoSite("/tables");

/// An address without a site, as `ServerAddress` has it. What stands for the site is shown where the server is named.
ServerAddress databaseAddress(const QString& text)
{
    const QString path = text.section(QLatin1Char('?'), 0, 0), options = text.mid(path.size());
    const QString database = path.section(QLatin1Char('/'), 3);
    if (database.isEmpty() || database.contains(QLatin1Char('/')))
        throw ReportableError(QStringLiteral("“%1” names no database: write clickhouse://HOST[:PORT]/DATABASE.")
                                  .arg(text.section(QLatin1Char('@'), -1)));  // without a password
    ServerAddress address = ServerAddress::parsed(path + kNoSite + options);
    if (!address.user.isEmpty())
        ServerCredentials::enter(address, address.user, std::nullopt);
    address.user.clear();
    return address;
}

/// Without what may stand around a type: “Nullable(Float64)” is a Float64, “LowCardinality(String)” a String.
QString innermost(QString type)
{
    static const QRegularExpression around(QStringLiteral(R"(^(?:Nullable|LowCardinality)\((.*)\)$)"));
    for (QRegularExpressionMatch match; (match = around.match(type)).hasMatch();)
        type = match.captured(1);
    return type;
}

Kind kindOf(const QString& type)
{
    static const QRegularExpression number(QStringLiteral(R"(^(U?Int\d+|Float\d+|Decimal.*|Bool|BFloat16)$)"));
    static const QRegularExpression time(QStringLiteral(R"(^(Date|Date32|DateTime|DateTime64)(\(.*\))?$)"));
    static const QRegularExpression text(QStringLiteral(R"(^(String|FixedString\(.*\)|Enum(8|16)\(.*\)|UUID)$)"));
    const QString plain = innermost(type);
    if (time.match(plain).hasMatch())
        return Kind::Time;
    if (number.match(plain).hasMatch())
        return Kind::Number;
    return text.match(plain).hasMatch() ? Kind::Text : Kind::Other;
}

/// Blocks of columns of doubles as they come.
class NativeBlocks {
public:
    NativeBlocks(std::size_t columns, const TableDatabase::Take& take) : m_take(take), m_columns(columns) {}

    void begin() { m_bytes.clear(); }
    bool isWhole() const { return m_bytes.empty(); }
    /// False: enough.
    bool add(std::span<const std::byte> bytes)
    {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        std::size_t used = 0;
        bool goesOn = true;
        while (goesOn && used < m_bytes.size()) {
            const std::size_t length = block(std::span(m_bytes).subspan(used), goesOn);
            if (length == 0)
                break;
            used += length;
        }
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(used));
        return goesOn;
    }

private:
    /// Bytes it took; 0: there are too few yet.
    std::size_t block(std::span<const std::byte> bytes, bool& goesOn)
    {
        rowbinary::Reader reader(bytes);
        try {
            const std::size_t columns = reader.length(), rows = reader.length();
            if (rows > kMostRows || (rows > 0 && columns != m_columns.size()))
                fail();
            std::vector<std::span<const std::byte>> found;
            for (std::size_t column = 0; column < columns; ++column) {
                reader.text();
                if (reader.text() != "Float64")
                    fail();
                found.push_back(reader.raw(rows * sizeof(double)));
            }
            if (rows == 0)
                return reader.at();
            for (std::size_t column = 0; column < columns; ++column) {
                m_columns[column].resize(rows);
                std::memcpy(m_columns[column].data(), found[column].data(), found[column].size());
            }
            goesOn = m_take(m_columns);
            return reader.at();
        } catch (const rowbinary::TooShort&) {
            return 0;
        }
    }
    [[noreturn]] static void fail()
    {
        throw ReportableError(QStringLiteral("The server answers something else than the columns it was asked for."));
    }

    static constexpr std::size_t kMostRows = std::size_t{1} << 26;
    const TableDatabase::Take& m_take;
    std::vector<std::byte> m_bytes;
    std::vector<std::vector<double>> m_columns;
};

class ClickHouseTables final : public TableDatabase {
public:
    explicit ClickHouseTables(const QString& address)
        : m_address(databaseAddress(address)), m_credentials(ServerCredentials::of(m_address))
    {
    }

    bool select(const std::string& statement, std::size_t columns, const std::function<void()>& begin,
                const Take& take) override
    {
        NativeBlocks blocks(columns, take);
        const Lease server(*this);
        const bool isDone = server->stream(
            statement + " FORMAT Native",
            [&] {
                blocks.begin();
                begin();
            },
            [&](std::span<const std::byte> bytes) { return blocks.add(bytes); });
        // Where something went wrong on the way, the message stands where the next block would.
        if (isDone && !blocks.isWhole())
            throw ReportableError(
                QStringLiteral("The server “%1” broke off in the middle of its answer: ask again.").arg(title()));
        return isDone;
    }
    std::vector<QStringList> texts(const std::string& statement) override
    {
        const Lease server(*this);
        const QByteArray answer = [&] {
            const std::vector<std::byte> bytes = server->ask(statement + " FORMAT TabSeparated");
            return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
        }();
        std::vector<QStringList> rows;
        for (const QByteArray& line : answer.split('\n'))
            if (!line.isEmpty()) {
                QStringList& row = rows.emplace_back();
                for (const QByteArray& cell : line.split('\t'))
                    row.append(unescaped(cell));
            }
        return rows;
    }
    void closeIdle() override
    {
        const std::lock_guard lock(m_mutex);
        m_idle.clear();
    }

    QString title() const override { return m_address.title().section(QLatin1Char('/'), 0, 1); }
    QString address() const override { return m_address.text().replace(kNoSite, QString()); }
    QStringList tables() override
    {
        QStringList found;
        for (const QStringList& row :
             texts("SELECT name FROM system.tables WHERE database = " + text(m_address.database) + " ORDER BY name"))
            found.append(row.value(0));
        return found;
    }
    std::vector<TableServer::Column> columns(const QString& table) override
    {
        std::vector<TableServer::Column> found;
        for (const QStringList& row : texts("DESCRIBE TABLE " + tableName(table)))
            found.push_back({row.value(0), row.value(1), kindOf(row.value(1))});
        return found;
    }

    std::string name(const QString& column) const override { return quoted(column, '`'); }
    std::string tableName(const QString& table) const override
    {
        std::string full = quoted(m_address.database, '`');
        full += '.';
        full += quoted(table, '`');
        return full;
    }
    std::string text(const QString& text) const override { return quoted(text, '\''); }
    std::string number(const TableServer::Column& column) const override { return orNaN(real(name(column.name))); }
    std::string nameText(const TableServer::Column& column) const override
    {
        return column.type == QLatin1String("String") ? name(column.name) : "toString(" + name(column.name) + ')';
    }
    std::string nothing() const override { return "CAST(NULL AS Nullable(Float64))"; }
    std::string orNull(const std::string& number) const override
    {
        return "if(isNaN(" + number + "), NULL, " + number + ')';
    }
    std::string orNaN(const std::string& number) const override { return "ifNull(" + number + ", nan)"; }
    std::string seconds(const std::string& of, const QString& type, AttachedTable::TimeUnit unit) const override
    {
        const QString plain = innermost(type);
        if (plain.startsWith(QLatin1String("DateTime64")))
            return orNaN("toFloat64(" + of + ')');
        if (plain.startsWith(QLatin1String("DateTime")))
            return orNaN("toFloat64(toUInt32(" + of + "))");
        if (plain == QLatin1String("Date32"))
            return orNaN("toFloat64(toInt32(" + of + ")) * 86400");
        if (plain == QLatin1String("Date"))
            return orNaN("toFloat64(toUInt16(" + of + ")) * 86400");
        const std::string number = orNaN(real(of));
        return unit == AttachedTable::TimeUnit::Seconds ? number : number + " / 1000";
    }
    std::string about(const TableServer::Column& column, AttachedTable::TimeUnit unit, std::optional<double> from,
                      std::optional<double> to) const override
    {
        const QString plain = innermost(column.type);
        const bool isDay = plain == QLatin1String("Date");
        const bool isInstant = plain.startsWith(QLatin1String("DateTime"));
        if (plain == QLatin1String("Date32"))
            return {};
        const double factor = isDay                                                         ? 1.0 / 86400
                              : !isInstant && unit == AttachedTable::TimeUnit::Milliseconds ? 1000
                                                                                            : 1;
        const auto value = [&](long long number) {
            const long long greatest = isDay ? 65535 : std::numeric_limits<std::uint32_t>::max();
            const std::string digits = std::to_string(isDay || isInstant ? std::clamp(number, 0LL, greatest) : number);
            return isDay ? "toDate(" + digits + ')' : isInstant ? "toDateTime(" + digits + ')' : digits;
        };
        std::string condition;
        // A bound that a type cannot have stands at its end: it shuts nothing out that could be there.
        const bool isBounded = plain == QLatin1String("DateTime") || plain.startsWith(QLatin1String("DateTime("));
        const auto isKept = [&](long long number) {
            return isDay || isBounded || !isInstant ||
                   (number >= 0 && number < std::numeric_limits<std::uint32_t>::max());
        };
        if (const auto least = below(from, factor); least && isKept(*least))
            condition = name(column.name) + " >= " + value(*least);
        if (const auto most = above(to, factor); most && isKept(*most))
            condition = both(condition, name(column.name) + " <= " + value(*most));
        return condition;
    }
    /// Servers of 2018 read decimal digits into a double that may be a unit in the last place off.
    std::string literal(double value) const override
    {
        const QByteArray bytes(reinterpret_cast<const char*>(&value), sizeof value);
        return "reinterpretAsFloat64(unhex('" + bytes.toHex().toStdString() + "'))";
    }
    std::string atFirst(const std::string& value, const std::string& time) const override
    {
        return "argMin(" + orNaN(value) + ", " + time + ')';
    }
    std::string real(const std::string& expression) const override
    {
        std::string text = "toFloat64(";
        text += expression;
        return text += ')';
    }

private:
    static std::string quoted(const QString& text, char mark)
    {
        std::string quoted(1, mark);
        for (const char each : text.toUtf8()) {
            if (each == mark || each == '\\')
                quoted += '\\';
            quoted += each;
        }
        return quoted += mark;
    }
    static QString unescaped(const QByteArray& cell)
    {
        QByteArray text;
        for (qsizetype i = 0; i < cell.size(); ++i) {
            const bool isEscape = cell[i] == '\\' && i + 1 < cell.size();
            const char next = isEscape ? cell[++i] : cell[i];
            text += !isEscape ? next : next == 't' ? '\t' : next == 'n' ? '\n' : next == '0' ? '\0' : next;
        }
        return QString::fromUtf8(text);
    }

    /// A connection for as long as it lives.
    class Lease {
    public:
        explicit Lease(ClickHouseTables& of) : m_of(of)
        {
            {
                const std::lock_guard lock(of.m_mutex);
                if (!of.m_idle.empty()) {
                    m_server = std::move(of.m_idle.back());
                    of.m_idle.pop_back();
                }
            }
            if (!m_server)
                m_server = std::make_unique<ServerConnection>(of.m_address, of.m_credentials);
        }
        ~Lease()
        {
            const std::lock_guard lock(m_of.m_mutex);
            m_of.m_idle.push_back(std::move(m_server));
        }
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        ServerConnection* operator->() const { return m_server.get(); }

    private:
        ClickHouseTables& m_of;
        std::unique_ptr<ServerConnection> m_server;
    };

    const ServerAddress m_address;
    const ServerCredentials m_credentials;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<ServerConnection>> m_idle;  // under the mutex
};

}  // namespace

std::shared_ptr<TableDatabase> clickHouseTables(const QString& address)
{
    return std::make_shared<ClickHouseTables>(address);
}

}  // namespace plotix
