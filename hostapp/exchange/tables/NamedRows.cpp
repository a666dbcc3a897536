#include "hostapp/exchange/tables/NamedRows.h"

#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/tables/QualityColumns.h"

#include <algorithm>
#include <set>

namespace plotix {

namespace {

using Row = TableSample::Row;

/// What stands in a column of the sample.
struct Content {
    std::size_t values = 0, texts = 0, dates = 0;
    std::set<std::string> different;

    bool isOfValues() const { return values > 0 && values * 4 >= texts; }
    bool isOfTexts() const { return texts > 0 && texts > values * 4; }
};

std::vector<Content> contentsOf(const TableSample& sample, const TableShape& shape)
{
    constexpr std::size_t kMostKept = 200;
    std::vector<Content> contents(shape.fields());
    for (const Row& row : dataRows(sample, shape))
        for (std::size_t field = 0; field < std::min(row.fields.size(), contents.size()); ++field) {
            const std::string& text = row.fields[field];
            const CellKind kind =
                kindOf(shape.units[field].empty() ? std::string_view(text) : splitUnitOff(text).number);
            Content& content = contents[field];
            content.values += kind == CellKind::Number || kind == CellKind::State ? 1 : 0;
            content.texts += kind == CellKind::Text ? 1 : 0;
            content.dates += kind == CellKind::Date || kind == CellKind::Clock ? 1 : 0;
            if (content.different.size() < kMostKept && kind != CellKind::Gap)
                content.different.insert(text);
        }
    return contents;
}

bool namesValue(const QString& name)
{
    return hasWord(name, "^(?:_?values?|val|wert|messwert|istwert|valeur|mesure|valor|state|reading|readings?|"
                         "measurement[ _]value|measured[ _]value|point[ _]?value|tag[ _]?value|"
                         "(?:num(?:eric)?|result|sensor)[ _]?(?:value|reading)|value[ _](?:avg|mean|num(?:eric)?)|"
                         "result|ergebnis)$");
}

bool namesQuantity(const QString& name)
{
    return hasWord(name, "name$|^_field$|^field$|^tag$|tag[ _]?id|^sensor|^point|^channel|^kanal|^variable|^param|"
                         "^entity|^metric|^series|^signal|messstelle|messgr..?e|messpunkt|datenpunkt|bezeichnung|"
                         "^quantity|^property|^topic|^item|^_measurement$|^measurement$|^attribute|capteur|grandeur|"
                         "^device|^ger.t|^object|^objekt|^register|^obis|^meter|^z.hler|^what|^key$|^type$|^typ$|"
                         "^label|libell.|^id$");
}

bool judgesValues(const QString& name)
{
    return hasWord(name, "quali|status|unit|einheit|unit.$|flag|valid|comment|bemerkung|remark|^result$|^table$|note|"
                         "gültig|good|annotation|description|beschreibung");
}

/// Among several columns that may name the quantity, the one whose header says so best.
int rankOfName(const QString& name)
{
    if (hasWord(name, "^_field$|tag|^point|^channel|^kanal|^variable|^param|^entity|^metric|^signal|^quantity|"
                      "messgr..?e|datenpunkt|grandeur|^name$"))
        return 3;
    return namesQuantity(name) ? (hasWord(name, "^_measurement$|^device|^ger.t|^id$|^typ|^object|^objekt") ? 1 : 2) : 0;
}

/// Whether rows at one time always differ in these columns.
bool tellApart(const TableSample& sample, const TableShape& shape, const TimeColumns& time,
               const std::vector<std::size_t>& fields)
{
    std::set<std::string> seen;
    std::size_t rows = 0, equal = 0;
    for (const Row& row : dataRows(sample, shape)) {
        std::string key;
        for (const std::vector<std::size_t>* const part : {&time.fields, &fields})
            for (const std::size_t field : *part)
                (key += field < row.fields.size() ? row.fields[field] : std::string()) += '\n';
        ++rows;
        equal += seen.insert(std::move(key)).second ? 0 : 1;
    }
    return equal * 20 <= rows;
}

bool isTimeField(const TimeColumns& time, std::size_t field)
{
    const auto stands = [field](const std::vector<std::size_t>& fields) {
        return std::find(fields.begin(), fields.end(), field) != fields.end();
    };
    return stands(time.fields) || stands(time.others);
}

std::vector<std::size_t> textFields(const TableShape& shape, const TimeColumns& time,
                                    const std::vector<Content>& contents)
{
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (!isTimeField(time, field) && contents[field].isOfTexts() && contents[field].dates == 0 &&
            !judgesValues(shape.titles[field].name))
            fields.push_back(field);
    return fields;
}

/// Columns of measurements: of values, and neither a part of the time, a number of the row, nor a mark of quality.
std::vector<std::size_t> valueFields(const TableShape& shape, const TimeColumns& time,
                                     const std::vector<Content>& contents)
{
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < shape.fields(); ++field) {
        const QString& name = shape.titles[field].name;
        const bool isOther = isTimeField(time, field) || field == shape.rowNumbers || judgesValues(name) ||
                             hasWord(name, "(?:^|_|\\b)id$|^#$|^no\\.?$|^nr\\.?$|^index$|^row$");
        if (!isOther && (contents[field].isOfValues() || (namesValue(name) && contents[field].values > 0)))
            fields.push_back(field);
    }
    return fields;
}

std::optional<std::size_t> unitField(const TableShape& shape)
{
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (hasWord(shape.titles[field].name,
                    "^(?:_?units?|einheit|unit.|uom|unit of measurement|unit_of_measurement)$"))
            return field;
    return {};
}

}  // namespace

