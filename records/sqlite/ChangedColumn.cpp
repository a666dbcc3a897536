#include "records/sqlite/ChangedColumn.h"

#include <QtCore/QDateTime>

#include <algorithm>

namespace plotix {

namespace {

QString textOf(double time)
{
    constexpr double kLatest = 253'402'300'799;  // of the year 9999
    const double shown = std::clamp(time, -kLatest, kLatest);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(shown * 1000), Qt::UTC)
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString keyOf(const Database& database, RowId property)
{
    Statement key(database, "SELECT key FROM property WHERE id = ?");
    return key.bind(1, property).step() ? key.text(0) : QString::number(property);
}

}  // namespace

QString changedColumn(const Database& database, RowId property, const Chunk& chunk)
{
    const QString what = property == kTimes ? QStringLiteral("the times")
                                            : QStringLiteral("the values of “%1”").arg(keyOf(database, property));
    return QStringLiteral("%1 from %2 to %3 UTC have changed since they were stored")
        .arg(what, textOf(chunk.t0), textOf(chunk.t1));
}

void failAsChanged(const Database& database, RowId property, const Chunk& chunk)
{
    database.failAsDamaged(
        QStringLiteral("%1; all others can still be read").arg(changedColumn(database, property, chunk)));
}

}  // namespace plotix
