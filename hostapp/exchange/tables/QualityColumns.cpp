#include "hostapp/exchange/tables/QualityColumns.h"

#include "hostapp/exchange/CellWords.h"

#include <algorithm>
#include <array>
#include <set>

namespace plotix {

namespace {

using What = ImportFinding::What;

struct HeaderWord {
    const char16_t* word;  // as `plainName` writes it
    QualityHeader header;
};

// Longer ones before those they end with.
constexpr std::array<HeaderWord, 34> kHeaderWords = {{
    {u"plausibilität", QualityHeader::Validity}, {u"gueltigkeit", QualityHeader::Validity},
    {u"plausibel", QualityHeader::Validity},     {u"gültigkeit", QualityHeader::Validity},
    {u"validity", QualityHeader::Validity},      {u"gueltig", QualityHeader::Validity},
    {u"isvalid", QualityHeader::Validity},       {u"gültig", QualityHeader::Validity},
    {u"isgood", QualityHeader::Validity},        {u"valid", QualityHeader::Validity},
    {u"good", QualityHeader::Validity},          {u"qualitätsflag", QualityHeader::Quality},
    {u"qualitaetscode", QualityHeader::Quality}, {u"qualitätscode", QualityHeader::Quality},
    {u"qualityflag", QualityHeader::Quality},    {u"qualitycode", QualityHeader::Quality},
    {u"qualitaet", QualityHeader::Quality},      {u"reliability", QualityHeader::Quality},
    {u"quality", QualityHeader::Quality},        {u"qualität", QualityHeader::Quality},
    {u"guete", QualityHeader::Quality},          {u"güte", QualityHeader::Quality},
    {u"qaqc", QualityHeader::Quality},           {u"qcflag", QualityHeader::Quality},
    {u"qccode", QualityHeader::Quality},         {u"qc", QualityHeader::Quality},
    {u"flags", QualityHeader::Quality},          {u"flag", QualityHeader::Quality},
    {u"statuscode", QualityHeader::Status},      {u"statusflag", QualityHeader::Status},
    {u"status", QualityHeader::Status},          {u"zustand", QualityHeader::Status},
    {u"state", QualityHeader::Status},           {u"qual", QualityHeader::Quality},
}};

/// Letters and digits alone: "TI-101.Status" and "ti101 status" name the same.
QString plainName(const QString& name)
{
    QString plain;
    for (const QChar character : name.toCaseFolded())
        if (character.isLetterOrNumber())
            plain += character;
    return plain;
}

/// The name of a value's column without what says that it is one: "TI-101.Value".
QString baseOfValue(const QString& name)
{
    QString plain = plainName(name);
    for (const char16_t* const word : {u"messwert", u"value", u"wert", u"val", u"pv"})
        if (const QString ending = QString::fromUtf16(word); plain.endsWith(ending))
            return plain.chopped(ending.size());
    return plain;
}

struct TitleOfQuality {
    QualityHeader header{};
    QString base;  // what it names besides; empty: nothing
};

/// A name in front of the word or behind it; what only says "of the value" is none.
std::optional<TitleOfQuality> titleOf(const QString& name)
{
    const QString plain = plainName(name);
    for (const HeaderWord& row : kHeaderWords) {
        const QString word = QString::fromUtf16(row.word);
        const bool isBehind = plain.endsWith(word);
        if (!isBehind && !plain.startsWith(word))
            continue;
        const QString rest = isBehind ? plain.chopped(word.size()) : plain.sliced(word.size());
        constexpr std::array kOfAnyValue = {u"data",        u"daten",  u"value", u"wert", u"messwert", u"mess",
                                            u"messung",     u"sample", u"point", u"tag",  u"opc",      u"signal",
                                            u"measurement", u"record", u"row",   u"code"};
        const bool isBare = std::any_of(kOfAnyValue.begin(), kOfAnyValue.end(),
                                        [&rest](const char16_t* any) { return rest == QString::fromUtf16(any); });
        return TitleOfQuality{row.header, isBare ? QString() : rest};
    }
    return {};
}

bool isEmpty(const TableSample& sample, const TableShape& shape, std::size_t field)
{
    const std::span<const TableSample::Row> rows = dataRows(sample, shape);
    return std::none_of(rows.begin(), rows.end(), [field](const TableSample::Row& row) {
        return field < row.fields.size() && !row.fields[field].empty();
    });
}

struct Candidate {
    std::size_t field = 0;
    TitleOfQuality title;
};

using Candidates = std::vector<Candidate>;

Candidates candidatesOf(const TableSample& sample, const TableShape& shape)
{
    Candidates candidates;
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (const std::optional<TitleOfQuality> title = titleOf(shape.titles[field].name))
            if (qualityCodeOf(textsOf(sample, shape, field), title->header))
                candidates.push_back({field, *title});
    return candidates;
}

/// Which columns of quality there are, rule by rule; what is left over is told.
class Assignment {
public:
    Assignment(const TableSample& sample, const TableShape& shape, const std::vector<std::size_t>& values)
        : m_sample(sample), m_shape(shape), m_values(values), m_candidates(candidatesOf(sample, shape))
    {
        std::erase_if(m_values, [this](std::size_t field) { return isCandidate(field) && !isNamedByAnother(field); });
        std::erase_if(m_candidates, [this](const Candidate& candidate) { return isValue(candidate.field); });
    }

