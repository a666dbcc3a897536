#pragma once

#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"

#include <map>

/// Limits and notes that a test sets, and what a plug-in asked the host to do with them. The fake agent *owns* it. Main
/// thread only.
namespace fakehost {

class FakeAnnotations : public KTVAnnotations {
    Q_OBJECT
public:
    std::vector<KTVLimit> limitsOf(const QString& propertyName) const override;
    std::vector<KTVNote> notes() const override { return m_notes; }
    bool canEdit() const override { return true; }
    void editLimits(const QString& propertyName) override { asked << QStringLiteral("limits of ") + propertyName; }
    void addNote(double from, double to, const QStringList& propertyNames) override;
    void openNote(qint64 identifier) override { asked << QStringLiteral("note %1").arg(identifier); }
    void showNotes() override { asked << QStringLiteral("notes"); }

    void setLimits(const QString& propertyName, const std::vector<KTVLimit>& limits);
    void setNotes(const std::vector<KTVNote>& notes);

    QStringList asked;
    std::vector<std::pair<double, double>> spansAsked;  ///< of notes to be added

private:
    std::map<QString, std::vector<KTVLimit>> m_limits;
    std::vector<KTVNote> m_notes;
};

}  // namespace fakehost
