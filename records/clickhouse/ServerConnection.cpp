#include "records/clickhouse/ServerConnection.h"

#include "base/ReportableError.h"

#include <curl/curl.h>

#include <exception>
#include <map>
#include <mutex>
#include <thread>

namespace plotix {

struct ServerConnection::Request {
    std::string query;  // a part of the address; empty: it is the body
    std::span<const std::byte> body;
    bool isWhole = true;  // the server sends nothing before it has the whole answer
    std::function<void()> begin;
    Take take;

    CURL* curl = nullptr;
    bool wasStopped = false;
    std::exception_ptr failure;  // of whoever takes the answer: none may pass through the library
    std::string message;         // of an answer that is none
    QString unreachable;         // why, of the host tried last

    /// Of a statement whose whole answer goes there. Borrows both.
    static Request whole(const std::string& statement, std::vector<std::byte>& answer)
    {
        Request request;
        request.body = std::as_bytes(std::span(statement));
        request.begin = [&answer] { answer.clear(); };
        request.take = [&answer](std::span<const std::byte> bytes) {
            answer.insert(answer.end(), bytes.begin(), bytes.end());
            return true;
        };
        return request;
    }
};

namespace {

constexpr std::size_t kLongestMessage = 4096;
constexpr auto kAgainAfter = std::chrono::milliseconds(100);
/// Replicas may be added while a program runs.
constexpr auto kLearntFor = std::chrono::seconds(60);

using Clock = std::chrono::steady_clock;

struct NotReached {
    QString why;
};

[[noreturn]] void failAsUnreachable(const ServerAddress& address, const QString& why)
{
    throw ServerNotReached(QStringLiteral("The server “%1” cannot be reached: %2. Start it, or correct the address.")
                               .arg(address.title(), why));
}

/// What was learnt of sites, by address, for all connections. Any thread.
class LearntSites {
public:
    struct Learnt {
        Replication replication;
        Clock::time_point again;  // when it is to be learnt the next time
    };
    static LearntSites& all()
    {
        static LearntSites sites;
        return sites;
    }
    std::optional<Learnt> find(const QString& site)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_learnt.find(site);
        return found == m_learnt.end() ? std::nullopt : std::optional(found->second);
    }
    void keep(const QString& site, const Learnt& learnt)
    {
        const std::lock_guard lock(m_mutex);
        m_learnt[site] = learnt;
    }
    void forget(const QString& site)
    {
        const std::lock_guard lock(m_mutex);
        m_learnt.erase(site);
    }

private:
    std::mutex m_mutex;
    std::map<QString, Learnt> m_learnt;  // under the mutex
};

void startOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

/// What a server says when it refuses: its first line, without its version and codes of its own.
QString readable(const std::string& message)
{
    QString line =
        QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size())).section(QLatin1Char('\n'), 0, 0);
    if (const qsizetype exception = line.indexOf(QLatin1String("DB::Exception: ")); exception >= 0)
        line = line.mid(exception + 15);
    for (const QLatin1String tail : {QLatin1String(", e.what()"), QLatin1String(" (version ")})
        if (const qsizetype end = line.indexOf(tail); end >= 0)
            line.truncate(end);
    return line.trimmed();
}

}  // namespace

ServerConnection::ServerConnection(ServerAddress address, ServerCredentials credentials, Patience patience)
    : m_address(std::move(address)), m_credentials(std::move(credentials)), m_patience(patience)
{
    startOnce();
    m_curl = curl_easy_init();
    if (!m_curl)
        throw std::bad_alloc();
}

ServerConnection::~ServerConnection()
{
    curl_easy_cleanup(static_cast<CURL*>(m_curl));
}

std::vector<std::byte> ServerConnection::ask(const std::string& statement)
{
    std::vector<std::byte> answer;
    Request request = Request::whole(statement, answer);
    run(request);
    return answer;
}

bool ServerConnection::stream(const std::string& statement, const std::function<void()>& begin, const Take& take)
{
    Request request;
    request.body = std::as_bytes(std::span(statement));
    request.isWhole = false;
    request.begin = begin;
    request.take = take;
    run(request);
    return !request.wasStopped;
}

void ServerConnection::insert(const std::string& statement, std::span<const std::byte> rows)
{
    Request request;
    request.query = statement;
    request.body = rows;
    run(request);
}

/// What any host says who knows: one that has lost the keeper does not, nor one that was set up anew. False: the site
/// is replicated, and nobody knows how just now.
bool ServerConnection::learnOnce()
{
    using Tables = Replication::Tables;
    bool isReplicated = m_replication.isThere, isReached = false;
    QString why;
    std::optional<Replication> learnt;
    for (const ServerAddress::Host& host : m_address.hosts) {
        try {
            const Replication::Found found = Replication::foundOn(m_address, [&](const std::string& statement) {
                std::vector<std::byte> answer;
                Request request = Request::whole(statement, answer);
                if (!tryAt(host, request))
                    throw NotReached{request.unreachable};
                return answer;
            });
            isReached = true;
            isReplicated = isReplicated || found.tables == Tables::Known || found.tables == Tables::Unknown;
            if (found.tables == Tables::Known || (found.tables == Tables::Single && !isReplicated)) {
                learnt =
                    found.tables == Tables::Single ? Replication() : Replication::among(found, m_address.hosts.size());
                break;
            }
        } catch (const NotReached& failure) {  // the next one may be
            why = failure.why;
        }
    }
    // Not without knowing: a host that comes back just now would be asked as if it were alone.
    if (!isReached && !isReplicated)
        failAsUnreachable(m_address, why);
    if (learnt) {
        m_replication = *learnt;
        m_learntAgain = Clock::now() + kLearntFor;
        LearntSites::all().keep(m_address.key(), {m_replication, m_learntAgain});
    }
    return learnt || !isReplicated;
}

