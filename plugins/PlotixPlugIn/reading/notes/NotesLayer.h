#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/notes/NumberedNotes.h"

#include <QtCore/QRectF>

#include <optional>
#include <vector>

/// The notes of a trend over its graph: numbered flags in a room of their own above the plots, each with a fine line
/// down through them; of a span a bracket.
///
/// The graph and the notes' part *share* it. Main thread only.
namespace plotix {

/// A flag; notes whose flags would lie upon each other share one. Points.
struct NoteFlag {
    QRectF place;
    std::vector<NumberedNote> notes;

    QString text() const;  ///< "3", or "3–5"
};

/// The flags of the notes that the graph's times show, in their order. `room`: where they stand.
std::vector<NoteFlag> noteFlags(const std::vector<NumberedNote>& notes, const plotkit::GraphGeometry& geometry,
                                const QRectF& room);

class NotesLayer : public CPTGraphLayer {
public:
    /// `current`: the note that keys have come to; its flag stands out on a screen. 0: none.
    void show(std::vector<NumberedNote> notes, qint64 current);

    std::vector<NoteFlag> flags(const plotkit::GraphGeometry& geometry) const;
    std::optional<CPTLayerRoom> room(const QSizeF& frame) const override;
    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    std::vector<NumberedNote> m_notes;
    qint64 m_current = 0;
};

}  // namespace plotix
