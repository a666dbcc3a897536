#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <memory>
#include <optional>
#include <vector>

/// How a whole graph looks: dark as the contract has it, light, or as on paper; and how large its texts are.
namespace plotix {

enum class GraphLook { Dark, Light, Paper };

/// The name a look is archived by. Stored: never changes.
QString nameOfLook(GraphLook look);
std::optional<GraphLook> lookNamed(const QString& name);

constexpr double kSmallestText = 5, kLargestText = 36;  ///< points

/// Puts looks on graphs and takes them off again. What others restyle meanwhile becomes what is put back.
///
/// Whoever chooses the look *owns* it; graphs are *weak*. Main thread only.
class GraphDress {
public:
    /// How a graph is to look.
    struct Wish {
        GraphLook look = GraphLook::Dark;
        std::optional<double> fontSize{};  ///< points; nothing: texts stay as large as they are
        bool isTransparent = false;        ///< nothing is drawn beneath grid and plots

        bool isPlain() const { return look == GraphLook::Dark && !fontSize && !isTransparent; }
    };

    /// Axes, frame, texts, legend and strips; no lines. A plain wish takes everything off. To be called again whenever
    /// there may be other axes or strips.
    void wear(const CPTXYGraphPtr& graph, const Wish& wish);

    /// The widest that a line is drawn, points, unless its width was chosen.
    static double widestLine(const Wish& wish);

private:
    /// What looks change of an axis.
    struct AxisStyle {
        std::optional<CPTLineStyle> line, majorGrid, minorGrid, majorTick, minorTick;
        double majorTickLength, minorTickLength;
        CPTTextStyle labels, title;
        friend bool operator==(const AxisStyle&, const AxisStyle&) = default;
    };
    /// The same of a strip.
    struct StripStyle {
        CPTFill fill;
        std::optional<CPTLineStyle> border;
        CPTTextStyle title, keys;
        double headRoom;
        friend bool operator==(const StripStyle&, const StripStyle&) = default;
    };
    /// The same of the graph itself.
    struct GroundStyle {
        CPTFill fill, frameFill;
        std::optional<CPTLineStyle> border;
        double cornerRadius;
        CPTTextStyle title, legend;
        CPTPadding padding, framePadding;
        friend bool operator==(const GroundStyle&, const GroundStyle&) = default;
    };
    template <class Owner, class Style>
    struct Worn {
        std::weak_ptr<const Owner> owner;
        Style before, now;
    };
    static AxisStyle styleOf(const CPTXYAxis& axis);
    static void setStyle(CPTXYAxis& axis, const AxisStyle& style);
    static AxisStyle styled(AxisStyle style, const Wish& wish);
    static StripStyle styleOf(const CPTXYPlotSpace& space);
    static void setStyle(CPTXYPlotSpace& space, const StripStyle& style);
    static StripStyle styled(StripStyle style, const Wish& wish);
    static GroundStyle styleOf(const CPTXYGraph& graph);
    static void setStyle(CPTXYGraph& graph, const GroundStyle& style);
    static GroundStyle styled(GroundStyle style, const Wish& wish, CPTLabelRoom room);

    template <class Owner, class Style>
    static void dress(std::vector<Worn<Owner, Style>>& all, const std::shared_ptr<Owner>& owner, const Wish& wish);

    std::vector<Worn<CPTXYAxis, AxisStyle>> m_axes;
    std::vector<Worn<CPTXYPlotSpace, StripStyle>> m_strips;
    std::vector<Worn<CPTXYGraph, GroundStyle>> m_grounds;
};

}  // namespace plotix
