#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <functional>

/// The program's texts in the user's language. English is written in the sources; a table a language says the rest.
///
/// A table is a text file among the program's resources, `:/plotix/texts/LANGUAGE.txt`: an English text, the line under
/// it the translation, blank lines and lines that begin with '#' between entries. "\n" is a line break. A text with
/// %n has two translations, for one and for any other number, divided by '|'. A text means the same wherever it
/// stands, so there are no contexts. Main thread only.
namespace plotix {

/// Translates by one table.
class TextTable : public QTranslator {
public:
    /// `text` is the whole file. An entry without a translation is left out, as if it did not stand there.
    explicit TextTable(const QString& text);

    bool isEmpty() const override { return m_translations.isEmpty(); }
    bool contains(const QString& source) const { return m_translations.contains(source); }
    QStringList sources() const { return m_translations.keys(); }

    QString translate(const char* context, const char* source, const char* disambiguation, int n) const override;

private:
    QHash<QString, QString> m_translations;
};

/// Reads an environment variable; absent ones are empty.
using Environment = std::function<QString(const char* name)>;

/// The language to speak, such as "de": the first of PLOTIX_LANGUAGE, LANGUAGE (a list), LC_ALL, LC_MESSAGES and LANG
/// that says one. Languages without a table, and the C locale, answer "en".
QString preferredLanguage(const Environment& environment);

/// Installs the tables of `language` for the whole application: ours, and the toolkit's own texts where they are
/// installed. Where the locale is of another language than texts that are not English, numbers and dates follow the
/// texts. Once, before any text is asked for.
void installLanguage(const QString& language);

/// The language installed: what help pages are looked up by. "en" before any.
QString installedLanguage();

/// The whole table of a language; empty for one that has none.
QString textTableOf(const QString& language);

}  // namespace plotix
