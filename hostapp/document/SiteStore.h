#pragma once

#include "hostapp/core/SiteProperty.h"
#include "storage/Database.h"

#include <optional>
#include <vector>

/// The site's own tables: name and location, agents, properties. Borrows its connection and works inside the caller's
/// transaction; one thread. Throws ReportableError.
namespace plotix {

class SiteStore {
public:
    struct Site {
        QString name, location;
    };
    struct Agent {
        qint64 id = 0;
        QString identifier, name;
    };

    explicit SiteStore(Database& database) : m_database(database) {}

    Site site() const;
    void setSite(const Site& site);

    std::vector<Agent> agents() const;  ///< in the order they were added
    std::optional<Agent> agentNamed(const QString& name) const;
    Agent addAgent(const QString& name);  ///< throws when the name is empty or taken

    std::vector<SiteProperty::Description> properties(qint64 agent) const;  ///< in the order they were added

    /// Finds a property by its name, else by the key of that name.
    std::optional<SiteProperty::Description> propertyNamed(qint64 agent, const QString& name) const;

    /// Numbers the name where its key is taken, so that the camel case of the name is always the key.
    SiteProperty::Description addProperty(qint64 agent, const QString& name, const QString& unit, std::uint32_t type);

    /// Unit, colour and visibility.
    void updateProperty(const SiteProperty::Description& description);

private:
    Database& m_database;
};

/// Runs `work` inside a write transaction of its own: everything it writes is stored, or nothing.
template <class Work>
void inTransaction(Database& database, Work&& work)
{
    database.beginWriting();
    try {
        work();
        database.commit();
    } catch (...) {
        database.rollBack();
        throw;
    }
}

}  // namespace plotix
