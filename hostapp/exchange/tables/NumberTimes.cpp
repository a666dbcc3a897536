#include "hostapp/exchange/tables/NumberTimes.h"

#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/TimeColumnReader.h"

#include <QtCore/QDateTime>

namespace plotix {

double latestNumber()
{
    constexpr double kTenYears = 10 * 365.25 * 86'400;
    return static_cast<double>(QDateTime::currentSecsSinceEpoch()) + kTenYears;
}

const char* numberForm(TimeLayout layout)
{
    switch (layout) {
    case TimeLayout::EpochSeconds: return "s";
    case TimeLayout::EpochMilliseconds: return "ms";
    case TimeLayout::EpochMicroseconds: return "us";
    case TimeLayout::EpochNanoseconds: return "ns";
    case TimeLayout::CompactDigits: return "digits";
    case TimeLayout::SpreadsheetDays: return "days";
    default: return nullptr;
    }
}

void requireTimes(TimeLayout layout, const TableSample& sample, const TableShape& shape, std::size_t field)
{
    TimeColumnReader reader(layout, LocalTime(QStringLiteral("UTC")));
    reader.limitNumbers(kEarliestNumber, latestNumber());
    std::size_t times = 0, numbers = 0;
    for (const TableSample::Row& row : dataRows(sample, shape)) {
        const std::string_view text = field < row.fields.size() ? std::string_view(row.fields[field]) : "";
        DecimalMark mark = DecimalMark::Unknown;
        double value = 0;
        numbers += readNumber(text, mark, value) == FieldKind::Number ? 1 : 0;
        times += reader.read(text) ? 1 : 0;
    }
    if (times * 2 < numbers)
        throw ImportFailure({.what = ImportFinding::What::NumbersAreNoTimes,
                             .column = shape.headers[static_cast<qsizetype>(field)],
                             .text = QString::fromLatin1(numberForm(layout))});
}

}  // namespace plotix
