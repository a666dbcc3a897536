#pragma once

#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

/// A site document's file: the document's own tables and, if records are kept inside it, those of the record store.
///
/// Any thread. Stored: never change without a new version and an upgrade from the old one. `docs/formats.md` has the
/// whole layout.
namespace plotix {

const DatabaseSchema& siteSchema();

/// Makes a new, empty site; its name defaults to the file's base name. Throws ReportableError when the path is taken.
void createSiteFile(const QString& path, const QString& siteName);

}  // namespace plotix
