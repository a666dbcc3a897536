#pragma once

#include "plugins/PlotixPlugIn/reading/looks/GraphLook.h"
#include "plugins/PlotixPlugIn/reading/looks/LineLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <map>
#include <optional>
#include <set>

/// How a trend and each of its lines look: the part of a trend's reading with the key "looks".
///
/// Choices: "look" (see GraphLook.h), "fontSize" (points), "lineWidth" (times the usual width, 0.2 to 5), "ground"
/// ("transparent": nothing beneath grid and plots), "marks" ("own", as without a choice; "apart": dashes where
/// lines would look alike; "distinct": ten colours and dashes, see DistinctLines.h), and "lines": by property key what
/// was chosen for each, see LineLook.h. A property that is not in the trend keeps its choice for the day it comes back.
/// The reader *owns* it. Main thread only.
namespace plotix {

class LookMenus;

/// What tells lines apart that were not chosen to look any way: their own colours, the same with dashes where colours
/// are alike, or colours and dashes by their number.
enum class LineMarks { Own, Apart, Distinct };

class TrendLooks : public ReadingPart {
    Q_OBJECT
public:
    explicit TrendLooks(ReadTrend& trend);
    ~TrendLooks() override;

    QString key() const override { return QStringLiteral("looks"); }
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;
    void graphBuilt() override { apply(); }
    void graphReleased() override;
    void plotsReplaced() override { apply(); }
    void fitted() override { apply(); }
    void linesChanged() override { apply(); }
    void restyled() override { apply(); }
    std::vector<QAction*> actions() const override;
    void addLineItems(QMenu& menu, const QStringList& keys) override;

    GraphLook look() const { return m_look; }
    void setLook(GraphLook look);
    const std::optional<double>& fontSize() const { return m_fontSize; }
    void setFontSize(const std::optional<double>& size);
    double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double times);  ///< brought into its limits
    bool isTransparent() const { return m_isTransparent; }
    void setTransparent(bool isTransparent);
    LineMarks marks() const { return m_marks.value_or(LineMarks::Own); }
    void setMarks(LineMarks marks);
    LineLook lineLook(const QString& key) const;
    void setLineLook(const QString& key, const LineLook& look);
    void setLineLooks(const std::map<QString, LineLook>& looks);  ///< those named; one step to take back

    /// The lines that can be given a look: those that are compared with them follow theirs.
    std::vector<ReadLine> lines() const;
    CPTScatterPlotPtr plotOf(const QString& key) const;  ///< null when it has none
    QWidget* window() const;                             ///< of the trend, for dialogs; null off screen

private:
    /// What a plot looked like before, and what it was given.
    struct PlotLook {
        CPTLineStyle line;
        CPTScatterPlotInterpolation interpolation = CPTScatterPlotInterpolation::Linear;
        double pointSize = 0;
        CPTColor fill{};
        bool fillsToLine = false;
        std::weak_ptr<const CPTScatterPlot> filledTo{};
    };
    struct WornPlot {
        std::weak_ptr<CPTScatterPlot> plot;
        PlotLook before, now;
    };

    bool isChosen() const;
    GraphDress::Wish wish() const { return {m_look, m_fontSize, m_isTransparent}; }
    void changed();
    void apply();
    WornPlot& wornBy(const CPTScatterPlotPtr& plot, const QString& key);
    void dressLines();
    void undressLines();
    PlotLook lookFor(const QString& key, const PlotLook& before, std::size_t number);
    static PlotLook lookOf(const CPTScatterPlot& plot);
    static void setLookOf(CPTScatterPlot& plot, const PlotLook& look);

    GraphLook m_look = GraphLook::Dark;
    std::optional<double> m_fontSize;
    double m_lineWidth = 1;  // times
    bool m_isTransparent = false;
    std::optional<LineMarks> m_marks;     // a host may choose for a trend without a choice, not for one with "own"
    std::map<QString, LineLook> m_lines;  // only those with a choice
    GraphDress m_dress;
    std::map<QString, WornPlot> m_worn;  // by property key
    std::unique_ptr<LookMenus> m_menus;
    bool m_applying = false;
};

}  // namespace plotix
