#pragma once

#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"

/// The limits and notes of an agent, out of its document. The agent *owns* it and outlives it; without a document there
/// are none. Main thread only.
namespace plotix {

class AnnotationEditor;
class SiteAgent;

class AgentAnnotations : public KTVAnnotations {
    Q_OBJECT
public:
    explicit AgentAnnotations(const SiteAgent& agent) : m_agent(agent) {}

    std::vector<KTVLimit> limitsOf(const QString& propertyName) const override;
    std::vector<KTVNote> notes() const override;

    bool canEdit() const override { return editor() != nullptr; }
    void editLimits(const QString& propertyName) override;
    void addNote(double from, double to, const QStringList& propertyNames) override;
    void openNote(qint64 identifier) override;
    void showNotes() override;

private:
    AnnotationEditor* editor() const;

    const SiteAgent& m_agent;
};

}  // namespace plotix
