// Carrying the statistics table to other programs.
//
// Rules of this room:
//  1. What is shown is copied: columns in the order on the screen, rows as they are sorted, texts as they are worded.
//  2. The selected rows, or all while none is selected.

#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/reading/TableText.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QHeaderView>

#include <numeric>

namespace {

QString cellText(const InfoTableModel& rows, int row, int column)
{
    if (column == InfoTableModel::Color)
        return rows.rowAt(row)->color.name();
    const int role = column == InfoTableModel::Show ? Qt::AccessibleTextRole : Qt::DisplayRole;
    return rows.index(row, column).data(role).toString();
}

}  // namespace

plotix::TableText PropertyDetailsTableView::textOfRows(const std::vector<std::size_t>& rows) const
{
    plotix::TableText text;
    std::vector<int> columns;
    for (int position = 0; position < horizontalHeader()->count(); ++position)
        columns.push_back(horizontalHeader()->logicalIndex(position));
    for (const int column : columns)
        text.columns.push_back({m_model->headerData(column, Qt::Horizontal).toString(),
                                column >= InfoTableModel::Minimum, column == InfoTableModel::Color});
    for (const std::size_t row : rows) {
        QStringList cells;
        for (const int column : columns)
            cells << cellText(*m_model, static_cast<int>(row), column);
        text.rows.push_back(cells);
    }
    return text;
}

void PropertyDetailsTableView::copyRows() const
{
    std::vector<std::size_t> rows = selectedRowIndexes();
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(m_model->rowCount()));
        std::iota(rows.begin(), rows.end(), std::size_t{0});
    }
    if (rows.empty())
        return;
    if (m_model->figures())
        m_model->figures()->takeUp();
    plotix::TableText text = textOfRows(rows);
    if (m_copiedHeading)
        text.heading = m_copiedHeading();
    auto* copied = new QMimeData;
    copied->setText(plotix::tabSeparatedText(text));
    copied->setHtml(plotix::htmlText(text));
    QGuiApplication::clipboard()->setMimeData(copied);
}
