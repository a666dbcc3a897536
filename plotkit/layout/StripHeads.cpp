#include "plotkit/layout/StripHeads.h"

#include <algorithm>

namespace plotkit {

namespace {

constexpr double kSampleLength = 18;  // points
constexpr double kNameGap = 5;        // points between a sample and its name
constexpr double kKeyGap = 14;        // points between title and keys, and between keys
constexpr double kRise = 2;           // points between the texts and the strip's plots

class Head {
public:
    Head(const CPTStrip& strip, const QRectF& room, const TextMeasure& measureText)
        : m_strip(strip), m_room(room), m_measureText(measureText), m_at(room.left())
    {
    }

    void placeTitle(StripLayout& layout)
    {
        if (m_strip.title.isEmpty())
            return;
        QSizeF size = m_measureText(m_strip.title, m_strip.titleTextStyle);
        if (size.height() > m_room.height())
            return;
        size.setWidth(std::min(size.width(), m_room.width()));
        layout.title = textAt(m_strip.title, size);
        m_at += size.width() + kKeyGap;
    }

    void placeKeys(StripLayout& layout, const std::vector<CPTScatterPlotPtr>& plots)
    {
        for (std::size_t index = 0; index < plots.size(); ++index) {
            const bool isNameless = plots[index]->title().isEmpty();
            QSizeF size = m_measureText(isNameless ? QStringLiteral("x") : plots[index]->title(), m_strip.keyTextStyle);
            if (size.height() > m_room.height())
                return;
            if (isNameless)
                size.setWidth(0);
            const double needed = kSampleLength + kNameGap + size.width();
            const bool isLast = index + 1 == plots.size();
            const double kept = isLast ? 0 : kKeyGap + moreSize(plots.size() - index - 1).width();
            if (m_at + needed + kept > m_room.right()) {
                placeMore(layout, plots.size() - index);
                return;
            }
            placeKey(layout, *plots[index], size);
            m_at += needed + kKeyGap;
        }
    }

private:
    static QString moreText(std::size_t count) { return QStringLiteral("+%1").arg(count); }
    QSizeF moreSize(std::size_t count) const { return m_measureText(moreText(count), m_strip.keyTextStyle); }

    void placeMore(StripLayout& layout, std::size_t count)
    {
        const QSizeF size = moreSize(count);
        if (m_at + size.width() <= m_room.right())
            layout.more = textAt(moreText(count), size);
    }

    void placeKey(StripLayout& layout, const CPTScatterPlot& plot, const QSizeF& size)
    {
        PlacedKey key;
        key.plot = &plot;
        const double from = m_at;
        m_at += kSampleLength + kNameGap;
        key.name = textAt(plot.title(), size);
        m_at = from;
        const double middle = key.name.box.center().y();
        key.sample = QLineF(from, middle, from + kSampleLength, middle);
        layout.keys.push_back(std::move(key));
    }

    PlacedText textAt(const QString& text, const QSizeF& size) const
    {
        PlacedText placed;
        placed.text = text;
        placed.alignment = Qt::AlignLeft | Qt::AlignVCenter;
        placed.box = QRectF(QPointF(m_at, std::max(m_room.top(), m_room.bottom() - kRise - size.height())), size);
        return placed;
    }

    const CPTStrip& m_strip;
    const QRectF m_room;
    const TextMeasure& m_measureText;
    double m_at;
};

}  // namespace

std::vector<StripLayout> placedStrips(const GraphGeometry& geometry, const TextMeasure& measureText)
{
    std::vector<StripLayout> strips;
    for (const CPTXYPlotSpacePtr& space : geometry.graph.allPlotSpaces()) {
        if (space->strip().isWhole())
            continue;
        StripLayout layout;
        layout.space = space.get();
        layout.area = geometry.areaOf(*space);
        const QRectF whole = wholeStrip(geometry.plotArea, space->strip());
        Head head(space->strip(), QRectF(whole.topLeft(), QPointF(whole.right(), layout.area.top())), measureText);
        head.placeTitle(layout);
        std::vector<CPTScatterPlotPtr> plots = geometry.graph.plotsIn(*space);
        std::erase_if(plots, [](const CPTScatterPlotPtr& plot) { return plot->isHidden(); });
        if (space->strip().hasKeys)
            head.placeKeys(layout, plots);
        strips.push_back(std::move(layout));
    }
    return strips;
}

}  // namespace plotkit
