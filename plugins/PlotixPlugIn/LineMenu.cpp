#include "plugins/PlotixPlugIn/LineMenu.h"

#include "plotkit/model/CPTScatterPlot.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QPainter>

namespace {

constexpr int kIconSize = 16;  // points
constexpr int kLineWidth = 4;  // points
constexpr float kHiddenOpacity = 0.25F;
constexpr int kMostLinesAtOnce = 12;  // more stand in a menu of their own

QPixmap lineImage(QColor color, float opacity)
{
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(Qt::transparent);
    color.setAlphaF(opacity);
    QPainter painter(&pixmap);
    painter.fillRect(QRect(0, (kIconSize - kLineWidth) / 2, kIconSize, kLineWidth), color);
    return pixmap;
}

/// A stroke in the line's colour; faint while the line is hidden.
QIcon lineIcon(const QColor& color)
{
    QIcon icon;
    icon.addPixmap(lineImage(color, 1.0F), QIcon::Normal, QIcon::On);
    icon.addPixmap(lineImage(color, kHiddenOpacity), QIcon::Normal, QIcon::Off);
    return icon;
}

QString localized(const QString& key)
{
    return KTVBundle::mainBundle()->localizedString(key);
}

/// A name may hold an ampersand, which a menu would take for a key.
QString itemText(QString name)
{
    return name.replace(u'&', QStringLiteral("&&"));
}

/// Rows may have moved since the menu was made; -1 when the property has none any more.
int rowOfProperty(const PropertyDetailsTableView& table, const QString& propertyName)
{
    const InfoTableModel& rows = *table.infoTableModel();
    for (int row = 0; row < rows.rowCount(); ++row)
        if (rows.rowAt(row)->propertyName == propertyName)
            return row;
    return -1;
}

}  // namespace

LineMenu::LineMenu(QWidget* graph, QWidget* rootView, PropertyDetailsTableView* table)
    : QObject(graph), m_rootView(rootView), m_table(table)
{
    graph->installEventFilter(this);
}

bool LineMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    std::unique_ptr<QMenu> menu = makeMenu();
    if (!menu)
        return QObject::eventFilter(watched, event);
    event->accept();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu.release()->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
}

std::unique_ptr<QMenu> LineMenu::makeMenu()
{
    auto menu = std::make_unique<QMenu>();
    if (m_rootView)
        menu->addActions(m_rootView->actions());
    if (m_table && m_table->infoTableModel()->rowCount() > 0)
        addLines(*menu);
    return menu->isEmpty() ? nullptr : std::move(menu);
}

void LineMenu::addLines(QMenu& menu)
{
    const InfoTableModel& rows = *m_table->infoTableModel();
    menu.addSeparator();
    QMenu* lines = rows.rowCount() > kMostLinesAtOnce
                       ? menu.addMenu(localized(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Lines"))))
                       : &menu;
    QMenu* only = menu.addMenu(localized(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Show Only"))));
    for (int row = 0; row < rows.rowCount(); ++row) {
        const InfoTableRowPtr object = rows.rowAt(row);
        const std::shared_ptr<const CPTScatterPlot> plot = rows.plotOf(*object);
        const QColor color = plot ? plot->dataLineStyle().color : object->color;
        const QIcon icon = lineIcon(color);
        auto* line = new QAction(icon, itemText(object->tableName), lines);
        lines->insertAction(lines == &menu ? only->menuAction() : nullptr, line);
        line->setCheckable(true);
        line->setChecked(object->show);
        const auto here = [table = m_table, name = object->propertyName] { return rowOfProperty(*table, name); };
        connect(line, &QAction::triggered, m_table, [table = m_table, here](bool shown) {
            if (here() >= 0)
                table->showLine(here(), shown);
        });
        connect(only->addAction(QIcon(lineImage(color, 1.0F)), itemText(object->tableName)), &QAction::triggered,
                m_table, [table = m_table, here] {
                    if (here() >= 0)
                        table->showOnlyLine(here());
                });
    }
    connect(menu.addAction(localized(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Show All")))), &QAction::triggered,
            m_table, &PropertyDetailsTableView::showAllLines);
}
