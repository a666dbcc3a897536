#include "plotkit/model/UserLocale.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <unicode/simpletz.h>

#include <memory>

namespace plotkit {

icu::Locale userLocale(const char* category)
{
    if (QLocale() != QLocale::system())
        return icu::Locale::createCanonical(QLocale().name().toLatin1().constData());
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        QByteArray name = qgetenv(variable);
        name.truncate(name.indexOf('.') < 0 ? name.size() : name.indexOf('.'));
        name.truncate(name.indexOf('@') < 0 ? name.size() : name.indexOf('@'));
        if (name == "C" || name == "POSIX")
            break;
        if (!name.isEmpty())
            return icu::Locale::createCanonical(name.constData());
    }
    return icu::Locale::getUS();  // the portable locale writes month names in English
}

icu::TimeZone* icuTimeZone(const QTimeZone& chosen)
{
    const QByteArray identifier = chosen.isValid() ? chosen.id() : QTimeZone::systemTimeZoneId();
    std::unique_ptr<icu::TimeZone> zone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(identifier.constData())));
    constexpr int kMillis = 1000;
    if (*zone == icu::TimeZone::getUnknown() && chosen.isValid())  // one known by its distance alone
        zone =
            std::make_unique<icu::SimpleTimeZone>(chosen.standardTimeOffset(QDateTime::currentDateTimeUtc()) * kMillis,
                                                  icu::UnicodeString::fromUTF8(identifier.constData()));
    else if (*zone == icu::TimeZone::getUnknown())
        zone.reset(icu::TimeZone::detectHostTimeZone());
    return zone.release();
}

icu::UnicodeString toIcu(const QString& text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()));
}

QString fromIcu(const icu::UnicodeString& text)
{
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

}  // namespace plotkit
