#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include "plugins/PlotixPlugIn/ColorSwatchDelegate.h"
#include "plugins/PlotixPlugIn/FigureDelegate.h"
#include "plugins/PlotixPlugIn/FrozenNames.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>

#include <numeric>

namespace {

// The characters that delete, as the platform's keyboards send them.
constexpr char16_t kForwardDeleteCharacter = 0xF728;
constexpr char16_t kDeleteCharacter = 0x7F;
constexpr char16_t kDeleteCharCharacter = 0xF73E;

constexpr float kFocusHintOpacity = 0.6F;  // 0 to 1, of the line round a focused table
constexpr int kRowPadding = 8;             // points beside the text's height
constexpr int kInitialWidths[InfoTableModel::kColumnCount] = {56, 60, 220, 72, 110, 110, 110, 120};

// The saved layout. Stored: never change.
const QString kColumnsKey = QStringLiteral("columns");
const QString kIdentifier = QStringLiteral("identifier");
const QString kWidth = QStringLiteral("width");
const QString kSortColumn = QStringLiteral("sortColumn");
const QString kSortAscending = QStringLiteral("sortAscending");
constexpr int kWidestColumn = 4000;

/// The character a key event stands for. The delete keys are told by the key, since their text differs between
/// keyboards and synthetic events; a key without text is no character. With Control held some desktops turn a plain key
/// into a control character, Ctrl+8 into the delete character: that one was never typed.
char16_t characterOf(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Delete)
        return kForwardDeleteCharacter;
    if (event.key() == Qt::Key_Backspace)
        return kDeleteCharacter;
    const QChar character = event.text().isEmpty() ? QChar() : event.text().front();
    const bool isMadeByControl =
        event.modifiers().testFlag(Qt::ControlModifier) && character.category() == QChar::Other_Control;
    return isMadeByControl ? u'\0' : character.unicode();
}

bool isDeleteKey(const QKeyEvent& event)
{
    const char16_t character = characterOf(event);
    return character == kForwardDeleteCharacter || character == kDeleteCharCharacter || character == kDeleteCharacter;
}

/// The position of a press of the right mouse button; absent for any other event. The toolkit tells of such a press by
/// an event for the menu, whose reason is then the mouse.
std::optional<QPoint> rightMouseDownPosition(const QEvent* event)
{
    if (!event)
        return std::nullopt;
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<const QMouseEvent*>(event);
        return press->button() == Qt::RightButton ? std::optional(press->position().toPoint()) : std::nullopt;
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* menu = static_cast<const QContextMenuEvent*>(event);
        return menu->reason() == QContextMenuEvent::Mouse ? std::optional(menu->pos()) : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

PropertyDetailsTableView::PropertyDetailsTableView(QWidget* parent)
    : QTableView(parent), m_model(new InfoTableModel(this))
{
    setModel(m_model);
    setUpLook();
    setItemDelegate(new FigureDelegate(this));
    setItemDelegateForColumn(InfoTableModel::Color, new ColorSwatchDelegate(this));
    setUpHeader();
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &PropertyDetailsTableView::adjustCheckBoxes);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &PropertyDetailsTableView::adjustCheckBoxes);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &PropertyDetailsTableView::adjustCheckBoxes);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PropertyDetailsTableView::giveSelectionToController);
}

PropertyDetailsTableView::~PropertyDetailsTableView() = default;

void PropertyDetailsTableView::setUpLook()
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
}

void PropertyDetailsTableView::setUpHeader()
{
    QHeaderView* header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(32);
    header->setSortIndicatorClearable(true);  // the third click brings the order of the properties back
    header->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    for (int column = 0; column < InfoTableModel::kColumnCount; ++column)
        setColumnWidth(column, kInitialWidths[column]);
    m_ownWidths.assign(std::begin(kInitialWidths), std::end(kInitialWidths));
    connect(header, &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { columnWasResized(column, width); });
    setUpFigures();
}

void PropertyDetailsTableView::columnWasResized(int column, int width)
{
    if (m_filling || static_cast<std::size_t>(column) >= m_ownWidths.size())
        return;
    m_ownWidths[static_cast<std::size_t>(column)] = width;
    if (const QString identifier = m_model->identifierAt(column); !m_sizedByHand.contains(identifier))
        m_sizedByHand << identifier;
    if (isVisible())
        fillWidth();
}

