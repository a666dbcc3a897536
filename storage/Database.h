#pragma once

#include "storage/DatabaseSchema.h"
#include "storage/FormerFile.h"
#include "storage/OpenedFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_blob;
struct sqlite3_stmt;

/// One connection to a site document's file, and statements over it: SQLite with every failure turned into a
/// ReportableError that says what to do, in one line. Whoever opens a connection *owns* it. One thread at a time uses a
/// connection; any number of connections work at the same time.
namespace plotix {

class EarlyWriting;
class Statement;

class Database {
public:
    enum class Access {
        ReadWrite,      ///< the file must exist and be ours and writable; upgrades it to the current version
        ReadOnly,       ///< never writes; the file must exist and be ours
        AtRest,         ///< ReadOnly, and creates nothing beside a file that nobody has open; nobody may write it
        BestAvailable,  ///< ReadWrite if the file allows it, else ReadOnly
    };

    /// Makes a new file with its tables, then runs the SQL of `firstRows`. Throws when the path is taken.
    static void create(const QString& file, const DatabaseSchema& schema, const QByteArray& firstRows = {});

    /// Checks that the file is one of this schema before anything could change it.
    Database(const QString& file, DatabaseSchema schema, Access access);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const QString& file() const { return m_file; }
    const DatabaseSchema& schema() const { return m_schema; }
    bool isReadOnly() const { return m_readOnly; }
    sqlite3* handle() const { return m_handle; }

    void execute(const char* sql);
    qint64 lastInsertedRow() const;

    /// How long a statement waits for another writer; 3 seconds at first.
    void setPatience(int milliseconds);

    /// Starts writing at once, waiting for another writer. Throws when the file is read-only, FileReplaced when another
    /// file has taken its name.
    void beginWriting();
    /// Throws FileReplaced also when the file was replaced while this was at work; nobody may rely on it being stored.
    void commit();
    /// The transaction under way writes megabytes: its commit has the system write early, and waits less.
    void expectMuch();
    bool isWriting() const;    ///< between beginWriting and its end
    void rollBack() noexcept;  ///< without a transaction: nothing

    /// The file this connection has open, wherever its name leads now.
    const OpenedFile& openedFile() const { return m_opened; }
    /// Throws FileReplaced, or ReportableError when the name leads nowhere.
    void requireInPlace() const;
    QString replacedMessage() const;  ///< of FileReplaced
    /// Takes the log from where the next program would find it; does nothing while the file is where it was.
    void mergeLogIntoOwnFile() noexcept;
    /// Copies a replaced file that no name leads to any more beside the new one; a sentence that says where what was
    /// stored is now. May take as long as copying the file.
    QString keepReplaced();

    /// A number that differs once another connection has changed the document, and after each commit of this one.
    /// Meaningful inside a transaction.
    unsigned dataVersion() const;

    [[noreturn]] void fail(int resultCode) const;
    [[noreturn]] void failAsDamaged(const QString& detail) const;

private:
    void open(int flags, const QString& uri);
    bool lacksSpace();        ///< for the log's index, which even reading needs
    void openWithoutSpace();  ///< again, for reading alone
    [[noreturn]] void failForSystem() const;
    std::unique_ptr<EarlyWriting> writingEarly() const;
    void inspect(const QString& uri);
    int checkHeader();  ///< the version
    void checkTables(int version);
    void upgrade();

    QString m_file;
    OpenedFile m_opened;  // before the connection, so that it cannot hold a later file
    DatabaseSchema m_schema;
    sqlite3* m_handle = nullptr;
    std::optional<OpenInPlace> m_inPlace;  // while it is open with a log
    bool m_readOnly = false;
    bool m_isMuch = false;                         // what the next commit writes
    std::unique_ptr<Statement> m_begin, m_commit;  // made when first used, since preparing takes as long as running
};

/// A prepared statement. Borrows its database. Positions count from 1 when binding and from 0 when reading.
class Statement {
public:
    Statement(const Database& database, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int position, qint64 value);
    Statement& bind(int position, double value);
    Statement& bind(int position, const QString& value);
    Statement& bind(int position, const QByteArray& value);
    /// Borrows the bytes until the statement has run.
    Statement& bindBytes(int position, const void* data, std::size_t size);
    Statement& bindNothing(int position);
    /// Borrows what it points to until the statement is bound anew; `kind`: what a function asks for, a constant.
    Statement& bindPointer(int position, void* to, const char* kind);

    bool step();  ///< true while there is a row
    void run();   ///< to the end, then ready to be bound again
    void reset();

    bool isNothing(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;  ///< nothing answers 0
    QString text(int column) const;
    QByteArray bytes(int column) const;
    const void* rawBytes(int column) const;  ///< borrowed until the next step
    std::size_t byteCount(int column) const;

private:
    const Database& m_database;
    sqlite3_stmt* m_statement = nullptr;
};

}  // namespace plotix
