#pragma once

#include "base/KTVArrayController.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <memory>
#include <utility>
#include <vector>

/// One row of the setup sheet's property list: a property of the agent and its tick box.
///
/// The toolbar plug-in *shares* its rows with the sheet's array controller; a row *shares* its property, also after the
/// agent has dropped it. Main thread only.
class SelectableProperty {
public:
    explicit SelectableProperty(KTVPropertyPtr property) : m_property(std::move(property)) {}

    bool selected() const { return m_selected; }
    void setSelected(bool selected) { m_selected = selected; }
    const KTVPropertyPtr& property() const { return m_property; }

private:
    bool m_selected = false;
    KTVPropertyPtr m_property;
};

using SelectablePropertyPtr = std::shared_ptr<SelectableProperty>;
using SelectableProperties = std::vector<SelectablePropertyPtr>;
using SelectablePropertiesArrayController = KTVArrayController<SelectablePropertyPtr>;
