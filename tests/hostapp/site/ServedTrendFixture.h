#pragma once

#include "base/MainQueue.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInLoader.h"
#include "hostapp/site/WorkingSite.h"
#include "tests/hostapp/web/RawClient.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <gtest/gtest.h>

#include <thread>

namespace plotix {

/// Served sites with the real module: a day of records and one archived trend view, asked over loopback.
class ServedTrendTest : public testing::Test {
protected:
    ServedTrendTest() : station(site.addStation())
    {
        constexpr double kStart = 1'700'000'000;
        std::vector<double> times;
        for (int minute = 0; minute < 1440; ++minute)
            times.push_back(kStart + minute * 60.0);
        site.store(*station, times);
        storeTrend(*module(), {site.document, station, station->properties().objects(), Date{kStart},
                               Date{kStart + 86'400}, QStringLiteral("Day")});
    }

    KTVPlugInModule* module() { return loader.load(QLatin1String(kModuleName), QLatin1String(kTrendClass)); }

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

    /// `address` as the window shows it, with `rest` appended.
    Answer get(const QString& address, const QString& rest = {})
    {
        const QUrl url(address + rest);
        Answer answer;
        meanwhile([&] {
            const QByteArray query = url.hasQuery() ? '?' + url.query(QUrl::FullyEncoded).toLatin1() : QByteArray();
            answer =
                ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1() + query);
        });
        return answer;
    }

    /// The view's own address below `address`.
    static QString rendering(const KTVSiteWindowController& controller, const char* extension)
    {
        const auto items = controller.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlotixPlugIn"));
        return items.front()->representedObject()->uniqueIdentifier() + QLatin1String(extension);
    }

    ScratchSite site;
    PlugInLoader loader{PlugInLoader::defaultFolders()};
    std::shared_ptr<SiteAgent> station;
};

}  // namespace plotix
