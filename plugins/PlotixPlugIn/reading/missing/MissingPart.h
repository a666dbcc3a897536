#pragma once

#include "plugins/PlotixPlugIn/reading/missing/MissingLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <memory>

/// What is missing has a look: stretches without valid records are hatched, those that came late or were corrected are
/// marked, and a strip sums up each line.
///
/// Choices: "stretches", "amended" and "strip", truths, of which one that was switched off stays named; "lateBy",
/// seconds: what came late by no more than that is not told, here or by the readout. What counts as a gap is what
/// breaks the lines. Part of a trend's reading, which *owns* it. Main thread only.
namespace plotix {

class MissingPart : public ReadingPart {
    Q_OBJECT
public:
    explicit MissingPart(ReadTrend& trend);
    ~MissingPart() override;

    QString key() const override { return QStringLiteral("missing"); }  // stored: never changes
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    void graphBuilt() override { update(); }
    void graphReleased() override { m_layer.remove(); }
    void plotsReplaced() override { linesChanged(); }
    void fitted() override { linesChanged(); }
    void linesChanged() override;
    std::vector<QAction*> actions() const override;

private:
    /// One of the things that can be shown; off unless somebody has said so.
    struct Switch {
        const char* key;
        QAction* action;  // a child; checked where chosen
        bool isSaid = false;
    };

    Switch addSwitch(const char* key, const char* text, const char* hint);
    std::vector<Switch*> switches() { return {&m_stretches, &m_amended, &m_strip}; }
    void addDelays();
    void setLateBy(double seconds);
    void update();

    TrendLines m_lines;
    PartLayer<MissingLayer> m_layer;
    Switch m_stretches, m_amended, m_strip;
    std::vector<QAction*> m_delays;  // each with its seconds as data; the one chosen is checked
    double m_lateBy = 0;
};

}  // namespace plotix
