#include "plugins/PlotixPlugIn/logic/ReportText.h"

#include "plugins/PlotixPlugIn/logic/NumberText.h"

namespace plotix {

namespace {

constexpr double kGraphHeightShare = 1.5;  // the graph takes two thirds of the height
constexpr double kHostingViewScale = 2.0;

/// How an absent object reads in a format.
QString textOf(const std::optional<QString>& text)
{
    return text.value_or(QStringLiteral("(null)"));
}

QString tableRow(const ReportRow& row)
{
    QString html = QStringLiteral("<tr>");
    for (const QString& cell : {row.name, row.unit, numberText(row.minimum), numberText(row.maximum),
                                numberText(row.average), QString::number(row.points)})
        html += QStringLiteral("<td>") + cell + QStringLiteral("</td>");
    return html + QStringLiteral("</tr>");
}

QString heading(const Report& report)
{
    // A header element, not the head of a document: what stands in a head would not be printed.
    return QStringLiteral("<header><h1>") + reportTitle(report.rows) + QStringLiteral("</h1><h2>From ") +
           textOf(report.fromDate) + QStringLiteral(" to ") + textOf(report.toDate) + QStringLiteral("</h2><h2><b>") +
           textOf(report.siteName) + QStringLiteral(" at ") + textOf(report.siteLocation) +
           QStringLiteral("</b></h2></header>");
}

QString image(const QByteArray& png)
{
    // The blank after the comma is part of the document; decoders skip blanks.
    return QStringLiteral("<img src=\"data:image/png;base64, ") + QString::fromLatin1(png.toBase64()) +
           QStringLiteral("\" alt=\"Plot\" />");
}

QString table(const std::vector<ReportRow>& rows)
{
    QString html = QStringLiteral("<table><tr><th>Property</th><th>Unit</th><th>Minimum</th><th>Maximum</th>"
                                  "<th>Average</th><th>No. of Points</th></tr>");
    for (const ReportRow& row : rows)
        html += tableRow(row);
    return html + QStringLiteral("</table>");
}

/// Nothing where there are none: the document is then what it always was.
QString footnotes(const std::vector<ReportFootnote>& notes)
{
    QString html;
    for (const ReportFootnote& note : notes) {
        const QString author = note.author.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(note.author);
        html += QStringLiteral("<p><b>%1</b> %2: ").arg(note.number).arg(note.time.toHtmlEscaped()) +
                (note.text + author).toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")) +
                QStringLiteral("</p>");
    }
    return html;
}

}  // namespace

QString reportTitle(const std::vector<ReportRow>& rows)
{
    if (rows.size() == 1)
        return rows.front().name;
    QString title;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        // Two blanks before the last name: its own comes after the circle's.
        const bool isLast = index + 1 == rows.size();
        title += isLast ? QLatin1Char(' ') + rows[index].name : rows[index].name + QStringLiteral(" \u25CF ");
    }
    return title;
}

QString reportHtml(const Report& report)
{
    return QStringLiteral("<html>") + heading(report) + QStringLiteral("<body>") + image(report.graph) +
           table(report.rows) + footnotes(report.footnotes) + QStringLiteral("</body></html>");
}

QString reportFooterLeft(const QString& program, const QString& date)
{
    return QStringLiteral("Prepared with ") + program + QStringLiteral(" at ") + date;
}

QString reportFooterRight(std::int64_t page, std::int64_t pageCount)
{
    return QStringLiteral("Page ") + QString::number(page) + QStringLiteral(" of ") + QString::number(pageCount);
}

ReportGeometry reportGeometry(const QSizeF& paper, const QSizeF& margins, double scalingFactor)
{
    const QSizeF content = (paper - margins) * scalingFactor;
    const QSizeF graph(content.width(), content.height() / kGraphHeightShare);
    return {content, graph, graph * kHostingViewScale};
}

}  // namespace plotix
