#include "plugins/PlotixPlugIn/logic/TypedDate.h"

#include "base/TimeDistance.h"
#include "plotkit/model/CPTClock.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

#include <array>
#include <cmath>

namespace plotix {

namespace {

using OptionalQDate = std::optional<QDate>;

constexpr double kMillis = 1000;

/// What reads as a date that the calendar does not have.
const TypedDate kNoSuchDate;

/// Invalid: that of the process.
QTimeZone zoneOf(const QDateTime& shown)
{
    return shown.timeSpec() == Qt::TimeZone ? shown.timeZone() : QTimeZone();
}

double localSeconds(const QDate& day, const QTime& time)
{
    return static_cast<double>(QDateTime(day, time, Qt::UTC).toMSecsSinceEpoch()) / kMillis;
}

QDateTime momentIn(const QTimeZone& zone, double seconds)
{
    const auto millis = static_cast<qint64>(std::llround(seconds * kMillis));
    return zone.isValid() ? QDateTime::fromMSecsSinceEpoch(millis, zone) : QDateTime::fromMSecsSinceEpoch(millis);
}

/// By the clocks of what was shown before. A time that they show twice is the first, but where the second one was shown
/// before and is edited; one that they leave out is when they are changed.
QDateTime momentAt(const QDate& day, const QTime& time, const QDateTime& shown)
{
    const QTimeZone zone = zoneOf(shown);
    const double local = localSeconds(day, time);
    const double before = static_cast<double>(shown.toMSecsSinceEpoch()) / kMillis;
    const int offset = plotkit::offsetAt(zone, before);
    const bool isAsBefore = plotkit::isShownTwice(zone, before) && plotkit::offsetAt(zone, local - offset) == offset;
    return momentIn(zone, isAsBefore ? local - offset : plotkit::momentOfLocal(zone, local));
}

QDateTime startOf(const QDate& day, const QDateTime& shown)
{
    const QTimeZone zone = zoneOf(shown);
    return momentIn(zone, plotkit::momentOfLocal(zone, localSeconds(day, QTime(0, 0))));
}

std::optional<TypedDate> isoDate(const QString& text, const TypedDateSurroundings& surroundings)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4})-(\\d\\d)-(\\d\\d)[T ](\\d\\d):?(\\d\\d)(?::?(\\d\\d)(?:[.,](\\d{1,9}))?)?"
                       "\\s?(Z|[+-]\\d\\d(?::?\\d\\d)?)?$"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch found = form.match(text);
    if (!found.hasMatch())
        return std::nullopt;
    const auto number = [&found](int part) { return found.captured(part).toInt(); };
    const int milliseconds = found.captured(7).leftJustified(3, QLatin1Char('0')).left(3).toInt();
    const QDate day(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6), milliseconds);
    if (!day.isValid() || !time.isValid())
        return time.isValid() ? std::optional(kNoSuchDate) : std::nullopt;
    const QString zone = found.captured(8).toUpper();
    if (zone.isEmpty())
        return TypedDate{momentAt(day, time, surroundings.shown), true};
    const int sign = zone.startsWith(QLatin1Char('-')) ? -1 : 1;
    const QString digits = QString(zone).remove(QLatin1Char(':'));
    const int offset =
        zone == QLatin1String("Z") ? 0 : sign * (digits.mid(1, 2).toInt() * 3600 + digits.mid(3, 2).toInt() * 60);
    const QDateTime moment(day, time, Qt::OffsetFromUTC, offset);
    const bool isLocal = surroundings.shown.timeSpec() == Qt::LocalTime;
    return TypedDate{isLocal ? moment.toLocalTime() : moment.toTimeZone(surroundings.shown.timeZone()), true};
}

/// The hour of twelve with its half of the day.
int hourOfDay(int hour, const QString& half)
{
    if (half.isEmpty())
        return hour;
    if (hour < 1 || hour > 12)
        return -1;
    return hour % 12 + (half.startsWith(QLatin1Char('p')) ? 12 : 0);
}

