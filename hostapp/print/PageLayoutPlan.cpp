#include "hostapp/print/PageLayoutPlan.h"

#include <algorithm>
#include <numeric>

namespace plotix {

namespace {

constexpr double kMargin = 36;
constexpr double kPictureMargin = 14;
constexpr double kTitleHeight = 26;
constexpr double kHeadingsHeight = 18;
constexpr double kNoteHeight = 15;
constexpr double kFooterHeight = 18;
constexpr double kGap = 8;
constexpr double kLeastGraph = 0.4;    // of the content's height
constexpr double kTallestGraph = 0.6;  // of its width

double tableHeight(int rows)
{
    return rows == 0 ? 0 : (rows + 1) * kReportRowHeight;
}

int rowsIn(double height)
{
    return std::max(0, static_cast<int>(height / kReportRowHeight) - 1);
}

double heightOf(const std::vector<double>& footnotes)
{
    return footnotes.empty() ? 0 : std::accumulate(footnotes.begin(), footnotes.end(), kGap);
}

/// Below the table of the last page, down to `bottom`, then on pages of their own.
void placeFootnotes(PageLayoutPlan& plan, const std::vector<double>& heights, double bottom)
{
    double top = plan.pages.back().table.bottom() + kGap;
    int number = 0;
    for (const double height : heights) {
        const bool hasOthers = plan.pages.back().rows > 0 || !plan.pages.back().footnotes.empty();
        const bool isWithGraph = plan.pages.size() == 1;
        if (top + height > bottom && (hasOthers || isWithGraph)) {
            plan.pages.push_back({});
            plan.pages.back().firstFootnote = number;
            top = plan.content.top();
        }
        if (plan.pages.back().footnotes.empty())
            plan.pages.back().firstFootnote = number;
        plan.pages.back().footnotes.emplace_back(plan.content.left(), top, plan.content.width(), height);
        top += height;
        ++number;
    }
}

}  // namespace

double footnoteWidthOnPages(const QSizeF& sheet)
{
    return std::max(0.0, sheet.width() - 2 * kMargin);
}

double footnoteWidthInPicture(const QSizeF& size)
{
    return std::max(0.0, size.width() - 2 * kPictureMargin);
}

PageLayoutPlan planPages(const QSizeF& sheet, int rows, bool hasNote, const std::vector<double>& footnotes)
{
    PageLayoutPlan plan;
    plan.sheet = sheet;
    plan.content = QRectF(QPointF(), sheet).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QRectF& content = plan.content;
    const double left = content.left(), width = content.width();
    plan.footer = QRectF(left, content.bottom() - kFooterHeight, width, kFooterHeight);
    plan.title = QRectF(left, content.top(), width, kTitleHeight);
    plan.headings = QRectF(left, plan.title.bottom(), width, kHeadingsHeight);

    const double top = plan.headings.bottom() + kGap, bottom = plan.footer.top() - kGap;
    const double note = hasNote ? kNoteHeight : 0;
    const double least = std::min(kLeastGraph * content.height(), std::max(0.0, bottom - top));
    const double below = bottom - top - kGap - note;  // for graph and table
    const int together = std::min(rows, rowsIn(below - least));
    const double notes = together == rows ? heightOf(footnotes) : 0;
    const double graph =
        std::clamp(below - tableHeight(together) - notes, least, std::max(least, kTallestGraph * width));
    plan.graph = QRectF(left, top, width, graph);
    const double tableTop = plan.graph.bottom() + kGap + note;
    if (hasNote && together > 0)
        plan.note = QRectF(left, plan.graph.bottom() + kGap, width, note);
    plan.pages.push_back({QRectF(left, tableTop, width, tableHeight(together)), 0, together});

    const int perPage = std::max(1, rowsIn(bottom - content.top()));
    for (int row = together; row < rows; row += perPage) {
        const int count = std::min(perPage, rows - row);
        plan.pages.push_back({QRectF(left, content.top(), width, tableHeight(count)), row, count});
    }
    placeFootnotes(plan, footnotes, bottom);
    return plan;
}

PageLayoutPlan planPicture(const QSizeF& size, int rows, bool hasNote, const std::vector<double>& footnotes)
{
    PageLayoutPlan plan;
    const double note = hasNote && rows > 0 ? kNoteHeight : 0;
    const double table = rows > 0 ? kGap + note + tableHeight(rows) : 0;
    const double others = 2 * kPictureMargin + kTitleHeight + kHeadingsHeight + kGap + table + heightOf(footnotes);
    const double graph = std::max(size.height() - others, kLeastGraph * size.height());
    plan.sheet = QSizeF(size.width(), others + graph);
    plan.content =
        QRectF(QPointF(), plan.sheet).adjusted(kPictureMargin, kPictureMargin, -kPictureMargin, -kPictureMargin);
    const double left = plan.content.left(), width = plan.content.width();
    plan.title = QRectF(left, plan.content.top(), width, kTitleHeight);
    plan.headings = QRectF(left, plan.title.bottom(), width, kHeadingsHeight);
    plan.graph = QRectF(left, plan.headings.bottom() + kGap, width, graph);
    if (note > 0)
        plan.note = QRectF(left, plan.graph.bottom() + kGap, width, note);
    plan.pages.push_back({QRectF(left, plan.graph.bottom() + kGap + note, width, tableHeight(rows)), 0, rows});
    placeFootnotes(plan, footnotes, plan.sheet.height());
    return plan;
}

}  // namespace plotix
