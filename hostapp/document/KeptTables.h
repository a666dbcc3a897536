#pragma once

#include "storage/DatabaseSchema.h"

namespace plotix {

/// The tables of the store that keeps records inside the site's own file. Any thread.
const SchemaPart& keptTables();

}  // namespace plotix
