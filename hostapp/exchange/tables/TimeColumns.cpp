#include "hostapp/exchange/tables/TimeColumns.h"

#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/tables/NumberTimes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Row = TableSample::Row;

constexpr double kEarliestEpoch = 1e8;       // seconds: 1973; smaller numbers are more likely something else
constexpr double kFirstMilliseconds = 1e11;  // as seconds the year 5138, as milliseconds 1973
constexpr double kFirstMicroseconds = 1e14;
constexpr double kFirstNanoseconds = 1e17;
const QLatin1String kWrittenByUs("time (s)");
constexpr double kEarliestDay = 20'000;  // since 1900: 1954
constexpr double kLatestDay = 80'000;    // 2119

/// What one column of the sample looks like as times.
struct Reading {
    std::size_t dates = 0, clocks = 0, numbers = 0, others = 0;
    std::size_t compact = 0;                      // of the numbers: dates in digits
    std::array<std::size_t, 3> clockDigits{};     // of the numbers: times of day in each form
    std::size_t threeDigits = 0, fiveDigits = 0;  // of the numbers: so many or more, up to six
    std::size_t withClock = 0;                    // of the dates: a time of day that is not midnight
    bool yearFirst = false, yearLast = false;
    double smallest = 0, largest = 0;  // of the numbers' magnitudes

    // A stray field must not hide the column: it is reported when its row comes.
    bool isDates() const { return dates > 0 && dates >= clocks + numbers + others; }
    bool isClocks() const { return clocks > 0 && clocks >= dates + numbers + others; }
    bool isNumbers() const { return numbers > 0 && numbers >= dates + clocks + others; }
    bool isCompact() const { return isNumbers() && compact == numbers; }
    // Those of few digits follow those of many; a stray one among hours is no time.
    ClockDigits digits() const
    {
        const auto hasEnough = [this](std::size_t count) { return count > 0 && count * 10 >= numbers; };
        return hasEnough(fiveDigits)    ? ClockDigits::HoursMinutesSeconds
               : hasEnough(threeDigits) ? ClockDigits::HoursMinutes
                                        : ClockDigits::Hours;
    }
    bool isClockDigits() const { return isNumbers() && clockDigits[static_cast<std::size_t>(digits())] == numbers; }
};

void addNumber(Reading& reading, std::string_view field, double value)
{
    const double magnitude = std::abs(value);
    reading.smallest = reading.numbers == 0 ? magnitude : std::min(reading.smallest, magnitude);
    reading.largest = std::max(reading.largest, magnitude);
    ++reading.numbers;
    if (const std::optional<DateAndTime> date = splitCompactDigits(field)) {
        ++reading.compact;
        reading.withClock += date->secondOfDay > 0 ? 1 : 0;
    }
    for (std::size_t form = 0; form < reading.clockDigits.size(); ++form)
        reading.clockDigits[form] += splitClockDigits(field, static_cast<ClockDigits>(form)) ? 1 : 0;
    const bool isSixDigits = splitClockDigits(field, ClockDigits::HoursMinutesSeconds).has_value();
    reading.threeDigits +=
        field.size() > 2 && (isSixDigits || splitClockDigits(field, ClockDigits::HoursMinutes)) ? 1 : 0;
    reading.fiveDigits += field.size() > 4 && isSixDigits ? 1 : 0;
}

void addField(Reading& reading, std::string_view field)
{
    DecimalMark mark = DecimalMark::Unknown;
    double value = 0;
    if (const std::optional<DateAndTime> date = splitDateAndTime(field)) {
        ++reading.dates;
        reading.withClock += date->secondOfDay > 0 ? 1 : 0;
        (date->yearFirst ? reading.yearFirst : reading.yearLast) = true;
    } else if (readNumber(field, mark, value) == FieldKind::Number) {
        addNumber(reading, field, value);
    } else if (splitClock(field)) {
        ++reading.clocks;
    } else if (!isMissing(field)) {
        ++reading.others;
    }
}

