#include "storage/Database.h"

#include <sqlite3.h>

namespace plotix {

namespace {

void check(const Database& database, int result)
{
    if (result != SQLITE_OK)
        database.fail(result);
}

}  // namespace

Statement::Statement(const Database& database, const char* sql) : m_database(database)
{
    check(database, sqlite3_prepare_v3(database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr));
}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

Statement& Statement::bind(int position, qint64 value)
{
    check(m_database, sqlite3_bind_int64(m_statement, position, value));
    return *this;
}

Statement& Statement::bind(int position, double value)
{
    check(m_database, sqlite3_bind_double(m_statement, position, value));
    return *this;
}

Statement& Statement::bind(int position, const QString& value)
{
    const QByteArray text = value.toUtf8();
    check(m_database,
          sqlite3_bind_text(m_statement, position, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bind(int position, const QByteArray& value)
{
    const char* data = value.isNull() ? "" : value.constData();  // a null pointer would store NULL, not an empty blob
    check(m_database, sqlite3_bind_blob(m_statement, position, data, static_cast<int>(value.size()), SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bindBytes(int position, const void* data, std::size_t size)
{
    check(m_database, sqlite3_bind_blob64(m_statement, position, data, size, SQLITE_STATIC));
    return *this;
}

Statement& Statement::bindNothing(int position)
{
    check(m_database, sqlite3_bind_null(m_statement, position));
    return *this;
}

Statement& Statement::bindPointer(int position, void* to, const char* kind)
{
    check(m_database, sqlite3_bind_pointer(m_statement, position, to, kind, nullptr));
    return *this;
}

bool Statement::step()
{
    const int result = sqlite3_step(m_statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        sqlite3_reset(m_statement);
        m_database.fail(result);
    }
    return result == SQLITE_ROW;
}

void Statement::run()
{
    while (step()) {
    }
    reset();
}

void Statement::reset()
{
    sqlite3_reset(m_statement);
}

bool Statement::isNothing(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

QString Statement::text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(m_statement, column));
}

QByteArray Statement::bytes(int column) const
{
    const auto* data = static_cast<const char*>(rawBytes(column));
    return QByteArray(data, static_cast<qsizetype>(byteCount(column)));
}

const void* Statement::rawBytes(int column) const
{
    return sqlite3_column_blob(m_statement, column);
}

std::size_t Statement::byteCount(int column) const
{
    return static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
}

}  // namespace plotix
