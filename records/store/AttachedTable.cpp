#include "base/ReportableError.h"
#include "records/store/TableServer.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace plotix {

namespace {

// Stored: never change.
constexpr int kVersion = 1;
const QLatin1String kSeconds("s"), kMilliseconds("ms");

[[noreturn]] void failAsUnreadable()
{
    throw ReportableError(QStringLiteral("What the site says of an attached table cannot be read: attach it again."));
}

}  // namespace

QByteArray AttachedTable::bytes() const
{
    QJsonObject names;
    for (const auto& [property, name] : columns)
        names.insert(QString::number(property), name);
    QJsonObject all{{QStringLiteral("version"), kVersion},
                    {QStringLiteral("address"), address},
                    {QStringLiteral("table"), table},
                    {QStringLiteral("time"), timeColumn},
                    {QStringLiteral("timeUnit"), timeUnit == TimeUnit::Seconds ? kSeconds : kMilliseconds},
                    {QStringLiteral("columns"), names}};
    if (isLong()) {
        all.insert(QStringLiteral("name"), nameColumn);
        all.insert(QStringLiteral("value"), valueColumn);
    }
    return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

AttachedTable AttachedTable::of(const QByteArray& bytes)
{
    const QJsonObject all = QJsonDocument::fromJson(bytes).object();
    const int version = all.value(QLatin1String("version")).toInt();
    if (version > kVersion)
        throw ReportableError(QStringLiteral("A newer version of this program attached a table to this site: update "
                                             "it."));
    AttachedTable table;
    table.address = all.value(QLatin1String("address")).toString();
    table.table = all.value(QLatin1String("table")).toString();
    table.timeColumn = all.value(QLatin1String("time")).toString();
    const QString unit = all.value(QLatin1String("timeUnit")).toString();
    table.timeUnit = unit == kMilliseconds ? TimeUnit::Milliseconds : TimeUnit::Seconds;
    table.nameColumn = all.value(QLatin1String("name")).toString();
    table.valueColumn = all.value(QLatin1String("value")).toString();
    const QJsonObject names = all.value(QLatin1String("columns")).toObject();
    for (auto each = names.begin(); each != names.end(); ++each) {
        const RowId property = each.key().toLongLong();
        if (property <= 0 || property >= kPropertyLimit)
            failAsUnreadable();
        table.columns[property] = each.value().toString();
    }
    if (version < 1 || table.address.isEmpty() || table.table.isEmpty() || table.timeColumn.isEmpty() ||
        table.nameColumn.isEmpty() != table.valueColumn.isEmpty() || (unit != kSeconds && unit != kMilliseconds))
        failAsUnreadable();
    return table;
}

}  // namespace plotix
