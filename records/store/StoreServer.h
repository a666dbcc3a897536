#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A site that stands on a server: its records, and rows of what else belongs to it.
///
/// *Shared*; any thread. Throws ReportableError, one line for people, where the server cannot be reached or refuses.
namespace plotix {

class RecordStore;

class StoreServer {
public:
    virtual ~StoreServer() = default;

    /// Of the tables; what a later one has there, nobody here touches.
    static constexpr std::uint32_t kVersion = 2;

    virtual QString title() const = 0;  ///< for people, without a user

    /// Makes what is missing, further shards among that; what is there stays. Throws for tables of another version.
    virtual void create() = 0;
    /// The same of tables of an earlier version, which are of this one then. Throws where there are none.
    virtual void upgrade() = 0;
    /// Removes the site with all its records.
    virtual void drop() = 0;
    /// Making and removing as statements, for people whose administrators run them: on each of the hosts. Those that
    /// make a site upgrade one, too.
    struct Statements {
        QString host;  ///< empty: there is only one
        std::vector<std::string> statements;
    };
    virtual std::vector<Statements> creation() const = 0;
    virtual std::vector<Statements> dropping() const = 0;

    /// Which tables are there: cheap. Nothing: there is no such site.
    struct Layout {
        std::uint32_t version = 0;
        std::size_t shards = 1;
    };
    virtual std::optional<Layout> layout() = 0;
    /// Throws where there is no such site, or not as the address says, or of a later version.
    virtual void requireUsable() = 0;

    /// Servers that have the records of some agents.
    struct Shard {
        QString title;                                ///< its servers
        QString failure;                              ///< why nothing else is known; empty: it answers
        std::size_t replicas = 0, replicasAlive = 0;  ///< 0: it stands on one server alone
        std::size_t agents = 0, chunks = 0, youngRecords = 0;
        std::uint64_t bytes = 0;  ///< on disk
    };
    struct Description {
        QString serverVersion;
        bool exists = false;  ///< else the rest says nothing
        std::uint32_t version = 0;
        std::vector<Shard> shards;
    };
    virtual Description description() = 0;

    /// Differs once anything was stored there, records or rows. Quick, also on a large site; does not wait long for a
    /// server that is gone.
    virtual QByteArray changeMark() = 0;

    /// `owns`: whether a property is an agent's, as the rows say.
    using Owns = std::function<bool(RowId agent, RowId property)>;
    virtual std::shared_ptr<RecordStore> records(Owns owns) = 0;

    /// What else belongs to the site, as whoever stores it writes it down. Empty: it is gone.
    struct Row {
        std::uint8_t kind = 0;
        RowId id = 0;
        QByteArray data;
    };
    /// By kind and id, as they were stored last; those that are gone are left out.
    virtual std::vector<Row> rows() = 0;
    /// By kind, of all that ever were.
    virtual std::map<std::uint8_t, RowId> highestIds() = 0;
    /// All or none.
    virtual void put(const std::vector<Row>& rows) = 0;
};

}  // namespace plotix