std::vector<Reading> readColumns(const TableSample& sample, const TableShape& shape)
{
    std::vector<Reading> readings(shape.fields());
    for (const Row& row : dataRows(sample, shape))
        for (std::size_t field = 0; field < std::min(row.fields.size(), readings.size()); ++field)
            addField(readings[field], row.fields[field]);
    return readings;
}

bool soundsLikeTime(const QString& header)
{
    return hasWord(header,
                   "time|date|epoch|unix|zeit|datum|^ts$|^ts_|_ts$|stamp|heure|horodat|^jour$|^tag$|^when$|clock|"
                   "fecha|^hora$|last_changed|last_updated|recorded|created");
}

/// "time (s)" and the like, as exported files have where times lie outside the calendar.
QString epochUnit(const QString& header)
{
    const QString unit = splitHeader(header).unit;
    return unit == QStringLiteral("s") || unit == QStringLiteral("ms") ? unit : QString();
}

TimeLayout epochLayout(const Reading& reading, const QString& header)
{
    const QString unit = epochUnit(header);
    if (unit == QStringLiteral("s"))
        return TimeLayout::EpochSeconds;
    if (unit == QStringLiteral("ms"))
        return TimeLayout::EpochMilliseconds;
    return reading.largest >= kFirstNanoseconds    ? TimeLayout::EpochNanoseconds
           : reading.largest >= kFirstMicroseconds ? TimeLayout::EpochMicroseconds
           : reading.largest >= kFirstMilliseconds ? TimeLayout::EpochMilliseconds
                                                   : TimeLayout::EpochSeconds;
}

bool isDays(const Reading& reading)
{
    return reading.isNumbers() && reading.smallest >= kEarliestDay && reading.largest < kLatestDay;
}

/// How the times of the column, named by the user or detected, are written.
void describe(TimeColumns& time, const Reading& reading, const QString& header)
{
    if (reading.dates == 0) {
        const bool saysUnit = !epochUnit(header).isEmpty();
        time.layout = reading.isCompact() && !saysUnit ? TimeLayout::CompactDigits
                      : isDays(reading) && !saysUnit   ? TimeLayout::SpreadsheetDays
                                                       : epochLayout(reading, header);
    } else if (reading.yearFirst || !reading.yearLast) {
        time.layout = TimeLayout::YearFirst;
    } else {
        time.layout = TimeLayout::DayFirst;
        time.needsDateOrder = true;
    }
}

QString headerAt(const TableShape& shape, std::size_t field)
{
    return shape.headers[static_cast<qsizetype>(field)];
}

/// A number that is a time by its size and by its header, or by standing first in a table without one.
bool isPlausibleNumber(const Reading& reading, const TableShape& shape, std::size_t field)
{
    const QString header = headerAt(shape, field);
    const bool isFirstUnnamed = !shape.hasHeader && field == 0;
    const bool isDuration =
        hasWord(header, "run.?time|life.?time|up.?time|laufzeit|betriebszeit|dauer|duration|elapsed|"
                        "up-?date|time.?out|rise.?time|timer") ||
        (!shape.titles[field].unit.isEmpty() && epochUnit(header).isEmpty());
    if (!reading.isNumbers() || isDuration || (!soundsLikeTime(header) && !isFirstUnnamed))
        return false;
    return reading.smallest >= kEarliestEpoch || header == kWrittenByUs || reading.isCompact() || isDays(reading);
}

int rankOf(const Reading& reading, const TableShape& shape, std::size_t field)
{
    if (shape.rowNumbers == field)
        return 0;
    const QString header = headerAt(shape, field);
    const bool isEnd = hasWord(header, "^(?:_?stop|_?end|ende|bis|to|until)\\b|_end$|_stop$|\\bbis$|^_?start$");
    if (reading.isDates())
        return (soundsLikeTime(header) ? 8 : 5) + (reading.withClock > 0 ? 1 : 0) - (isEnd ? 2 : 0);
    return isPlausibleNumber(reading, shape, field) ? 1 : 0;
}

