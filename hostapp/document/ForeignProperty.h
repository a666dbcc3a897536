#pragma once

#include "hostapp/document/SiteEditing.h"
#include "hostapp/formulas/FormulaDirectory.h"

#include <optional>

/// Another agent's property as one of this agent, so that both stand in one trend. Pure; any thread.
namespace plotix {

struct ForeignProperty {
    /// A computed property that says nothing but the other one's values: "Power (Unit B)", or with a number behind
    /// where the name is taken.
    ComputedProperty wanted;
    std::optional<QString> key;  ///< of the one that does so already; then nothing has to be made
};

/// Nothing where the agent or the property is not there, and for a property of the agent's own.
std::optional<ForeignProperty> foreignProperty(const FormulaDirectory& directory, RowId agent, RowId property);

}  // namespace plotix
