#include "hostapp/core/PersonName.h"

#include <QtCore/QSettings>

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace plotix {

namespace {

const QString kKey = QStringLiteral("personName");  // stored: never change

QString accountName()
{
    std::array<char, 4096> buffer;
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return qEnvironmentVariable("USER");
    return fullNameOf(QString::fromLocal8Bit(found->pw_gecos), QString::fromLocal8Bit(found->pw_name));
}

}  // namespace

QString fullNameOf(const QString& comment, const QString& account)
{
    QString capitalised = account;
    if (!capitalised.isEmpty())
        capitalised[0] = capitalised[0].toUpper();
    const QString name = comment.section(QLatin1Char(','), 0, 0).replace(QLatin1Char('&'), capitalised).trimmed();
    return name.isEmpty() ? account : name;
}

QString personName()
{
    const QString given = QSettings().value(kKey).toString();
    return given.isEmpty() ? accountName() : given;
}

void setPersonName(const QString& name)
{
    if (!name.trimmed().isEmpty() && name.trimmed() != personName())
        QSettings().setValue(kKey, name.trimmed());
}

}  // namespace plotix
