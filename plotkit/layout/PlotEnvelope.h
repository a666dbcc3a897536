#pragma once

#include "plotkit/layout/PlotView.h"
#include "plotkit/layout/SeriesBins.h"
#include "plotkit/model/SeriesPart.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

/// A crowded line as the stretch it fills in narrow columns: what a rasteriser needs of it, and nothing else.
///
/// Pure but for the memory kept between frames; one thread at a time.
namespace plotkit {

/// Columns of 1 / kColumnsPerPixel pixel. In column c the line comes in at `atLeft`, goes out at `atRight`, and reaches
/// from `low` to `high` between (coordinates, y downward). In a column without the line, low is +infinity and high
/// −infinity. Coordinates lie within ±kFarthest; those at the edges are cut there too, beyond any picture.
///
/// *Owns* the memory of its spans.
struct PlotEnvelope {
    static constexpr int kColumnsPerPixel = 12;
    static constexpr double kFarthest = 65536;

    PlotEnvelope() = default;
    PlotEnvelope(const PlotEnvelope&) = delete;
    PlotEnvelope& operator=(const PlotEnvelope&) = delete;

    double left = 0;                         ///< coordinate of column 0's left edge
    std::span<const float> atLeft, atRight;  ///< one row: a column begins where the one before ends
    std::span<const float> low, high;
    /// One past each part's last column, ascending, the last one past all columns: between the parts the line is
    /// broken, at least a pixel wide.
    std::vector<std::size_t> partEnds;

private:
    friend class EnvelopeBuilder;
    friend class ColumnDashing;
    std::vector<float> m_joins, m_low, m_high;
};

/// Bins in the order of a picture whose x range is reversed.
class MirroredBins {
public:
    /// Borrowed until the next call.
    BinRows mirrored(const BinRows& rows, std::size_t count);

private:
    std::array<std::vector<float>, 6> m_rows;
};

/// Works out envelopes frame after frame. Whoever paints *owns* one.
class PlotEnveloping {
public:
    explicit PlotEnveloping(PlotReading reading = PlotReading::Exact) : m_reading(reading) {}

    /// Fills the envelope of the `slot`-th plot of a picture and answers true. False where no more than `few` points a
    /// column are in view, x is not sorted, or the view is degenerate: use reducePlotInto then. From runs alone points
    /// are not counted: however few, they are in the envelope.
    bool envelopeInto(PlotEnvelope& envelope, const CPTPointSeries& series, const PlotView& view, std::size_t slot,
                      double few = kFewPoints);

    /// A plot of the picture that is drawn next. Borrows the series.
    struct Plot {
        const CPTPointSeries* series;
        PlotView view;
        std::size_t slot;
    };
    /// Sums up what envelopeInto() will need of these plots, side by side on every free core. Makes no difference to
    /// any envelope; where little is new it does nothing.
    void prepare(std::span<const Plot> plots);

    /// Adds the elements of a paged series that drawing it exactly holds, as an envelope or, where they are few, as
    /// points. False where the series makes no envelope, from runs or at all.
    bool addPartsHeld(SeriesParts& parts, const CPTPointSeriesPtr& series, const PlotView& view,
                      std::size_t slot) const;

    static constexpr double kFewPoints = 1;  ///< points a column; drawing so few by themselves costs no more
    static constexpr double kAnyPoints = -1;

private:
    struct Summing;
    BinEdges& edgesOf(const CPTPointSeries& series);
    SeriesBins& binsOf(std::size_t slot);
    void sumUp(std::span<const Summing> side);

    PlotReading m_reading;
    std::vector<std::unique_ptr<BinEdges>> m_edges;
    std::size_t m_nextEdges = 0;  // which of them is replaced next
    std::vector<SeriesBins> m_bins;
    MirroredBins m_mirrored;
};

}  // namespace plotkit