/// The column of times of day that goes with the date: the next one of them, else one before it; else one of hours.
std::optional<std::size_t> clockFor(std::size_t date, const std::vector<Reading>& readings, const TableShape& shape)
{
    const auto search = [&](auto&& wanted) -> std::optional<std::size_t> {
        for (std::size_t step = 1; step < readings.size(); ++step)
            if (const std::size_t field = (date + step) % readings.size(); wanted(field))
                return field;
        return {};
    };
    if (const auto clock = search([&](std::size_t field) { return readings[field].isClocks(); }))
        return clock;
    return search([&](std::size_t field) {
        return readings[field].isClockDigits() && field != shape.rowNumbers &&
               hasWord(headerAt(shape, field),
                       "^(?:time|hour|hours|hr|hh|hhmm|he|hour ending|zeit|uhrzeit|stunde|std|heure|hora)\\b");
    });
}

/// The parts of a date by the names that people give them; empty where year, month or day is missing.
std::vector<std::size_t> partsByName(const std::vector<Reading>& readings, const TableShape& shape)
{
    constexpr std::array<const char*, 6> kNames = {
        "^#?(?:year|yyyy|yy|yr|jahr|ann.e)$",         "^(?:month|mm|mon|mo|monat|mois)$",
        "^(?:day|dd|dy|tag|jour|mday|day of month)$", "^(?:hour|hh|hr|h|stunde|heure)$",
        "^(?:minute|min|mn|mi|minuten?|mm)$",         "^(?:second|sec|ss|s|sekunde|seconde)$"};
    std::vector<std::size_t> parts;
    for (const char* const name : kNames) {
        const std::size_t before = parts.size();
        for (std::size_t field = 0; field < readings.size() && parts.size() == before; ++field)
            if (readings[field].isNumbers() && hasWord(shape.titles[field].name, name) &&
                std::find(parts.begin(), parts.end(), field) == parts.end())
                parts.push_back(field);
        if (parts.size() == before)
            break;
    }
    return parts.size() < 3 ? std::vector<std::size_t>() : parts;
}

/// A column of "AM" and "PM", which belongs to the times of day.
std::optional<std::size_t> halfOfDayColumn(const TableSample& sample, const TableShape& shape)
{
    for (std::size_t field = 0; field < shape.fields(); ++field) {
        const std::span<const Row> rows = dataRows(sample, shape);
        const bool isHalf = !rows.empty() && std::all_of(rows.begin(), rows.end(), [field](const Row& row) {
            return field < row.fields.size() &&
                   hasWord(QString::fromStdString(row.fields[field]), "^\\s*[ap]\\.?m\\.?\\s*$");
        });
        if (isHalf)
            return field;
    }
    return {};
}

/// A date alone is no time where another column has both.
void preferDatesWithClock(TimeColumns& time, const std::vector<Reading>& readings, const TableShape& shape)
{
    const std::size_t chosen = time.fields.front();
    if (time.form != TimeColumns::Form::Single || !readings[chosen].isDates() || readings[chosen].withClock > 0)
        return;
    for (std::size_t field = 0; field < readings.size(); ++field)
        if (readings[field].isDates() && readings[field].withClock > 0) {
            time.fields = {field};
            describe(time, readings[field], headerAt(shape, field));
            return;
        }
}

/// The order of day and month where the header shows it: "Date (MM/DD/YYYY)", "Datum TT.MM.JJJJ".
void takeStatedOrder(TimeColumns& time, const QString& header)
{
    if (!time.needsDateOrder)
        return;
    const bool isDay = hasWord(header, "\\b[dt]{1,2}[./ -]?m{1,3}[./ -]?[yj]{2,4}\\b");
    const bool isMonth = hasWord(header, "\\bm{1,2}[./ -]?[dt]{1,2}[./ -]?[yj]{2,4}\\b");
    const bool isYear = hasWord(header, "\\b[yj]{2}[./ -]?m{1,2}[./ -]?[dt]{1,2}\\b");
    time.needsDateOrder = !isDay && !isMonth && !isYear;
    if (!time.needsDateOrder)
        time.layout = isDay ? TimeLayout::DayFirst : isMonth ? TimeLayout::MonthFirst : TimeLayout::ShortYearFirst;
}

