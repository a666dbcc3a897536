#pragma once

#include "hostapp/core/SiteProperty.h"

#include <QtCore/QString>

#include <memory>
#include <optional>
#include <vector>

/// What names in formulas may mean: the agents and properties of a site at one moment. A value; any thread.
namespace plotix {

struct FormulaDirectory {
    struct Agent {
        qint64 id = 0;
        QString name;
        std::vector<SiteProperty::Description> properties;
    };
    std::vector<Agent> agents;

    const Agent* agentWithId(qint64 id) const;
    /// Whatever the case, unless the case tells two apart.
    const Agent* agentNamed(const QString& name) const;
    const SiteProperty::Description* propertyWithId(qint64 id) const;
    /// By name, then by key, then by either whatever the case.
    static const SiteProperty::Description* propertyNamed(const Agent& agent, const QString& name);
    /// The agent the property belongs to; null when it is not there.
    const Agent* agentOf(qint64 property) const;
};

}  // namespace plotix
