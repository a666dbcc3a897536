#pragma once

#include "plugins/PlotixPlugIn/reading/clock/ClockChangesLayer.h"
#include "plugins/PlotixPlugIn/reading/clock/ClockChoices.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>

class QActionGroup;

/// The clock by which a trend says its times: the part of its reading with the key "clock".
///
/// Choices: "zone" (the site's, UTC, or one by its name), "form" (24 hours, or as the user's locale has it), "changes"
/// (whether the changes of the clocks are drawn). Without: the user's zone, in the forms there always were. It gives
/// its clock to the trend, whom everybody asks; a zone that was chosen is named at the time axis. The reader *owns* it.
/// Main thread only.
namespace plotix {

class ClockPart : public ReadingPart {
    Q_OBJECT
public:
    explicit ClockPart(ReadTrend& trend);

    QString key() const override { return QStringLiteral("clock"); }  // stored: never change
    QVariantMap chosen() const override { return mapFromClockChoices(m_choices); }
    void choose(const QVariantMap& choices) override { change(clockChoicesFromMap(choices)); }

    void viewLoaded() override { listen(); }
    void graphBuilt() override;
    void graphReleased() override { m_layer.remove(); }
    void plotsReplaced() override { apply(); }
    void fitted() override { apply(); }
    void restyled() override { apply(); }
    void rangeSet(CPTCoordinate coordinate) override;
    std::vector<QAction*> actions() const override { return m_actions; }

    void change(const ClockChoices& choices);
    void askForZone();

private:
    QAction* addAction(const QString& text, QActionGroup* group = nullptr);
    void makeActions();
    void addZone(QActionGroup* group, const char* text, const QString& zone);
    void addForm(QActionGroup* group, const char* text, CPTHourForm form);
    void updateActions();
    void listen();
    void takeClock();
    QTimeZone siteZone() const;
    QTimeZone zone() const;
    void apply();
    void describe(CPTXYGraph& graph);
    void markChanges(const CPTXYGraphPtr& graph);

    ClockChoices m_choices;
    QPointer<KTVSiteClock> m_siteClock;
    KnownClockChanges m_changes;
    PartLayer<ClockChangesLayer> m_layer;
    std::vector<QAction*> m_actions;
    std::vector<QAction*> m_zoneActions;  // their data is the zone
    std::vector<QAction*> m_formActions;  // their data is the form
    QAction* m_namedAction = nullptr;     // of m_zoneActions: the zone that is chosen by name
    QAction* m_changesAction = nullptr;
};

}  // namespace plotix
