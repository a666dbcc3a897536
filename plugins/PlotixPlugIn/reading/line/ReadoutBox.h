#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QColor>

#include <optional>
#include <vector>

class QPainter;

/// The box that says what is read: a title, and a row for each line. Values and free functions; main thread only.
/// Lengths are points.
namespace plotix {

struct ReadoutRow {
    QColor color;  ///< of the line
    QString name;
    QString value;             ///< with its unit, or that there is none
    QString note;              ///< such as how far away the record is; mostly empty
    QColor noteColor = {};     ///< invalid: faint
    bool isFaint = false;      ///< there is no value
    bool isChosen = false;     ///< the one line that the keys follow
    QString extreme = {};      ///< that the value is the least or greatest in sight; said first of all
    QString differences = {};  ///< by how much it is more than what it is compared with; said before the note
    QString besideName = {};   ///< of a line that is compared, behind its own: with what, such as "a week earlier"
    QString lessBy = {};       ///< likewise: by how much its own line is more
    bool hasValues = true;     ///< likewise: false where it has none at any time
};

struct Readout {
    QString title;
    QString state;  ///< beside the title, fainter
    std::vector<ReadoutRow> rows;
};

/// Colours that stand out from a graph.
struct ReadoutLook {
    QColor ground, border, text, faint, line;
};

/// By the colour of the graph's own labels: light writing means a dark graph.
ReadoutLook readoutLookFor(const CPTXYGraph& graph);

/// Rows beyond `rows` become a last one that counts them.
Readout shortened(Readout readout, std::size_t rows, const QString& moreText);

/// Lines that are compared with one other time each have it in their own row, "a week earlier: 20.1 °C (+1.3 K)", so
/// that the box covers half as much. With several times each, and without any, as it was. Those
/// without any values are left out: they say the same everywhere.
Readout folded(Readout readout);

/// How many rows have room in a height; at least one.
std::size_t rowsWithin(double height);

/// A box of `size` beside the vertical at `x`, at its right where there is room within `bounds`, else at its left; its
/// upper edge near `y`. Never over the pointer: then it changes sides, or stands above or below it.
QRectF placeBeside(const QSizeF& size, double x, double y, const QRectF& bounds, const std::optional<QPointF>& pointer);

QSizeF sizeOfReadout(const Readout& readout);
void paintReadout(QPainter& painter, const Readout& readout, const QRectF& box, const ReadoutLook& look);

/// The same as text: a line for the title, then one for each row, cells separated by tabs; or as sentences to be
/// spoken.
QString readoutAsTable(const Readout& readout);
QString readoutAsSentences(const Readout& readout);

}  // namespace plotix
