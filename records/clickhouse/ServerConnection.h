#pragma once

#include "base/ReportableError.h"
#include "records/clickhouse/Replication.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// Statements to a server and its answers, over HTTP or HTTPS.
///
/// A statement that only reads, and one that may be carried out twice, is tried at the next host where one cannot be
/// reached. Everything this house writes may be: rows that come twice count once. Where the hosts are replicas of each
/// other, it is tried again for a while until enough of them agree; see Replication. One thread at a time; a connection
/// stays open between statements. An `Interruption` of the thread ends every wait. Throws ReportableError: the server
/// cannot be reached, or what it answers instead.
namespace plotix {

class ServerConnection {
public:
    struct Patience {
        std::chrono::milliseconds connecting{5'000};
        std::chrono::seconds silence{60};   ///< without a byte of an answer
        std::chrono::seconds agreeing{60};  ///< until enough of a site's replicas have what is stored
        std::chrono::seconds reading{15};   ///< until one of them has all that counts
    };
    ServerConnection(ServerAddress address, ServerCredentials credentials, Patience patience);
    ServerConnection(ServerAddress address, ServerCredentials credentials)
        : ServerConnection(std::move(address), std::move(credentials), Patience())
    {
    }
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    const ServerAddress& address() const { return m_address; }

    /// Whether what the address names is replicated. Asks the server, once a minute at most.
    bool isReplicated();
    /// After the site's tables were made or removed.
    static void forgetReplication(const ServerAddress& address);

    /// The whole answer, complete or none.
    std::vector<std::byte> ask(const std::string& statement);
    void tell(const std::string& statement);

    /// Takes bytes as they come and answers whether to go on. An answer that ends early may end with a message of the
    /// server's: what was taken must tell by itself whether it is whole. Begins again with `begin` at another host.
    using Take = std::function<bool(std::span<const std::byte> bytes)>;
    /// False when `take` stopped it.
    bool stream(const std::string& statement, const std::function<void()>& begin, const Take& take);

    /// How often this program has told any server something that may change what is stored there.
    static std::uint64_t changesMade();

    /// Rows, as `INSERT INTO … FORMAT RowBinary` takes them. Stored when it returns.
    void insert(const std::string& statement, std::span<const std::byte> rows);

private:
    struct Request;
    void run(Request& request);
    bool runOnce(Request& request);
    void learnReplication();
    bool learnOnce();
    bool tryAt(const ServerAddress::Host& host, Request& request);

    ServerAddress m_address;
    ServerCredentials m_credentials;
    Patience m_patience;
    std::size_t m_host = 0;  // the one that answered last
    Replication m_replication;
    std::chrono::steady_clock::time_point m_learntAgain;  // when it is to be learnt the next time
    void* m_curl = nullptr;
};

}  // namespace plotix
