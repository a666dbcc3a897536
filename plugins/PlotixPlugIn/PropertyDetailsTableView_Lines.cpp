// Choosing lines in the statistics table, by its menu and by keys; and copying from the menu.
//
// Rules of this room:
//  1. Nothing of it is there unless the table chooses lines.
//  2. The row's "show" is written first, the signal follows, as with the check boxes.

#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtGui/QKeyEvent>

namespace {

/// Keys that move the current row, and with it the selection.
bool movesRow(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: return true;
    default: return event.matches(QKeySequence::SelectAll);
    }
}

/// An item whose key is shown beside it; the key itself is the table's.
QAction* addItem(QMenu& menu, const QString& text, const char* key)
{
    return menu.addAction(KTVBundle::mainBundle()->localizedString(text) + u'\t' + QLatin1String(key));
}

}  // namespace

void PropertyDetailsTableView::addLineItems(QMenu& menu)
{
    menu.addSeparator();
    QAction* only = addItem(menu, QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Show Only This")), "O");
    only->setEnabled(!selectedRowIndexes().empty());
    connect(only, &QAction::triggered, this, &PropertyDetailsTableView::showOnlySelectedLines);
    QAction* all = addItem(menu, QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Show All")), "A");
    connect(all, &QAction::triggered, this, &PropertyDetailsTableView::showAllLines);
    if (std::unique_ptr<QMenu> lines = selectedLinesMenu()) {
        QAction* item = addItem(menu, QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Look")), "L");
        lines->setParent(&menu, lines->windowFlags());
        item->setMenu(lines.release());
    }
    if (const QStringList names = selectedNames(); !names.isEmpty())
        emit rowMenuMade(menu, names);
    menu.addSeparator();
    QAction* copy =
        menu.addAction(KTVBundle::mainBundle()->localizedString(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Copy"))) +
                       u'\t' + QKeySequence(QKeySequence::Copy).toString(QKeySequence::NativeText));
    copy->setEnabled(m_model->rowCount() > 0);
    connect(copy, &QAction::triggered, this, &PropertyDetailsTableView::copyRows);
}

QStringList PropertyDetailsTableView::selectedNames() const
{
    QStringList names;
    for (const std::size_t row : selectedRowIndexes())
        if (const InfoTableRowPtr object = m_model->rowAt(static_cast<int>(row)))
            names << object->propertyName;
    return names;
}

/// Null where nobody has anything to offer, or no row is selected.
std::unique_ptr<QMenu> PropertyDetailsTableView::selectedLinesMenu()
{
    const QStringList names = selectedNames();
    auto menu = std::make_unique<QMenu>();
    if (!names.isEmpty())
        emit lineMenuMade(*menu, names);
    return menu->isEmpty() ? nullptr : std::move(menu);
}

void PropertyDetailsTableView::openLinesMenu()
{
    std::unique_ptr<QMenu> menu = selectedLinesMenu();
    if (!menu)
        return;
    menu->setParent(this, menu->windowFlags());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setActiveAction(menu->actions().front());
    const QRect row = visualRect(m_model->index(static_cast<int>(selectedRowIndexes().front()), InfoTableModel::Color));
    menu.release()->popup(viewport()->mapToGlobal(row.bottomLeft()));
}

bool PropertyDetailsTableView::handleLineKey(QKeyEvent* event)
{
    if (movesRow(*event)) {
        QTableView::keyPressEvent(event);
        event->accept();
        return true;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        activateRow(event->modifiers().testFlag(Qt::ShiftModifier) ? QStringLiteral("minimumTime")
                                                                   : QStringLiteral("maximumTime"));
        return true;
    }
    if (event->modifiers() != Qt::NoModifier)
        return false;
    switch (event->key()) {
    case Qt::Key_Space: toggleSelectedLines(); return true;
    case Qt::Key_O: showOnlySelectedLines(); return true;
    case Qt::Key_A: showAllLines(); return true;
    case Qt::Key_L: openLinesMenu(); return true;
    default: return false;
    }
}

void PropertyDetailsTableView::showLine(int row, bool shown)
{
    m_model->setShow(row, shown);
    emit lineChosen(row, shown);
}

void PropertyDetailsTableView::showOnlySelectedLines()
{
    const std::vector<std::size_t> selected = selectedRowIndexes();
    if (selected.empty())
        return;
    for (int row = 0; row < m_model->rowCount(); ++row)
        showLine(row, std::binary_search(selected.begin(), selected.end(), static_cast<std::size_t>(row)));
}

void PropertyDetailsTableView::showOnlyLine(int row)
{
    for (int other = 0; other < m_model->rowCount(); ++other)
        showLine(other, other == row);
}

void PropertyDetailsTableView::showAllLines()
{
    for (int row = 0; row < m_model->rowCount(); ++row)
        showLine(row, true);
}

// All of one mind: where any of them is hidden, all are shown.
void PropertyDetailsTableView::toggleSelectedLines()
{
    const std::vector<std::size_t> selected = selectedRowIndexes();
    const bool shown = std::any_of(selected.begin(), selected.end(), [this](std::size_t row) {
        const InfoTableRowPtr object = m_model->rowAt(static_cast<int>(row));
        return object && !object->show;
    });
    for (const std::size_t row : selected)
        showLine(static_cast<int>(row), shown);
}