void ServerConnection::learnReplication()
{
    if (Clock::now() < m_learntAgain)
        return;
    if (const auto known = LearntSites::all().find(m_address.key())) {
        m_replication = known->replication;
        m_learntAgain = known->again;
        if (Clock::now() < m_learntAgain)
            return;
    }
    const auto until = Clock::now() + m_patience.reading;
    while (!learnOnce()) {
        if (m_replication.isThere)
            return;  // as it was before
        if (Clock::now() > until)
            throw ReportableError(QStringLiteral("The replicas of “%1” have lost the keeper that they share: start it.")
                                      .arg(m_address.title()));
        std::this_thread::sleep_for(kAgainAfter);
    }
}

void ServerConnection::forgetReplication(const ServerAddress& address)
{
    LearntSites::all().forget(address.key());
}

bool ServerConnection::isReplicated()
{
    learnReplication();
    return m_replication.isThere;
}

void ServerConnection::run(Request& request)
{
    learnReplication();
    const auto until = Clock::now() + (request.query.empty() ? m_patience.reading : m_patience.agreeing);
    while (!runOnce(request)) {
        if (!m_replication.isThere || Clock::now() > until)
            failAsUnreachable(m_address, request.unreachable);
        std::this_thread::sleep_for(kAgainAfter);
    }
}

/// False: no host could be reached, or their replicas do not agree just now.
bool ServerConnection::runOnce(Request& request)
{
    for (std::size_t attempt = 0; attempt < m_address.hosts.size(); ++attempt) {
        if (tryAt(m_address.hosts[m_host], request))
            return true;
        m_host = (m_host + 1) % m_address.hosts.size();
    }
    return false;
}

/// False: it could not be reached.
bool ServerConnection::tryAt(const ServerAddress::Host& host, Request& request)
{
    auto* curl = static_cast<CURL*>(m_curl);
    curl_easy_reset(curl);
    request.curl = curl;
    request.message.clear();
    if (request.begin)
        request.begin();

    QByteArray url =
        QStringLiteral("%1://%2:%3/?%4")
            .arg(m_address.isSecure ? QStringLiteral("https") : QStringLiteral("http"), host.name)
            .arg(host.port)
            .arg(request.isWhole ? QStringLiteral("wait_end_of_query=1") : QStringLiteral("wait_end_of_query=0"))
            .toUtf8();
    url += m_replication.settings;
    if (!request.query.empty()) {
        char* escaped = curl_easy_escape(curl, request.query.data(), static_cast<int>(request.query.size()));
        url += "&query=";
        url += escaped;
        curl_free(escaped);
    }
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_TCP_NODELAY, 1L);
    curl_easy_setopt(curl, CURLOPT_BUFFERSIZE, 512L * 1024);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_patience.connecting.count()));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, static_cast<long>(m_patience.silence.count()));
    // The user and the password go into a header, which no log and no list of processes shows.
    const QByteArray user = m_credentials.user.toUtf8(), password = m_credentials.password.toUtf8();
    if (!user.isEmpty() || !password.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_HTTPAUTH, CURLAUTH_BASIC);
        curl_easy_setopt(curl, CURLOPT_USERNAME, user.isEmpty() ? "default" : user.constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, password.constData());
    }
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, reinterpret_cast<const char*>(request.body.data()));
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
    // Without waiting for the server's leave to send a long body.
    curl_slist* headers = curl_slist_append(nullptr, "Expect:");
    headers = curl_slist_append(headers, "Content-Type: application/octet-stream");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(
        curl, CURLOPT_WRITEFUNCTION, +[](char* data, std::size_t, std::size_t size, void* into) -> std::size_t {
            auto& target = *static_cast<Request*>(into);
            long status = 0;
            curl_easy_getinfo(target.curl, CURLINFO_RESPONSE_CODE, &status);
            try {
                if (status != 200) {
                    if (target.message.size() < kLongestMessage)
                        target.message.append(data, size);
                    return size;
                }
                if (!target.take || target.take({reinterpret_cast<const std::byte*>(data), size}))
                    return size;
                target.wasStopped = true;
            } catch (...) {
                target.failure = std::current_exception();
            }
            return size + 1;  // ends it
        });
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &request);
    const CURLcode code = curl_easy_perform(curl);
    curl_slist_free_all(headers);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    if (request.failure)
        std::rethrow_exception(request.failure);
    if (request.wasStopped)
        return true;
    if (code != CURLE_OK) {
        request.unreachable = QString::fromUtf8(curl_easy_strerror(code));
        return false;
    }
    // A host that is just ending, or has none of its replicas, says so instead of refusing to be reached.
    if (status == 502 || status == 503 || status == 504) {
        request.unreachable = QStringLiteral("it answers %1").arg(status);
        return false;
    }
    if (status != 200 && m_replication.isThere && passes(errorCodeOf(request.message))) {
        request.unreachable = readable(request.message);
        return false;
    }
    if (status == 401 || status == 403)
        throw ReportableError(QStringLiteral("The server “%1” does not let “%2” in: %3")
                                  .arg(m_address.title(),
                                       m_credentials.user.isEmpty() ? QStringLiteral("default") : m_credentials.user,
                                       readable(request.message)));
    if (status != 200)
        throw ReportableError(
            QStringLiteral("The server “%1” refuses: %2").arg(m_address.title(), readable(request.message)));
    return true;
}

}  // namespace plotix