/// Takes the time out of the text. `time` stays empty when there is none; false: what looks like one is none.
bool takeTime(QString& text, const QLocale& locale, std::optional<QTime>& time)
{
    const QString forenoon = locale.amText().isEmpty() ? QStringLiteral("am") : locale.amText().toLower();
    const QString afternoon = locale.pmText().isEmpty() ? QStringLiteral("pm") : locale.pmText().toLower();
    const QString halves = QStringLiteral("(a\\.?m\\.?|p\\.?m\\.?|%1|%2)")
                               .arg(QRegularExpression::escape(forenoon), QRegularExpression::escape(afternoon));
    const QRegularExpression withMinutes(
        QStringLiteral("(?<![\\d:])(\\d{1,2}):(\\d\\d)(?::(\\d\\d))?(?![\\d:])\\s*%1?").arg(halves));
    const QRegularExpression hourAlone(QStringLiteral("(?<![\\d:.])(\\d{1,2})\\s*%1(?!\\w)").arg(halves));
    QRegularExpressionMatch found = withMinutes.match(text);
    const bool isHourAlone = !found.hasMatch();
    if (isHourAlone)
        found = hourAlone.match(text);
    if (!found.hasMatch())
        return !text.contains(QLatin1Char(':'));
    const bool isAfternoon = found.captured(isHourAlone ? 2 : 4) == afternoon;
    const QString half = isAfternoon ? QStringLiteral("pm") : found.captured(isHourAlone ? 2 : 4);
    const int hour = hourOfDay(found.captured(1).toInt(), half);
    time = isHourAlone ? QTime(hour, 0) : QTime(hour, found.captured(2).toInt(), found.captured(3).toInt());
    text.remove(found.capturedStart(), found.capturedLength());
    return time->isValid() && !text.contains(QLatin1Char(':'));
}

/// Two digits are a year of our time: 70 to 99 of the last century.
int wholeYear(int year, qsizetype digits)
{
    if (digits > 2)
        return year;
    return year < 70 ? 2000 + year : 1900 + year;
}

int monthNamed(const QString& word, const QLocale& locale)
{
    for (int month = 1; month <= 12; ++month)
        for (const QLocale& language : {locale, QLocale::c()}) {
            const QString name = language.monthName(month, QLocale::LongFormat).toLower();
            if (word.size() >= 3 && name.startsWith(word))
                return month;
            QString brief = language.monthName(month, QLocale::ShortFormat).toLower();
            if (word == brief.remove(QLatin1Char('.')))
                return month;
        }
    return 0;
}

/// 1 for Monday to 7 for Sunday; 0 for another word.
int weekdayNamed(const QString& word, const QLocale& locale)
{
    for (int day = 1; day <= 7; ++day)
        for (const QLocale& language : {locale, QLocale::c()}) {
            const QString name = language.dayName(day, QLocale::LongFormat).toLower();
            QString brief = language.dayName(day, QLocale::ShortFormat).toLower();
            if ((word.size() >= 3 && name.startsWith(word)) || word == brief.remove(QLatin1Char('.')))
                return day;
        }
    return 0;
}

/// The latest day of that name, today included unless the text says "last". Two letters may be the beginning of any
/// word: they count only beside a time.
OptionalQDate dateOfWeekday(QStringList words, bool hasTime, const TypedDateSurroundings& surroundings)
{
    const QString& last = surroundings.words.last;
    const bool isBeforeToday = words.size() == 2 && !last.isEmpty() && words.first().startsWith(last);
    if (isBeforeToday)
        words.removeFirst();
    const bool isLongEnough = words.size() == 1 && (hasTime || words.first().size() > 2);
    const int day = isLongEnough ? weekdayNamed(words.first(), surroundings.locale) : 0;
    if (day == 0)
        return std::nullopt;
    const QDate today = surroundings.now.date();
    const int back = (today.dayOfWeek() - day + 7) % 7;
    return today.addDays(back == 0 && isBeforeToday ? -7 : -back);
}

