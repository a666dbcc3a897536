#include "hostapp/window/PropertyListView.h"

#include "hostapp/core/Units.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/window/ListRowDelegate.h"
#include "hostapp/window/PropertyListModel.h"

#include <QtGui/QActionGroup>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QDrag>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>

#include <algorithm>

namespace plotix {

PropertyListView::PropertyListView(QWidget* parent) : QTreeView(parent)
{
    setObjectName(QStringLiteral("propertyList"));
    setAccessibleName(tr("Properties"));
    setAccessibleDescription(tr("Tick properties for a new trend, or drag them onto one."));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setDragDropMode(QAbstractItemView::DragOnly);
    setDragEnabled(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHeaderHidden(true);
    setExpandsOnDoubleClick(false);
    setItemDelegate(new ListRowDelegate(this));
    setIconSize({12, 12});
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    connect(this, &QAbstractItemView::doubleClicked, this, &PropertyListView::itemDoubleClicked);
}

void PropertyListView::setPropertyListModel(PropertyListModel* model)
{
    m_model = model;
    setModel(model);
    connect(model, &QAbstractItemModel::modelReset, this, &PropertyListView::layOut);
    layOut();
}

std::shared_ptr<SiteAgent> PropertyListView::currentAgent() const
{
    if (!m_model)
        return nullptr;
    const std::shared_ptr<SiteAgent> current = m_model->agentAt(currentIndex());
    const auto agents = m_model->agents();
    return current || agents.empty() ? current : agents.front();
}

void PropertyListView::layOut()
{
    setRootIsDecorated(model()->rowCount() > 1);  // a single agent needs no folding
    setIndentation(rootIsDecorated() ? 16 : 8);
    expandAll();
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(PropertyListModel::NameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(PropertyListModel::UnitColumn, QHeaderView::ResizeToContents);
}

QMenu* PropertyListView::makeMenuFor(const std::shared_ptr<SiteProperty>& property)
{
    auto* menu = new QMenu(this);
    QMenu* units = menu->addMenu(tr("&Unit"));
    addUnits(units, property);
    menu->addAction(tr("&Color…"), this, [this, property] { pickColour(property); });
    addEditing(menu, m_model ? m_model->agentOf(*property) : nullptr, property);
    return menu;
}

QMenu* PropertyListView::makeMenuForAgent(const QModelIndex& agent)
{
    auto* menu = new QMenu(this);
    const QPersistentModelIndex row(agent);
    const auto tickAll = [this, row](Qt::CheckState state) {
        for (int child = 0; child < m_model->rowCount(row); ++child)
            m_model->setData(m_model->index(child, PropertyListModel::NameColumn, row), state, Qt::CheckStateRole);
    };
    menu->addAction(tr("&Tick All"), this, [tickAll] { tickAll(Qt::Checked); });
    menu->addAction(tr("&Untick All"), this, [tickAll] { tickAll(Qt::Unchecked); });
    menu->addSeparator();
    menu->addAction(tr("&New Trend from Ticked Properties"), this, &PropertyListView::trendWanted)
        ->setEnabled(!m_model->ticked().empty());
    addEditing(menu, m_model->agentAt(agent), nullptr);
    return menu;
}

/// What changes the site itself. A property may be merged into those of its agent whose units it converts to.
void PropertyListView::addEditing(QMenu* menu, const std::shared_ptr<SiteAgent>& agent,
                                  const std::shared_ptr<SiteProperty>& property)
{
    if (!m_isEditable || !agent)
        return;
    if (property) {
        menu->addSeparator();
        menu->addAction(tr("&Add to the Trend in Front"), this, [=, this] { emit addToTrendWanted(property); });
    }
    if (property)
        menu->addAction(tr("&Limits…"), this, [=, this] { emit limitsWanted(agent, property); });
    menu->addSeparator();
    menu->addAction(tr("New Computed &Property…"), this, [=, this] { emit computeWanted(agent, nullptr); });
    if (property && property->isComputed())
        menu->addAction(tr("&Edit Computed Property…"), this, [=, this] { emit computeWanted(agent, property); });
    menu->addAction(tr("&Rename…"), this, [=, this] { emit renameWanted(agent, property); });
    if (property && property->isComputed()) {  // it has no values to merge or to take out
        menu->addAction(tr("&Delete"), this, [=, this] { emit deleteWanted(agent, property); });
        return;
    }
    QMenu* into = menu->addMenu(tr("&Merge Into"));
    const auto offer = [&](const QString& name, qint64 id) {
        into->addAction(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")), this,
                        [=, this] { emit mergeWanted(agent, property, id); });
    };
    if (property) {
        for (const auto& other : agent->siteProperties())
            if (other != property && !other->isComputed() &&
                (other->unit() == property->unit() || Units::shared()->areCompatible(other->unit(), property->unit())))
                offer(other->name(), other->description().id);
    } else {
        for (const auto& other : m_model->agents())
            if (other != agent)
                offer(other->name(), other->id());
    }
    into->setEnabled(!into->isEmpty());
    if (property)
        menu->addAction(tr("Remove &Values of the Shown Span…"), this,
                        [=, this] { emit removeShownWanted(agent, property); });
    menu->addAction(tr("&Delete"), this, [=, this] { emit deleteWanted(agent, property); });
}

void PropertyListView::addUnits(QMenu* menu, const std::shared_ptr<SiteProperty>& property)
{
    auto* group = new QActionGroup(menu);
    const auto units = Units::shared();
    for (const QString& unit : units->compatibleUnits(property->unit())) {
        QAction* action = menu->addAction(units->symbolForUnit(unit));
        action->setCheckable(true);
        action->setChecked(unit == property->unit());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [property, unit] {
            if (unit != property->unit())
                property->setUnit(unit);
        });
    }
    menu->setEnabled(!group->actions().isEmpty());
    if (group->actions().isEmpty())
        menu->menuAction()->setToolTip(tr("This property has no unit."));
}

void PropertyListView::pickColour(const std::shared_ptr<SiteProperty>& property)
{
    auto* dialog = new QColorDialog(property->color(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Color of %1").arg(property->name()));
    connect(dialog, &QColorDialog::colorSelected, this,
            [property](const QColor& colour) { property->setColor(colour); });
    dialog->open();
}

void PropertyListView::itemDoubleClicked(const QModelIndex& index)
{
    const auto property = m_model->propertyAt(index);
    if (!property || m_tickingFast)
        return;
    if (index.column() == PropertyListModel::NameColumn) {
        pickColour(property);
        return;
    }
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addUnits(menu, property);
    menu->popup(viewport()->mapToGlobal(visualRect(index).bottomLeft()));
}

QPixmap PropertyListView::dragPicture(const QModelIndexList& rows) const
{
    constexpr int kPadding = 8;  // points
    const QFontMetrics metrics(font());
    const int lineHeight = metrics.height() + kPadding / 2;
    int width = 0;
    for (const QModelIndex& row : rows)
        width = std::max(width, metrics.horizontalAdvance(row.data().toString()));
    const QSize size(width + iconSize().width() + 3 * kPadding, static_cast<int>(rows.size()) * lineHeight + kPadding);
    QPixmap picture(size * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(palette().color(QPalette::Button));
    QPainter painter(&picture);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(QRect(QPoint(0, 0), size).adjusted(0, 0, -1, -1));
    painter.setPen(palette().color(QPalette::Text));
    QRect line(kPadding, kPadding / 2, size.width() - 2 * kPadding, lineHeight);
    for (const QModelIndex& row : rows) {
        QRect swatch(line.topLeft(), iconSize());
        swatch.moveTop(line.center().y() - swatch.height() / 2);
        row.data(Qt::DecorationRole).value<QIcon>().paint(&painter, swatch);
        painter.drawText(line.adjusted(iconSize().width() + kPadding, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         row.data().toString());
        line.translate(0, lineHeight);
    }
    return picture;
}

void PropertyListView::startDrag(Qt::DropActions supportedActions)
{
    QModelIndexList rows = selectionModel()->selectedRows(PropertyListModel::NameColumn);
    rows.removeIf([](const QModelIndex& row) { return !row.flags().testFlag(Qt::ItemIsDragEnabled); });
    if (rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    auto* drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(rows));
    // The picture is opaque: a see-through one shows as a black box on desktops without a compositor.
    drag->setPixmap(dragPicture(rows));
    drag->exec(supportedActions, Qt::CopyAction);
}

bool PropertyListView::isOnTickBox(const QPoint& position) const
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || !index.flags().testFlag(Qt::ItemIsUserCheckable))
        return false;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(position);
}

void PropertyListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_tickingFast = isOnTickBox(event->position().toPoint());
    QTreeView::mouseDoubleClickEvent(event);
    m_tickingFast = false;
}

void PropertyListView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKeyboard ? currentIndex() : indexAt(event->pos());
    const auto property = m_model ? m_model->propertyAt(index) : nullptr;
    if (!m_model || !m_model->agentAt(index))
        return;
    QMenu* menu = property ? makeMenuFor(property) : makeMenuForAgent(index.siblingAtColumn(0));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(byKeyboard ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}

void PropertyListView::keyPressEvent(QKeyEvent* event)
{
    // Space ticks every selected property, not only the current one.
    if (event->key() != Qt::Key_Space || !m_model) {
        QTreeView::keyPressEvent(event);
        return;
    }
    const QModelIndexList rows = selectionModel()->selectedRows(PropertyListModel::NameColumn);
    const bool tick = std::any_of(rows.begin(), rows.end(), [](const QModelIndex& row) {
        return row.data(Qt::CheckStateRole).toInt() == Qt::Unchecked;
    });
    for (const QModelIndex& row : rows)
        m_model->setData(row, tick ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

}  // namespace plotix
