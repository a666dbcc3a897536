#pragma once

#include "storage/Database.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Sites as programs of the first two versions wrote them, whose SQL nobody has any more. Stored forms: they never
/// change.
///
/// One agent, "One", with the properties 1 (Air) and 2 (Wind). Air is 1.5, nothing and −0.25 at the seconds 10, 20 and
/// 30, in a chunk of plain doubles. The second version has packed columns and a tail, too: Air from 40 to 190 every ten
/// seconds, 21.5 at first and −0.0 at the end, and 22.5 at 200.
namespace formersite {

inline constexpr const char* kTables = R"sql(
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
)sql";

inline constexpr const char* kRows = R"sql(
INSERT INTO site VALUES(1, 'Old', '');
INSERT INTO agent VALUES(1, 'a', 'One');
INSERT INTO property VALUES(1, 1, 'Air', 'air', '', '', 4283872489, 0, 1);
INSERT INTO property VALUES(2, 1, 'Wind', 'wind', '', '', 4293304064, 0, 1);
INSERT INTO chunk VALUES(1, 1, 10.0, 30.0, 3);
INSERT INTO segment VALUES(1048576, 0, NULL, x'000000000000244000000000000034400000000000003E40');
INSERT INTO segment VALUES(1048577, 0, x'05', x'000000000000F83F0000000000000000000000000000D0BF');
INSERT INTO summary VALUES(1048577, 2, -0.25, 1.5, 1.25);
)sql";

inline constexpr const char* kTableOfVersion2 = R"sql(
CREATE TABLE tail(id INTEGER PRIMARY KEY, data BLOB NOT NULL);
)sql";

inline constexpr const char* kRowsOfVersion2 = R"sql(
INSERT INTO chunk VALUES(2, 1, 40.0, 190.0, 16);
INSERT INTO segment VALUES(2097152, 2, NULL, x'0002000000000000' || x'00' || x'2800000000000000' || x'0A00000000000000');
INSERT INTO segment VALUES(2097153, 2, NULL, x'0100000001000000' || x'02' || x'D700000000000000' ||
    x'0000000000000000' || x'0500000000000000' || x'0900000000000000' || x'0E00000000000000' ||
    x'0F00000000000000' || x'0B00000000000000' || x'0600000000000000' || x'0500000000000000' || x'0F00');
INSERT INTO summary VALUES(2097153, 16, 0.0, 21.8, 325.0);
INSERT INTO tail VALUES(1048576, x'0000000000006940' || x'03000000' || x'0000000000803640');
)sql";

/// Makes the file of version 1 or 2.
inline void create(const QString& file, int version)
{
    const QByteArray tables = QByteArray(kTables) + (version > 1 ? kTableOfVersion2 : "");
    const plotix::DatabaseSchema schema{0x506C7478, version, 16384, {{{}, tables.constData(), {}}}};
    plotix::Database::create(file, schema, QByteArray(kRows) + (version > 1 ? kRowsOfVersion2 : ""));
}

}  // namespace formersite
