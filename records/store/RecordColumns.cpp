#include "records/store/RecordColumns.h"

namespace plotix {

std::optional<QString> ColumnFailure::message() const
{
    const std::lock_guard lock(m_mutex);
    return m_message;
}

void ColumnFailure::setListener(Listener listener)
{
    const std::lock_guard lock(m_mutex);
    if (listener && m_message)
        listener(*m_message);
    if (m_listener && listener)
        m_listener = [before = std::move(m_listener), own = std::move(listener)](const QString& message) {
            before(message);
            own(message);
        };
    else
        m_listener = std::move(listener);
}

// Under the lock, so that a listener that was taken away is not at work any more.
void ColumnFailure::report(const QString& message)
{
    const std::lock_guard lock(m_mutex);
    if (m_message)
        return;
    m_message = message;
    if (m_listener)
        m_listener(message);
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
