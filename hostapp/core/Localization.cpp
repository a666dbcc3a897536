#include "hostapp/core/Localization.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>

// Outside the namespace, where the macro's function lives: a static library's resources join the program only when
// somebody names them.
static void joinTextResources()
{
    Q_INIT_RESOURCE(texts);
}

namespace plotix {

namespace {

constexpr auto kEnglish = "en";
QString theInstalledLanguage = QString::fromLatin1(kEnglish);

QString fileOf(const QString& language)
{
    joinTextResources();
    return QStringLiteral(":/plotix/texts/plotix_%1.qm").arg(language);
}

/// "de" of "de_DE.UTF-8"; "en" of the C locale; nothing of a language we do not speak.
QString spokenLanguage(const QString& locale)
{
    const QString language = locale.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('_'), 0, 0).toLower();
    if (language == QLatin1String("c") || language == QLatin1String("posix"))
        return QString::fromLatin1(kEnglish);
    const bool isCode = !language.isEmpty() &&
                        std::all_of(language.begin(), language.end(), [](QChar letter) { return letter.isLower(); });
    return isCode && QFile::exists(fileOf(language)) ? language : QString();
}

}  // namespace

std::unique_ptr<QTranslator> textsOf(const QString& language)
{
    auto texts = std::make_unique<QTranslator>();
    return texts->load(fileOf(language)) ? std::move(texts) : nullptr;
}

QString preferredLanguage(const Environment& environment)
{
    QString locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.isEmpty())
            locale = environment(name);
    QStringList wishes{environment("PLOTIX_LANGUAGE")};
    // The C locale is what scripts choose in order to get the texts they know; a list of languages does not undo that.
    const QString code = locale.section(QLatin1Char('.'), 0, 0);
    if (code != QLatin1String("C") && code != QLatin1String("POSIX"))
        wishes << environment("LANGUAGE").split(QLatin1Char(':'));
    wishes << locale;
    for (const QString& wish : wishes)
        if (const QString language = spokenLanguage(wish); !language.isEmpty())
            return language;
    return QString::fromLatin1(kEnglish);
}

void installLanguage(const QString& language)
{
    theInstalledLanguage = language;
    // English texts go with any locale's numbers; other languages were asked for by name and bring theirs along.
    if (language != QLatin1String(kEnglish) && QLocale().language() != QLocale(language).language())
        QLocale::setDefault(QLocale(language));
    auto* toolkit = new QTranslator(QCoreApplication::instance());
    if (toolkit->load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(toolkit);
    if (QTranslator* own = textsOf(language).release()) {
        own->setParent(QCoreApplication::instance());
        QCoreApplication::installTranslator(own);  // asked first: the latest installed wins
    }
}

QString installedLanguage()
{
    return theInstalledLanguage;
}

}  // namespace plotix
