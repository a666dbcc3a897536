#include "hostapp/window/PropertyHistory.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QUndoStack>

namespace plotix {

namespace {

class PropertyHistoryText {
    Q_DECLARE_TR_FUNCTIONS(PropertyHistoryText)
};

}  // namespace

/// The property looks as after the change already, so the first `redo` finds nothing to do.
class PropertyHistory::Command : public QUndoCommand {
public:
    Command(PropertyHistory& history, std::shared_ptr<SiteProperty> property, Look before, Look after)
        : QUndoCommand((before.unit != after.unit ? PropertyHistoryText::tr("Unit of %1")
                                                  : PropertyHistoryText::tr("Color of %1"))
                           .arg(property->name())),
          m_history(history),
          m_property(std::move(property)),
          m_before(std::move(before)),
          m_after(std::move(after))
    {
    }
    void undo() override { apply(m_before); }
    void redo() override { apply(m_after); }

private:
    void apply(const Look& look)
    {
        const QScopedValueRollback quiet(m_history.m_undoing, true);
        if (m_property->unit() != look.unit)
            m_property->setUnit(look.unit);
        if (m_property->color() != look.colour)
            m_property->setColor(look.colour);
        m_history.m_seen[m_property.get()] = look;
    }

    PropertyHistory& m_history;
    std::shared_ptr<SiteProperty> m_property;
    Look m_before, m_after;
};

PropertyHistory::PropertyHistory(std::shared_ptr<SiteDocument> document, QUndoStack& stack)
    : m_document(std::move(document)), m_stack(stack)
{
    connect(m_document.get(), &SiteDocument::agentsChanged, this, &PropertyHistory::watchAll);
    watchAll();
}

void PropertyHistory::watchAll()
{
    for (const auto& agent : m_document->agents()) {
        connect(agent.get(), &SiteAgent::propertiesChanged, this, &PropertyHistory::watchAll, Qt::UniqueConnection);
        for (const auto& property : agent->siteProperties())
            watch(property);
    }
}

void PropertyHistory::watch(const std::shared_ptr<SiteProperty>& property)
{
    if (!m_seen.try_emplace(property.get(), Look{property->unit(), property->color()}).second)
        return;
    connect(property.get(), &SiteProperty::changed, this, [this, weak = std::weak_ptr(property)] {
        if (const auto changed = weak.lock())
            compare(changed);
    });
    connect(property.get(), &QObject::destroyed, this, [this, gone = property.get()] { m_seen.erase(gone); });
}

void PropertyHistory::compare(const std::shared_ptr<SiteProperty>& property)
{
    Look& seen = m_seen[property.get()];
    const Look now{property->unit(), property->color()};
    if (m_undoing || now == seen)
        return;
    const Look before = std::exchange(seen, now);
    m_stack.push(new Command(*this, property, before, now));
}

}  // namespace plotix
