#pragma once

#include "records/store/RecordStore.h"

#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// What is recorded of one agent, by names, and how it comes into a site. One thread at a time.
namespace plotix {

/// Names and units as whoever measures says them.
struct RecordedAgent {
    struct Property {
        QString name, unit;
        std::uint32_t type = 0;

        friend bool operator==(const Property&, const Property&) = default;
    };
    QString name;
    std::vector<Property> properties;

    friend bool operator==(const RecordedAgent&, const RecordedAgent&) = default;
};

/// The same in a site.
struct FoundAgent {
    RowId agent = 0;
    std::vector<RowId> properties;  ///< in the order of the names
};

/// Also under names that they gave up. Makes the site, the agent and the properties that are missing. Throws
/// ReportableError.
FoundAgent findOrMake(const QString& site, const RecordedAgent& agent);

/// The number of the agent as the file alone has it, without asking a server; 0: it is not there.
RowId knownAgent(const QString& site, const QString& name);

/// The property at this place has this number in blocks that name properties by their places.
constexpr RowId numberOfPlace(std::size_t place)
{
    return static_cast<RowId>(place) + 1;
}

/// The block whose columns have the numbers of places, with those of the site. Shares the columns.
RecordBlock blockFor(const FoundAgent& agent, const RecordBlock& byPlace);

/// Appends records to a site, which may be on a server: it looks for the agent when it first appends, and again after
/// each failure. *Owns* what it has open.
class AgentAppender {
public:
    AgentAppender(QString site, RecordedAgent agent) : m_site(std::move(site)), m_agent(std::move(agent)) {}

    const RecordedAgent& agent() const { return m_agent; }
    /// Instead of looking for it.
    void use(const FoundAgent& found) { m_found = found; }
    const std::optional<FoundAgent>& found() const { return m_found; }

    /// Throws ReportableError; then nothing is known to be stored, and it may be tried again.
    void append(const RecordBlock& byPlace);

    /// Without the records whose times are taken in the site: what is stored there stays. Answers how many of those
    /// say something else than what is there. Throws as `append` does.
    std::size_t appendWhatIsNew(const RecordBlock& byPlace);

private:
    void open();

    const QString m_site;
    const RecordedAgent m_agent;
    std::optional<FoundAgent> m_found;
    std::shared_ptr<RecordStore> m_records;
    std::unique_ptr<RecordAppender> m_appender;
};

}  // namespace plotix
