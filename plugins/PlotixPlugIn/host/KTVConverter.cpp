#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

#include <QtCore/QChar>
#include <QtCore/QList>

KTVConverter::~KTVConverter() = default;

double KTVConverter::roundValue(double value, int toNearest)
{
    return KTVHostServices::installed().converter->roundedValue(value, toNearest);
}

namespace {

using Word = QList<char32_t>;

QList<Word> wordsOf(const QString& text)
{
    QList<Word> words;
    bool insideWord = false;
    // Composed first, so that an accent typed as a character of its own does not split its word.
    const auto characters = text.normalized(QString::NormalizationForm_C).toUcs4();
    for (const uint character : characters) {
        const bool belongs = QChar::isLetterOrNumber(character);
        if (belongs && !insideWord)
            words.append(Word());
        if (belongs)
            words.last().append(character);
        insideWord = belongs;
    }
    return words;
}

// The whole run of capitals, so that CO2 becomes co2, yet what is in camel case already stays as it is.
void beginInLowerCase(Word& word)
{
    for (char32_t& character : word) {
        if (!QChar::isUpper(character))
            return;
        character = QChar::toLower(character);
    }
}

}  // namespace

QString camelCaseString(const QString& text)
{
    QString result;
    for (Word& word : wordsOf(text)) {
        if (result.isEmpty())
            beginInLowerCase(word);
        else
            word.first() = QChar::toUpper(word.first());
        result += QString::fromUcs4(word.constData(), word.size());
    }
    return result;
}
