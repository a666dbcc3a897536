#include "plugins/PlotixPlugIn/reading/line/ReadoutBox.h"

#include "plotkit/render/GraphText.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

constexpr double kTextSize = 12;
constexpr double kRowHeight = 18;
constexpr double kInset = 9;
constexpr double kSwatch = 10;
constexpr double kBetween = 7;     // columns
constexpr double kFromLine = 14;   // the box from its vertical
constexpr double kFromPointer = 6;
constexpr double kCorner = 6;
constexpr double kLongestName = 230;

/// The fonts of the box, made once: to make one takes longer than to draw with it.
struct Fonts {
    QFont plain = plotkit::fontForStyle({.fontName = QStringLiteral("Helvetica"), .fontSize = kTextSize});
    QFont bold = plotkit::fontForStyle({.fontName = QStringLiteral("Helvetica-Bold"), .fontSize = kTextSize});
    QFont italic = plain;
    QFontMetricsF plainSize{plain}, boldSize{bold}, italicSize{plain};

    Fonts()
    {
        italic.setItalic(true);
        italicSize = QFontMetricsF(italic);
    }
};

const Fonts& fonts()
{
    static const Fonts made;
    return made;
}

/// What each column takes, by its widest text.
struct Columns {
    double name = 0, value = 0, note = 0;

    explicit Columns(const Readout& readout)
    {
        for (const ReadoutRow& row : readout.rows) {
            name = std::max(name, std::min(kLongestName, fonts().plainSize.horizontalAdvance(row.name)));
            value = std::max(value, fonts().boldSize.horizontalAdvance(row.value));
            if (!row.note.isEmpty())
                note = std::max(note, fonts().italicSize.horizontalAdvance(row.note));
        }
    }

    double width() const
    {
        return kSwatch + kBetween + name + 2 * kBetween + value + (note > 0 ? kBetween + note : 0);
    }
};

double widthOfTitle(const Readout& readout)
{
    const double title = fonts().boldSize.horizontalAdvance(readout.title);
    return readout.state.isEmpty() ? title : title + kBetween + fonts().plainSize.horizontalAdvance(readout.state);
}

void write(QPainter& painter, const QFont& font, const QColor& color, const QRectF& where, const QString& text,
           Qt::Alignment side = Qt::AlignLeft)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(where, int(side | Qt::AlignVCenter | Qt::TextSingleLine), text);
}

void paintRow(QPainter& painter, const ReadoutRow& row, const Columns& columns, QRectF place, const ReadoutLook& look)
{
    if (row.color.isValid()) {
        const QRectF swatch(place.left(), place.center().y() - kSwatch / 2, kSwatch, kSwatch);
        painter.setPen(row.isChosen ? QPen(look.text, 1.5) : QPen(Qt::NoPen));
        painter.setBrush(row.color);
        painter.drawRoundedRect(swatch, 2, 2);
    }
    place.setLeft(place.left() + kSwatch + kBetween);
    const QString name = fonts().plainSize.elidedText(row.name, Qt::ElideMiddle, columns.name + 1);
    write(painter, row.isChosen ? fonts().bold : fonts().plain, look.text, place, name);
    place.setLeft(place.left() + columns.name + 2 * kBetween);
    place.setWidth(columns.value);
    write(painter, fonts().bold, row.isFaint ? look.faint : look.text, place, row.value, Qt::AlignRight);
    place.moveLeft(place.right() + kBetween);
    place.setWidth(columns.note + 1);
    if (!row.note.isEmpty())
        write(painter, fonts().italic, look.faint, place, row.note);
}

bool isUnder(const QRectF& box, const std::optional<QPointF>& pointer)
{
    return pointer && box.adjusted(-kFromPointer, -kFromPointer, kFromPointer, kFromPointer).contains(*pointer);
}

}  // namespace

