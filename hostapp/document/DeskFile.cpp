#include "hostapp/document/DeskFile.h"

#include "base/ReportableError.h"
#include "hostapp/core/DataFolder.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteCatalogue.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace plotix {

namespace {

constexpr auto kDeskEnding = ".desk.plotix";
// Stored: never change.
constexpr auto kAddressSetting = "server";
constexpr auto kSeenSetting = "serverRows";

/// The same for an address however it is written.
QString deskPath(const QString& title)
{
    QString name = title;
    name.replace(QLatin1Char('/'), QLatin1Char(' ')).replace(QLatin1Char(':'), QLatin1Char('-'));
    return QDir(dataFolder()).absoluteFilePath(QStringLiteral("servers/%1%2").arg(name, QLatin1String(kDeskEnding)));
}

QByteArray settingOf(const QString& path, const char* key)
{
    Database database(path, siteSchema(), Database::Access::BestAvailable);
    return SiteStore(database).setting(QLatin1String(key));
}

void keep(const QString& path, const QString& address, const QByteArray& seen)
{
    Database database(path, siteSchema(), Database::Access::ReadWrite);
    inTransaction(database, [&] {
        SiteStore(database).setSetting(QLatin1String(kAddressSetting), address.toUtf8());
        keepSeen(database, seen);
    });
}

}  // namespace

QByteArray digestOf(const std::vector<StoreServer::Row>& rows)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const StoreServer::Row& row : rows) {
        hash.addData(QByteArray::number(row.kind) + ' ' + QByteArray::number(row.id) + ' ' +
                     QByteArray::number(row.data.size()) + ' ');
        hash.addData(row.data);
    }
    return hash.result();
}

QByteArray seenBy(Database& desk)
{
    return SiteStore(desk).setting(QLatin1String(kSeenSetting));
}

void keepSeen(Database& desk, const QByteArray& digest)
{
    SiteStore(desk).setSetting(QLatin1String(kSeenSetting), digest);
}

QString siteFileOf(const QString& place)
{
    return isServerAddress(place) ? deskFileOf(place) : place;
}

QString deskFileNameOf(const QString& address)
{
    return deskPath(storeServer(address)->title());
}

QString deskFileOf(const QString& address)
{
    const QString path = deskFileNameOf(address);
    bringUpToDate(path, withoutUser(address));
    return path;
}

QString deskFileToRecordInto(const QString& address)
{
    const QString path = deskFileNameOf(address), withoutName = withoutUser(address);
    if (addressOfDeskFile(path) != withoutName)
        return deskFileOf(address);
    try {
        storeServer(address)->changeMark();  // does not wait long for one that stands still
        bringUpToDate(path, withoutName);
    } catch (const ServerUnreachable&) {  // whoever records goes on as soon as it can be
    }
    return path;
}

void bringUpToDate(const QString& desk, const QString& address)
{
    const std::shared_ptr<StoreServer> server = siteOnServer(address);
    const std::vector<StoreServer::Row> rows = server->rows();
    SiteCatalogue catalogue = SiteCatalogue::ofRows(rows);
    if (catalogue.name.isEmpty())
        catalogue.name = server->title().section(QLatin1Char('/'), -1);
    const QByteArray seen = digestOf(rows);
    if (!QFileInfo::exists(desk)) {
        if (!QDir().mkpath(QFileInfo(desk).path()))
            throw ReportableError(QStringLiteral("the folder %1 cannot be made; set PLOTIX_DATA_HOME to one that can")
                                      .arg(QFileInfo(desk).path()));
        catalogue.makeFile(desk);
        keep(desk, address, seen);
    } else if (settingOf(desk, kSeenSetting) != seen || settingOf(desk, kAddressSetting) != address.toUtf8()) {
        catalogue.updateFile(desk);
        keep(desk, address, seen);
    }
}

QString nameOfDesk(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    return isDeskFile(path) ? name.chopped(static_cast<qsizetype>(qstrlen(kDeskEnding))) : name;
}

bool isDeskFile(const QString& path)
{
    return path.endsWith(QLatin1String(kDeskEnding));
}

std::optional<QString> addressOfDeskFile(const QString& path)
{
    if (!isDeskFile(path) || !QFileInfo::exists(path))
        return std::nullopt;
    const QByteArray address = settingOf(path, kAddressSetting);
    return address.isEmpty() ? std::nullopt : std::optional(QString::fromUtf8(address));
}

}  // namespace plotix
