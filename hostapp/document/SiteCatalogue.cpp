#include "hostapp/document/SiteCatalogue.h"

#include "base/ReportableError.h"
#include "hostapp/document/AttachedAgents.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QCborValue>
#include <QtCore/QFile>

#include <algorithm>
#include <map>

namespace plotix {

namespace {

/// Stored: never change. A number that is not among them is a later version's.
enum class RowKind : std::uint8_t { Site = 0, Agent = 1, Property = 2, Limit = 3, Note = 4, PlugIn = 5 };

constexpr auto kLastKind = static_cast<std::uint8_t>(RowKind::PlugIn);

QCborMap rowMap(const QByteArray& data)
{
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(data, &error);
    if (error.error != QCborError::NoError || !value.isMap())
        throw ReportableError(
            QStringLiteral("The site on the server has a row that cannot be read: %1. Take it back from "
                           "a backup, or update this program.")
                .arg(error.errorString()));
    return value.toMap();
}

QString text(const QCborMap& map, const char* key)
{
    return map[QLatin1String(key)].toString();
}

qint64 whole(const QCborMap& map, const char* key)
{
    return map[QLatin1String(key)].toInteger();
}

double real(const QCborMap& map, const char* key)
{
    const QCborValue value = map[QLatin1String(key)];
    return value.isInteger() ? static_cast<double>(value.toInteger()) : value.toDouble();
}

StoreServer::Row rowOf(RowKind kind, qint64 id, const QCborMap& map)
{
    return {static_cast<std::uint8_t>(kind), id, map.toCborValue().toCbor()};
}

QCborMap fromAgent(const SiteCatalogue::Agent& agent)
{
    QCborMap map{{QStringLiteral("identifier"), agent.identifier}, {QStringLiteral("name"), agent.name}};
    if (!agent.attached.isEmpty())
        map.insert(QStringLiteral("attached"), agent.attached);
    return map;
}

QCborMap fromProperty(qint64 agent, const SiteProperty::Description& property)
{
    QCborMap map{{QStringLiteral("agent"), agent},
                 {QStringLiteral("name"), property.name},
                 {QStringLiteral("key"), property.propertyName},
                 {QStringLiteral("unit"), property.unit},
                 {QStringLiteral("archivedUnit"), property.archivedUnit},
                 {QStringLiteral("color"), qint64(property.color.rgba())},
                 {QStringLiteral("type"), qint64(property.type)},
                 {QStringLiteral("visible"), property.visible}};
    if (property.formula)
        map.insert(QStringLiteral("formula"), QCborMap{{QStringLiteral("text"), property.formula->text},
                                                       {QStringLiteral("unit"), property.formula->unit},
                                                       {QStringLiteral("join"), qint64(property.formula->join)},
                                                       {QStringLiteral("longestGap"), property.formula->longestGap}});
    return map;
}

SiteProperty::Description toProperty(qint64 id, const QCborMap& map)
{
    SiteProperty::Description property;
    property.id = id;
    property.name = text(map, "name");
    property.propertyName = text(map, "key");
    property.unit = text(map, "unit");
    property.archivedUnit = text(map, "archivedUnit");
    property.color = QColor::fromRgba(static_cast<QRgb>(whole(map, "color")));
    property.type = static_cast<std::uint32_t>(whole(map, "type"));
    property.visible = map[QLatin1String("visible")].toBool();
    if (const QCborValue formula = map[QLatin1String("formula")]; formula.isMap()) {
        const QCborMap said = formula.toMap();
        property.formula =
            PropertyFormula{text(said, "text"), text(said, "unit"),
                            static_cast<PropertyFormula::Join>(whole(said, "join")), real(said, "longestGap")};
    }
    return property;
}

QCborMap fromLimit(const SiteLimit& limit)
{
    return {{QStringLiteral("property"), limit.property}, {QStringLiteral("name"), limit.name},
            {QStringLiteral("value"), limit.value},       {QStringLiteral("unit"), limit.unit},
            {QStringLiteral("side"), qint64(limit.side)}, {QStringLiteral("severity"), qint64(limit.severity)}};
}

SiteLimit toLimit(qint64 id, const QCborMap& map)
{
    return {id,
            whole(map, "property"),
            text(map, "name"),
            real(map, "value"),
            text(map, "unit"),
            static_cast<KTVLimit::Side>(whole(map, "side")),
            static_cast<KTVLimit::Severity>(whole(map, "severity"))};
}

QCborMap fromNote(const SiteNote& note)
{
    QCborArray properties;
    for (const qint64 property : note.properties)
        properties.append(property);
    return {{QStringLiteral("from"), note.from},       {QStringLiteral("to"), note.to},
            {QStringLiteral("author"), note.author},   {QStringLiteral("text"), note.text},
            {QStringLiteral("created"), note.created}, {QStringLiteral("modified"), note.modified},
            {QStringLiteral("properties"), properties}};
}

SiteNote toNote(qint64 id, const QCborMap& map)
{
    SiteNote note{id, real(map, "from"), real(map, "to"), text(map, "author"), text(map, "text"), {}, 0, 0};
    note.created = real(map, "created");
    note.modified = real(map, "modified");
    for (const QCborValue& property : map[QLatin1String("properties")].toArray())
        note.properties.push_back(property.toInteger());
    return note;
}

/// With the members of `before` that are unknown here: `written` is what this version writes instead of that one.
QCborMap withUnknown(QCborMap now, const QCborMap& before, const QCborMap& written)
{
    for (const auto& [key, value] : before) {
        const QCborValue known = written.value(key), here = now.value(key);
        if (known.isUndefined() && here.isUndefined())
            now.insert(key, value);
        else if (known.isMap() && here.isMap() && value.isMap())
            now.insert(key, withUnknown(here.toMap(), value.toMap(), known.toMap()));
    }
    return now;
}

SiteCatalogue::Agent* agentOf(SiteCatalogue& catalogue, qint64 id)
{
    const auto found = std::find_if(catalogue.agents.begin(), catalogue.agents.end(),
                                    [id](const SiteCatalogue::Agent& agent) { return agent.id == id; });
    return found == catalogue.agents.end() ? nullptr : &*found;
}

/// With the ids that they have.
void storeAnnotations(Database& database, const SiteCatalogue& catalogue)
{
    for (const SiteLimit& limit : catalogue.limits)
        Statement(database, "INSERT INTO value_limit(id, property, name, value, unit, side, severity) "
                            "VALUES(?, ?, ?, ?, ?, ?, ?)")
            .bind(1, limit.id)
            .bind(2, limit.property)
            .bind(3, limit.name)
            .bind(4, limit.value)
            .bind(5, limit.unit)
            .bind(6, qint64(limit.side))
            .bind(7, qint64(limit.severity))
            .run();
    for (const SiteNote& note : catalogue.notes) {
        Statement(database, "INSERT INTO note(id, begin, end, author, text, created, modified) "
                            "VALUES(?, ?, ?, ?, ?, ?, ?)")
            .bind(1, note.id)
            .bind(2, note.from)
            .bind(3, note.to)
            .bind(4, note.author)
            .bind(5, note.text)
            .bind(6, note.created)
            .bind(7, note.modified)
            .run();
        for (const qint64 property : note.properties)
            Statement(database, "INSERT INTO note_property(note, property) VALUES(?, ?)")
                .bind(1, note.id)
                .bind(2, property)
                .run();
    }
}

/// All but trends, with the ids that they have.
void storeRows(Database& database, const SiteCatalogue& catalogue)
{
    SiteStore tables(database);
    tables.setSite({catalogue.name, catalogue.location});
    if (!catalogue.zone.isEmpty())
        tables.setSetting(QLatin1String(kZoneKey), catalogue.zone);
    for (const SiteCatalogue::Agent& agent : catalogue.agents) {
        Statement(database, "INSERT INTO agent(id, identifier, name) VALUES(?, ?, ?)")
            .bind(1, agent.id)
            .bind(2, agent.identifier)
            .bind(3, agent.name)
            .run();
        if (!agent.attached.isEmpty())
            keepAttached(database, agent.id, agent.attached);
        for (const SiteProperty::Description& property : agent.properties) {
            Statement(database, "INSERT INTO property(id, agent, name, key, unit, archived_unit, color, type, visible) "
                                "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)")
                .bind(1, property.id)
                .bind(2, agent.id)
                .bind(3, property.name)
                .bind(4, property.propertyName)
                .bind(5, property.unit)
                .bind(6, property.archivedUnit)
                .bind(7, qint64(property.color.rgba()))
                .bind(8, qint64(property.type))
                .bind(9, qint64(property.visible))
                .run();
            if (property.formula)
                tables.setFormula(property.id, *property.formula, property.archivedUnit);
        }
    }
    storeAnnotations(database, catalogue);
}

void storePlugIns(Database& database, const SiteCatalogue& catalogue)
{
    SiteStore tables(database);
    for (ArchivedPlugIn plugIn : catalogue.plugIns) {
        plugIn.id = 0;
        tables.storePlugIn(plugIn);
    }
}

}  // namespace

bool SiteCatalogue::owns(RowId agent, RowId property) const
{
    for (const Agent& each : agents)
        if (each.id == agent)
            return std::any_of(
                each.properties.begin(), each.properties.end(),
                [&](const SiteProperty::Description& one) { return one.id == property && !one.formula; });
    return false;
}

SiteCatalogue SiteCatalogue::of(Database& database)
{
    SiteStore tables(database);
    SiteCatalogue catalogue;
    const SiteStore::Site site = tables.site();
    catalogue.name = site.name;
    catalogue.location = site.location;
    catalogue.zone = tables.setting(QLatin1String(kZoneKey));
    std::map<RowId, QByteArray> attached = attachedAgents(database);
    for (const SiteStore::Agent& agent : tables.agents())
        catalogue.agents.push_back(
            {agent.id, agent.identifier, agent.name, tables.properties(agent.id), attached[agent.id]});
    catalogue.limits = storedLimits(database);
    catalogue.notes = storedNotes(database);
    Statement plugIns(database, "SELECT id, class_name, state FROM plugin ORDER BY id");
    while (plugIns.step())
        catalogue.plugIns.push_back({plugIns.integer(0), plugIns.text(1), plugIns.bytes(2)});
    return catalogue;
}

SiteCatalogue SiteCatalogue::ofFile(const QString& path)
{
    Database database(path, siteSchema(), Database::Access::BestAvailable);
    Statement(database, "BEGIN").run();  // everything of one moment
    SiteCatalogue catalogue = of(database);
    Statement(database, "COMMIT").run();
    return catalogue;
}

void SiteCatalogue::makeFile(const QString& path) const
{
    createSiteFile(path, name);
    try {
        Database database(path, siteSchema(), Database::Access::ReadWrite);
        inTransaction(database, [&] {
            storeRows(database, *this);
            storePlugIns(database, *this);
        });
    } catch (...) {
        for (const char* part : {"-wal", "-shm", ""})
            QFile::remove(path + QLatin1String(part));
        throw;
    }
}

void SiteCatalogue::completeFile(const QString& path) const
{
    Database database(path, siteSchema(), Database::Access::ReadWrite);
    inTransaction(database, [&] {
        updateIn(database);
        Statement(database, "DELETE FROM plugin").run();
        storePlugIns(database, *this);
    });
}

void SiteCatalogue::updateFile(const QString& path) const
{
    Database database(path, siteSchema(), Database::Access::ReadWrite);
    inTransaction(database, [&] { updateIn(database); });
}

void SiteCatalogue::updateIn(Database& database) const
{
    SiteCatalogue now = *this;
    now.takeLooks(of(database));
    // Steps that could be undone know the tables as they were, without what others changed since.
    for (const char* table : {"kept", "step", "note_property", "note", "value_limit", "formula", "property", "agent"})
        Statement(database, QByteArray("DELETE FROM ") + table).run();
    forgetAttached(database);
    storeRows(database, now);
}

bool SiteCatalogue::knows(const StoreServer::Row& row)
{
    return row.kind <= kLastKind;
}

void SiteCatalogue::keepNumbers(Database& database, const std::map<std::uint8_t, RowId>& highest)
{
    for (const auto& [kind, table] : {std::pair(RowKind::Agent, "agent"), std::pair(RowKind::Property, "property"),
                                      std::pair(RowKind::Limit, "value_limit"), std::pair(RowKind::Note, "note")}) {
        const auto found = highest.find(static_cast<std::uint8_t>(kind));
        if (found == highest.end())
            continue;
        Statement(database, "INSERT INTO sqlite_sequence(name, seq) SELECT ?1, 0 WHERE NOT EXISTS "
                            "(SELECT 1 FROM sqlite_sequence WHERE name = ?1)")
            .bind(1, QString::fromLatin1(table))
            .run();
        Statement(database, "UPDATE sqlite_sequence SET seq = max(seq, ?2) WHERE name = ?1")
            .bind(1, QString::fromLatin1(table))
            .bind(2, found->second)
            .run();
    }
}

void SiteCatalogue::takeLooks(const SiteCatalogue& other)
{
    std::map<qint64, const SiteProperty::Description*> known;
    for (const Agent& agent : other.agents)
        for (const SiteProperty::Description& property : agent.properties)
            known[property.id] = &property;
    for (Agent& agent : agents)
        for (SiteProperty::Description& property : agent.properties)
            if (const auto found = known.find(property.id); found != known.end()) {
                property.unit = found->second->unit;
                property.color = found->second->color;
                property.visible = found->second->visible;
            }
}

std::shared_ptr<RecordStore> recordsOf(StoreServer& server, const SiteCatalogue& catalogue)
{
    return server.records([catalogue](RowId agent, RowId property) { return catalogue.owns(agent, property); });
}

SiteCatalogue SiteCatalogue::ofRows(const std::vector<StoreServer::Row>& rows)
{
    SiteCatalogue catalogue;
    for (const StoreServer::Row& row : rows) {
        if (!knows(row))
            continue;
        const QCborMap map = rowMap(row.data);
        switch (static_cast<RowKind>(row.kind)) {
        case RowKind::Site:
            catalogue.name = text(map, "name");
            catalogue.location = text(map, "location");
            catalogue.zone = map[QLatin1String("zone")].toByteArray();
            break;
        case RowKind::Agent:
            catalogue.agents.push_back(
                {row.id, text(map, "identifier"), text(map, "name"), {}, map[QLatin1String("attached")].toByteArray()});
            break;
        case RowKind::Property:
            if (Agent* agent = agentOf(catalogue, whole(map, "agent")))
                agent->properties.push_back(toProperty(row.id, map));
            break;
        case RowKind::Limit: catalogue.limits.push_back(toLimit(row.id, map)); break;
        case RowKind::Note: catalogue.notes.push_back(toNote(row.id, map)); break;
        case RowKind::PlugIn:
            catalogue.plugIns.push_back({row.id, text(map, "class"), map[QLatin1String("state")].toByteArray()});
            break;
        }
    }
    return catalogue;
}

std::vector<StoreServer::Row> SiteCatalogue::rows() const
{
    std::vector<StoreServer::Row> rows{rowOf(
        RowKind::Site, 0,
        {{QStringLiteral("name"), name}, {QStringLiteral("location"), location}, {QStringLiteral("zone"), zone}})};
    for (const Agent& agent : agents) {
        rows.push_back(rowOf(RowKind::Agent, agent.id, fromAgent(agent)));
        for (const SiteProperty::Description& property : agent.properties)
            rows.push_back(rowOf(RowKind::Property, property.id, fromProperty(agent.id, property)));
    }
    for (const SiteLimit& limit : limits)
        rows.push_back(rowOf(RowKind::Limit, limit.id, fromLimit(limit)));
    for (const SiteNote& note : notes)
        rows.push_back(rowOf(RowKind::Note, note.id, fromNote(note)));
    for (const ArchivedPlugIn& plugIn : plugIns)
        rows.push_back(rowOf(RowKind::PlugIn, plugIn.id,
                             {{QStringLiteral("class"), plugIn.className}, {QStringLiteral("state"), plugIn.state}}));
    return rows;
}

std::vector<StoreServer::Row> SiteCatalogue::rowsInsteadOf(const std::vector<StoreServer::Row>& before) const
{
    using Data = std::map<std::pair<std::uint8_t, qint64>, QByteArray>;
    const auto byId = [](const std::vector<StoreServer::Row>& some) {
        Data data;
        for (const StoreServer::Row& row : some)
            data[{row.kind, row.id}] = row.data;
        return data;
    };
    const Data stored = byId(before), written = byId(ofRows(before).rows());
    std::vector<StoreServer::Row> now = rows();
    for (StoreServer::Row& row : now) {
        const auto old = stored.find({row.kind, row.id});
        const auto same = written.find({row.kind, row.id});
        if (old == stored.end() || same == written.end())
            continue;
        if (row.data == same->second)
            row.data = old->second;
        else
            row.data = withUnknown(rowMap(row.data), rowMap(old->second), rowMap(same->second)).toCborValue().toCbor();
    }
    return now;
}

}  // namespace plotix