/// The language's names of units replaced by those a distance is read by; other words stay.
QString withCommonUnits(const QString& amount, const QString& unitNames)
{
    constexpr std::array kCommon{"y", "mo", "w", "d", "h", "min", "s"};  // in the order of the names
    const QStringList groups = unitNames.split(QLatin1Char(';'));
    static const QRegularExpression word(QStringLiteral("\\p{L}+"), QRegularExpression::UseUnicodePropertiesOption);
    QString common;
    qsizetype end = 0;
    for (auto match = word.globalMatch(amount); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        QString unit = found.captured();
        for (qsizetype group = 0; group < groups.size() && group < qsizetype(kCommon.size()); ++group)
            if (groups[group].split(QLatin1Char(' '), Qt::SkipEmptyParts).contains(found.captured()))
                unit = QLatin1String(kCommon[static_cast<std::size_t>(group)]);
        common += amount.mid(end, found.capturedStart() - end) + unit;
        end = found.capturedEnd();
    }
    return common + amount.mid(end);
}

std::optional<TimeDistance> distanceAgo(const QString& text, const DayWords& words)
{
    const qsizetype place = words.ago.indexOf(QLatin1String("%1"));
    if (place < 0)
        return std::nullopt;
    const QString before = words.ago.left(place);
    const QString after = words.ago.mid(place + 2);
    if (!text.startsWith(before) || !text.endsWith(after) || text.size() <= before.size() + after.size())
        return std::nullopt;
    const QString amount = text.mid(before.size(), text.size() - before.size() - after.size());
    return timeDistanceFrom(withCommonUnits(amount, words.units));
}

QDateTime before(const QDateTime& now, const TimeDistance& distance)
{
    return now.addMonths(-distance.months).addDays(-distance.days).addMSecs(-std::llround(distance.seconds * kMillis));
}

/// A distance from now. One in days, by words, means that day; a time may stand beside it.
std::optional<TypedDate> earlierDate(const QString& text, const std::optional<QTime>& time,
                                     const TypedDateSurroundings& surroundings)
{
    const bool isSigned = text.startsWith(QLatin1Char('-')) || text.startsWith(QChar(0x2212));
    const auto distance = isSigned ? timeDistanceFrom(withCommonUnits(text.mid(1), surroundings.words.units))
                                   : distanceAgo(text, surroundings.words);
    if (!distance || (time && (isSigned || distance->seconds > 0)))
        return std::nullopt;
    const QDateTime moment = before(surroundings.now, *distance);
    if (isSigned || distance->seconds > 0)
        return TypedDate{moment, true};
    return TypedDate{time ? momentAt(moment.date(), *time, surroundings.shown)
                          : startOf(moment.date(), surroundings.shown),
                     time.has_value()};
}

/// Where year, month and day stand in the locale's dates, such as "dmy".
QString orderOf(const QLocale& locale)
{
    QString order;
    for (const QChar letter : locale.dateFormat(QLocale::ShortFormat).toLower())
        if (QStringLiteral("dmy").contains(letter) && !order.contains(letter))
            order += letter;
    return order;
}

OptionalQDate dateOfNumbers(const QStringList& numbers, bool dotted, const TypedDateSurroundings& surroundings)
{
    const int year = surroundings.shown.date().year();
    const auto value = [&numbers](qsizetype at) { return numbers[at].toInt(); };
    QString order = dotted ? QStringLiteral("dmy") : orderOf(surroundings.locale);
    if (numbers.first().size() == 4 && numbers.size() > 1)
        order = QStringLiteral("ymd");
    if (numbers.size() == 3) {
        const qsizetype y = order.indexOf(QLatin1Char('y'));
        return QDate(wholeYear(value(y), numbers[y].size()), value(order.indexOf(QLatin1Char('m'))),
                     value(order.indexOf(QLatin1Char('d'))));
    }
    if (numbers.size() == 2) {
        if (numbers[0].size() == 4)
            return QDate(value(0), value(1), 1);
        if (numbers[1].size() == 4)
            return QDate(value(1), value(0), 1);
        order.remove(QLatin1Char('y'));
        return QDate(year, value(order.indexOf(QLatin1Char('m'))), value(order.indexOf(QLatin1Char('d'))));
    }
    if (numbers[0].size() == 8)
        return QDate(numbers[0].left(4).toInt(), numbers[0].mid(4, 2).toInt(), numbers[0].right(2).toInt());
    if (numbers[0].size() == 4)
        return QDate(value(0), 1, 1);
    return numbers[0].size() > 2 ? OptionalQDate() : QDate(year, surroundings.shown.date().month(), value(0));
}

