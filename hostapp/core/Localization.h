#pragma once

#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <functional>
#include <memory>

/// The program's texts in the user's language.
///
/// English is written in the sources; texts/plotix_LANGUAGE.ts translates it, and is built into the program. A text
/// belongs to a context: the class that shows it, or "Plotix" for what the plug-in asks the host's bundle for by key.
/// After a text changed, scripts/update_texts.sh brings the files up to date, and Qt Linguist or an editor fills in
/// what is new. Main thread only.
namespace plotix {

/// Reads an environment variable; absent ones are empty.
using Environment = std::function<QString(const char* name)>;

/// The language to speak, such as "de": the first of PLOTIX_LANGUAGE, LANGUAGE (a list), LC_ALL, LC_MESSAGES and LANG
/// that says one. Languages we have no texts of, and the C locale, answer "en".
QString preferredLanguage(const Environment& environment);

/// Installs the texts of `language` for the whole application: ours, and the toolkit's own where they are installed.
/// Where the locale is of another language than texts that are not English, numbers and dates follow the texts. Once,
/// before any text is asked for.
void installLanguage(const QString& language);

/// The language installed: what help pages are looked up by. "en" before any.
QString installedLanguage();

/// Our texts in one language, for whoever installs them; null for a language we have none of. English has texts
/// where a number decides between two.
std::unique_ptr<QTranslator> textsOf(const QString& language);

}  // namespace plotix
