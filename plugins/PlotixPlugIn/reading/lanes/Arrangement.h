#pragma once

#include "plugins/PlotixPlugIn/reading/lanes/Lane.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneGroups.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>

#include <map>
#include <memory>
#include <vector>

class QActionGroup;

/// How the lines of a trend share the plot area: on one scale, as the contract has it, or in lanes.
///
/// Choices: "kind", a text of ArrangementKind, and "lanes", what was set for a lane, by its key. In lanes the default
/// plot space goes on as ever, but nothing is drawn in it, its values follow no hand, and its axis is hidden. The
/// trend's reader *owns* it. Main thread only.
namespace plotix {

class LaneDividers;
class OffScaleMarks;

class Arrangement : public ReadingPart {
    Q_OBJECT
public:
    explicit Arrangement(ReadTrend& trend);
    ~Arrangement() override;

    QString key() const override { return QStringLiteral("arrangement"); }
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;
    QVariantMap ranges() const override;
    void setRanges(const QVariantMap& ranges) override;

    bool pointerActed(QEvent& event) override;
    void graphBuilt() override;
    void graphReleased() override;
    void plotsReplaced() override;
    void fitted() override;
    void linesChanged() override;
    void restyled() override;
    std::vector<QAction*> actions() const override { return m_actions; }

    ArrangementKind kind() const { return m_kind; }
    void setKind(ArrangementKind kind);
    const std::vector<std::unique_ptr<Lane>>& lanes() const
    {
        return m_lanes;
    }  ///< from top to bottom; none: one scale
    LaneSettings settingsOf(const QString& laneKey) const;
    void setSettingsOf(const QString& laneKey, const LaneSettings& settings);
    /// Moves the edge above a lane so that it stands at this share of the plot area's height; the first has none.
    void moveUpperEdgeOf(std::size_t lane, double share);

private:
    void arrange();
    void leaveLanes();
    void placeStrips();
    void nameScale(const std::vector<ArrangedLine>& lines);
    void nameTime();
    QString axisTitles() const;
    LaneNaming naming() const;
    std::vector<ArrangedLine> arrangedLines() const;
    void fitLanes();
    void makeActions();
    void updateActions();
    void leaveOutOutliers(bool leaveOut);
    void editLanes();

    ArrangementKind m_kind = ArrangementKind::OneScale;
    std::map<QString, LaneSettings> m_settings;  // what was set; others have none
    std::vector<std::unique_ptr<Lane>> m_lanes;
    std::shared_ptr<OffScaleMarks> m_marks;  // in the graph while there are lanes
    std::unique_ptr<LaneDividers> m_dividers;
    bool m_wasAxisHidden = false;
    /// An axis's title while another one is given to it.
    struct GivenTitle {
        std::optional<QString> before;
        QString given;
        void give(CPTXYAxis& axis, const std::optional<QString>& title);  // nothing: back to the one before
    };
    GivenTitle m_scaleTitle, m_timeTitle;
    CPTLabelRoom m_roomBefore = CPTLabelRoom::Fixed;
    QActionGroup* m_kinds = nullptr;  // a child
    QAction* m_outliers = nullptr;    // a child
    QAction* m_edit = nullptr;        // a child
    QAction* m_evenOut = nullptr;     // a child
    std::vector<QAction*> m_actions;
};

}  // namespace plotix
