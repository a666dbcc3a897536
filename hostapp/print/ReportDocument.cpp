#include "hostapp/print/ReportDocument.h"

#include <QtCore/QUrl>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QPainter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextFrame>
#include <QtGui/QTextTable>

#include <algorithm>
#include <cmath>
#include <vector>

namespace plotix {

namespace {

constexpr int kTitleSizes[] = {18, 16, 14, 12, 10, 9, 8};  // points, tried in this order
constexpr int kSubtitleSize = 11;
constexpr int kTextSize = 10;

constexpr auto kStyleSheet = "h1 { font-weight: 600; color: #1b2430; margin: 6px 0px 3px 0px; }"
                             "h2 { font-weight: 400; color: #4a5563; margin: 0px 0px 2px 0px; }"
                             "table { border-collapse: collapse; margin: 8px 0px 0px 0px; }"
                             "th { font-weight: 600; color: #1b2430; background-color: #e9edf2; padding: 4px 8px; }"
                             "td { color: #1b2430; padding: 3px 8px; border-bottom: 1px solid #d9dee5; }";

QByteArray bytesOfDataUrl(const QUrl& url)
{
    if (url.scheme() != QLatin1String("data"))
        return {};
    const QString text = url.path(QUrl::FullyDecoded);
    return QByteArray::fromBase64(text.section(QLatin1Char(','), 1).toLatin1());  // passes over blanks
}

/// Changes of the document that end in one layout. Without it each is followed by a layout of the whole document.
class ChangedAtOnce {
public:
    explicit ChangedAtOnce(QTextDocument* document) : m_cursor(document) { m_cursor.beginEditBlock(); }
    ~ChangedAtOnce() { m_cursor.endEditBlock(); }
    ChangedAtOnce(const ChangedAtOnce&) = delete;
    ChangedAtOnce& operator=(const ChangedAtOnce&) = delete;

private:
    QTextCursor m_cursor;
};

/// A heading's size relative to the text's overrides any size in a style sheet, so it is removed.
QTextCharFormat sized(QTextCharFormat format, int points)
{
    format.clearProperty(QTextFormat::FontSizeAdjustment);
    format.setProperty(QTextFormat::FontPixelSize, points);
    return format;
}

void setTextSize(const QTextBlock& block, int points)
{
    std::vector<QTextFragment> parts;
    for (auto part = block.begin(); !part.atEnd(); ++part)
        parts.push_back(part.fragment());
    for (const QTextFragment& part : parts) {
        QTextCursor cursor(block);
        cursor.setPosition(part.position());
        cursor.setPosition(part.position() + part.length(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(sized(part.charFormat(), points));
    }
    QTextCursor(block).setBlockCharFormat(sized(block.charFormat(), points));
}

/// Names and units at the left, numbers at the right; headings are aligned like their columns.
void alignColumns(QTextTable& table)
{
    constexpr int kTextColumns = 2;
    for (int row = 0; row < table.rows(); ++row)
        for (int column = 0; column < table.columns(); ++column) {
            QTextBlockFormat side;
            side.setAlignment(column < kTextColumns ? Qt::AlignLeft : Qt::AlignRight);
            table.cellAt(row, column).firstCursorPosition().mergeBlockFormat(side);
        }
}

/// The empty line after every table would take a page of its own when the table fills one.
void flattenBlockAfter(const QTextTable& table)
{
    QTextBlockFormat flat;
    flat.setLineHeight(0.1, QTextBlockFormat::FixedHeight);
    QTextCursor(table.lastCursorPosition().block().next()).mergeBlockFormat(flat);
}

}  // namespace

ReportDocument::ReportDocument(SharpGraph sharpGraph) : m_sharpGraph(std::move(sharpGraph))
{
    QFont font(QStringLiteral("Helvetica"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kTextSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    setDefaultFont(font);
    setUseDesignMetrics(true);  // widths as on paper, not rounded to a screen's pixels
    setDocumentMargin(0);
    setDefaultStyleSheet(QString::fromLatin1(kStyleSheet));
}

void ReportDocument::layOut(const QString& html, const QSizeF& pageSize)
{
    setPageSize(pageSize);
    setHtml(html);
    for (const int titleSize : kTitleSizes) {
        setHeadingSizes(titleSize);
        if (isGraphOnFirstPage())
            break;
    }
    arrangeTable();
}

void ReportDocument::setHeadingSizes(int titleSize)
{
    const ChangedAtOnce together(this);
    for (QTextBlock block = begin(); block.isValid(); block = block.next())
        if (const int level = block.blockFormat().headingLevel(); level > 0)
            setTextSize(block, level == 1 ? titleSize : std::min(titleSize, kSubtitleSize));
}

bool ReportDocument::isGraphOnFirstPage() const
{
    for (QTextBlock block = begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isImageFormat())
                return documentLayout()->blockBoundingRect(block).bottom() <= pageSize().height();
    return true;
}

QTextTable* ReportDocument::table() const
{
    for (QTextFrame* frame : rootFrame()->childFrames())
        if (auto* found = qobject_cast<QTextTable*>(frame))
            return found;
    return nullptr;
}

void ReportDocument::arrangeTable()
{
    QTextTable* const statistics = table();
    if (!statistics)
        return;
    QTextTableFormat format = statistics->format();
    format.setHeaderRowCount(1);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    {
        const ChangedAtOnce together(this);
        statistics->setFormat(format);
        alignColumns(*statistics);
        flattenBlockAfter(*statistics);
    }
    const QRectF place = documentLayout()->frameBoundingRect(statistics);
    const double height = pageSize().height();
    if (std::floor(place.top() / height) == std::floor((place.bottom() - 1) / height))
        return;
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    statistics->setFormat(format);
}

void ReportDocument::drawPage(QPainter* painter, int page)
{
    const QRectF part(0, page * pageSize().height(), pageSize().width(), pageSize().height());
    painter->save();
    painter->translate(-part.topLeft());
    painter->setClipRect(part);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = part;
    documentLayout()->draw(painter, context);
    painter->restore();
}

QVariant ReportDocument::loadResource(int type, const QUrl& name)
{
    if (type != ImageResource)
        return {};
    const QImage carried = QImage::fromData(bytesOfDataUrl(name), "PNG");
    if (carried.isNull()) {
        // Texts in a report are not escaped. Without an answer here the address would be opened as a file.
        QImage nothing(1, 1, QImage::Format_ARGB32);
        nothing.fill(Qt::transparent);
        return nothing;
    }
    return std::abs(carried.width() - pageSize().width()) > 1 ? carried : graphFor(carried);
}

QImage ReportDocument::graphFor(const QImage& carried)
{
    if (m_graph)
        return *m_graph;
    m_graph = m_sharpGraph ? m_sharpGraph(carried.size()) : QImage();
    if (m_graph->isNull())
        m_graph = carried;
    m_graph->setDevicePixelRatio(static_cast<double>(m_graph->width()) / carried.width());
    return *m_graph;
}

}  // namespace plotix