ReadoutLook readoutLookFor(const CPTXYGraph& graph)
{
    const QColor labels = graph.axes().axes().front()->labelTextStyle().color;
    const bool isDark = !labels.isValid() || labels.lightnessF() > 0.5F;
    if (isDark)
        return {QColor(22, 23, 27, 235), QColor(90, 92, 98), QColor(238, 238, 240), QColor(165, 168, 175),
                QColor(255, 255, 255, 230)};
    return {QColor(255, 255, 255, 240), QColor(150, 154, 162), QColor(26, 28, 32), QColor(104, 108, 116),
            QColor(20, 22, 26, 230)};
}

Readout shortened(Readout readout, std::size_t rows, const QString& moreText)
{
    if (readout.rows.size() <= std::max<std::size_t>(rows, 1))
        return readout;
    const std::size_t kept = std::max<std::size_t>(rows, 2) - 1;
    const std::size_t left = readout.rows.size() - kept;
    readout.rows.resize(kept);
    readout.rows.push_back({.color = {}, .name = moreText.arg(left), .value = {}, .note = {}, .isFaint = true});
    return readout;
}

std::size_t rowsWithin(double height)
{
    const double rows = std::floor((height - 2 * kInset) / kRowHeight) - 1;
    return rows > 1 ? static_cast<std::size_t>(rows) : 1;
}

QRectF placeBeside(const QSizeF& size, double x, double y, const QRectF& bounds, const std::optional<QPointF>& pointer)
{
    const double right = x + kFromLine;
    const double left = x - kFromLine - size.width();
    const double lowest = std::max(bounds.top(), bounds.bottom() - size.height());
    const auto at = [&](double boxLeft) {
        const double inside = std::max(bounds.left(), std::min(boxLeft, bounds.right() - size.width()));
        return QRectF(QPointF(inside, std::clamp(y, bounds.top(), lowest)), size);
    };
    const bool fitsRight = right + size.width() <= bounds.right();
    const bool fitsLeft = left >= bounds.left();
    const bool prefersRight = fitsRight || (!fitsLeft && bounds.right() - x >= x - bounds.left());
    QRectF box = at(prefersRight ? right : left);
    if (!isUnder(box, pointer))
        return box;
    const QRectF other = at(prefersRight ? left : right);
    if ((prefersRight ? fitsLeft : fitsRight) && !isUnder(other, pointer))
        return other;
    const double below = pointer->y() + kFromLine;
    box.moveTop(below + size.height() <= bounds.bottom() ? below : pointer->y() - kFromLine - size.height());
    return box;
}

QSizeF sizeOfReadout(const Readout& readout)
{
    const Columns columns(readout);
    const double rows = static_cast<double>(readout.rows.size()) + 1;
    return {std::ceil(std::max(columns.width(), widthOfTitle(readout)) + 2 * kInset), rows * kRowHeight + 2 * kInset};
}

void paintReadout(QPainter& painter, const Readout& readout, const QRectF& box, const ReadoutLook& look)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look.border, 1));
    painter.setBrush(look.ground);
    painter.drawRoundedRect(box, kCorner, kCorner);
    QRectF row = box.adjusted(kInset, kInset, -kInset, 0);
    row.setHeight(kRowHeight);
    write(painter, fonts().bold, look.text, row, readout.title);
    if (!readout.state.isEmpty())
        write(painter, fonts().plain, look.faint,
              row.adjusted(fonts().boldSize.horizontalAdvance(readout.title) + kBetween, 0, 0, 0), readout.state);
    const Columns columns(readout);
    for (const ReadoutRow& each : readout.rows) {
        row.translate(0, kRowHeight);
        paintRow(painter, each, columns, row, look);
    }
}

QString readoutAsTable(const Readout& readout)
{
    QString text = readout.title + QLatin1Char('\n');
    for (const ReadoutRow& row : readout.rows) {
        QStringList cells{row.name, row.value};
        if (!row.note.isEmpty())
            cells << row.note;
        for (QString& cell : cells)
            cell.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

QString readoutAsSentences(const Readout& readout)
{
    QString text = readout.title + QLatin1Char('.');
    for (const ReadoutRow& row : readout.rows) {
        text += QLatin1Char(' ') + row.name + QStringLiteral(": ") + row.value;
        if (!row.note.isEmpty())
            text += QStringLiteral(", ") + row.note;
        text += QLatin1Char('.');
    }
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
}

}  // namespace plotix
