#include "hostapp/exchange/tables/QualityColumns.h"
#include "hostapp/exchange/tables/TableReader.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

/// What columns of texts tell about the rows: which devices they are of.
namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr std::size_t kMostTexts = 50;  // different ones; more are no names of devices

bool namesDevice(const QString& header)
{
    return hasWord(header, "device|ger(?:ä|ae)t|sensor|station|location|standort|^ort$|room|raum|meter|zähler|zaehler|"
                           "^point|datenpunkt|channel|kanal|messstelle|messpunkt|^site|capteur|logger|anlage");
}

/// From when to when a text stands in the rows.
struct Span {
    double first = std::numeric_limits<double>::infinity();
    double last = -std::numeric_limits<double>::infinity();

    void add(double time)
    {
        first = std::min(first, time);
        last = std::max(last, time);
    }
};

using Spans = std::map<std::string, Span, std::less<>>;

/// A logger that was moved has been in one room after the other; two loggers are in theirs at once.
bool overlap(const Spans& spans)
{
    std::vector<Span> sorted;
    for (const auto& [text, span] : spans)
        sorted.push_back(span);
    std::sort(sorted.begin(), sorted.end(), [](const Span& one, const Span& other) { return one.first < other.first; });
    double last = -std::numeric_limits<double>::infinity();
    return std::any_of(sorted.begin(), sorted.end(), [&last](const Span& span) {
        const bool isInside = span.first < last;
        last = std::max(last, span.last);
        return isInside;
    });
}

}  // namespace

/// Not of the first rows alone: a file sorted by station begins with thousands of one.
std::vector<std::pair<QString, QString>> TableReader::categories()
{
    std::vector<std::size_t> fields = textFieldsOf(m_sample, m_shape, m_time);
    for (const std::size_t quality : qualityFieldsOf(m_sample, m_shape))
        std::erase(fields, quality);
    std::map<std::size_t, std::set<std::string, std::less<>>> texts;
    rewind();
    for (std::size_t row = 0; !fields.empty() && next(m_record); ++row) {
        if (row % kRowsInBatch == 0)
            report();
        if (row >= m_shape.firstRow && conditionsHold(m_record))
            std::erase_if(fields, [this, &texts](std::size_t field) {
                std::set<std::string, std::less<>>& different = texts[field];
                const std::string_view text = fieldAt(m_record, field);
                if (!text.empty() && !different.contains(text))
                    different.emplace(text);
                return different.size() > kMostTexts;
            });
    }
    std::vector<std::pair<QString, QString>> categories;
    for (const std::size_t field : fields)
        if (texts[field].size() > 1)
            categories.emplace_back(m_columns[field].header, textForFinding(*texts[field].begin()));
    return categories;
}

/// Columns that may name the device of each row, and from which no row is chosen.
std::vector<std::size_t> TableReader::deviceFields() const
{
    std::vector<std::size_t> fields = textFieldsOf(m_sample, m_shape, m_time);
    std::erase_if(fields, [this](std::size_t field) {
        const auto isIt = [field](const ImportPlan::Condition& condition) { return condition.field == field; };
        return !namesDevice(m_shape.titles[field].name) ||
               std::any_of(m_plan->conditions.begin(), m_plan->conditions.end(), isIt);
    });
    return fields;
}

std::optional<ImportFinding> TableReader::mixture()
{
    if (m_named || m_isCutShort || m_plan->rowsAtOneTime == RowsAtOneTime::KeepLast)
        return {};
    std::vector<std::size_t> fields = deviceFields();
    if (fields.empty())
        return {};
    std::map<std::size_t, Spans> spans;
    m_date.clear();
    rewindRows();
    for (std::size_t row = 0; !fields.empty() && nextRow(m_record); ++row) {
        if (row % kRowsInBatch == 0)
            report();
        const bool isRow = row >= m_shape.firstRow && conditionsHold(m_record);
        const std::optional<double> time = isRow ? timeOf(m_record) : std::nullopt;
        if (time)
            std::erase_if(fields, [this, &spans, &time](std::size_t field) {
                if (const std::string_view text = fieldAt(m_record, field); !text.empty())
                    spans[field][std::string(text)].add(*time);
                return spans[field].size() > kMostTexts;
            });
    }
    for (const std::size_t field : fields)
        if (overlap(spans[field]))
            return ImportFinding{.what = What::ManyDevices,
                                 .column = m_columns[field].header,
                                 .text = textForFinding(spans[field].begin()->first),
                                 .found = spans[field].size()};
    return {};
}

}  // namespace plotix
