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
/// The same for who looked at them before; throws ChangedMeanwhile where they are others now.
EditOutcome replaceLimits(const QString& site, RowId property, const std::vector<SiteLimit>& before,
                          const std::vector<SiteLimit>& wanted);

/// A note with id 0 is new. Says itself when it was created and modified. `made`, unless null, is told its id.
EditOutcome writeNote(const QString& site, SiteNote note, qint64* made = nullptr);
/// The same for who looked at it before; throws ChangedMeanwhile where it is another now, or gone.
EditOutcome rewriteNote(const QString& site, const SiteNote& before, const SiteNote& wanted);
EditOutcome removeNotes(const QString& site, const std::vector<qint64>& ids);

/// A note's first words, for lists: at most so many letters, on one line.
QString shortText(const QString& text, int most = 60);

}  // namespace plotix
