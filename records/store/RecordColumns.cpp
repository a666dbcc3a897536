#include "records/store/RecordColumns.h"

#include <utility>

namespace plotix {

std::optional<QString> ColumnFailure::message() const
{
    const std::lock_guard lock(m_mutex);
    return m_message;
}

void ColumnFailure::addListener(const std::weak_ptr<const void>& owner, Listener listener)
{
    const std::lock_guard lock(m_mutex);
    if (m_message) {
        listener(*m_message);
        return;
    }
    std::erase_if(m_listeners, [&](const auto& each) {
        const bool isSame = !each.first.owner_before(owner) && !owner.owner_before(each.first);
        return isSame || each.first.expired();
    });
    m_listeners.emplace_back(owner, std::move(listener));
}

void ColumnFailure::report(const QString& message)
{
    const std::lock_guard lock(m_mutex);
    if (m_message)
        return;
    m_message = message;
    for (const auto& [owner, listener] : std::exchange(m_listeners, {}))
        if (const std::shared_ptr<const void> alive = owner.lock())
            listener(message);
}

RecordColumns RecordColumns::resident(const RecordBlock& block)
{
    RecordColumns columns;
    columns.times = block.times;
    for (const RecordBlock::Column& column : block.columns)
        columns.columns.push_back({column.property, column.values, column.validity, nullptr, std::nullopt});
    return columns;
}

}  // namespace plotix
