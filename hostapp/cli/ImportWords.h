#pragma once

#include "hostapp/exchange/Importer.h"

/// What an import found and did, worded for the command line: in English, naming its options. Pure; any thread.
namespace plotix {

/// One line, without the file's name.
QString printedText(const ImportFinding& finding);

/// A few lines, each ended by a line break.
QString printedText(const ImportSummary& summary);

}  // namespace plotix