void PropertyDetailsTableView::fillWidth()
{
    const int wanted = std::accumulate(m_ownWidths.begin(), m_ownWidths.end(), 0);
    const int spare = std::max(0, viewport()->width() - wanted);
    m_filling = true;
    horizontalHeader()->resizeSection(InfoTableModel::Property, m_ownWidths[InfoTableModel::Property] + spare);
    m_filling = false;
    m_frozenNames->follow();
}

void PropertyDetailsTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fillWidth();
}

void PropertyDetailsTableView::setArrayController(InfoTableArrayController* controller)
{
    if (m_model->arrayController())
        disconnect(m_model->arrayController()->changes(), nullptr, this, nullptr);
    const bool wasSynchronising = std::exchange(m_synchronising, true);
    m_model->setArrayController(controller);
    m_synchronising = wasSynchronising;
    if (controller) {
        // After the model's own connection, so that the rows are there already.
        connect(controller->changes(), &KTVArrayControllerSignals::arrangedObjectsChanged, this,
                &PropertyDetailsTableView::takeSelectionFromController);
        connect(controller->changes(), &KTVArrayControllerSignals::selectionChanged, this,
                &PropertyDetailsTableView::takeSelectionFromController);
    }
    takeSelectionFromController();
}

int PropertyDetailsTableView::rowForView(const QWidget* view) const
{
    for (std::size_t row = 0; row < m_checkBoxes.size(); ++row) {
        const QWidget* checkBox = m_checkBoxes[row];
        if (view && checkBox && (view == checkBox || view->isAncestorOf(checkBox)) && view != viewport() &&
            view != this && isAncestorOf(view))
            return static_cast<int>(row);
    }
    return -1;
}

QCheckBox* PropertyDetailsTableView::checkBoxForRow(int row) const
{
    return row >= 0 && static_cast<std::size_t>(row) < m_checkBoxes.size()
               ? m_checkBoxes[static_cast<std::size_t>(row)].data()
               : nullptr;
}

