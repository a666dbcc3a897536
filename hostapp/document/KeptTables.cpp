#include "hostapp/document/KeptTables.h"

#include "records/sqlite/RecordSchema.h"

namespace plotix {

const SchemaPart& keptTables()
{
    return schema::kRecordTables;
}

}  // namespace plotix
