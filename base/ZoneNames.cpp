#include "base/ZoneNames.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

namespace plotix {

namespace {

QString plainName(const QString& text)
{
    return text.simplified().replace(QLatin1Char(' '), QLatin1Char('_')).toLower();
}

QString cityOf(const QString& name)
{
    return name.section(QLatin1Char('/'), -1);
}

/// Offsets such as "UTC+03:00" are no places; people who want one can say its place or UTC.
bool isPlace(const QString& name)
{
    return name == QLatin1String("UTC") || !name.startsWith(QLatin1String("UTC"));
}

/// How many letters have to be put in, taken out or replaced.
int distanceBetween(const QString& one, const QString& other)
{
    std::vector<int> row(static_cast<std::size_t>(other.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < one.size(); ++i) {
        int diagonal = row.front();
        row.front() = static_cast<int>(i) + 1;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int replaced = diagonal + (one[i] == other[static_cast<qsizetype>(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row.back();
}

}  // namespace

const QStringList& zoneNames()
{
    static const QStringList names = [] {
        QStringList all;
        for (const QByteArray& id : QTimeZone::availableTimeZoneIds())
            if (const QString name = QString::fromUtf8(id); isPlace(name))
                all << name;
        if (!all.contains(QLatin1String("UTC")))
            all << QStringLiteral("UTC");
        all.sort();
        return all;
    }();
    return names;
}

std::optional<QTimeZone> zoneNamed(const QString& text)
{
    const QString wanted = plainName(text);
    if (wanted.isEmpty())
        return std::nullopt;
    QStringList cities;
    for (const QString& name : zoneNames()) {
        if (name.toLower() == wanted)
            return QTimeZone(name.toUtf8());
        if (cityOf(name).toLower() == wanted)
            cities << name;
    }
    return cities.size() == 1 ? std::optional(QTimeZone(cities.front().toUtf8())) : std::nullopt;
}

QString nearestZoneName(const QString& text)
{
    const QString wanted = plainName(text);
    QString nearest = QStringLiteral("UTC");
    int least = std::numeric_limits<int>::max();
    for (const QString& name : zoneNames()) {
        const int whole = distanceBetween(wanted, name.toLower());
        const int city = distanceBetween(cityOf(wanted), cityOf(name).toLower());
        const int distance = std::min(2 * whole, 2 * city + 1);  // of equals, the one that is alike as a whole
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

}  // namespace plotix
