#pragma once

#include <QtCore/QtGlobal>

/// The tables of a site document. Stored: never change without a new version and a way up from the old one.
///
/// A chunk is a run of up to 16,384 records of one agent; chunks of one agent do not overlap in time. What belongs to a
/// chunk and a property stands under the id `chunk × 1,048,576 + property`; property 0 is the chunk's times.
/// `docs/formats.md` has the whole layout.
namespace plotix::schema {

inline constexpr int kApplicationId = 0x506C7478;  ///< "Pltx"
inline constexpr int kVersion = 2;
inline constexpr int kPageSize = 16384;

inline constexpr qint64 kPropertiesPerChunk = 1 << 20;

/// A row of the tail stands under the id `agent × 1,048,576 + position`, its agent's records in time order from 0 on.
inline constexpr qint64 kRowsPerTail = 1 << 20;

/// Tables, and the version they came with.
struct Table {
    const char* name;
    int since;
};
inline constexpr Table kTables[] = {{"site", 1},  {"agent", 1},   {"property", 1}, {"plugin", 1}, {"setting", 1},
                                    {"chunk", 1}, {"segment", 1}, {"summary", 1},  {"tail", 2}};

inline constexpr const char* kCreate = R"sql(
CREATE TABLE site(id INTEGER PRIMARY KEY CHECK(id = 1), name TEXT NOT NULL, location TEXT NOT NULL);
CREATE TABLE agent(id INTEGER PRIMARY KEY AUTOINCREMENT, identifier TEXT NOT NULL UNIQUE, name TEXT NOT NULL UNIQUE);
CREATE TABLE property(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, name TEXT NOT NULL,
    key TEXT NOT NULL, unit TEXT NOT NULL, archived_unit TEXT NOT NULL, color INTEGER NOT NULL,
    type INTEGER NOT NULL, visible INTEGER NOT NULL, UNIQUE(agent, key));
CREATE TABLE plugin(id INTEGER PRIMARY KEY AUTOINCREMENT, class_name TEXT NOT NULL, state BLOB NOT NULL);
CREATE TABLE setting(key TEXT PRIMARY KEY, value BLOB NOT NULL);
CREATE TABLE chunk(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, t0 REAL NOT NULL, t1 REAL NOT NULL,
    n INTEGER NOT NULL);
CREATE INDEX chunk_by_time ON chunk(agent, t0);
CREATE TABLE segment(id INTEGER PRIMARY KEY, codec INTEGER NOT NULL, valid BLOB, data BLOB NOT NULL);
CREATE TABLE summary(id INTEGER PRIMARY KEY, valid INTEGER NOT NULL, minimum REAL, maximum REAL, sum REAL);
CREATE TABLE tail(id INTEGER PRIMARY KEY, data BLOB NOT NULL);
)sql";

/// Brings a document of version 1 to version 2, inside a transaction.
inline constexpr const char* kUpgradeTo2 = R"sql(
CREATE TABLE tail(id INTEGER PRIMARY KEY, data BLOB NOT NULL);
PRAGMA user_version=2;
)sql";

}  // namespace plotix::schema
