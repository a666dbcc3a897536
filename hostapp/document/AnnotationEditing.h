#pragma once

#include "hostapp/document/EditJournal.h"
#include "hostapp/document/SiteAnnotations.h"

#include <functional>

/// Setting limits and writing notes, as edits of a site that can be undone, also after the site was closed.
///
/// Each function is one transaction over the site's file, which may be open as a document: `SiteDocument::reload` picks
/// the change up. Free functions; any thread. Each throws ReportableError; the site is then as it was.
namespace plotix {

/// Takes the limits of a property as they are and leaves those wanted: what has an id is changed, what has none is new,
/// what is missing goes.
using LimitChange = std::function<void(std::vector<SiteLimit>& limits)>;
EditOutcome changeLimits(const QString& site, RowId property, const LimitChange& change);

/// A note with id 0 is new. Says itself when it was created and modified. `made`, unless null, is told its id.
EditOutcome writeNote(const QString& site, SiteNote note, qint64* made = nullptr);
EditOutcome removeNotes(const QString& site, const std::vector<qint64>& ids);

/// A note's first words, for lists: at most so many letters, on one line.
QString shortText(const QString& text, int most = 60);

}  // namespace plotix
