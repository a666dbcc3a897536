#pragma once

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

class QActionGroup;

/// What tells the lines of a trend apart and what its axes show, in the graph itself: the part of a trend's reading
/// with the key "legend".
///
/// Choices: "place" ("below" or "right" of the graph), and "axisTitles": "none", "values" (name and unit along each
/// value axis, nothing below the time axis), "all" (the same, and the time axis titled as ever). Without: no legend,
/// titles as they always were. The reader *owns* it. Main thread only.
namespace plotix {

enum class AxisTitleChoice { Usual, None, Values, All };

class LegendPart : public ReadingPart {
    Q_OBJECT
public:
    explicit LegendPart(ReadTrend& trend);

    QString key() const override { return QStringLiteral("legend"); }
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;
    void plotsReplaced() override { apply(); }
    void linesChanged() override { apply(); }
    void restyled() override { apply(); }
    std::vector<QAction*> actions() const override { return m_actions; }

    CPTLegendPlace place() const { return m_place; }
    void setPlace(CPTLegendPlace place);
    AxisTitleChoice axisTitles() const { return m_axisTitles; }
    void setAxisTitles(AxisTitleChoice titles);

private:
    void changed();
    void apply();
    std::vector<CPTLegend::Entry> entries() const;
    QActionGroup* addChoices(const char* const* texts, int count);
    void updateActions();

    CPTLegendPlace m_place = CPTLegendPlace::None;
    AxisTitleChoice m_axisTitles = AxisTitleChoice::Usual;
    QActionGroup *m_places, *m_titles;  // children
    std::vector<QAction*> m_actions;
};

}  // namespace plotix