OptionalQDate dateWithMonthName(int month, const QStringList& numbers, const TypedDateSurroundings& surroundings)
{
    int year = surroundings.shown.date().year();
    int day = 1;
    if (numbers.size() > 2)
        return std::nullopt;
    for (const QString& number : numbers)
        (number.size() == 4 ? year : day) = number.toInt();
    return QDate(year, month, day);
}

OptionalQDate dateOf(const QString& text, bool hasTime, const TypedDateSurroundings& surroundings)
{
    const std::array days{std::pair(surroundings.words.yesterday, -1), std::pair(surroundings.words.today, 0),
                          std::pair(surroundings.words.tomorrow, 1)};
    for (const auto& [word, distance] : days)
        if (!word.isEmpty() && text == word)
            return surroundings.now.date().addDays(distance);
    static const QRegularExpression separators(QStringLiteral("[\\s./,-]+"));
    const QStringList parts = text.split(separators, Qt::SkipEmptyParts);
    if (const OptionalQDate day = dateOfWeekday(parts, hasTime, surroundings))
        return day;
    QStringList numbers;
    int month = 0;
    for (const QString& word : parts) {
        bool isNumber = false;
        word.toUInt(&isNumber);
        if (isNumber)
            numbers << word;
        else if (month == 0)
            month = monthNamed(word, surroundings.locale);
        if (!isNumber && month == 0)
            return std::nullopt;
    }
    if (month > 0)
        return dateWithMonthName(month, numbers, surroundings);
    if (numbers.isEmpty() || numbers.size() > 3)
        return std::nullopt;
    return dateOfNumbers(numbers, text.contains(QLatin1Char('.')), surroundings);
}

/// Also kNoSuchDate.
std::optional<TypedDate> readDate(const QString& typed, const TypedDateSurroundings& surroundings)
{
    if (const auto iso = isoDate(typed.simplified(), surroundings))
        return iso;
    QString text = typed.simplified().toLower();
    if (!surroundings.words.now.isEmpty() && text == surroundings.words.now)
        return TypedDate{surroundings.now, true};
    std::optional<QTime> time;
    if (text.isEmpty() || !takeTime(text, surroundings.locale, time))
        return std::nullopt;
    text = text.simplified();
    while (text.endsWith(QLatin1Char(',')))
        text.chop(1);
    if (const auto earlier = earlierDate(text, time, surroundings))
        return earlier;
    const OptionalQDate date = text.isEmpty() && time ? OptionalQDate(surroundings.shown.date())
                                                      : dateOf(text, time.has_value(), surroundings);
    if (!date || !date->isValid())
        return date ? std::optional(kNoSuchDate) : std::nullopt;
    return TypedDate{time ? momentAt(*date, *time, surroundings.shown) : startOf(*date, surroundings.shown),
                     time.has_value()};
}

}  // namespace

std::optional<TypedDate> typedDate(const QString& text, const TypedDateSurroundings& surroundings)
{
    const auto read = readDate(text, surroundings);
    return read && read->moment.isValid() ? read : std::nullopt;
}

bool namesNoSuchDate(const QString& text, const TypedDateSurroundings& surroundings)
{
    const auto read = readDate(text, surroundings);
    return read && !read->moment.isValid();
}

QString endOfTypedSpan(const QString& text, SpanEnd end)
{
    static const QRegularExpression span(QStringLiteral("^\\s*(\\d{4}-\\d\\d[^/]*)/\\s*(\\d{4}-\\d\\d[^/]*)$"));
    const QRegularExpressionMatch found = span.match(text);
    return found.hasMatch() ? found.captured(end == SpanEnd::From ? 1 : 2) : text;
}

}  // namespace plotix
