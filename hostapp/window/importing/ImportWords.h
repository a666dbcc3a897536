#pragma once

#include "hostapp/exchange/Importer.h"

/// What an import found and did, worded for the window: in the user's language, naming the import dialog's fields. Any
/// thread, once the language is installed.
namespace plotix {

/// One line, without the file's name.
QString shownText(const ImportFinding& finding);

/// A time in the user's zone, which it names, and in the user's locale. Milliseconds where `withFraction`.
QString shownTime(double seconds, bool withFraction = false);

/// A few lines, each ended by a line break: what was stored, then what was decided about the file.
QString shownText(const ImportSummary& summary);

}  // namespace plotix
