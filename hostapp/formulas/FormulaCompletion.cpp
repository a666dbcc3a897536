#include "hostapp/formulas/FormulaCompletion.h"

#include "hostapp/formulas/FormulaFunctions.h"
#include "hostapp/formulas/FormulaLexer.h"
#include "hostapp/formulas/FormulaParser.h"

#include <algorithm>
#include <optional>

namespace plotix {

namespace {

/// The name that is being written at a place.
struct Beginning {
    int position = 0;
    QString name;  // without quotation marks
    bool isQuoted = false;
    std::optional<QString> agent;
};

int openQuote(const QString& text)
{
    int open = -1;
    for (int at = 0; at < text.size(); ++at)
        if (text.at(at) == QLatin1Char('"'))
            open = open < 0 ? at : -1;
    return open;
}

/// The name that ends before a place, such as an agent's before a point.
QString nameBefore(const QString& text)
{
    if (text.endsWith(QLatin1Char('"'))) {
        const auto begin = text.lastIndexOf(QLatin1Char('"'), text.size() - 2);
        return begin < 0 ? QString() : text.mid(begin + 1, text.size() - begin - 2);
    }
    auto begin = text.size();
    while (begin > 0 && isNamePart(text.at(begin - 1)))
        --begin;
    return text.mid(begin);
}

Beginning beginningAt(const QString& text, int place)
{
    const QString before = text.left(place);
    Beginning found;
    const int quote = openQuote(before);
    found.isQuoted = quote >= 0;
    found.position = found.isQuoted ? quote : place;
    while (!found.isQuoted && found.position > 0 && isNamePart(text.at(found.position - 1)))
        --found.position;
    found.name = before.mid(found.isQuoted ? quote + 1 : found.position);
    const QString ahead = text.left(found.position).trimmed();
    if (ahead.endsWith(QLatin1Char('.')))
        found.agent = nameBefore(ahead.chopped(1).trimmed());
    return found;
}

bool standsBehindNumber(const QString& text, const Beginning& beginning)
{
    const QString ahead = text.left(beginning.position).trimmed();
    if (!beginning.name.isEmpty() && !isNameStart(beginning.name.front()))
        return true;
    if (ahead.isEmpty() || !ahead.back().isDigit())
        return false;
    const QString word = nameBefore(ahead);
    return !word.isEmpty() && !isNameStart(word.front());
}

class Gathering {
public:
    explicit Gathering(const Beginning& beginning) : m_beginning(beginning) {}

    void offer(const QString& name, const FormulaCompletion& candidate)
    {
        if (name.startsWith(m_beginning.name, Qt::CaseInsensitive))
            m_first.push_back(candidate);
        else if (name.contains(m_beginning.name, Qt::CaseInsensitive))
            m_others.push_back(candidate);
    }
    void offerProperties(const FormulaDirectory::Agent& agent)
    {
        for (const SiteProperty::Description& property : agent.properties)
            offer(property.name, {quotedName(property.name), property.name, property.archivedUnit});
    }
    std::vector<FormulaCompletion> found()
    {
        m_first.insert(m_first.end(), m_others.begin(), m_others.end());
        return m_first;
    }

private:
    const Beginning& m_beginning;
    std::vector<FormulaCompletion> m_first, m_others;
};

}  // namespace

FormulaCompletions completionsAt(const QString& text, int place, const FormulaDirectory& directory, qint64 agent,
                                 CompleteNothing nothing)
{
    const Beginning beginning = beginningAt(text, place);
    FormulaCompletions completions{beginning.position, place - beginning.position, {}};
    const bool isNothing = beginning.name.isEmpty() && !beginning.isQuoted && !beginning.agent;
    if ((isNothing && nothing == CompleteNothing::WithNothing) ||
        (!beginning.isQuoted && standsBehindNumber(text, beginning)))
        return completions;
    Gathering gathering(beginning);
    if (beginning.agent) {
        if (const FormulaDirectory::Agent* named = directory.agentNamed(*beginning.agent))
            gathering.offerProperties(*named);
        completions.candidates = gathering.found();
        return completions;
    }
    if (const FormulaDirectory::Agent* home = directory.agentWithId(agent))
        gathering.offerProperties(*home);
    if (!beginning.isQuoted)
        for (const FormulaFunction& function : formulaFunctions())
            gathering.offer(QString::fromLatin1(function.name),
                            {QString::fromLatin1(function.name) + QLatin1Char('('),
                             QString::fromUtf8(function.signature), meaningOf(function), true});
    for (const FormulaDirectory::Agent& other : directory.agents)
        if (other.id != agent)
            gathering.offer(other.name, {quotedName(other.name) + QLatin1Char('.'), other.name + QLatin1Char('.'), {}});
    completions.candidates = gathering.found();
    return completions;
}

}  // namespace plotix
