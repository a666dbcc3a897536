#include "hostapp/document/AgentAnnotations.h"

#include "hostapp/core/Units.h"
#include "hostapp/document/AnnotationEditor.h"
#include "hostapp/document/SiteDocument.h"

#include <algorithm>

namespace plotix {

// Asked for every line at every move of the pointer.
std::vector<KTVLimit> AgentAnnotations::limitsOf(const QString& propertyName) const
{
    std::vector<KTVLimit> limits;
    if (!m_agent.document() || m_agent.document()->limits().empty())
        return limits;
    const auto& properties = m_agent.siteProperties();
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const auto& each) { return each->propertyName() == propertyName; });
    if (found == properties.end())
        return limits;
    const SiteProperty::Description& property = (*found)->description();
    for (const SiteLimit& limit : m_agent.document()->limits())
        if (limit.property == property.id)
            limits.push_back({limit.name, Units::shared()->convert(limit.value, limit.unit, property.unit), limit.side,
                              limit.severity});
    return limits;
}

std::vector<KTVNote> AgentAnnotations::notes() const
{
    std::vector<KTVNote> notes;
    if (!m_agent.document())
        return notes;
    for (const SiteNote& note : m_agent.document()->notes()) {
        KTVNote told{note.id, note.from, note.to, note.author, note.text, note.properties.empty(), {}};
        for (const auto& property : m_agent.siteProperties())
            if (std::find(note.properties.begin(), note.properties.end(), property->description().id) !=
                note.properties.end())
                told.propertyNames << property->propertyName();
        if (told.isAboutAll || !told.propertyNames.isEmpty())
            notes.push_back(std::move(told));
    }
    return notes;
}

AnnotationEditor* AgentAnnotations::editor() const
{
    SiteDocument* document = m_agent.document();
    return document && !document->isReadOnly() ? document->annotationEditor() : nullptr;
}

void AgentAnnotations::editLimits(const QString& propertyName)
{
    if (AnnotationEditor* asks = editor())
        asks->editLimits(m_agent, propertyName);
}

void AgentAnnotations::addNote(double from, double to, const QStringList& propertyNames)
{
    if (AnnotationEditor* asks = editor())
        asks->addNote(m_agent, from, to, propertyNames);
}

void AgentAnnotations::openNote(qint64 identifier)
{
    if (AnnotationEditor* asks = editor())
        asks->openNote(identifier);
}

/// They may be looked at where nothing may be written, too.
void AgentAnnotations::showNotes()
{
    if (SiteDocument* document = m_agent.document(); document && document->annotationEditor())
        document->annotationEditor()->showNotes();
}

}  // namespace plotix
