#pragma once

#include "records/store/TableServer.h"

#include <QtCore/QString>

#include <map>

/// Attaching a table of somebody else's to a site: what is left open is guessed where only one thing can be meant, and
/// refused with what there is else. Free functions; any one thread. They throw ReportableError.
namespace plotix {

struct TableChoice {
    QString address, table;
    QString timeColumn;
    AttachedTable::TimeUnit timeUnit = AttachedTable::TimeUnit::Seconds;
    QString nameColumn, valueColumn;   ///< both empty: a column for each property
    QStringList values;                ///< columns, or names in rows; empty: all
    QString agent;                     ///< its name; empty: the table's
    std::map<QString, QString> units;  ///< by column or name
};

/// Names in rows that become properties at most.
inline constexpr int kMostNames = 1000;

/// With everything said. Waits for the server.
TableChoice completed(TableServer& server, TableChoice choice);

/// Makes an agent of the table, with a property for each of its values. Requires: the choice is complete.
void attachTable(const QString& site, const TableChoice& choice);

}  // namespace plotix
