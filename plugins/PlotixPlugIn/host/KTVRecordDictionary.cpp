#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"

void KTVRecordDictionary::setColumn(const QString& key, std::shared_ptr<KTVRecordColumn> column)
{
    for (Entry& entry : m_columns) {
        if (entry.first == key) {
            entry.second = std::move(column);
            return;
        }
    }
    m_columns.emplace_back(key, std::move(column));
}

std::shared_ptr<KTVRecordColumn> KTVRecordDictionary::columnForKey(const QString& key) const
{
    for (const Entry& entry : m_columns)
        if (entry.first == key)
            return entry.second;
    return nullptr;
}
