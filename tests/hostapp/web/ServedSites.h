#pragma once

#include "hostapp/web/HttpServer.h"
#include "hostapp/web/OpenSites.h"
#include "tests/hostapp/web/RawClient.h"

#include "base/MainQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace plotix {

/// A site in memory whose renderings are made on the main queue, as a plug-in's are.
class StubSite : public WebSite {
public:
    QString name() const override { return QStringLiteral("The <Site>"); }
    std::vector<WebView> views() const override { return {{QStringLiteral("one"), QStringLiteral("First & last")}}; }
    std::vector<WebView> viewsWithFootnotes() const override
    {
        std::vector<WebView> all = views();
        all.front().footnotes = footnotes;
        return all;
    }
    QString advertisement(const QUrl& baseUrl) override
    {
        MainQueue::main().sync([this] { ++advertisementCount; });
        return QStringLiteral("<h2><a href=\"%1/one.png\" target=\"_blank\">%2</a></h2>")
            .arg(baseUrl.toString(), advertisedTitle);
    }
    std::optional<WebRendering> rendering(const QUrl& url) override
    {
        {
            const std::lock_guard guard(mutex);
            lastUrl = url;
        }
        ++questionCount;
        const QString file = url.fileName();
        if (file != QLatin1String("one.png") && file != QLatin1String("one.pdf"))
            return std::nullopt;
        QByteArray data;
        MainQueue::main().sync([&] {
            ++renderingCount;
            data = picture;
        });
        return WebRendering{data, file.endsWith(QLatin1String("pdf")) ? QStringLiteral("application/pdf")
                                                                      : QStringLiteral("image/png")};
    }

    std::optional<WebRendering> renderingOver(const WebRange& range, const QUrl& url) override
    {
        {
            const std::lock_guard guard(mutex);
            lastRange = range;
        }
        return rendering(url);
    }

    QString advertisedTitle = QStringLiteral("First");
    std::vector<QString> footnotes;  ///< of its view
    QByteArray picture = QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(100'000, 'x');
    std::atomic<int> advertisementCount = 0, questionCount = 0, renderingCount = 0;
    std::mutex mutex;
    QUrl lastUrl;                       // guarded
    std::optional<WebRange> lastRange;  // guarded; of the last rendering over one
};

/// A server on a free port of this machine with one site, "plant". What clients do runs on a thread of its own while
/// the main queue runs here, as it does in the program.
class ServedSites : public testing::Test {
protected:
    void serve(const HttpLimits& limits = {}, const QByteArray& token = {})
    {
        m_identifier = m_sites.add(QStringLiteral("plant"), m_site);
        m_server = std::make_unique<HttpServer>(m_sites, HttpAddress{}, token, limits);
    }

    void meanwhile(const std::function<void()>& client)
    {
        bool ended = false;
        std::thread thread([&] {
            client();
            MainQueue::main().async([&ended] { ended = true; });
        });
        MainQueue::main().runUntil([&ended] { return ended; });
        thread.join();
    }

    Answer get(const QByteArray& target, const QByteArray& headers = {}) { return request("GET", target, headers); }

    Answer request(const QByteArray& method, const QByteArray& target, const QByteArray& headers = {})
    {
        Answer answer;
        meanwhile([&] { answer = ask(port(), method, target, headers); });
        return answer;
    }

    std::uint16_t port() const { return m_server->port(); }

    OpenSites m_sites;
    std::shared_ptr<StubSite> m_site = std::make_shared<StubSite>();
    QString m_identifier;
    std::unique_ptr<HttpServer> m_server;
};

}  // namespace plotix
