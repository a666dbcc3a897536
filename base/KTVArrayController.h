#pragma once

#include <QtCore/QObject>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// What an array controller tells its observers. Main thread only.
class KTVArrayControllerSignals : public QObject {
    Q_OBJECT
signals:
    void arrangedObjectsChanged();
    void selectionChanged();
};

/// Holds one list (`content`), shows it in an arranged order, and keeps a selection over that order.
///
/// The controller *shares* its content with its maker: both see the same list. Elements are compared
/// with ==, so use shared pointers where identity matters. The arranged order is the content order
/// until `setSortOrder` is given a comparison. Selection indexes are positions in the arranged order,
/// ascending; elements that stay keep being selected, wherever they move. Main thread only.
template <class T>
class KTVArrayController {
public:
    using List = std::vector<T>;
    using Order = std::function<bool(const T&, const T&)>;

    KTVArrayController() : m_content(std::make_shared<List>()) {}
    KTVArrayController(const KTVArrayController&) = delete;
    KTVArrayController& operator=(const KTVArrayController&) = delete;

    const std::shared_ptr<List>& content() const { return m_content; }
    void setContent(std::shared_ptr<List> content)
    {
        m_content = content ? std::move(content) : std::make_shared<List>();
        arrange({});
    }

    const List& arrangedObjects() const { return m_arranged; }

    /// Sorts (stable) by `order`; an empty order restores the content order. The selected elements stay selected.
    void setSortOrder(Order order)
    {
        m_order = std::move(order);
        rearrangeObjects();
    }

    void addObject(const T& object) { addObjects({object}); }
    void addObjects(List objects)
    {
        m_content->insert(m_content->end(), objects.begin(), objects.end());
        rearrangeObjects();
    }

    /// Removes every element equal to `object`; none: nothing happens. The other selected elements stay selected.
    void removeObject(T object)
    {
        const List selected = selectedObjects();
        if (std::erase(*m_content, object) > 0)
            arrange(selected);
    }

    /// Removes everything and clears the selection.
    void removeAllObjects()
    {
        m_content->clear();
        arrange({});
    }

    const std::vector<std::size_t>& selectionIndexes() const { return m_selectionIndexes; }

    /// Positions past the end are dropped.
    void setSelectionIndexes(std::vector<std::size_t> indexes)
    {
        std::sort(indexes.begin(), indexes.end());
        indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
        std::erase_if(indexes, [this](std::size_t index) { return index >= m_arranged.size(); });
        if (indexes == m_selectionIndexes)
            return;
        m_selectionIndexes = std::move(indexes);
        emit m_signals.selectionChanged();
    }

    List selectedObjects() const
    {
        List selected;
        for (const std::size_t index : m_selectionIndexes)
            selected.push_back(m_arranged[index]);
        return selected;
    }

    /// Sorts again after the content, or elements of it, changed in place; the selected elements stay selected.
    void rearrangeObjects() { arrange(selectedObjects()); }

    /// Connect here; lives as long as the controller.
    KTVArrayControllerSignals* changes() { return &m_signals; }

private:
    // Order and selection both hold before anybody is told of either.
    void arrange(const List& selected)
    {
        m_arranged = *m_content;
        if (m_order)
            std::stable_sort(m_arranged.begin(), m_arranged.end(), m_order);
        const auto previous = std::exchange(m_selectionIndexes, positionsOf(selected));
        const bool selectionMoved = previous != m_selectionIndexes;
        emit m_signals.arrangedObjectsChanged();
        if (selectionMoved)
            emit m_signals.selectionChanged();
    }

    std::vector<std::size_t> positionsOf(const List& objects) const
    {
        std::vector<std::size_t> indexes;
        for (std::size_t index = 0; index < m_arranged.size(); ++index)
            if (std::find(objects.begin(), objects.end(), m_arranged[index]) != objects.end())
                indexes.push_back(index);
        return indexes;
    }

    std::shared_ptr<List> m_content;
    List m_arranged;
    Order m_order;
    std::vector<std::size_t> m_selectionIndexes;
    KTVArrayControllerSignals m_signals;
};
