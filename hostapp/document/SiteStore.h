#pragma once

#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/ArchivedPlugIn.h"
#include "storage/Database.h"

#include <optional>
#include <vector>

/// The site's own tables: name and location, agents, properties, plug-ins, settings. Borrows its connection and works
/// inside the caller's transaction; one thread. Throws ReportableError.
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
    /// By its name, else by one that it gave up.
    std::optional<Agent> agentOnceNamed(const QString& name) const;
    Agent addAgent(const QString& name);                        ///< throws when the name is empty or taken
    Agent addAgentLike(const Agent& other);                     ///< the same, with the other's identifier
    void renameAgent(const Agent& agent, const QString& name);  ///< the same

    std::vector<SiteProperty::Description> properties(qint64 agent) const;  ///< in the order they were added

    /// What a computed property is worked out from from now on; its unit is that of the result.
    void setFormula(qint64 property, const PropertyFormula& formula, const QString& unit);

    /// Finds a property by its name, else by the key of that name.
    std::optional<SiteProperty::Description> propertyNamed(qint64 agent, const QString& name) const;

    /// The same, else by a name that it, or one merged into it, gave up.
    std::optional<SiteProperty::Description> propertyOnceNamed(qint64 agent, const QString& name) const;

    /// Numbers the name where its key is taken, so that the camel case of the name is always the key.
    SiteProperty::Description addProperty(qint64 agent, const QString& name, const QString& unit, std::uint32_t type);
    /// The same for a caller that knows the agent's properties; reading them for each of thousands takes minutes.
    SiteProperty::Description addProperty(qint64 agent, const QString& name, const QString& unit, std::uint32_t type,
                                          const std::vector<SiteProperty::Description>& before);

    /// One of that name, units, colour, type and formula, as unique in this agent.
    SiteProperty::Description addPropertyLike(qint64 agent, const SiteProperty::Description& other);
    /// Its key follows the name. Throws when the name is empty or taken.
    SiteProperty::Description renameProperty(qint64 agent, const SiteProperty::Description& property,
                                             const QString& name);

    /// Who is found under a name that was given up: an agent (`agent` 0) by its name, a property by its key.
    void addAlias(qint64 agent, const QString& name, qint64 target);
    void moveAliases(qint64 agent, qint64 from, qint64 target);
    /// Those of a property that becomes another agent's. A name that leads elsewhere there still does.
    void moveAliases(qint64 agent, qint64 from, qint64 toAgent, qint64 target);
    void removeAliasesOf(qint64 agent, qint64 target);

    /// Unit, colour and visibility.
    void updateProperty(const SiteProperty::Description& description);
    /// Of these what differs from `since`: others may have changed the rest.
    void updateProperty(const SiteProperty::Description& description, const SiteProperty::Description& since);

    qint64 storePlugIn(const ArchivedPlugIn& plugIn);  ///< at the end when its id is 0, else in place; answers the id
    QByteArray setting(const QString& key) const;      ///< empty when there is none
    void setSetting(const QString& key, const QByteArray& value);

    /// What once had that key (or, of agents, that name: agent 0) and is there under another one.
    std::optional<qint64> aliasTarget(qint64 agent, const QString& name) const;

private:
    bool hasTable(const char* name) const;  // documents of older versions lack some
    void readFormulas(std::vector<SiteProperty::Description>& properties) const;
    void requireFreeAgentName(const QString& name) const;

    Database& m_database;
};

/// The setting that names the zone of the site's place. Stored: never change.
inline constexpr auto kZoneKey = "timeZone";

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
