#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>
#include <QtGui/QColor>

#include <functional>
#include <optional>
#include <vector>

class QPainter;

/// What a report on a page of our own shows. A value; any thread. Times are seconds since 1970-01-01 UTC.
namespace plotix {

struct ReportContents {
    struct Row {
        QColor color;  ///< the line's, as the graph on paper has it
        QString name, unit;
        double minimum = 0, maximum = 0, average = 0;  ///< without meaning when there are no points
        qint64 points = 0;
        QStringList figures = {};  ///< further cells as they are written, one for each of `figureTitles`
    };

    /// What somebody wrote about a time that the graph shows; its number is that of a flag in the graph.
    struct Footnote {
        int number = 0;
        QString time, text, author;
    };

    QString title;
    QString siteName, siteLocation;                 ///< either may be empty
    double from = 0, to = 0;                        ///< the span that the graph draws
    QTimeZone zone = {};                            ///< by whose clocks it is told; invalid: the user's
    bool hasTwentyFourHours = false;                ///< whatever the user's locale has
    std::optional<double> firstRecord, lastRecord;  ///< of the records that the rows are about; absent: not known
    std::vector<Row> rows;                          ///< of the lines that the graph shows
    QStringList figureTitles;                       ///< of the rows' further cells
    QString about;                                  ///< what the rows are about, in words; empty: all records read
    bool areUnitsInGraph = false;                   ///< as in lanes, whose heads name them
    std::vector<Footnote> footnotes = {};           ///< in the order of their numbers
    QStringList outside;                            ///< names of those whose values the graph cuts off

    /// Draws the graph into a rectangle in points, dark on white.
    std::function<void(QPainter& painter, const QRectF& rect)> drawGraph;
};

}  // namespace plotix
