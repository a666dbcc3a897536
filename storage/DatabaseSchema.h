#pragma once

#include <span>
#include <vector>

/// What a database file consists of: which program it belongs to, its version, and its tables, in parts, one from each
/// room that has tables. Whoever opens a file hands the schema in; nothing here knows what the tables are for.
///
/// Values; any thread. Tables, steps and texts are *borrowed* and must outlive every database opened with them.
/// Stored: never change a part without a new version and a step that upgrades the old one.
namespace plotix {

struct SchemaPart {
    /// A table, and the version of the whole file that introduced it.
    struct Table {
        const char* name;
        int since;
    };
    /// Upgrades the part from the version before to version `to`.
    struct Step {
        int to;
        const char* sql;
    };

    std::span<const Table> tables;
    const char* create = "";  ///< makes all of them in a new file
    std::span<const Step> steps;
};

struct DatabaseSchema {
    int applicationId = 0;
    int version = 0;                ///< of the whole file, counting from 1
    int pageSize = 0;               ///< bytes
    std::vector<SchemaPart> parts;  ///< made in this order
};

}  // namespace plotix
