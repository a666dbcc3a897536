#pragma once

#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <functional>
#include <memory>

/// The program's texts in the user's language.
///
/// English is written in the sources; texts/plotix_LANGUAGE.ts translates it, and is built into the program. A text
/// belongs to a context: the class that shows it, or "Plotix" for texts that the plug-in asks the host's bundle for, by
/// key. After a text changed, scripts/update_texts.sh brings the files up to date, and Qt Linguist or an editor fills
/// in what is new. Main thread only.
namespace plotix {

/// Reads an environment variable; empty when it is not set.
using Environment = std::function<QString(const char* name)>;

/// The language to speak, such as "de": the first of PLOTIX_LANGUAGE, LANGUAGE (a list), LC_ALL, LC_MESSAGES and LANG
/// that says one. "en" for languages we have no texts of, and for the C locale.
QString preferredLanguage(const Environment& environment);

/// Installs the texts of `language` for the whole application: ours, and the toolkit's own if they are installed. When
/// a language other than English differs from the locale's, numbers and dates follow the language of the texts. Call
/// once, before any text is asked for.
void installLanguage(const QString& language);

/// The installed language, which help pages are looked up by. "en" before `installLanguage`.
QString installedLanguage();

/// Our texts in one language; the caller owns them. Null for a language we have no texts of. English has texts for
/// plurals.
std::unique_ptr<QTranslator> textsOf(const QString& language);

}  // namespace plotix
