#pragma once

#include <QtCore/QRectF>
#include <QtCore/QSizeF>

#include <vector>

/// Where everything of the host's report stands. Pure; any thread. Points, y downward.
namespace plotix {

struct PageLayoutPlan {
    struct Page {
        QRectF table;  ///< with its row of headings; empty: none on this page
        int firstRow = 0, rows = 0;
        std::vector<QRectF> footnotes = {};  ///< below the table, in their order
        int firstFootnote = 0;
    };

    QSizeF sheet;                   ///< of every page
    QRectF content;                 ///< of every page, footer included
    QRectF title, headings, graph;  ///< on the first page
    QRectF note;                    ///< above the table; empty: none
    QRectF footer;                  ///< on every page; empty: none
    std::vector<Page> pages;        ///< at least one
};

inline constexpr double kReportRowHeight = 16;

/// Ten rows stand on one page with the graph; beyond, the graph keeps two fifths of the page and the rows go on.
/// A sheet too small for that gets as many pages as it takes, each with at least one row. Footnotes of these heights
/// follow the last row, on further pages where there is no room; none is broken.
PageLayoutPlan planPages(const QSizeF& sheet, int rows, bool hasNote, const std::vector<double>& footnotes = {});

/// How wide footnotes are on a sheet, and in a picture.
double footnoteWidthOnPages(const QSizeF& sheet);
double footnoteWidthInPicture(const QSizeF& size);

/// One page with narrow margins and no footer, for a picture of this size; higher where rows and footnotes take more
/// than three fifths of it.
PageLayoutPlan planPicture(const QSizeF& size, int rows, bool hasNote, const std::vector<double>& footnotes = {});

}  // namespace plotix
