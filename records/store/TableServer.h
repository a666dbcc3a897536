#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <memory>
#include <vector>

/// Tables of other people's databases, read where they stand: what there is, and their rows as an agent's records.
namespace plotix {

class RecordStore;

/// Which table holds an agent's records, and how. Values; any thread.
struct AttachedTable {
    /// What a time column's numbers count since 1970-01-01 UTC; of no meaning for dates and times.
    enum class TimeUnit { Seconds, Milliseconds };

    QString address;  ///< `clickhouse://…/database` or `postgresql://…/database`; never has a user or a password
    QString table;    ///< as the server lists it: "readings", "plant.readings"
    QString timeColumn;
    TimeUnit timeUnit = TimeUnit::Seconds;
    QString nameColumn;                ///< empty: a column each; else a row names the property its value is of
    QString valueColumn;               ///< of rows that name their property
    std::map<RowId, QString> columns;  ///< by property: its column, or its name in the rows

    bool isLong() const { return !nameColumn.isEmpty(); }

    /// As a site keeps it. `docs/formats.md` has the form.
    QByteArray bytes() const;
    /// Throws ReportableError for bytes of a later version, and for others.
    static AttachedTable of(const QByteArray& bytes);

    friend bool operator==(const AttachedTable&, const AttachedTable&) = default;
};

/// A database with tables. *Shared*; any thread. Asks when it is told to and not before. Throws ReportableError, one
/// line for people, where it cannot be reached or refuses. Whatever it is asked, nothing there is changed.
class TableServer {
public:
    virtual ~TableServer() = default;

    struct Column {
        enum class Kind { Time, Number, Text, Other };
        QString name, type;  ///< the type as the server calls it
        Kind kind = Kind::Other;
    };

    virtual QString title() const = 0;    ///< for people, without a user
    virtual QString address() const = 0;  ///< as it may be kept: without a user
    virtual QStringList tables() = 0;
    /// In the order of the table; throws where there is none.
    virtual std::vector<Column> columns(const QString& table) = 0;
    /// The different texts of a column, in order; at most so many.
    virtual QStringList names(const QString& table, const QString& column, int most) = 0;

    /// The records of the table for whichever agent is asked for. Nobody is asked yet.
    virtual std::shared_ptr<RecordStore> records(const AttachedTable& table) = 0;
};

}  // namespace plotix
