#include "plugins/PlotixPlugIn/DatePanelLayout.h"

#include <QtWidgets/QLabel>

#include <algorithm>

namespace {

constexpr int kRowGap = 6;

QSize sizeOf(const QLayoutItem& item)
{
    return item.sizeHint().expandedTo(item.minimumSize());
}

bool isLabel(const QLayoutItem& item)
{
    return qobject_cast<const QLabel*>(const_cast<QLayoutItem&>(item).widget()) != nullptr;
}

}  // namespace

DatePanelLayout::DatePanelLayout(QWidget* panel) : QLayout(panel) {}

DatePanelLayout::~DatePanelLayout() = default;

void DatePanelLayout::addGroup(const std::vector<QWidget*>& widgets, WhenWrapped place)
{
    Group& group = m_groups.emplace_back();
    group.place = place;
    for (QWidget* widget : widgets) {
        addChildWidget(widget);
        group.items.push_back(std::make_unique<QWidgetItem>(widget));
    }
    invalidate();
}

void DatePanelLayout::addItem(QLayoutItem* item)
{
    m_groups.emplace_back().items.emplace_back(item);
}

int DatePanelLayout::count() const
{
    int count = 0;
    for (const Group& group : m_groups)
        count += static_cast<int>(group.items.size());
    return count;
}

QLayoutItem* DatePanelLayout::itemAt(int index) const
{
    for (const Group& group : m_groups) {
        if (index >= 0 && index < static_cast<int>(group.items.size()))
            return group.items[static_cast<std::size_t>(index)].get();
        index -= static_cast<int>(group.items.size());
    }
    return nullptr;
}

QLayoutItem* DatePanelLayout::takeAt(int index)
{
    for (Group& group : m_groups) {
        if (index >= 0 && index < static_cast<int>(group.items.size())) {
            QLayoutItem* item = group.items[static_cast<std::size_t>(index)].release();
            group.items.erase(group.items.begin() + index);
            return item;
        }
        index -= static_cast<int>(group.items.size());
    }
    return nullptr;
}

std::vector<const DatePanelLayout::Group*> DatePanelLayout::shownGroups() const
{
    std::vector<const Group*> shown;
    for (const Group& group : m_groups)
        if (std::any_of(group.items.begin(), group.items.end(), [](const auto& item) { return !item->isEmpty(); }))
            shown.push_back(&group);
    return shown;
}

int DatePanelLayout::widthOf(const Group& group) const
{
    int width = 0;
    for (const auto& item : group.items)
        if (!item->isEmpty())
            width += (width > 0 ? spacing() : 0) + sizeOf(*item).width();
    return width;
}

std::vector<DatePanelLayout::Row> DatePanelLayout::rowsFor(int width) const
{
    const std::vector<Row> oneRow = rowsFor(width, WhenWrapped::Follows);
    return oneRow.size() < 2 ? oneRow : rowsFor(width, WhenWrapped::BeginsRow);
}

std::vector<DatePanelLayout::Row> DatePanelLayout::rowsFor(int width, WhenWrapped breaking) const
{
    std::vector<Row> rows;
    for (const Group* group : shownGroups()) {
        const int needed = widthOf(*group);
        const bool begins = breaking == WhenWrapped::BeginsRow && group->place == WhenWrapped::BeginsRow;
        if (rows.empty() || begins || rows.back().width + spacing() + needed > width)
            rows.emplace_back();
        Row& row = rows.back();
        row.width += (row.groups.empty() ? 0 : spacing()) + needed;
        row.groups.push_back(group);
        for (const auto& item : group->items)
            if (!item->isEmpty())
                row.height = std::max(row.height, sizeOf(*item).height());
    }
    return rows;
}

int DatePanelLayout::heightOf(const std::vector<Row>& rows) const
{
    int height = rows.empty() ? 0 : kRowGap * static_cast<int>(rows.size() - 1);
    for (const Row& row : rows)
        height += row.height;
    return height;
}

int DatePanelLayout::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    return heightOf(rowsFor(width - margins.left() - margins.right())) + margins.top() + margins.bottom();
}

int DatePanelLayout::extraHeight(int width) const
{
    return heightForWidth(width) - heightForWidth(QLAYOUTSIZE_MAX);
}

QSize DatePanelLayout::sizeHint() const
{
    const std::vector<Row> rows = rowsFor(QLAYOUTSIZE_MAX);
    return (rows.empty() ? QSize() : QSize(rows.front().width, rows.front().height)).grownBy(contentsMargins());
}

QSize DatePanelLayout::minimumSize() const
{
    QSize size;
    for (const Group* group : shownGroups()) {
        int width = 0;
        for (const auto& item : group->items) {
            if (item->isEmpty())
                continue;
            width += (width > 0 ? spacing() : 0) + item->minimumSize().width();
            size.setHeight(std::max(size.height(), item->minimumSize().height()));
        }
        size.setWidth(std::max(size.width(), width));
    }
    return size.grownBy(contentsMargins());
}

/// The widest of the labels that begin a row, where several do; 0 otherwise.
int DatePanelLayout::labelWidth(const std::vector<Row>& rows) const
{
    int width = 0, labels = 0;
    for (const Row& row : rows) {
        const QLayoutItem& first = *row.groups.front()->items.front();
        if (!isLabel(first) || first.isEmpty())
            continue;
        width = std::max(width, sizeOf(first).width());
        ++labels;
    }
    return labels > 1 ? width : 0;
}

void DatePanelLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QRect inner = rect.marginsRemoved(contentsMargins());
    const std::vector<Row> rows = rowsFor(inner.width());
    const int label = labelWidth(rows);
    int top = inner.top() + (inner.height() - heightOf(rows)) / 2;  // a panel a little too low loses from its margins
    for (const Row& row : rows) {
        place(row, QRect(inner.left(), top, inner.width(), row.height), label);
        top += row.height + kRowGap;
    }
}

void DatePanelLayout::place(const Row& row, const QRect& rect, int label) const
{
    int left = rect.left();
    for (const Group* group : row.groups) {
        int width = widthOf(*group);
        if (group == &m_groups.back())
            left = std::max(left, rect.right() + 1 - width);
        if (group == row.groups.front() && isLabel(*group->items.front()) && label > 0)
            width += label - sizeOf(*group->items.front()).width();
        width = std::min(width, rect.right() + 1 - left);
        placeGroup(*group, QRect(left, rect.top(), width, rect.height()), group == row.groups.front() ? label : 0);
        left += width + spacing();
    }
}

void DatePanelLayout::placeGroup(const Group& group, const QRect& rect, int label) const
{
    int left = rect.left();
    for (const auto& item : group.items) {
        if (item->isEmpty())
            continue;
        const QSize wanted = sizeOf(*item);
        int width = isLabel(*item) ? std::max(label, wanted.width()) : wanted.width();
        if (item == group.items.back())
            width = std::max(item->minimumSize().width(), std::min(width, rect.right() + 1 - left));
        const int height = std::min(wanted.height(), rect.height());
        item->setGeometry(QRect(left, rect.top() + (rect.height() - height) / 2, width, height));
        left += width + spacing();
    }
}
