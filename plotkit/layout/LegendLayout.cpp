#include "plotkit/layout/LegendLayout.h"

#include <algorithm>
#include <numeric>

namespace plotkit {

namespace {

constexpr double kMostShare = 0.4;  // of the frame's height, or width
// Shares of the size of its text, so that a small figure has a small legend.
constexpr double kSampleLength = 2.4;
constexpr double kNameGap = 0.5;    // between a sample and its text
constexpr double kColumnGap = 1.6;  // between a text and the next sample
constexpr double kRowGap = 0.25;
constexpr double kEdgeGap = 0.5;  // between the legend and the frame

struct Item {
    std::shared_ptr<const CPTScatterPlot> plot;
    QString text;
    double width;  // of the text
};

class Legend {
public:
    Legend(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText)
        : m_legend(graph.legend()), m_measureText(measureText)
    {
        const CPTPlotAreaFrame& style = graph.plotAreaFrame();
        const double border = style.borderLineStyle ? std::max(0.0, style.borderLineStyle->width) : 0;
        for (const CPTLegend::Entry& entry : m_legend.entries)
            if (const auto plot = entry.plot.lock(); plot && !plot->isHidden())
                m_items.push_back({plot, entry.text, measureText(entry.text, m_legend.textStyle).width()});
        m_size = std::max(1.0, m_legend.textStyle.fontSize);
        const double gap = border + std::max(kEdgeGap * m_size, style.cornerRadius / 2);
        m_inside = frame.adjusted(gap, gap, -gap, -gap);
        m_frame = frame;
        m_rowHeight = measureText(QStringLiteral("x"), m_legend.textStyle).height() + kRowGap * m_size;
    }

    LegendLayout below()
    {
        const double room = m_inside.width();
        const std::size_t most = rowsIn(kMostShare * m_frame.height());
        if (most == 0 || room <= beforeText())
            return {};
        const std::vector<double> widths = columnsFor(room);
        const std::size_t rows = std::min(most, (m_items.size() + widths.size() - 1) / widths.size());
        const double left = m_inside.left() + (room - lengthOf(widths)) / 2;
        const double top = m_inside.bottom() - double(rows) * m_rowHeight;
        m_layout.area = QRectF(QPointF(m_frame.left(), top), m_frame.bottomRight());
        placeGrid({left, top}, widths, rows);
        return std::move(m_layout);
    }

    LegendLayout right()
    {
        const std::size_t most = rowsIn(m_inside.height());
        const double widest = kMostShare * m_frame.width();
        if (most == 0 || widest <= beforeText())
            return {};
        double width = 0;
        for (const Item& item : m_items)
            width = std::max(width, beforeText() + item.width);
        width = std::min(width, widest);
        const double left = m_inside.right() - width;
        m_layout.area = QRectF(QPointF(left, m_frame.top()), m_frame.bottomRight());
        placeGrid({left, m_inside.top()}, {width}, std::min(most, m_items.size()));
        return std::move(m_layout);
    }

    bool isEmpty() const { return m_items.empty(); }

private:
    double beforeText() const { return (kSampleLength + kNameGap) * m_size; }
    std::size_t rowsIn(double height) const { return height >= m_rowHeight ? std::size_t(height / m_rowHeight) : 0; }
    double lengthOf(const std::vector<double>& widths) const
    {
        return std::accumulate(widths.begin(), widths.end(), 0.0) + double(widths.size() - 1) * kColumnGap * m_size;
    }

    std::vector<double> widthsIn(std::size_t columns) const
    {
        std::vector<double> widths(columns, 0);
        for (std::size_t index = 0; index < m_items.size(); ++index)
            widths[index % columns] = std::max(widths[index % columns], beforeText() + m_items[index].width);
        return widths;
    }

    /// The fewest rows, evened out; one column is cut to what there is.
    std::vector<double> columnsFor(double room) const
    {
        for (std::size_t columns = m_items.size(); columns > 1; --columns) {
            const std::vector<double> widths = widthsIn(columns);
            if (lengthOf(widths) > room)
                continue;
            const std::size_t rows = (m_items.size() + columns - 1) / columns;
            const std::vector<double> even = widthsIn((m_items.size() + rows - 1) / rows);
            return lengthOf(even) <= room ? even : widths;
        }
        return {std::min(widthsIn(1).front(), room)};
    }

    /// The last place of all is kept for the count where not everything has room.
    void placeGrid(const QPointF& corner, const std::vector<double>& widths, std::size_t rows)
    {
        const std::size_t places = rows * widths.size();
        const bool isAll = m_items.size() <= places;
        const std::size_t placed = isAll ? m_items.size() : places - 1;
        for (std::size_t index = 0; index < placed; ++index)
            m_layout.entries.push_back(entryIn(placeOf(corner, widths, index), m_items[index]));
        if (isAll)
            return;
        PlacedText more;
        more.text = QStringLiteral("+%1").arg(m_items.size() - placed);
        more.alignment = Qt::AlignLeft | Qt::AlignVCenter;
        more.box = placeOf(corner, widths, placed);
        m_layout.more = more;
    }

    QRectF placeOf(const QPointF& corner, const std::vector<double>& widths, std::size_t index) const
    {
        const std::size_t column = index % widths.size();
        double left = corner.x();
        for (std::size_t before = 0; before < column; ++before)
            left += widths[before] + kColumnGap * m_size;
        return {left, corner.y() + double(index / widths.size()) * m_rowHeight, widths[column], m_rowHeight};
    }

    PlacedLegendEntry entryIn(const QRectF& place, const Item& item) const
    {
        PlacedLegendEntry entry;
        entry.plot = item.plot;
        entry.sample = QRectF(place.topLeft(), QSizeF(kSampleLength * m_size, place.height()));
        entry.text.text = item.text;
        entry.text.alignment = Qt::AlignLeft | Qt::AlignVCenter;
        entry.text.box = place.adjusted(beforeText(), 0, 0, 0);
        entry.text.box.setWidth(std::min(item.width, entry.text.box.width()));
        return entry;
    }

    const CPTLegend& m_legend;
    const TextMeasure& m_measureText;
    QRectF m_frame, m_inside;
    std::vector<Item> m_items;
    double m_size = 1, m_rowHeight = 1;
    LegendLayout m_layout;
};

}  // namespace

LegendLayout layOutLegend(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText)
{
    if (graph.legend().place == CPTLegendPlace::None || frame.isEmpty())
        return {};
    Legend legend(graph, frame, measureText);
    if (legend.isEmpty())
        return {};
    return graph.legend().place == CPTLegendPlace::Below ? legend.below() : legend.right();
}

QRectF besideLegend(const CPTXYGraph& graph, const QRectF& frame, const LegendLayout& legend)
{
    QRectF rest = frame;
    if (legend.area.isEmpty())
        return rest;
    if (graph.legend().place == CPTLegendPlace::Below)
        rest.setBottom(legend.area.top());
    else
        rest.setRight(legend.area.left());
    return rest;
}

}  // namespace plotkit
