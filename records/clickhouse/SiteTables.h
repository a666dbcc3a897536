#pragma once

#include "records/clickhouse/ServerAddress.h"
#include "records/store/RecordBlock.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// The tables of a site's records on a server, and how statements name them. Stored: never change without a new version
/// and an upgrade from the old one. `docs/formats.md` says what they hold.
///
/// There are no transactions: every row that is not stored by one insert alone has the number of its *batch*, and
/// counts as soon as the batch stands in the table of batches. A statement is understood by servers of 2018 and of
/// today.
namespace plotix {

class SiteTables {
public:
    /// Of one shard. The home's have plain names, those of others their number behind them, counted from 1: so a host
    /// may have several shards, and no shard is taken for another one.
    explicit SiteTables(const ServerAddress& address)
        : m_database(address.database), m_site(address.site), m_shard(address.shard.value_or(0))
    {
    }

    std::string about() const { return named("about"); }    ///< the version of the tables
    std::string chunks() const { return named("chunk"); }   ///< packed columns
    std::string young() const { return named("young"); }    ///< records that came last, a row each
    std::string batches() const { return named("batch"); }  ///< what counts of those of several inserts
    std::string amendments() const { return named("amendment"); }
    std::string turns() const { return named("turn"); }  ///< who writes

    /// What else belongs to the site: its agents and properties, limits, notes and trends.
    std::string catalogue() const { return named("catalogue"); }

    std::size_t shard() const { return m_shard; }          ///< which one has them
    std::string shards() const { return named("shard"); }  ///< whose shard this is, and in the home which there are

    // In the home alone.
    std::string placement() const { return named("placement"); }  ///< which shard has an agent's records
    std::string joint() const { return named("joint"); }          ///< batches that several shards have parts of

    /// As the server lists it.
    QString bareName(const char* table) const;

    /// What makes them on a server; what is there stays. `replica`: the server's name among several that each have all
    /// of the shard; a keeper they share tells them of each other. `origin`: whose shard it is, the same in all of the
    /// site's. `count`: how many shards there are, which the home is told last.
    std::vector<std::string> creation(const std::string& replica, const std::string& origin, std::size_t count) const;
    std::vector<std::string> dropping() const;

    /// A condition of the server's own tables: the column names one of these, such as "batch|chunk".
    std::string among(const std::string& column, const char* tables) const;

    /// Rows that count; `own`: and those of this batch, 0 for none.
    std::string counts(std::uint64_t own = 0) const;

private:
    std::string named(const char* table) const;
    std::vector<std::string> registration(const std::string& origin, std::size_t count) const;

    QString m_database, m_site;
    std::size_t m_shard;
};

/// A number as a statement has it, every bit of it kept.
std::string sqlNumber(double value);
template <class Numbers>
std::string sqlList(const Numbers& values)
{
    std::string list;
    for (const auto value : values) {
        list += list.empty() ? '(' : ',';
        list += std::to_string(value);
    }
    return list + ')';
}

}  // namespace plotix