std::optional<NamedRows> namedRowsOf(const TableSample& sample, const TableShape& shape, const TimeColumns& time,
                                     Arrangement wanted)
{
    if (wanted == Arrangement::Columns)
        return {};
    const std::vector<Content> contents = contentsOf(sample, shape);
    std::vector<std::size_t> values = valueFields(shape, time, contents);
    std::vector<std::size_t> texts = textFields(shape, time, contents);
    for (const std::size_t field : qualityFieldsOf(sample, shape)) {
        std::erase(values, field);
        std::erase(texts, field);
    }
    NamedRows rows;
    // A number may name the quantity too: "sensor_id".
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (!contents[field].isOfTexts() && rankOfName(shape.titles[field].name) > 0 && !isTimeField(time, field) &&
            contents[field].different.size() <= 50 && field != shape.rowNumbers &&
            hasWord(shape.titles[field].name, "id$|^channel|^kanal|^register|^sensor|^obis|^meter")) {
            texts.push_back(field);
            std::erase(values, field);
        }
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&shape](std::size_t field) { return namesValue(shape.titles[field].name); });
    const bool isNamedValue = value != values.end();
    const auto name = std::max_element(texts.begin(), texts.end(), [&shape](std::size_t one, std::size_t other) {
        return rankOfName(shape.titles[one].name) < rankOfName(shape.titles[other].name);
    });
    const bool isNamed = name != texts.end() && rankOfName(shape.titles[*name].name) > 0;
    const bool hasOneValue = values.size() == 1;
    const bool tellsApart =
        hasOneValue && !texts.empty() && !tellApart(sample, shape, time, {}) && tellApart(sample, shape, time, texts);
    if (!(isNamedValue && isNamed && hasOneValue) && !tellsApart) {
        if (wanted == Arrangement::Names)
            throw ImportFailure({.what = ImportFinding::What::NoNameColumn, .columns = shape.headers});
        return {};
    }
    rows.value = isNamedValue ? *value : values.front();
    rows.names = {name != texts.end() ? *name : texts.front()};
    for (const std::size_t field : texts)
        if (field != rows.names.front() && !tellApart(sample, shape, time, rows.names))
            rows.names.push_back(field);
    std::sort(rows.names.begin(), rows.names.end());
    rows.unit = unitField(shape);
    return rows;
}

std::vector<std::size_t> textFieldsOf(const TableSample& sample, const TableShape& shape, const TimeColumns& time)
{
    return textFields(shape, time, contentsOf(sample, shape));
}

}  // namespace plotix
