#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSizeF>
#include <QtCore/QString>

#include <cstdint>
#include <optional>
#include <vector>

/// The printed report as text, and the sizes on its page. Pure: no view, no host, no clock. Any thread.
///
/// Nothing is escaped but footnotes: texts enter the HTML as they are. An absent text reads "(null)".
namespace plotix {

/// One row of the statistics.
struct ReportRow {
    QString name = {};
    QString unit = {};
    float minimum = 0;
    float maximum = 0;
    float average = 0;
    std::int32_t points = 0;
};

/// A note of the host about a time that the graph shows.
struct ReportFootnote {
    int number = 0;
    QString time, text, author;
};

struct Report {
    std::vector<ReportRow> rows;              ///< in the order of the list; the screen may show another one
    std::optional<QString> fromDate, toDate;  ///< as the host describes dates
    std::optional<QString> siteName, siteLocation;
    QByteArray graph;  ///< PNG data; may be empty
    std::vector<ReportFootnote> footnotes = {};
};

/// "A", "A ● B ●  C". No rows: empty.
QString reportTitle(const std::vector<ReportRow>& rows);

/// The whole document, on one line.
QString reportHtml(const Report& report);

QString reportFooterLeft(const QString& program, const QString& date);
QString reportFooterRight(std::int64_t page, std::int64_t pageCount);

/// Points. Paper of 792 × 612 with margins of 36 and 45 has 720 × 522 for content, a graph of 720 × 348, and a hosting
/// view of 1440 × 696.
struct ReportGeometry {
    QSizeF content;
    QSizeF graph;
    QSizeF hostingView;
};

/// `margins` are left + right and top + bottom.
ReportGeometry reportGeometry(const QSizeF& paper, const QSizeF& margins, double scalingFactor);

}  // namespace plotix