std::vector<std::size_t> PropertyDetailsTableView::selectedRowIndexes() const
{
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void PropertyDetailsTableView::adjustCheckBoxes()
{
    const int rowCount = m_model->rowCount();
    while (static_cast<int>(m_checkBoxes.size()) > rowCount)
        m_checkBoxes.pop_back();  // the view has let go of the removed row's widget
    while (static_cast<int>(m_checkBoxes.size()) < rowCount)
        addCheckBox(static_cast<int>(m_checkBoxes.size()));
    for (int row = 0; row < rowCount; ++row) {
        const InfoTableRowPtr object = m_model->rowAt(row);
        QCheckBox* checkBox = checkBoxForRow(row);
        if (!object || !checkBox)
            continue;
        checkBox->setChecked(object->show);
        checkBox->setAccessibleName(tr("Show %1").arg(object->tableName));
    }
}

void PropertyDetailsTableView::addCheckBox(int row)
{
    auto* cell = new QWidget(viewport());
    auto* layout = new QHBoxLayout(cell);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* checkBox = new QCheckBox(cell);
    layout->addWidget(checkBox, 0, Qt::AlignCenter);
    // The binding writes first, the action follows: whatever acts on the click finds the row's new value.
    connect(checkBox, &QCheckBox::clicked, this, [this, checkBox](bool checked) {
        m_model->setShow(rowForView(checkBox), checked);
        emit showClicked(checkBox);
    });
    setIndexWidget(m_model->index(row, InfoTableModel::Show), cell);
    setTabOrder(row > 0 ? static_cast<QWidget*>(m_checkBoxes.back()) : this, checkBox);
    m_checkBoxes.push_back(checkBox);
}

void PropertyDetailsTableView::takeSelectionFromController()
{
    if (m_synchronising)
        return;
    m_synchronising = true;
    QItemSelection selection;
    if (const InfoTableArrayController* controller = m_model->arrayController())
        for (const std::size_t row : controller->selectionIndexes()) {
            const QModelIndex index = m_model->index(static_cast<int>(row), 0);
            selection.select(index, index);
        }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_synchronising = false;
}

void PropertyDetailsTableView::giveSelectionToController()
{
    InfoTableArrayController* controller = m_model->arrayController();
    // While rows are removed at the end, the selection shrinks by itself; the controller holds the right one.
    if (m_synchronising || !controller || m_model->isFollowingController())
        return;
    m_synchronising = true;
    controller->setSelectionIndexes(selectedRowIndexes());
    m_synchronising = false;
    tellSelectedRow();
}

QVariantMap PropertyDetailsTableView::dictionaryForAutosavingLayout() const
{
    const QHeaderView* header = horizontalHeader();
    QVariantList columns;
    for (int position = 0; position < header->count(); ++position) {
        const int column = header->logicalIndex(position);
        columns.append(QVariantMap{{kIdentifier, m_model->identifierAt(column)},
                                   {kWidth, m_ownWidths[static_cast<std::size_t>(column)]}});
    }
    return {{kColumnsKey, columns},
            {kSortColumn, m_model->identifierAt(header->sortIndicatorSection())},
            {kSortAscending, header->sortIndicatorOrder() == Qt::AscendingOrder}};
}

void PropertyDetailsTableView::adjustLayoutForAutosavedDictionary(const QVariantMap& dictionary)
{
    QHeaderView* header = horizontalHeader();
    int position = 0;
    for (const QVariant& element : dictionary.value(kColumnsKey).toList()) {
        const QVariantMap saved = element.toMap();
        const int column = m_model->columnNamed(saved.value(kIdentifier).toString());
        if (column < 0 || header->visualIndex(column) < position)  // unknown, or named before
            continue;
        header->moveSection(header->visualIndex(column), position++);
        const int width = saved.value(kWidth).toInt();
        if (width > 0)
            header->resizeSection(column, std::clamp(width, header->minimumSectionSize(), kWidestColumn));
    }
    m_sizedByHand.clear();  // a stored width is no hand's
    fitFigures();
    if (!dictionary.contains(kSortColumn))
        return;
    const int sortColumn = m_model->columnNamed(dictionary.value(kSortColumn).toString());
    const bool ascending = dictionary.value(kSortAscending, true).toBool();
    header->setSortIndicator(sortColumn, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void PropertyDetailsTableView::remove()
{
    if (!m_delegate)
        return;
    m_delegate->markDeletedRows(selectedRowIndexes());
    m_delegate->removeDeletedRows();
}

std::unique_ptr<QMenu> PropertyDetailsTableView::menuForEvent(const QEvent* event)
{
    if (const auto position = rightMouseDownPosition(event))
        selectRowUnder(*position);
    auto menu = std::make_unique<QMenu>(QStringLiteral("Contextual Menu"));
    connect(menu->addAction(
                KTVBundle::mainBundle()->localizedString(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Remove")))),
            &QAction::triggered, this, &PropertyDetailsTableView::remove);
    if (m_choosesLines)
        addLineItems(*menu);
    addFigureItems(*menu);
    return menu;
}

void PropertyDetailsTableView::selectRowUnder(const QPoint& position)
{
    const int row = rowAt(position.y());
    if (row < 0 || selectionModel()->isRowSelected(row))
        return;
    // Through the model: the view would extend the selection while a modifier key is held.
    selectionModel()->setCurrentIndex(m_model->index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool PropertyDetailsTableView::event(QEvent* event)
{
    // A menu's shortcut on a delete key must not win over the table that has the focus.
    if (event->type() == QEvent::ShortcutOverride && isDeleteKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void PropertyDetailsTableView::keyPressEvent(QKeyEvent* event)
{
    // Every key ends here: unless it chooses lines, this table has no keyboard navigation; and no selection by typing.
    event->accept();
    if (m_choosesLines && handleLineKey(event))
        return;
    if (!isDeleteKey(*event) || !m_delegate || !m_delegate->respondsToMarkDeletedRows())
        return;
    m_delegate->markDeletedRows(selectedRowIndexes());
    m_delegate->removeDeletedRows();
}

void PropertyDetailsTableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(kFocusHintOpacity);
    painter.setPen(color);
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

void PropertyDetailsTableView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    viewport()->update();
}

void PropertyDetailsTableView::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

void PropertyDetailsTableView::mousePressEvent(QMouseEvent* event)
{
    // The right button is for the menu alone, which decides what is selected.
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QTableView::mousePressEvent(event);
}

void PropertyDetailsTableView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = menuForEvent(event).release();
    menu->setParent(this, menu->windowFlags());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}
