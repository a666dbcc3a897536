#include "hostapp/exchange/tables/TableSample.h"

#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/TimeText.h"

#include <QtCore/QRegularExpression>

#include <map>

namespace plotix {

CellKind kindOf(std::string_view field)
{
    DecimalMark mark = DecimalMark::Unknown;
    double value = 0;
    switch (readNumber(field, mark, value)) {
    case FieldKind::Number: return CellKind::Number;
    case FieldKind::Missing: return CellKind::Gap;
    case FieldKind::Text: break;
    }
    if (splitDateAndTime(field))
        return CellKind::Date;
    if (splitClock(field))
        return CellKind::Clock;
    return stateOf(field) ? CellKind::State : CellKind::Text;
}

bool hasWord(const QString& header, const char* words)
{
    thread_local std::map<const char*, QRegularExpression> expressions;  // by address: the words are literals
    const auto [found, isNew] = expressions.try_emplace(words);
    if (isNew)
        found->second = QRegularExpression(QString::fromUtf8(words), QRegularExpression::CaseInsensitiveOption);
    return found->second.match(header).hasMatch();
}

bool readsAsValue(std::string_view field)
{
    const CellKind kind = kindOf(field);
    return kind == CellKind::Number || kind == CellKind::Date || kind == CellKind::Clock;
}

std::size_t usualLength(std::span<const TableSample::Row> rows)
{
    std::map<std::size_t, std::size_t> counts;
    for (const TableSample::Row& row : rows)
        ++counts[row.fields.size()];
    std::size_t usual = 0, most = 0;
    for (const auto& [length, count] : counts)
        if (count >= most) {
            usual = length;
            most = count;
        }
    return usual;
}

}  // namespace plotix
