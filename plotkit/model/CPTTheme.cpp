#include "plotkit/model/CPTXYGraph.h"

namespace {

CPTColor grey(double level)
{
    return CPTColor::fromRgbF(float(level), float(level), float(level));
}

CPTTextStyle whiteText()
{
    CPTTextStyle style;
    style.color = CPTColor(Qt::white);
    return style;
}

/// Dark grey gradients, lighter in the middle of the graph and at the top of the frame; white texts.
class DarkGradientTheme : public CPTTheme {
public:
    void applyToGraph(CPTXYGraph& graph) const override
    {
        graph.setFill({{{0.0, grey(0.1)}, {0.5, grey(0.3)}, {1.0, grey(0.1)}}});
        applyToFrame(graph);
        graph.setTitleTextStyle(whiteText());
        for (const CPTXYAxisPtr& axis : graph.axisSet()->axes())
            applyToAxis(*axis);
    }

private:
    /// The frame's padding stays: it belongs to whoever lays the graph out.
    static void applyToFrame(CPTXYGraph& graph)
    {
        CPTPlotAreaFrame frame = graph.plotAreaFrame();
        frame.fill = {{{0.0, grey(0.1)}, {1.0, grey(0.3)}}};
        frame.borderLineStyle = CPTLineStyle{.width = 4.0, .color = grey(0.2)};
        frame.cornerRadius = 10.0;
        graph.setPlotAreaFrame(frame);
    }

    static void applyToAxis(CPTXYAxis& axis)
    {
        const CPTLineStyle line{.width = 2.0, .color = grey(0.5), .cap = CPTLineCap::Square};
        CPTLineStyle minorLine = line;
        minorLine.width = 1.0;
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
        axis.setAxisLineStyle(line);
        axis.setMajorTickLineStyle(line);
        axis.setMinorTickLineStyle(minorLine);
        axis.setMajorTickLength(7.0);
        axis.setMinorTickLength(5.0);
        axis.setLabelTextStyle(whiteText());
        axis.setTitleTextStyle(whiteText());
    }
};

}  // namespace

CPTTheme::~CPTTheme() = default;

const CPTTheme* CPTTheme::themeNamed(const QString& name)
{
    static const DarkGradientTheme darkGradientTheme;
    return name == kCPTDarkGradientTheme ? &darkGradientTheme : nullptr;
}