    QualityColumns run()
    {
        Candidates bare;
        for (const Candidate& candidate : m_candidates) {
            const std::vector<std::size_t> named = valuesNamed(candidate.title.base);
            if (candidate.title.base.isEmpty())
                bare.push_back(candidate);
            else if (named.size() == 1)
                m_found.columns.push_back({candidate.field, named, false});
            else if (named.size() > 1)
                leave(candidate.field);
        }
        if (bare.size() == 1)
            assignOnly(bare.front().field);
        else
            assignEach(bare);
        noteUnsure();
        return std::move(m_found);
    }

private:
    bool isValue(std::size_t field) const
    {
        return std::find(m_values.begin(), m_values.end(), field) != m_values.end();
    }
    bool isCandidate(std::size_t field) const
    {
        return std::any_of(m_candidates.begin(), m_candidates.end(),
                           [field](const Candidate& candidate) { return candidate.field == field; });
    }
    /// Numbers that a column of their own judges are measurements: "Status, Status Quality".
    bool isNamedByAnother(std::size_t field) const
    {
        const QString base = baseOfValue(m_shape.titles[field].name);
        return std::any_of(m_candidates.begin(), m_candidates.end(), [&](const Candidate& candidate) {
            return candidate.field != field && !base.isEmpty() && candidate.title.base == base;
        });
    }
    std::vector<std::size_t> valuesNamed(const QString& base) const
    {
        std::vector<std::size_t> named;
        for (const std::size_t field : m_values)
            if (!base.isEmpty() &&
                (baseOfValue(m_shape.titles[field].name) == base || plainName(m_shape.titles[field].name) == base))
                named.push_back(field);
        return named;
    }
    bool isJudged(std::size_t value) const
    {
        return std::any_of(m_found.columns.begin(), m_found.columns.end(), [value](const QualityColumn& column) {
            return std::find(column.values.begin(), column.values.end(), value) != column.values.end();
        });
    }
    void leave(std::size_t field)
    {
        m_found.notes.push_back(
            {.what = What::QualityNotAssigned, .column = m_shape.headers[static_cast<qsizetype>(field)]});
    }

    /// The only one without a name.
    void assignOnly(std::size_t field)
    {
        std::vector<std::size_t> open;
        for (const std::size_t value : m_values)
            if (!isJudged(value))
                open.push_back(value);
        if (open.empty())
            return;
        const bool isFirstOrLast = field < m_values.front() || field > m_values.back();
        if (isFirstOrLast)
            m_found.columns.push_back({field, open, open.size() > 1});
        else if (field > 0 && isValue(field - 1))
            m_found.columns.push_back({field, {field - 1}, false});
        else
            leave(field);
    }

    /// Several: each judges the value it stands right behind, unless there is another one before that: it may then be
    /// about both.
    void assignEach(const Candidates& bare)
    {
        std::size_t begin = 0;
        for (const Candidate& candidate : bare) {
            const std::size_t field = candidate.field;
            const auto between = std::count_if(m_values.begin(), m_values.end(), [&](std::size_t value) {
                return value >= begin && value < field && !isJudged(value);
            });
            begin = field + 1;
            if (between == 1 && isValue(field - 1))
                m_found.columns.push_back({field, {field - 1}, false});
            else if (!m_values.empty())
                leave(field);
        }
    }

