#pragma once

#include "hostapp/live/ReadingSource.h"

#include <QtCore/QMap>

#include <memory>
#include <span>

/// The live sources there are, by name. A new one is a folder beside the others and a row of the table.
///
/// Any thread.
namespace plotix {

/// What a source is made with: "address", "topic" and the like, as the user gave them.
using SourceSettings = QMap<QString, QString>;

struct ReadingSourceKind {
    const char* name;                    ///< as the user calls it
    std::span<const char* const> needs;  ///< the settings it requires
    std::unique_ptr<ReadingSource> (*make)(const SourceSettings& settings);
};

std::span<const ReadingSourceKind> readingSourceKinds();

/// Throws ReportableError for a setting that is missing.
std::unique_ptr<ReadingSource> makeReadingSource(const ReadingSourceKind& kind, const SourceSettings& settings = {});

/// Throws ReportableError for an unknown name too.
std::unique_ptr<ReadingSource> makeReadingSource(const QString& name, const SourceSettings& settings = {});

}  // namespace plotix
