#pragma once

#include "hostapp/exchange/ImportOptions.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

#include <optional>
#include <string>
#include <vector>

/// Values of single command line arguments, and what is wrong with an invalid one. Pure; any thread.
namespace plotix {

/// "1200x600"; nothing for anything else, or for sides outside 16 … 16,384.
std::optional<QSize> sizeFromArgument(const QString& text);
/// The same in points, or as lengths like 85x60mm and 240.5x170pt; each side as long as there.
std::optional<QSizeF> figureSizeFromArgument(const QString& text);
/// A size of type like 7pt, or 7; from 5 to 36 points.
std::optional<double> fontSizeFromArgument(const QString& text);

std::string argumentFromSize(const QSize& size);

/// Seconds of "90", "90s", "1.5m", "2h" or "1d"; nothing for anything else, and for what is not above zero.
std::optional<double> durationFromArgument(const QString& text);

/// Seconds since 1970-01-01 UTC of an ISO 8601 text; without a zone the time is one of `clock`'s, the user's where that
/// is invalid. A date alone means its
/// first moment. Nothing for anything else.
std::optional<double> timeFromArgument(const QString& text, const QTimeZone& clock = {});

/// The same as the end of a span: a date alone means the whole day.
std::optional<double> endFromArgument(const QString& text, const QTimeZone& clock = {});

/// "a, b,,c" is a, b and c.
QStringList listFromArgument(const QString& text);

/// Splits texts that pass checkPair at the first "=": the part before it, trimmed, and the part after it, unchanged.
ImportOptions::ByColumn pairsFromArguments(const std::vector<std::string>& texts);

/// Each answers what is wrong with the argument, worded to follow the option's name; empty: nothing.
std::string checkPair(const std::string& text);
std::string checkFigureSize(const std::string& text);
std::string checkFontSize(const std::string& text);
std::string checkSize(const std::string& text);
std::string checkRange(const std::string& text);
std::string checkPicture(const std::string& text);
std::string checkPdf(const std::string& text);
std::string checkPng(const std::string& text);
std::string checkTable(const std::string& text);
std::string checkTime(const std::string& text);
std::string checkDuration(const std::string& text);
std::string checkGaps(const std::string& text);
std::string checkInterval(const std::string& text);

}  // namespace plotix
