#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/EditJournal.h"

#include <QtCore/QString>
#include <QtGui/QColor>

#include <optional>
#include <vector>

/// Cleaning a site up: agents and properties renamed, merged and deleted, values taken out; and undoing that, or an
/// import, also after the site was closed.
///
/// Each function is one transaction over the site's file, which may be open as a document: `SiteDocument::reload` picks
/// the change up. Stored views go on showing what was renamed or merged. Names that were given up still find what
/// has taken their place, so that imports and recordings go on into it. Free functions; any thread. Each throws
/// ReportableError; the site is then as it was.
namespace plotix {

/// The name must be neither empty nor another's of the same kind.
EditOutcome renameAgent(const QString& site, RowId agent, const QString& name);
EditOutcome renameProperty(const QString& site, RowId property, const QString& name);

/// The other one keeps its values; those of the first go where it has none. Values are converted to its unit; refused
/// between units that do not convert. Properties must be of one agent.
EditOutcome mergeProperties(const QString& site, RowId property, RowId into, const EditProgress& progress = {});
/// Properties of the same name are merged, the others move.
EditOutcome mergeAgents(const QString& site, RowId agent, RowId into, const EditProgress& progress = {});

/// A computed property as somebody asks for it.
struct ComputedProperty {
    QString name;
    PropertyFormula formula;
    std::optional<QColor> color = {};  ///< absent: the next of the palette, or as it is
};

/// Makes a computed property of the agent, or changes the one given. Throws with a sentence where the formula cannot be
/// worked out, and where the name is taken.
EditOutcome computeProperty(const QString& site, RowId agent, const ComputedProperty& wanted,
                            std::optional<RowId> property = {});
/// Changes one for who looked at it before; throws ChangedMeanwhile where its name or formula is another now, or it is
/// gone.
EditOutcome changeComputed(const QString& site, RowId agent, const ComputedProperty& wanted,
                           const SiteProperty::Description& before);

EditOutcome deleteProperty(const QString& site, RowId property, const EditProgress& progress = {});
/// With its properties, records and stored views.
EditOutcome deleteAgent(const QString& site, RowId agent, const EditProgress& progress = {});

/// Takes out the values of these properties with from ≤ time ≤ to; records left without any go too.
EditOutcome removeValues(const QString& site, RowId agent, const std::vector<RowId>& properties,
                         std::optional<double> from, std::optional<double> to, const EditProgress& progress = {});

/// What can be undone, oldest first.
std::vector<EditStep> editSteps(const QString& site);
/// Undoes the last step. Throws when there is none.
EditStep undoLastEdit(const QString& site, const EditProgress& progress = {});
/// Undoes the last import; refused while later steps would have to be undone first.
EditStep undoLastImport(const QString& site, const EditProgress& progress = {});

}  // namespace plotix
