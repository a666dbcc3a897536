#include "hostapp/print/PageReport.h"

#include "base/ReportableError.h"
#include "hostapp/print/PagesToPrint.h"
#include "hostapp/print/Paper.h"
#include "hostapp/print/PdfFile.h"
#include "hostapp/print/ReportText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPagedPaintDevice>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include <algorithm>
#include <numeric>
#include <vector>

namespace plotix {

namespace {

class PageText {
    Q_DECLARE_TR_FUNCTIONS(PageReport)
};

constexpr int kTitleSize = 18, kSmallestTitle = 12;
constexpr int kCellSize = 10, kSmallestCell = 6, kHeadingSize = 11, kFooterSize = 9;
constexpr double kKeyWidth = 26;  // of the column with the colours
constexpr double kColumnGap = 14;
constexpr double kKeyThickness = 3;

const QColor kInk(0x1b, 0x24, 0x30), kGrey(0x4a, 0x55, 0x63), kRule(0xc9, 0xcf, 0xd7);

QFont fontOf(int size, QFont::Weight weight = QFont::Normal)
{
    QFont font(QStringLiteral("Helvetica"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(size);  // one unit of the painter is one point
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// Plain text: whatever a name holds, it is shown.
void drawText(QPainter& painter, const QRectF& rect, const QString& text, const QFont& font, const QColor& color,
              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter)
{
    painter.setFont(font);
    painter.setPen(color);
    const QString fitting = QFontMetricsF(font).elidedText(text.simplified(), Qt::ElideMiddle, rect.width());
    painter.drawText(rect, static_cast<int>(alignment | Qt::TextSingleLine | Qt::TextDontClip), fitting);
}

/// As large as possible with the whole text in the width.
QFont fittingTitleFont(const QString& text, double width)
{
    int size = kTitleSize;
    while (size > kSmallestTitle && QFontMetricsF(fontOf(size, QFont::Bold)).horizontalAdvance(text) > width)
        --size;
    return fontOf(size, QFont::Bold);
}

using Cells = QStringList;  // property, unit, minimum, maximum, average, values, and what was chosen beyond

Cells headingsOfColumns(const ReportContents& contents)
{
    return QStringList{PageText::tr("Property"), PageText::tr("Unit"),    PageText::tr("Minimum"),
                       PageText::tr("Maximum"),  PageText::tr("Average"), PageText::tr("Values")} +
           contents.figureTitles;
}

Cells cellsOf(const ReportContents& contents, const ReportContents::Row& row, const QLocale& locale)
{
    const FiguresText figures = figuresText(row, locale);
    Cells cells{row.name, row.unit, figures.minimum, figures.maximum, figures.average, figures.points};
    for (qsizetype column = 0; column < contents.figureTitles.size(); ++column)
        cells << row.figures.value(column);
    return cells;
}

/// Each column as wide as its widest text; the names take the rest.
std::vector<double> widthsOf(const ReportContents& contents, const QLocale& locale, int size)
{
    const QFontMetricsF heading(fontOf(size, QFont::Bold)), text(fontOf(size));
    const Cells headings = headingsOfColumns(contents);
    std::vector<double> widths(static_cast<std::size_t>(headings.size()));
    for (std::size_t column = 1; column < widths.size(); ++column)
        widths[column] = heading.horizontalAdvance(headings[static_cast<qsizetype>(column)]);
    for (const ReportContents::Row& row : contents.rows) {
        const Cells cells = cellsOf(contents, row, locale);
        for (std::size_t column = 1; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], text.horizontalAdvance(cells[static_cast<qsizetype>(column)]));
    }
    return widths;
}

struct TableColumns {
    std::vector<QRectF> cells;  ///< of the first row
    int fontSize = kCellSize;
};

/// Many columns are written smaller, down to what can still be read; the names keep a sixth of the width.
TableColumns columnsOf(const ReportContents& contents, const QLocale& locale, const QRectF& table)
{
    constexpr double kShareOfNames = 1.0 / 6;
    TableColumns columns;
    std::vector<double> widths;
    for (columns.fontSize = kCellSize;; --columns.fontSize) {
        widths = widthsOf(contents, locale, columns.fontSize);
        const double taken = std::accumulate(widths.begin(), widths.end(),
                                             kKeyWidth + kColumnGap * static_cast<double>(widths.size() - 1));
        if (taken <= table.width() * (1 - kShareOfNames) || columns.fontSize == kSmallestCell)
            break;
    }
    columns.cells.resize(widths.size());
    double right = table.right();
    for (std::size_t column = widths.size() - 1; column > 0; --column) {
        columns.cells[column] = QRectF(right - widths[column], table.top(), widths[column], kReportRowHeight);
        right -= widths[column] + kColumnGap;
    }
    columns.cells[0] = QRectF(table.left() + kKeyWidth, table.top(), std::max(0.0, right - table.left() - kKeyWidth),
                              kReportRowHeight);
    return columns;
}

Qt::Alignment alignmentOf(std::size_t column)
{
    constexpr std::size_t kTextColumns = 2;
    return (column < kTextColumns ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
}

void drawRow(QPainter& painter, const TableColumns& columns, double down, const Cells& cells, QFont::Weight weight)
{
    for (std::size_t column = 0; column < columns.cells.size(); ++column)
        drawText(painter, columns.cells[column].translated(0, down), cells[static_cast<qsizetype>(column)],
                 fontOf(columns.fontSize, weight), kInk, alignmentOf(column));
}

constexpr double kNumberWidth = 22;  // of the column with the footnotes' numbers
constexpr double kBetweenFootnotes = 3;

QString textOfFootnote(const ReportContents::Footnote& note)
{
    const QString author = note.author.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(note.author);
    return note.time + QStringLiteral(": ") + note.text.trimmed() + author;
}

constexpr int kFootnoteFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;

/// As high as their texts in a width; none is cut.
std::vector<double> footnoteHeights(const ReportContents& contents, double width)
{
    const QFontMetricsF metrics(fontOf(kFooterSize));
    const QRectF room(0, 0, std::max(1.0, width - kNumberWidth), 1e6);
    std::vector<double> heights;
    for (const ReportContents::Footnote& note : contents.footnotes)
        heights.push_back(metrics.boundingRect(room, kFootnoteFlags, textOfFootnote(note)).height() +
                          kBetweenFootnotes);
    return heights;
}

/// The whole sheet is ours, margins included; they are the plan's.
QSizeF takeWholeSheet(QPagedPaintDevice& device)
{
    QPageLayout layout = device.pageLayout();
    layout.setMode(QPageLayout::FullPageMode);
    layout.setMargins(QMarginsF());
    device.setPageLayout(layout);
    return layout.fullRect(QPageLayout::Point).size();
}

/// From here on one unit of the painter is one point.
void beginPage(QPainter& painter, QPagedPaintDevice& device)
{
    if (!painter.begin(&device))
        throw ReportableError(QCoreApplication::translate("ReportPrinter", "The printer does not take the report."));
    painter.scale(device.logicalDpiX() / kPointsPerInch, device.logicalDpiY() / kPointsPerInch);
}

}  // namespace

PageReport::PageReport(ReportContents contents, QLocale locale)
    : m_contents(std::move(contents)), m_locale(std::move(locale))
{
}

int PageReport::print(QPagedPaintDevice& device) const
{
    const QSizeF sheet = takeWholeSheet(device);
    const PageLayoutPlan plan = planPages(sheet, static_cast<int>(m_contents.rows.size()), hasNote(),
                                          footnoteHeights(m_contents, footnoteWidthOnPages(sheet)));
    const std::vector<int> pages = pagesToPrint(device, static_cast<int>(plan.pages.size()));
    QPainter painter;
    beginPage(painter, device);
    for (std::size_t index = 0; index < pages.size(); ++index) {
        if (index > 0)
            device.newPage();
        drawPage(painter, plan, pages[index]);
    }
    return static_cast<int>(plan.pages.size());
}

QByteArray PageReport::pdf(const QSizeF& sheet) const
{
    return pdfFile(m_contents.title, [this, &sheet](QPdfWriter& writer) {
        const QSizeF upright = sheet.width() > sheet.height() ? sheet.transposed() : sheet;
        writer.setPageSize(QPageSize(upright, QPageSize::Point, QString(), QPageSize::FuzzyMatch));
        writer.setPageOrientation(QPageLayout::Landscape);
        print(writer);
    });
}

bool PageReport::hasNote() const
{
    return !noteText(m_contents, m_locale).isEmpty();
}

PageLayoutPlan PageReport::pictured(const QSizeF& size) const
{
    return planPicture(size, static_cast<int>(m_contents.rows.size()), hasNote(),
                       footnoteHeights(m_contents, footnoteWidthInPicture(size)));
}

QImage PageReport::picture(const QSizeF& size, double density) const
{
    const PageLayoutPlan plan = pictured(size);
    QImage image((plan.sheet * density).toSize(), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(density, density);
    drawPage(painter, plan, 0);
    return image;
}

QByteArray PageReport::picturePdf(const QSizeF& size) const
{
    const PageLayoutPlan plan = pictured(size);
    return pdfFile(m_contents.title, [this, &plan](QPdfWriter& writer) {
        writer.setPageSize(QPageSize(plan.sheet, QPageSize::Point));
        takeWholeSheet(writer);
        QPainter painter;
        beginPage(painter, writer);
        drawPage(painter, plan, 0);
    });
}

void PageReport::drawPage(QPainter& painter, const PageLayoutPlan& plan, int page) const
{
    painter.save();
    if (page == 0) {
        drawHeadings(painter, plan);
        painter.save();
        if (m_contents.drawGraph)
            m_contents.drawGraph(painter, plan.graph);
        painter.restore();
        drawText(painter, QRectF(plan.graph.topLeft(), QSizeF(plan.graph.width(), kReportRowHeight)),
                 sharedUnit(m_contents), fontOf(kCellSize), kGrey);
    }
    drawTable(painter, plan, plan.pages[static_cast<std::size_t>(page)]);
    drawFootnotes(painter, plan.pages[static_cast<std::size_t>(page)]);
    drawFooter(painter, plan, page);
    painter.restore();
}

void PageReport::drawHeadings(QPainter& painter, const PageLayoutPlan& plan) const
{
    drawText(painter, plan.title, m_contents.title, fittingTitleFont(m_contents.title, plan.title.width()), kInk);
    const QFont font = fontOf(kHeadingSize);
    const QString place = placeText(m_contents);
    QRectF span = plan.headings;
    if (!place.isEmpty()) {
        const double width = std::min(QFontMetricsF(font).horizontalAdvance(place) + 1, plan.headings.width() / 2);
        drawText(painter, {span.right() - width, span.top(), width, span.height()}, place, font, kGrey,
                 Qt::AlignRight | Qt::AlignVCenter);
        span.setRight(span.right() - width - kColumnGap);
    }
    drawText(painter, span, spanText(m_contents, m_contents.from, m_contents.to, m_locale), font, kGrey);
    if (!plan.note.isEmpty())
        drawText(painter, plan.note, noteText(m_contents, m_locale), fontOf(kFooterSize), kGrey);
}

void PageReport::drawTable(QPainter& painter, const PageLayoutPlan& plan, const PageLayoutPlan::Page& page) const
{
    if (page.rows == 0)
        return;
    const TableColumns columns = columnsOf(m_contents, m_locale, page.table);
    drawRow(painter, columns, 0, headingsOfColumns(m_contents), QFont::Bold);
    for (int index = 0; index <= page.rows; ++index) {
        const double below = page.table.top() + (index + 1) * kReportRowHeight;
        painter.setPen(QPen(index == 0 ? kInk : kRule, 0.6));
        painter.drawLine(QLineF(plan.content.left(), below, plan.content.right(), below));
    }
    for (int index = 0; index < page.rows; ++index) {
        const ReportContents::Row& row = m_contents.rows[static_cast<std::size_t>(page.firstRow + index)];
        const double down = (index + 1) * kReportRowHeight;
        const double middle = page.table.top() + down + kReportRowHeight / 2;
        painter.fillRect(
            QRectF(page.table.left(), middle - kKeyThickness / 2, kKeyWidth - kColumnGap / 2, kKeyThickness),
            row.color);
        drawRow(painter, columns, down, cellsOf(m_contents, row, m_locale), QFont::Normal);
    }
}

void PageReport::drawFootnotes(QPainter& painter, const PageLayoutPlan::Page& page) const
{
    for (std::size_t index = 0; index < page.footnotes.size(); ++index) {
        const ReportContents::Footnote& note =
            m_contents.footnotes[static_cast<std::size_t>(page.firstFootnote) + index];
        QRectF place = page.footnotes[index];
        painter.setPen(kInk);
        painter.setFont(fontOf(kFooterSize, QFont::Bold));
        painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, QString::number(note.number));
        painter.setFont(fontOf(kFooterSize));
        place.setLeft(place.left() + kNumberWidth);
        painter.drawText(place, kFootnoteFlags | Qt::TextDontClip, textOfFootnote(note));
    }
}

void PageReport::drawFooter(QPainter& painter, const PageLayoutPlan& plan, int page) const
{
    if (plan.footer.isEmpty())
        return;
    const QFont font = fontOf(kFooterSize);
    const QString now = m_locale.toString(QDateTime::currentDateTime(), QLocale::ShortFormat);
    drawText(painter, plan.footer, PageText::tr("Plotix, %1").arg(now), font, kGrey, Qt::AlignLeft | Qt::AlignBottom);
    drawText(painter, plan.footer, PageText::tr("Page %1 of %2").arg(page + 1).arg(plan.pages.size()), font, kGrey,
             Qt::AlignRight | Qt::AlignBottom);
}

}  // namespace plotix
