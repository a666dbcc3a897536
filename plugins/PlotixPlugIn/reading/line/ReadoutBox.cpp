#include "plugins/PlotixPlugIn/reading/line/ReadoutBox.h"

#include "plotkit/render/GraphText.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QStaticText>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace plotix {

namespace {

constexpr double kTextSize = 12;
constexpr double kRowHeight = 18;
constexpr double kInset = 9;
constexpr double kSwatch = 10;
constexpr double kBetween = 7;    // columns
constexpr double kFromLine = 14;  // the box from its vertical
constexpr double kFromPointer = 6;
constexpr double kCorner = 6;
constexpr double kLongestName = 230;

enum class Face { Plain, Bold, Italic };

/// Texts ready to be drawn: most of them stay while the value line moves, and to shape one takes longer than to draw
/// it.
class ShapedTexts {
public:
    const QStaticText& of(Face face, const QString& text)
    {
        const auto [entry, isNew] = m_texts.try_emplace({face, text});
        if (isNew) {
            entry->second.setTextFormat(Qt::PlainText);
            entry->second.setText(text);
            entry->second.prepare({}, font(face));
        }
        return entry->second;
    }
    const QFont& font(Face face) const { return m_fonts[static_cast<std::size_t>(face)]; }

    /// Forgets all where there are many; to be called where none is in use.
    void trim()
    {
        constexpr std::size_t kMost = 400;
        if (m_texts.size() > kMost)
            m_texts.clear();
    }

private:
    static QFont made(const char* name, bool italic)
    {
        QFont font = plotkit::fontForStyle({.fontName = QString::fromLatin1(name), .fontSize = kTextSize});
        font.setItalic(italic);
        return font;
    }

    std::array<QFont, 3> m_fonts{made("Helvetica", false), made("Helvetica-Bold", false), made("Helvetica", true)};
    std::map<std::pair<Face, QString>, QStaticText> m_texts;
};

ShapedTexts& shaped()
{
    static ShapedTexts texts;
    return texts;
}

double widthOf(Face face, const QString& text)
{
    return text.isEmpty() ? 0 : shaped().of(face, text).size().width();
}

Face nameFace(const ReadoutRow& row)
{
    return row.isChosen ? Face::Bold : Face::Plain;
}

/// A name no longer than there is room for.
QString shortName(const ReadoutRow& row)
{
    if (widthOf(nameFace(row), row.name) <= kLongestName)
        return row.name;
    return QFontMetricsF(shaped().font(nameFace(row))).elidedText(row.name, Qt::ElideMiddle, kLongestName);
}

QString noteText(const ReadoutRow& row)
{
    QStringList parts{row.extreme, row.differences, row.note};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

/// What each column takes, by its widest text.
struct Columns {
    double name = 0, value = 0, note = 0;

    explicit Columns(const Readout& readout)
    {
        for (const ReadoutRow& row : readout.rows) {
            name = std::max(name, std::min(kLongestName, widthOf(nameFace(row), row.name)));
            value = std::max(value, widthOf(Face::Bold, row.value));
            note = std::max(note, widthOf(Face::Italic, noteText(row)));
        }
    }

    double width() const { return kSwatch + kBetween + name + 2 * kBetween + value + (note > 0 ? kBetween + note : 0); }
};

double widthOfTitle(const Readout& readout)
{
    const double title = widthOf(Face::Bold, readout.title);
    return readout.state.isEmpty() ? title : title + kBetween + widthOf(Face::Plain, readout.state);
}

/// From `left` on, in the middle of a row.
void write(QPainter& painter, Face face, const QColor& color, double left, const QRectF& row, const QString& text)
{
    if (text.isEmpty())
        return;
    const QStaticText& ready = shaped().of(face, text);
    painter.setFont(shaped().font(face));
    painter.setPen(color);
    painter.drawStaticText(QPointF(std::round(left), std::round(row.center().y() - ready.size().height() / 2)), ready);
}

void paintRow(QPainter& painter, const ReadoutRow& row, const Columns& columns, const QRectF& place,
              const ReadoutLook& look)
{
    if (row.color.isValid()) {
        const QRectF swatch(place.left(), place.center().y() - kSwatch / 2, kSwatch, kSwatch);
        painter.setPen(row.isChosen ? QPen(look.text, 1.5) : QPen(Qt::NoPen));
        painter.setBrush(row.color);
        painter.drawRoundedRect(swatch, 2, 2);
    }
    double left = place.left() + kSwatch + kBetween;
    write(painter, nameFace(row), look.text, left, place, shortName(row));
    left += columns.name + 2 * kBetween + columns.value;
    const QColor& color = row.isFaint ? look.faint : look.text;
    write(painter, Face::Bold, color, left - widthOf(Face::Bold, row.value), place, row.value);
    const QColor& noted = row.noteColor.isValid() ? row.noteColor : look.faint;
    write(painter, Face::Italic, noted, left + kBetween, place, noteText(row));
}

bool isUnder(const QRectF& box, const std::optional<QPointF>& pointer)
{
    return pointer && box.adjusted(-kFromPointer, -kFromPointer, kFromPointer, kFromPointer).contains(*pointer);
}

}  // namespace

ReadoutLook readoutLookFor(const CPTXYGraph& graph)
{
    if (isDark(graph))
        return {QColor(22, 23, 27, 235), QColor(90, 92, 98), QColor(238, 238, 240), QColor(165, 168, 175),
                QColor(255, 255, 255, 230)};
    return {QColor(255, 255, 255, 240), QColor(150, 154, 162), QColor(26, 28, 32), QColor(104, 108, 116),
            QColor(20, 22, 26, 230)};
}

Readout folded(Readout readout)
{
    std::erase_if(readout.rows, [](const ReadoutRow& row) { return !row.hasValues; });
    std::vector<ReadoutRow> rows;
    const bool isEachBesideItsOwn = [&readout] {
        bool wasBeside = true;  // the first one stands beside none
        for (const ReadoutRow& row : readout.rows) {
            const bool isBeside = !row.besideName.isEmpty();
            if (isBeside && wasBeside)
                return false;
            wasBeside = isBeside;
        }
        return true;
    }();
    if (!isEachBesideItsOwn)
        return readout;
    for (ReadoutRow& row : readout.rows) {
        if (row.besideName.isEmpty()) {
            rows.push_back(std::move(row));
            continue;
        }
        QString beside = QStringLiteral("%1: %2").arg(row.besideName, row.value);
        if (!row.lessBy.isEmpty())
            beside += QStringLiteral(" (%1)").arg(row.lessBy);
        QStringList parts{beside, row.extreme, row.note};
        parts.removeAll(QString());
        rows.back().differences = parts.join(QStringLiteral(", "));
    }
    readout.rows = std::move(rows);
    return readout;
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
    shaped().trim();
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
    write(painter, Face::Bold, look.text, row.left(), row, readout.title);
    const double beside = row.left() + widthOf(Face::Bold, readout.title) + kBetween;
    write(painter, Face::Plain, look.faint, beside, row, readout.state);
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
        if (const QString note = noteText(row); !note.isEmpty())
            cells << note;
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
        if (const QString note = noteText(row); !note.isEmpty())
            text += QStringLiteral(", ") + note;
        text += QLatin1Char('.');
    }
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
}

}  // namespace plotix
