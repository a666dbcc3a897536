#include "hostapp/exchange/QualityReader.h"

#include "hostapp/exchange/CellWords.h"
#include "hostapp/exchange/FoldedWord.h"

#include <algorithm>

namespace plotix {

QualityReader::QualityReader(QualityCode code, const QStringList& badWords) : m_code(code)
{
    for (const QString& word : badWords)
        m_badWords.emplace_back(FoldedWord(word.trimmed().toStdString()).text());
}

QualityReader::Mark QualityReader::learn(std::string_view text)
{
    constexpr std::size_t kMostKnown = 16;
    const Mark mark = markOf(text);
    if (m_known.size() < kMostKnown)
        m_known.emplace_back(text, mark);
    return mark;
}

QualityReader::Mark QualityReader::markOf(std::string_view text) const
{
    if (!m_badWords.empty()) {
        const FoldedWord folded(text);
        const bool isBad = std::find(m_badWords.begin(), m_badWords.end(), folded.text()) != m_badWords.end();
        return isBad && !folded.text().empty() ? Mark::Bad : Mark::Good;
    }
    switch (verdictOf(text, m_code)) {
    case Verdict::Bad: return Mark::Bad;
    case Verdict::Good:
    case Verdict::Uncertain: return Mark::Good;
    case Verdict::Unknown: break;
    }
    return isMissing(text) ? Mark::Good : Mark::Unknown;
}

void QualityReader::countUnknown(std::string_view text, qint64 line)
{
    if (m_unknown++ > 0)
        return;
    m_firstUnknown.line = line;
    m_firstUnknown.text = textForFinding(text);
}

}  // namespace plotix
