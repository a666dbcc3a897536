#pragma once

#include "records/store/RecordBlock.h"
#include "storage/DatabaseSchema.h"

/// The tables of records inside a site document. Stored: never change without a new version and an upgrade from the old
/// one.
///
/// A chunk holds up to 16,384 successive records of one agent; chunks of one agent do not overlap in time. What belongs
/// to a chunk and a property stands under the id `chunk × 1,048,576 + property`; property 0 is the chunk's times.
/// `docs/formats.md` has the whole layout.
///
/// Which agent a property belongs to, the store looks up in the document's tables: `agent(id)` and `property(id,
/// agent)`.
namespace plotix::schema {

inline constexpr qint64 kPropertiesPerChunk = kPropertyLimit;

/// A row of the tail has the id `agent × 1,048,576 + position`; positions count the agent's rows in time order from 0.
inline constexpr qint64 kRowsPerTail = 1 << 20;

inline constexpr SchemaPart::Table kTables[] = {{"chunk", 1},   {"segment", 1},   {"summary", 1},
                                                {"tail", 2},    {"amendment", 6}, {"run", 7},
                                                {"retired", 8}, {"outline", 9},   {"outlined", 9}};

#define PLOTIX_AMENDMENT_TABLE                                                                                         \
    "CREATE TABLE amendment(id INTEGER PRIMARY KEY AUTOINCREMENT, property INTEGER NOT NULL, kind INTEGER NOT NULL, "  \
    "t0 REAL NOT NULL, t1 REAL NOT NULL, first REAL NOT NULL, last REAL NOT NULL);"                                    \
    "CREATE INDEX amendment_by_time ON amendment(property, kind, t1);"

#define PLOTIX_RETIRED_TABLE "CREATE TABLE retired(chunk INTEGER PRIMARY KEY, last INTEGER NOT NULL);"

#define PLOTIX_OUTLINE_TABLES                                                                                          \
    "CREATE TABLE outline(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, t0 REAL NOT NULL, "            \
    "t1 REAL NOT NULL, head BLOB NOT NULL);"                                                                           \
    "CREATE INDEX outline_by_time ON outline(agent, t0);"                                                              \
    "CREATE TABLE outlined(id INTEGER PRIMARY KEY, data BLOB NOT NULL);"

#define PLOTIX_INDEX_OF_COLUMNS                                                                                        \
    "CREATE TABLE run(id INTEGER PRIMARY KEY, data BLOB NOT NULL);"                                                    \
    "ALTER TABLE summary ADD COLUMN whole BLOB;"

inline constexpr const char* kCreate = R"sql(
CREATE TABLE chunk(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, t0 REAL NOT NULL, t1 REAL NOT NULL,
    n INTEGER NOT NULL);
CREATE INDEX chunk_by_time ON chunk(agent, t0);
CREATE TABLE segment(id INTEGER PRIMARY KEY, codec INTEGER NOT NULL, valid BLOB, data BLOB NOT NULL);
CREATE TABLE summary(id INTEGER PRIMARY KEY, valid INTEGER NOT NULL, minimum REAL, maximum REAL, sum REAL);
CREATE TABLE tail(id INTEGER PRIMARY KEY, data BLOB NOT NULL);
)sql" PLOTIX_AMENDMENT_TABLE PLOTIX_INDEX_OF_COLUMNS PLOTIX_RETIRED_TABLE PLOTIX_OUTLINE_TABLES;

inline constexpr SchemaPart::Step kSteps[] = {{2, "CREATE TABLE tail(id INTEGER PRIMARY KEY, data BLOB NOT NULL);"},
                                              {6, PLOTIX_AMENDMENT_TABLE},
                                              {7, PLOTIX_INDEX_OF_COLUMNS},
                                              {8, PLOTIX_RETIRED_TABLE},
                                              {9, PLOTIX_OUTLINE_TABLES}};

#undef PLOTIX_AMENDMENT_TABLE
#undef PLOTIX_INDEX_OF_COLUMNS
#undef PLOTIX_RETIRED_TABLE
#undef PLOTIX_OUTLINE_TABLES

inline constexpr SchemaPart kRecordTables{kTables, kCreate, kSteps};

}  // namespace plotix::schema
