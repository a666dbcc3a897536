#include "hostapp/formulas/FormulaLexer.h"

#include "hostapp/formulas/FormulaProblem.h"

#include <array>

namespace plotix {

namespace {

bool isUnitPart(QChar character)
{
    return character.isLetter() || QStringLiteral("%°‰²³").contains(character);
}

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Signs that people copy from texts are read as the ones on the keyboard.
QString plainSign(QChar character)
{
    if (character == QChar(0x2212) || character == QChar(0x2013))
        return QStringLiteral("-");
    if (character == QChar(0x00D7) || character == QChar(0x00B7))
        return QStringLiteral("*");
    if (character == QChar(0x00F7))
        return QStringLiteral("/");
    if (character == QChar(0x2264))
        return QStringLiteral("<=");
    if (character == QChar(0x2265))
        return QStringLiteral(">=");
    if (character == QChar(0x2260))
        return QStringLiteral("<>");
    return QString(character);
}

}  // namespace

bool isNameStart(QChar character)
{
    return character.isLetter() || character == QLatin1Char('_');
}

bool isNamePart(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_');
}

void FormulaLexer::next()
{
    while (at(m_at).isSpace())
        ++m_at;
    m_token = {};
    m_token.position = m_at;
    const QChar first = at(m_at);
    if (m_at >= m_text.size())
        return;
    if (isDigit(first) || (first == QLatin1Char('.') && isDigit(at(m_at + 1)))) {
        readNumber();
    } else if (first == QLatin1Char('"') || first == QChar(0x201C) || first == QChar(0x201E)) {
        readQuoted();
    } else if (first == QLatin1Char('[')) {
        readBrackets();
    } else if (isNameStart(first)) {
        while (isNamePart(at(m_at)))
            ++m_at;
        m_token.kind = FormulaToken::Kind::Word;
        m_token.text = m_text.mid(m_token.position, m_at - m_token.position);
    } else {
        readSign();
    }
    m_token.length = m_at - m_token.position;
}

void FormulaLexer::readNumber()
{
    const auto digits = [this] {
        while (isDigit(at(m_at)))
            ++m_at;
    };
    digits();
    if (at(m_at) == QLatin1Char('.') && isDigit(at(m_at + 1))) {
        ++m_at;
        digits();
    }
    const int sign = at(m_at + 1) == QLatin1Char('-') || at(m_at + 1) == QLatin1Char('+') ? 1 : 0;
    if (at(m_at).toLower() == QLatin1Char('e') && isDigit(at(m_at + 1 + sign))) {
        m_at += 1 + sign;
        digits();
    }
    m_token.kind = FormulaToken::Kind::Number;
    m_token.number = m_text.mid(m_token.position, m_at - m_token.position).toDouble();
}

void FormulaLexer::readQuoted()
{
    // Typographic marks come in by copying; languages differ in which one closes.
    const bool isPlain = at(m_at) == QLatin1Char('"');
    const auto closes = [isPlain](QChar mark) {
        return isPlain ? mark == QLatin1Char('"') : mark == QChar(0x201C) || mark == QChar(0x201D);
    };
    m_token.kind = FormulaToken::Kind::Quoted;
    for (++m_at; m_at < m_text.size(); ++m_at) {
        if (closes(at(m_at))) {
            if (!isPlain || at(m_at + 1) != QLatin1Char('"')) {
                ++m_at;
                return;
            }
            ++m_at;
        }
        m_token.text += at(m_at);
    }
    throw FormulaFailure{
        {FormulaProblem::Kind::UnclosedQuote, m_token.position, static_cast<int>(m_text.size()) - m_token.position}};
}

void FormulaLexer::readBrackets()
{
    const auto end = static_cast<int>(m_text.indexOf(QLatin1Char(']'), m_at));
    if (end < 0)
        throw FormulaFailure{{FormulaProblem::Kind::UnclosedBracket, m_at, 1}};
    m_token.kind = FormulaToken::Kind::Unit;
    m_token.text = m_text.mid(m_at + 1, end - m_at - 1).trimmed();
    m_at = end + 1;
}

void FormulaLexer::readSign()
{
    static constexpr std::array kPairs{"<=", ">=", "<>", "==", "!="};
    m_token.kind = FormulaToken::Kind::Sign;
    for (const char* pair : kPairs)
        if (QStringView(m_text).mid(m_at).startsWith(QLatin1String(pair))) {
            m_token.text = QLatin1String(pair);
            m_at += 2;
            return;
        }
    m_token.text = plainSign(at(m_at));
    ++m_at;
}

QString FormulaLexer::takeUnit()
{
    if (m_token.kind == FormulaToken::Kind::Unit) {
        const QString text = m_token.text;
        next();
        return text;
    }
    int end = m_token.position;
    while (isUnitPart(at(end)))
        ++end;
    // A word with a bracket behind it is a function, one with digits or a point a name: a sign is missing before them.
    if (isNamePart(at(end)) || at(end) == QLatin1Char('(') || at(end) == QLatin1Char('.'))
        return {};
    const QString text = m_text.mid(m_token.position, end - m_token.position);
    if (!text.isEmpty()) {
        m_at = end;
        next();
    }
    return text;
}

FormulaToken FormulaLexer::takeUnitArgument()
{
    if (m_token.kind == FormulaToken::Kind::Unit) {
        const FormulaToken unit = m_token;
        next();
        return unit;
    }
    FormulaToken unit = m_token;
    int end = m_token.position;
    while (end < m_text.size() && at(end) != QLatin1Char(',') && at(end) != QLatin1Char(')'))
        ++end;
    unit.kind = FormulaToken::Kind::Unit;
    unit.text = m_text.mid(m_token.position, end - m_token.position).trimmed();
    unit.length = static_cast<int>(unit.text.size());
    m_at = end;
    next();
    return unit;
}

}  // namespace plotix
