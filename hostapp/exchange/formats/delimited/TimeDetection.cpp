#include "hostapp/exchange/formats/delimited/Detection.h"

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/NumberText.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Row = TextSample::Row;

constexpr double kEarliestEpoch = 1e8;       // seconds: 1973; smaller numbers are more likely something else
constexpr double kFirstMilliseconds = 1e11;  // as seconds the year 5138, as milliseconds 1973

/// What one column of the sample looks like as times.
struct Reading {
    std::size_t dates = 0, numbers = 0, others = 0;
    bool yearFirst = false, yearLast = false;
    double smallest = 0, largest = 0;  // of the numbers' magnitudes

    // A stray field must not hide the column: it is reported when its row comes.
    bool isDates() const { return dates > 0 && dates >= numbers + others; }
    bool isNumbers() const { return numbers > 0 && numbers >= dates + others; }
};

void addField(Reading& reading, std::string_view field)
{
    DecimalMark mark = DecimalMark::Point;
    double value = 0;
    if (const std::optional<DateAndTime> date = splitDateAndTime(field)) {
        ++reading.dates;
        (date->yearFirst ? reading.yearFirst : reading.yearLast) = true;
    } else if (readNumber(field, mark, value) == FieldKind::Number) {
        const double magnitude = std::abs(value);
        reading.smallest = reading.numbers == 0 ? magnitude : std::min(reading.smallest, magnitude);
        reading.largest = std::max(reading.largest, magnitude);
        ++reading.numbers;
    } else if (!isMissing(field)) {
        ++reading.others;
    }
}

Reading readColumn(const TextSample& sample, const TableShape& shape, std::size_t field)
{
    Reading reading;
    for (std::size_t index = shape.hasHeader ? 1 : 0; index < sample.rows.size(); ++index)
        if (field < sample.rows[index].fields.size())
            addField(reading, sample.rows[index].fields[field]);
    return reading;
}

bool soundsLikeTime(const QString& header)
{
    static const QRegularExpression words(QStringLiteral("time|date|epoch|unix|zeit|datum|^ts$"),
                                          QRegularExpression::CaseInsensitiveOption);
    return words.match(header).hasMatch();
}

/// "s" or "ms" where the header says it, as exported files do for times outside the calendar.
QString epochUnit(const QString& header)
{
    const QString unit = splitHeader(header).unit;
    return unit == QStringLiteral("s") || unit == QStringLiteral("ms") ? unit : QString();
}

TimeLayout epochLayout(const Reading& reading, const QString& header)
{
    const QString unit = epochUnit(header);
    const bool isMilliseconds = unit.isEmpty() ? reading.largest >= kFirstMilliseconds : unit == QStringLiteral("ms");
    return isMilliseconds ? TimeLayout::EpochMilliseconds : TimeLayout::EpochSeconds;
}

/// How the times of the column, named by the user or detected, are written.
TimeColumn describeColumn(std::size_t field, const Reading& reading, const QString& header)
{
    if (reading.dates == 0)
        return {field, epochLayout(reading, header), false};
    if (reading.yearFirst || !reading.yearLast)
        return {field, TimeLayout::YearFirst, false};
    return {field, TimeLayout::DayFirst, true};
}

TimeColumn chosenColumn(const TextSample& sample, const TableShape& shape, std::size_t field)
{
    const QString header = shape.headers[static_cast<qsizetype>(field)];
    const Reading reading = readColumn(sample, shape, field);
    if (reading.dates == 0 && reading.numbers == 0)
        throw ImportFailure({.what = What::NoTimesInColumn, .column = header, .columns = shape.headers});
    return describeColumn(field, reading, header);
}

}  // namespace

TimeColumn timeColumnOf(const TextSample& sample, const TableShape& shape, std::optional<std::size_t> named)
{
    if (named)
        return chosenColumn(sample, shape, *named);
    std::optional<TimeColumn> best;
    int bestRank = 0;
    for (std::size_t field = 0; field < shape.fields(); ++field) {
        if (shape.rowNumbers == field)
            continue;
        const QString header = shape.headers[static_cast<qsizetype>(field)];
        const Reading reading = readColumn(sample, shape, field);
        const bool isNamed = soundsLikeTime(header);
        const bool isPlausible = reading.smallest >= kEarliestEpoch || !epochUnit(header).isEmpty();
        const bool isFirstUnnamed = !shape.hasHeader && field == 0;
        int rank = 0;
        if (reading.isDates())
            rank = isNamed ? 3 : 2;
        else if (reading.isNumbers() && isPlausible && (isNamed || isFirstUnnamed))
            rank = 1;
        if (rank > bestRank) {
            best = describeColumn(field, reading, header);
            bestRank = rank;
        }
    }
    if (!best)
        throw ImportFailure({.what = What::NoTimeColumn, .columns = shape.headers});
    return *best;
}

}  // namespace plotix