    /// Columns with such a header, and such words among others.
    void noteUnsure()
    {
        for (std::size_t field = 0; field < m_shape.fields(); ++field) {
            const std::optional<TitleOfQuality> title = titleOf(m_shape.titles[field].name);
            const bool fits = title && !isCandidate(field) && !isValue(field) &&
                              (title->base.isEmpty() || !valuesNamed(title->base).empty());
            if (!fits)
                continue;
            const std::vector<std::string> texts = textsOf(m_sample, m_shape, field);
            const auto isKnown = [](const std::string& text) {
                return verdictOf(text, QualityCode::Words) != Verdict::Unknown;
            };
            const auto unknown = std::find_if_not(texts.begin(), texts.end(), isKnown);
            if (unknown != texts.end() && std::any_of(texts.begin(), texts.end(), isKnown))
                m_found.notes.push_back({.what = What::QualityNotSure,
                                         .column = m_shape.headers[static_cast<qsizetype>(field)],
                                         .text = textForFinding(*unknown)});
        }
    }

    const TableSample& m_sample;  // borrowed
    const TableShape& m_shape;    // borrowed
    std::vector<std::size_t> m_values;
    Candidates m_candidates;
    QualityColumns m_found;
};

}  // namespace

std::vector<std::string> textsOf(const TableSample& sample, const TableShape& shape, std::size_t field)
{
    constexpr std::size_t kMostWords = 40;
    std::set<std::string> texts;
    for (const TableSample::Row& row : dataRows(sample, shape)) {
        if (field >= row.fields.size() || row.fields[field].empty())
            continue;
        const std::string& text = row.fields[field];
        const bool isGap = isMissing(text) && verdictOf(text, QualityCode::Words) == Verdict::Unknown;
        if (!isGap && texts.insert(text).second && texts.size() > kMostWords)
            return {};
    }
    return {texts.begin(), texts.end()};
}

std::vector<std::size_t> numberFieldsOf(const TableSample& sample, const TableShape& shape)
{
    constexpr std::size_t kTextsToANumber = 9;
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < shape.fields(); ++field) {
        std::size_t numbers = 0, texts = 0;
        for (const TableSample::Row& row : dataRows(sample, shape)) {
            if (field >= row.fields.size())
                continue;
            const std::string_view text = shape.units[field].empty() ? std::string_view(row.fields[field])
                                                                     : splitUnitOff(row.fields[field]).number;
            const CellKind kind = kindOf(text);
            numbers += kind == CellKind::Number || kind == CellKind::State ? 1 : 0;
            texts += kind == CellKind::Text ? 1 : 0;
        }
        if (numbers > 0 && texts <= numbers * kTextsToANumber)
            fields.push_back(field);
    }
    return fields;
}

std::vector<std::size_t> qualityFieldsOf(const TableSample& sample, const TableShape& shape)
{
    std::vector<std::size_t> fields;
    for (const Candidate& candidate : candidatesOf(sample, shape))
        fields.push_back(candidate.field);
    return fields;
}

std::vector<std::size_t> emptyQualityFieldsOf(const TableSample& sample, const TableShape& shape)
{
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (titleOf(shape.titles[field].name) && isEmpty(sample, shape, field))
            fields.push_back(field);
    return fields;
}

QualityColumns qualityColumnsOf(const TableSample& sample, const TableShape& shape,
                                const std::vector<std::size_t>& values)
{
    return Assignment(sample, shape, values).run();
}

std::optional<QualityCode> codeOfQuality(const TableSample& sample, const TableShape& shape, std::size_t field)
{
    const std::vector<std::string> texts = textsOf(sample, shape, field);
    const std::optional<TitleOfQuality> title = titleOf(shape.titles[field].name);
    const std::optional<QualityCode> code = qualityCodeOf(texts, title ? title->header : QualityHeader::Quality);
    if (code)
        return code;
    const bool knowsOne = std::any_of(texts.begin(), texts.end(), [](const std::string& text) {
        return verdictOf(text, QualityCode::Words) != Verdict::Unknown;
    });
    return knowsOne || isEmpty(sample, shape, field) ? std::optional(QualityCode::Words) : std::nullopt;
}

}  // namespace plotix