void joinClock(TimeColumns& time, std::size_t date, const std::vector<Reading>& readings, const TableShape& shape)
{
    const bool mayJoin =
        readings[date].withClock == 0 && time.layout != TimeLayout::SpreadsheetDays && !isEpoch(time.layout);
    const std::optional<std::size_t> clock = mayJoin ? clockFor(date, readings, shape) : std::nullopt;
    if (!clock)
        return;
    time.form = TimeColumns::Form::DateAndClock;
    time.fields.push_back(*clock);
}

TimeColumns namedColumns(const TableShape& shape, std::vector<std::size_t> named, const std::vector<Reading>& readings)
{
    TimeColumns time;
    const auto isDate = [&readings](std::size_t field) {
        return readings[field].isDates() || readings[field].isCompact();
    };
    if (named.size() == 2 && !isDate(named[0]) && isDate(named[1]))
        std::swap(named[0], named[1]);
    const Reading& first = readings[named.front()];
    if (first.dates == 0 && first.numbers == 0)
        throw ImportFailure(
            {.what = What::NoTimesInColumn, .column = headerAt(shape, named.front()), .columns = shape.headers});
    time.fields = named;
    if (named.size() > 2) {
        time.form = TimeColumns::Form::Parts;
        return time;
    }
    describe(time, first, headerAt(shape, named.front()));
    if (named.size() == 2)
        time.form = TimeColumns::Form::DateAndClock;
    return time;
}

TimeColumns likeliestColumns(const TableShape& shape, const std::vector<Reading>& readings)
{
    TimeColumns time;
    int bestRank = 0;
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (const int rank = rankOf(readings[field], shape, field); rank > bestRank) {
            time.fields = {field};
            bestRank = rank;
        }
    if (bestRank <= 1)
        if (const std::vector<std::size_t> parts = partsByName(readings, shape); !parts.empty()) {
            time.form = TimeColumns::Form::Parts;
            time.fields = parts;
            return time;
        }
    if (bestRank == 0)
        throw ImportFailure({.what = What::NoTimeColumn, .columns = shape.headers});
    const std::size_t chosen = time.fields.front();
    describe(time, readings[chosen], headerAt(shape, chosen));
    joinClock(time, chosen, readings, shape);
    preferDatesWithClock(time, readings, shape);
    return time;
}

}  // namespace

TimeColumns timeColumnsOf(const TableSample& sample, const TableShape& shape, const std::vector<std::size_t>& named)
{
    const std::vector<Reading> readings = readColumns(sample, shape);
    TimeColumns time = named.empty() ? likeliestColumns(shape, readings) : namedColumns(shape, named, readings);
    if (time.form == TimeColumns::Form::DateAndClock && time.fields.size() == 2)
        if (const std::optional<std::size_t> half = halfOfDayColumn(sample, shape))
            time.fields.push_back(*half);
    if (time.form == TimeColumns::Form::DateAndClock)
        time.clockDigits = readings[time.fields[1]].digits();
    const QString firstHeader = headerAt(shape, time.fields.front());
    time.areBounded = time.form == TimeColumns::Form::Single && isEpoch(time.layout) && firstHeader != kWrittenByUs;
    if (time.areBounded)
        requireTimes(time.layout, sample, shape, time.fields.front());
    takeStatedOrder(time, firstHeader);
    for (std::size_t field = 0; field < shape.fields(); ++field)
        if (std::find(time.fields.begin(), time.fields.end(), field) == time.fields.end() &&
            isPlausibleNumber(readings[field], shape, field))
            time.others.push_back(field);
    for (const std::size_t field : time.fields)
        if (time.statedZone.isEmpty())
            time.statedZone = zoneIn(headerAt(shape, field));
    if (time.statedZone.isEmpty())
        time.statedZone = shape.statedZone;
    return time;
}

}  // namespace plotix
