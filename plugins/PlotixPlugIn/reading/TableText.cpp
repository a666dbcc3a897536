#include "plugins/PlotixPlugIn/reading/TableText.h"

namespace plotix {

namespace {

QString oneLine(QString cell)
{
    for (QChar& character : cell)
        if (character == u'\t' || character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = u' ';
    return cell;
}

QString lineOf(const TableText& table, const QStringList& cells)
{
    QStringList shown;
    for (std::size_t column = 0; column < table.columns.size(); ++column)
        if (!table.columns[column].isColor)
            shown << oneLine(cells.value(static_cast<qsizetype>(column)));
    return shown.join(u'\t') + u'\n';
}

QString htmlCell(const TableText::Column& column, const QString& cell)
{
    if (column.isColor)
        return QStringLiteral("<td bgcolor=\"%1\">&nbsp;&nbsp;</td>").arg(cell.toHtmlEscaped());
    return (column.isNumbers ? QStringLiteral("<td align=\"right\">%1</td>") : QStringLiteral("<td>%1</td>"))
        .arg(cell.toHtmlEscaped());
}

}  // namespace

QString tabSeparatedText(const TableText& table)
{
    QStringList titles;
    for (const TableText::Column& column : table.columns)
        titles << column.title;
    QString text;
    for (const QString& line : table.heading)
        text += oneLine(line) + u'\n';
    text += lineOf(table, titles);
    for (const QStringList& row : table.rows)
        text += lineOf(table, row);
    return text;
}

QString htmlText(const TableText& table)
{
    QString text = QStringLiteral(
        "<html><head><meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"></head><body>");
    for (const QString& line : table.heading)
        text += QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped());
    text += QStringLiteral("<table><tr>");
    for (const TableText::Column& column : table.columns)
        text += QStringLiteral("<th>%1</th>").arg(column.title.toHtmlEscaped());
    text += QStringLiteral("</tr>\n");
    for (const QStringList& row : table.rows) {
        text += QStringLiteral("<tr>");
        for (std::size_t column = 0; column < table.columns.size(); ++column)
            text += htmlCell(table.columns[column], row.value(static_cast<qsizetype>(column)));
        text += QStringLiteral("</tr>\n");
    }
    return text + QStringLiteral("</table></body></html>");
}

}  // namespace plotix
