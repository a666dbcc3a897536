#include "hostapp/document/EditJournal.h"

#include "base/Date.h"
#include "base/ReportableError.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/document/KeptRecords.h"
#include "hostapp/document/SiteAnnotations.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborValue>

#include <algorithm>

namespace plotix {

namespace {

// Stored: never change.
constexpr QLatin1String kAgents("agents"), kProperties("properties"), kAliases("aliases"), kPlugIns("plugIns"),
    kFormulas("formulas"), kMadeAgents("madeAgents"), kMadeProperties("madeProperties"), kSpans("spans"),
    kTables("tables"), kLimits("limits"), kNotes("notes"), kNoteProperties("noteProperties"), kAmendments("amendments");

constexpr const char* kSelectAgents = "SELECT id, identifier, name FROM agent";
constexpr const char* kSelectProperties =
    "SELECT id, agent, name, key, unit, archived_unit, color, type, visible FROM property";
constexpr const char* kSelectAliases = "SELECT agent, name, target FROM alias";

/// All rows: arrays of texts and whole numbers.
QCborArray rowsOf(const Database& database, const char* select, const std::vector<int>& texts, int columns)
{
    QCborArray rows;
    Statement statement(database, select);
    while (statement.step()) {
        QCborArray row;
        for (int column = 0; column < columns; ++column)
            if (std::find(texts.begin(), texts.end(), column) != texts.end())
                row.append(statement.text(column));
            else
                row.append(statement.integer(column));
        rows.append(row);
    }
    return rows;
}

QCborArray formulaRows(const Database& database)
{
    QCborArray rows;
    Statement statement(database, "SELECT property, text, unit, joins, longest_gap FROM formula");
    while (statement.step())
        rows.append(QCborArray{statement.integer(0), statement.text(1), statement.text(2), statement.integer(3),
                               statement.real(4)});
    return rows;
}

QCborArray limitRows(const Database& database)
{
    QCborArray rows;
    for (const SiteLimit& limit : storedLimits(database))
        rows.append(QCborArray{limit.id, limit.property, limit.name, limit.value, limit.unit,
                               static_cast<qint64>(limit.side), static_cast<qint64>(limit.severity)});
    return rows;
}

QCborArray noteRows(const Database& database)
{
    QCborArray rows;
    for (const SiteNote& note : storedNotes(database))
        rows.append(QCborArray{note.id, note.from, note.to, note.author, note.text, note.created, note.modified});
    return rows;
}

QCborMap tablesOf(const Database& database)
{
    QCborMap tables;
    tables.insert(kAgents, rowsOf(database, kSelectAgents, {1, 2}, 3));
    tables.insert(kProperties, rowsOf(database, kSelectProperties, {2, 3, 4, 5}, 9));
    tables.insert(kAliases, rowsOf(database, kSelectAliases, {1}, 3));
    tables.insert(kFormulas, formulaRows(database));
    tables.insert(kLimits, limitRows(database));
    tables.insert(kNotes, noteRows(database));
    tables.insert(kNoteProperties, rowsOf(database, "SELECT note, property FROM note_property", {}, 2));
    return tables;
}

void run(Database& database, const char* sql, const QCborArray& row)
{
    Statement statement(database, sql);
    for (qsizetype i = 0; i < row.size(); ++i)
        if (row[i].isString())
            statement.bind(static_cast<int>(i) + 1, row[i].toString());
        else if (row[i].isDouble())
            statement.bind(static_cast<int>(i) + 1, row[i].toDouble());
        else
            statement.bind(static_cast<int>(i) + 1, row[i].toInteger());
    statement.run();
}

QCborArray rowOf(RowId agent, const Amendment& amendment)
{
    return {agent,           amendment.property, static_cast<qint64>(amendment.kind), amendment.from, amendment.to,
            amendment.first, amendment.last};
}

QCborValue bound(std::optional<double> time)
{
    return time ? QCborValue(*time) : QCborValue(nullptr);
}

std::optional<double> boundFrom(const QCborValue& value)
{
    return value.isNull() ? std::nullopt : std::optional(value.toDouble());
}

std::vector<RowId> idsFrom(const QCborArray& array)
{
    std::vector<RowId> ids;
    for (const QCborValue& value : array)
        ids.push_back(value.toInteger());
    return ids;
}

}  // namespace

EditStepBuilder::EditStepBuilder(Database& database, EditStep::Kind kind, const QString& subject)
    : m_database(database), m_tables(tablesOf(database))
{
    Statement(database, "INSERT INTO step(kind, subject, time, data) VALUES(?, ?, ?, ?)")
        .bind(1, static_cast<qint64>(kind))
        .bind(2, subject)
        .bind(3, currentDate().seconds)
        .bind(4, QByteArray())
        .run();
    m_id = database.lastInsertedRow();
}

void EditStepBuilder::keepPlugIn(const ArchivedPlugIn& plugIn)
{
    m_plugIns.append(QCborArray{plugIn.id, plugIn.className, plugIn.state});
}

void EditStepBuilder::keepRecords(RecordStore& stored, RowId agent, const std::vector<RowId>& properties,
                                  std::optional<double> from, std::optional<double> to, EditMeter& meter)
{
    QCborArray ids;
    for (const RowId property : properties)
        ids.append(property);
    m_spans.append(QCborArray{agent, ids, bound(from), bound(to)});
    for (const Amendment& each : stored.amendments(agent, properties, from, to))
        m_amendments.append(rowOf(agent, within(each, from.value_or(each.from), to.value_or(each.to))));
    Statement keep(m_database, "INSERT INTO kept(step, agent, data) VALUES(?, ?, ?)");
    for (const RecordOverview::Run& run : stored.overview(agent, {}, from, to).runs) {
        // Run by run, so that no more than one of them is in memory.
        const double begin = std::max(run.t0, from.value_or(run.t0)), end = std::min(run.t1, to.value_or(run.t1));
        const std::optional<RecordBlock> block = stored.read(agent, properties, begin, end);
        for (const QByteArray& piece : keptBytes(*block))
            keep.bind(1, m_id).bind(2, agent).bind(3, piece).run();
        meter.advance();
    }
}

void EditStepBuilder::finish()
{
    QCborMap data;
    data.insert(kTables, m_tables);
    data.insert(kMadeAgents, m_madeAgents);
    data.insert(kMadeProperties, m_madeProperties);
    data.insert(kPlugIns, m_plugIns);
    data.insert(kSpans, m_spans);
    data.insert(kAmendments, m_amendments);
    Statement(m_database, "UPDATE step SET data = ? WHERE id = ?")
        .bind(1, QCborValue(data).toCbor())
        .bind(2, m_id)
        .run();
    const qint64 most = EditJournal::kMostSteps;
    Statement(m_database, "DELETE FROM step WHERE id NOT IN (SELECT id FROM step ORDER BY id DESC LIMIT ?)")
        .bind(1, most)
        .run();
    Statement(m_database, "DELETE FROM kept WHERE step NOT IN (SELECT id FROM step)").run();
}

std::vector<EditStep> EditJournal::steps() const
{
    std::vector<EditStep> steps;
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'step'");
    if (!table.step())
        return steps;
    Statement rows(m_database, "SELECT id, kind, subject, time FROM step ORDER BY id");
    while (rows.step())
        steps.push_back({rows.integer(0), static_cast<EditStep::Kind>(rows.integer(1)), rows.text(2), rows.real(3)});
    return steps;
}

// Records go back before properties that were made go, and after those that were deleted are there again: a store
// accepts records of known properties alone.
void EditJournal::undo(const EditStep& step, RecordStore& stored, RecordTransaction& records, EditMeter& meter)
{
    Statement row(m_database, "SELECT data FROM step WHERE id = ?");
    if (!row.bind(1, step.id).step())
        throw ReportableError(QStringLiteral("This was undone already."));
    const QCborMap data = QCborValue::fromCbor(row.bytes(0)).toMap();
    row.reset();
    restoreTables(data.value(kTables).toMap());
    const QCborArray spans = data.value(kSpans).toArray();
    Statement kept(m_database, "SELECT count(*) FROM kept WHERE step = ?");
    if (kept.bind(1, step.id).step())
        meter.expect(static_cast<std::size_t>(kept.integer(0)));
    kept.reset();
    removeRecords(spans, stored, records, meter);
    restoreRecords(step.id, records, meter);
    restoreAmendments(data.value(kAmendments).toArray(), records);
    restorePlugIns(step.kind, data.value(kPlugIns).toArray());
    removeWhatWasMade(data);
    Statement(m_database, "DELETE FROM step WHERE id = ?").bind(1, step.id).run();
    Statement(m_database, "DELETE FROM kept WHERE step = ?").bind(1, step.id).run();
}

void EditJournal::removeRecords(const QCborArray& spans, RecordStore& stored, RecordTransaction& records,
                                EditMeter& meter)
{
    for (const QCborValue& value : spans) {
        const QCborArray span = value.toArray();
        meter.expect(partsOf(stored, span[0].toInteger(), boundFrom(span[2]), boundFrom(span[3])));
    }
    for (const QCborValue& value : spans) {
        const QCborArray span = value.toArray();
        removeInParts(stored, records, span[0].toInteger(), idsFrom(span[1].toArray()), boundFrom(span[2]),
                      boundFrom(span[3]), meter);
    }
}

void EditJournal::restoreRecords(qint64 step, RecordTransaction& records, EditMeter& meter)
{
    Statement kept(m_database, "SELECT agent, data FROM kept WHERE step = ? ORDER BY id");
    kept.bind(1, step);
    while (kept.step()) {
        records.store(kept.integer(0), keptRecords(kept.bytes(1)));
        meter.advance();
    }
    records.prepare();
}

/// What the step itself noted went with the records that were taken out.
void EditJournal::restoreAmendments(const QCborArray& amendments, RecordTransaction& records)
{
    for (const QCborValue& value : amendments) {
        const QCborArray row = value.toArray();
        records.addAmendment(row[0].toInteger(),
                             {row[1].toInteger(), static_cast<Amendment::Kind>(row[2].toInteger()), row[3].toDouble(),
                              row[4].toDouble(), row[5].toDouble(), row[6].toDouble()});
    }
    records.prepare();
}

/// Colours and units stay as they are now: they are not what a step changes.
void EditJournal::restoreTables(const QCborMap& tables)
{
    for (const QCborValue& row : tables.value(kAgents).toArray())
        run(m_database,
            "INSERT INTO agent(id, identifier, name) VALUES(?1, ?2, ?3) ON CONFLICT(id) DO UPDATE SET name = ?3",
            row.toArray());
    // Two that change names have to pass each other: the key is unique in its agent.
    for (const QCborValue& row : tables.value(kProperties).toArray())
        run(m_database, "UPDATE property SET key = 'undone ' || id WHERE id = ?", {row.toArray()[0]});
    for (const QCborValue& row : tables.value(kProperties).toArray())
        run(m_database,
            "INSERT INTO property(id, agent, name, key, unit, archived_unit, color, type, visible) "
            "VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9) "
            "ON CONFLICT(id) DO UPDATE SET agent = ?2, name = ?3, key = ?4",
            row.toArray());
    m_database.execute("DELETE FROM alias");
    for (const QCborValue& row : tables.value(kAliases).toArray())
        run(m_database, "INSERT INTO alias(agent, name, target) VALUES(?, ?, ?)", row.toArray());
    if (tables.contains(kFormulas))  // a step of an older program knows of none
        restoreFormulas(tables);
    if (tables.contains(kNotes))  // likewise
        restoreAnnotations(tables);
}

void EditJournal::restoreAnnotations(const QCborMap& tables)
{
    m_database.execute("DELETE FROM value_limit; DELETE FROM note; DELETE FROM note_property");
    for (const QCborValue& row : tables.value(kLimits).toArray())
        run(m_database,
            "INSERT INTO value_limit(id, property, name, value, unit, side, severity) VALUES(?, ?, ?, ?, ?, ?, ?)",
            row.toArray());
    for (const QCborValue& row : tables.value(kNotes).toArray())
        run(m_database, "INSERT INTO note(id, begin, end, author, text, created, modified) VALUES(?, ?, ?, ?, ?, ?, ?)",
            row.toArray());
    for (const QCborValue& row : tables.value(kNoteProperties).toArray())
        run(m_database, "INSERT INTO note_property(note, property) VALUES(?, ?)", row.toArray());
}

/// A computed property's unit is its formula's doing; that of a recorded one stays.
void EditJournal::restoreFormulas(const QCborMap& tables)
{
    m_database.execute("DELETE FROM formula");
    for (const QCborValue& row : tables.value(kFormulas).toArray())
        run(m_database, "INSERT INTO formula(property, text, unit, joins, longest_gap) VALUES(?, ?, ?, ?, ?)",
            row.toArray());
    for (const QCborValue& value : tables.value(kProperties).toArray()) {
        const QCborArray row = value.toArray();
        run(m_database,
            "UPDATE property SET unit = ?2, archived_unit = ?3 WHERE id = ?1 AND archived_unit <> ?3 "
            "AND EXISTS(SELECT 1 FROM formula WHERE property = ?1)",
            {row[0], row[4], row[5]});
    }
}

/// A view that the user deleted after the step stays deleted.
void EditJournal::restorePlugIns(EditStep::Kind kind, const QCborArray& plugIns)
{
    for (const QCborValue& value : plugIns) {
        const QCborArray row = value.toArray();
        Statement(m_database, kind == EditStep::Kind::Delete
                                  ? "INSERT OR REPLACE INTO plugin(id, class_name, state) VALUES(?1, ?2, ?3)"
                                  : "UPDATE plugin SET class_name = ?2, state = ?3 WHERE id = ?1")
            .bind(1, row[0].toInteger())
            .bind(2, row[1].toString())
            .bind(3, row[2].toByteArray())
            .run();
    }
}

/// An agent that got other properties meanwhile stays; one that goes takes the views of it along.
void EditJournal::removeWhatWasMade(const QCborMap& data)
{
    for (const RowId property : idsFrom(data.value(kMadeProperties).toArray())) {
        Statement(m_database, "DELETE FROM property WHERE id = ?").bind(1, property).run();
        Statement(m_database, "DELETE FROM formula WHERE property = ?").bind(1, property).run();
        Statement(m_database, "DELETE FROM value_limit WHERE property = ?").bind(1, property).run();
    }
    for (const RowId agent : idsFrom(data.value(kMadeAgents).toArray())) {
        Statement left(m_database, "SELECT identifier FROM agent WHERE id = ?1 AND NOT EXISTS "
                                   "(SELECT 1 FROM property WHERE agent = ?1)");
        if (!left.bind(1, agent).step())
            continue;
        const QString identifier = left.text(0);
        left.reset();
        Statement views(m_database, "SELECT id, state FROM plugin");
        std::vector<qint64> orphans;
        while (views.step())
            if (namesAgent(views.bytes(1), identifier))
                orphans.push_back(views.integer(0));
        for (const qint64 orphan : orphans)
            Statement(m_database, "DELETE FROM plugin WHERE id = ?").bind(1, orphan).run();
        Statement(m_database, "DELETE FROM agent WHERE id = ?").bind(1, agent).run();
    }
}

}  // namespace plotix
