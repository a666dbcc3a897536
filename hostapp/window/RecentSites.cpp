#include "hostapp/window/RecentSites.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSettings>

namespace plotix {

namespace {
constexpr auto kRecentKey = "RecentSites";  // stored: never change
}

QStringList recentSites()
{
    QStringList sites = QSettings().value(QLatin1String(kRecentKey)).toStringList();
    sites.removeIf([](const QString& path) { return !QFileInfo::exists(path); });
    return sites;
}

void rememberRecentSite(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList sites = QSettings().value(QLatin1String(kRecentKey)).toStringList();
    sites.removeAll(absolute);
    sites.prepend(absolute);
    QSettings().setValue(QLatin1String(kRecentKey), sites.mid(0, kRecentSiteLimit));
}

void forgetRecentSites()
{
    QSettings().remove(QLatin1String(kRecentKey));
}

}  // namespace plotix
