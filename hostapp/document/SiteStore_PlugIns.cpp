// What others keep in the site: archived plug-ins, and small named values.

#include "hostapp/document/SiteStore.h"

namespace plotix {

qint64 SiteStore::storePlugIn(const ArchivedPlugIn& plugIn)
{
    const bool isNew = plugIn.id == 0;
    Statement statement(m_database, isNew ? "INSERT INTO plugin(class_name, state) VALUES(?, ?)"
                                          : "UPDATE plugin SET class_name = ?, state = ? WHERE id = ?");
    statement.bind(1, plugIn.className).bind(2, plugIn.state);
    if (!isNew)
        statement.bind(3, plugIn.id);
    statement.run();
    return isNew ? m_database.lastInsertedRow() : plugIn.id;
}

QByteArray SiteStore::setting(const QString& key) const
{
    Statement statement(m_database, "SELECT value FROM setting WHERE key = ?");
    statement.bind(1, key);
    return statement.step() ? statement.bytes(0) : QByteArray();
}

void SiteStore::setSetting(const QString& key, const QByteArray& value)
{
    Statement(m_database, "INSERT INTO setting(key, value) VALUES(?1, ?2) "
                          "ON CONFLICT(key) DO UPDATE SET value = ?2")
        .bind(1, key)
        .bind(2, value)
        .run();
}

}  // namespace plotix
