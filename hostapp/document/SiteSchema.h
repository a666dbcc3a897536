#pragma once

#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

/// A site document's file: the document's own tables and, where records are kept inside it, theirs.
///
/// Any thread. Stored: never change without a new version and a way up from the old one. `docs/formats.md` has the
/// whole layout.
namespace plotix {

const DatabaseSchema& siteSchema();

/// Makes a new, empty site; its name defaults to the file's base name. Throws ReportableError when anything is there
/// already.
void createSiteFile(const QString& path, const QString& siteName);

}  // namespace plotix
