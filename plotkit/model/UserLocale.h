#pragma once

#include <QtCore/QString>
#include <QtCore/QTimeZone>

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

/// The user's locale and zone as the formatters' library wants them. Internal to the formatters. Free functions; main
/// thread only.
namespace plotkit {

/// A locale set by the program goes before the environment; in the environment the category ("LC_TIME", "LC_NUMERIC")
/// goes before LANG.
icu::Locale userLocale(const char* category);

/// The zone as ICU knows it; an invalid one is the system's, asked anew for every formatter: ICU remembers its first
/// answer, but a zone may change while we run. The caller owns it.
icu::TimeZone* icuTimeZone(const QTimeZone& zone);

icu::UnicodeString toIcu(const QString& text);
QString fromIcu(const icu::UnicodeString& text);

}  // namespace plotkit
