#include "hostapp/cli/ArgumentValues.h"

#include "base/WholeDay.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/core/QuickRanges.h"
#include "hostapp/exchange/TimeColumnReader.h"

#include <QtCore/QRegularExpression>

namespace plotix {

namespace {

constexpr double kShortestInterval = 0.01, kLongestInterval = 3600;  // seconds
constexpr int kSmallestSide = 16, kLargestSide = 16'384;             // points

bool isNameOf(FileKind kind, const std::string& text)
{
    return hasEndingOf(kind, QString::fromStdString(text));
}

}  // namespace

std::optional<QSize> sizeFromArgument(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})[xX×](\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto fits = [](int side) { return side >= kSmallestSide && side <= kLargestSide; };
    return match.hasMatch() && fits(size.width()) && fits(size.height()) ? std::optional(size) : std::nullopt;
}

std::optional<QSizeF> figureSizeFromArgument(const QString& text)
{
    constexpr double kPointsPerMillimetre = 72 / 25.4;
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,5}(?:\\.\\d{1,4})?)[xX×](\\d{1,5}(?:\\.\\d{1,4})?)(mm|pt)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return sizeFromArgument(text);
    const double unit = match.captured(3) == QLatin1String("mm") ? kPointsPerMillimetre : 1;
    const QSizeF size(match.captured(1).toDouble() * unit, match.captured(2).toDouble() * unit);
    const auto fits = [](double side) { return side >= kSmallestSide && side <= kLargestSide; };
    return fits(size.width()) && fits(size.height()) ? std::optional(size) : std::nullopt;
}

std::optional<double> fontSizeFromArgument(const QString& text)
{
    constexpr double kSmallest = 5, kLargest = 36;
    static const QRegularExpression form(QStringLiteral("^(\\d{1,2}(?:\\.\\d{1,2})?)(?:pt)?$"));
    const QRegularExpressionMatch match = form.match(text);
    const double size = match.captured(1).toDouble();
    return match.hasMatch() && size >= kSmallest && size <= kLargest ? std::optional(size) : std::nullopt;
}

std::string argumentFromSize(const QSize& size)
{
    return std::to_string(size.width()) + 'x' + std::to_string(size.height());
}

std::optional<double> durationFromArgument(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,9}(?:\\.\\d{1,9})?)([smhd]?)$"));
    const QRegularExpressionMatch match = form.match(text);
    const QString letter = match.captured(2);
    const double unit = letter == QLatin1String("d")   ? 86'400
                        : letter == QLatin1String("h") ? 3'600
                        : letter == QLatin1String("m") ? 60
                                                       : 1;
    const double seconds = match.captured(1).toDouble() * unit;
    return match.hasMatch() && seconds > 0 ? std::optional(seconds) : std::nullopt;
}

std::optional<double> timeFromArgument(const QString& text, const QTimeZone& clock)
{
    return TimeColumnReader(TimeLayout::YearFirst, LocalTime(QString::fromUtf8(clock.id())))
        .read(text.trimmed().toStdString());
}

std::optional<double> endFromArgument(const QString& text, const QTimeZone& clock)
{
    const QDate day = QDate::fromString(text.trimmed(), Qt::ISODate);
    const bool isDayAlone = day.isValid() && text.trimmed().size() == day.toString(Qt::ISODate).size();
    const OptionalDate end = isDayAlone ? lastMomentOf(day, clock) : std::nullopt;
    return end ? end->seconds : timeFromArgument(text, clock);
}

QStringList listFromArgument(const QString& text)
{
    QStringList items;
    for (const QString& item : text.split(QLatin1Char(','), Qt::SkipEmptyParts))
        if (!item.trimmed().isEmpty())
            items << item.trimmed();
    return items;
}

ImportOptions::ByColumn pairsFromArguments(const std::vector<std::string>& texts)
{
    ImportOptions::ByColumn pairs;
    for (const std::string& text : texts) {
        const QString pair = QString::fromStdString(text);
        const qsizetype sign = pair.indexOf(QLatin1Char('='));
        pairs.emplace_back(pair.left(sign).trimmed(), pair.mid(sign + 1));
    }
    return pairs;
}

std::string checkPair(const std::string& text)
{
    const std::size_t sign = text.find('=');
    return sign == std::string::npos || sign == 0 ? "must be written COLUMN=TEXT, not " + text : std::string();
}

std::string checkSize(const std::string& text)
{
    return sizeFromArgument(QString::fromStdString(text)) ? std::string()
                                                          : "must be written like 1200x600, not " + text;
}

std::string checkFigureSize(const std::string& text)
{
    return figureSizeFromArgument(QString::fromStdString(text))
               ? std::string()
               : "must be written like 1200x600 (points) or 85x60mm, not " + text;
}

std::string checkFontSize(const std::string& text)
{
    return fontSizeFromArgument(QString::fromStdString(text))
               ? std::string()
               : "must be a size from 5pt to 36pt, written like 7pt, not " + text;
}

std::string checkRange(const std::string& text)
{
    if (quickRangeNamed(QString::fromStdString(text)))
        return {};
    std::string names;
    for (int index = 0; index < kQuickRangeCount; ++index)
        names += (index == 0 ? "" : ", ") + quickRangeName(static_cast<KTVQuickRange>(index)).toStdString();
    return "must be one of " + names + ", not " + text;
}

std::string checkPicture(const std::string& text)
{
    for (const FileKind kind : {FileKind::Png, FileKind::Pdf, FileKind::Svg})
        if (isNameOf(kind, text))
            return {};
    return "must end in .png, .pdf or .svg";
}

std::string checkPdf(const std::string& text)
{
    return isNameOf(FileKind::Pdf, text) ? std::string() : "must end in .pdf";
}

std::string checkPng(const std::string& text)
{
    return isNameOf(FileKind::Png, text) ? std::string() : "must end in .png";
}

std::string checkTable(const std::string& text)
{
    return isNameOf(FileKind::Text, text) || isNameOf(FileKind::Workbook, text) ? std::string()
                                                                                : "must end in .csv, .txt or .xlsx";
}

std::string checkTime(const std::string& text)
{
    return timeFromArgument(QString::fromStdString(text))
               ? std::string()
               : "must be written like 2013-07-01 or 2013-07-01T12:00:00Z, not " + text;
}

std::string checkDuration(const std::string& text)
{
    return durationFromArgument(QString::fromStdString(text)) ? std::string()
                                                              : "must be written like 90, 10m, 2h or 1d, not " + text;
}

std::string checkGaps(const std::string& text)
{
    const bool isKnown = text == "break" || text == "join" || durationFromArgument(QString::fromStdString(text));
    return isKnown ? std::string() : "must be break, join, or a time such as 15m, not " + text;
}

std::string checkInterval(const std::string& text)
{
    const std::optional<double> seconds = durationFromArgument(QString::fromStdString(text));
    return seconds && *seconds >= kShortestInterval && *seconds <= kLongestInterval
               ? std::string()
               : "must lie between 0.01 s and 1 h, not " + text;
}

}  // namespace plotix
