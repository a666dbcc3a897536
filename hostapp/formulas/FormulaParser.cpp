#include "hostapp/formulas/FormulaParser.h"

#include "hostapp/formulas/FormulaLexer.h"

#include <array>
#include <optional>

namespace plotix {

namespace {

using Kind = FormulaNode::Kind;
using Problem = FormulaProblem::Kind;

constexpr int kMostDepth = 100;

struct SignRow {
    const char* sign;
    Kind kind;
};
constexpr std::array<SignRow, 8> kComparisons{{{"<", Kind::Less},
                                               {"<=", Kind::LessOrEqual},
                                               {">", Kind::Greater},
                                               {">=", Kind::GreaterOrEqual},
                                               {"=", Kind::Equal},
                                               {"==", Kind::Equal},
                                               {"<>", Kind::Different},
                                               {"!=", Kind::Different}}};
constexpr std::array<SignRow, 2> kSums{{{"+", Kind::Sum}, {"-", Kind::Difference}}};
constexpr std::array<SignRow, 2> kProducts{{{"*", Kind::Product}, {"/", Kind::Quotient}}};

class Parser {
public:
    explicit Parser(const QString& text) : m_tokens(text) {}

    FormulaNode whole()
    {
        if (m_tokens.current().kind == FormulaToken::Kind::End)
            throw FormulaFailure{{Problem::Empty}};
        FormulaNode node = comparison();
        if (m_tokens.current().kind != FormulaToken::Kind::End)
            refuse();
        return node;
    }

private:
    [[noreturn]] void refuse() const
    {
        const FormulaToken& token = m_tokens.current();
        if (token.kind == FormulaToken::Kind::End)
            throw FormulaFailure{{Problem::Unfinished, token.position, 0}};
        const QString text = token.kind == FormulaToken::Kind::Number ? QString::number(token.number) : token.text;
        throw FormulaFailure{{Problem::Unexpected, token.position, token.length, text}};
    }

    template <std::size_t N>
    std::optional<Kind> sign(const std::array<SignRow, N>& rows) const
    {
        for (const SignRow& row : rows)
            if (m_tokens.current().is(row.sign))
                return row.kind;
        return std::nullopt;
    }

    FormulaNode pair(Kind kind, FormulaNode left, FormulaNode right) const
    {
        FormulaNode node;
        node.kind = kind;
        node.position = left.position;
        node.length = right.position + right.length - left.position;
        node.arguments.push_back(std::move(left));
        node.arguments.push_back(std::move(right));
        return node;
    }

    FormulaNode comparison()
    {
        FormulaNode left = sum();
        const std::optional<Kind> kind = sign(kComparisons);
        if (!kind)
            return left;
        m_tokens.next();
        return pair(*kind, std::move(left), sum());
    }

    // A long chain is a deep tree, and what walks it goes as deep.
    FormulaNode sum()
    {
        FormulaNode left = product();
        for (int length = 0; const std::optional<Kind> kind = sign(kSums); ++length) {
            limit(length);
            m_tokens.next();
            left = pair(*kind, std::move(left), product());
        }
        return left;
    }

    FormulaNode product()
    {
        FormulaNode left = signedPower();
        for (int length = 0; const std::optional<Kind> kind = sign(kProducts); ++length) {
            limit(length);
            m_tokens.next();
            left = pair(*kind, std::move(left), signedPower());
        }
        return left;
    }

    void limit(int depth) const
    {
        if (depth > kMostDepth)
            throw FormulaFailure{{Problem::TooDeep, m_tokens.current().position, m_tokens.current().length}};
    }

    FormulaNode signedPower()
    {
        const FormulaToken token = m_tokens.current();
        if (!token.is("-") && !token.is("+"))
            return power();
        limit(++m_depth);
        m_tokens.next();
        FormulaNode value = signedPower();
        --m_depth;
        if (token.is("+"))
            return value;
        FormulaNode node;
        node.kind = Kind::Negative;
        node.position = token.position;
        node.length = value.position + value.length - token.position;
        node.arguments.push_back(std::move(value));
        return node;
    }

    FormulaNode power()
    {
        FormulaNode base = atom();
        if (!m_tokens.current().is("^"))
            return base;
        m_tokens.next();
        return pair(Kind::Power, std::move(base), signedPower());
    }

    FormulaNode atom()
    {
        limit(++m_depth);
        FormulaNode node = atomWithin();
        --m_depth;
        return node;
    }

    FormulaNode atomWithin()
    {
        const FormulaToken token = m_tokens.current();
        if (token.kind == FormulaToken::Kind::Number)
            return number();
        if (token.isName()) {
            m_tokens.next();
            return token.kind == FormulaToken::Kind::Word && m_tokens.current().is("(") ? function(token) : name(token);
        }
        if (!token.is("("))
            refuse();
        m_tokens.next();
        FormulaNode node = comparison();
        close(token);
        return node;
    }

    void close(const FormulaToken& opened)
    {
        if (m_tokens.current().kind == FormulaToken::Kind::End)
            throw FormulaFailure{{Problem::UnclosedBracket, opened.position, 1}};
        if (!m_tokens.current().is(")"))
            refuse();
        m_tokens.next();
    }

    FormulaNode number()
    {
        FormulaNode node;
        node.kind = Kind::Number;
        node.position = m_tokens.current().position;
        node.number = m_tokens.current().number;
        node.length = m_tokens.current().length;
        m_tokens.next();
        const FormulaToken unit = m_tokens.current();
        node.text = m_tokens.takeUnit();
        if (!node.text.isEmpty())
            node.length = unit.position - node.position + qMax(unit.length, static_cast<int>(node.text.size()));
        return node;
    }

    FormulaNode name(const FormulaToken& token)
    {
        FormulaNode node;
        node.kind = Kind::Name;
        node.position = token.position;
        node.length = token.length;
        node.text = token.text;
        if (!m_tokens.current().is("."))
            return node;
        m_tokens.next();
        const FormulaToken property = m_tokens.current();
        if (!property.isName())
            refuse();
        m_tokens.next();
        node.agent = std::exchange(node.text, property.text);
        node.length = property.position + property.length - node.position;
        return node;
    }

    FormulaNode function(const FormulaToken& token)
    {
        FormulaNode node;
        node.kind = Kind::Function;
        node.position = token.position;
        node.function = formulaFunctionNamed(token.text);
        if (!node.function)
            throw FormulaFailure{{Problem::UnknownFunction, token.position, token.length, token.text}};
        const FormulaToken bracket = m_tokens.current();
        m_tokens.next();
        while (!m_tokens.current().is(")") || !node.arguments.empty()) {
            node.arguments.push_back(argument(*node.function, node.arguments.size()));
            if (!m_tokens.current().is(","))
                break;
            m_tokens.next();
        }
        node.length = m_tokens.current().position + 1 - node.position;
        close(bracket);
        const auto count = static_cast<int>(node.arguments.size());
        if (count < node.function->leastArguments || count > node.function->mostArguments)
            throw FormulaFailure{
                {Problem::WrongArguments, token.position, token.length, QString::fromUtf8(node.function->signature)}};
        return node;
    }

    FormulaNode argument(const FormulaFunction& function, std::size_t position)
    {
        if (function.operation != FormulaOperation::PlainValue || position != 1)
            return comparison();
        const FormulaToken unit = m_tokens.takeUnitArgument();
        FormulaNode node;
        node.kind = Kind::Unit;
        node.position = unit.position;
        node.length = unit.length;
        node.text = unit.text;
        return node;
    }

    FormulaLexer m_tokens;
    int m_depth = 0;
};

template <class Visit>
void visitNames(const FormulaNode& node, const Visit& visit)
{
    if (node.kind == Kind::Name)
        visit(node);
    for (const FormulaNode& argument : node.arguments)
        visitNames(argument, visit);
}

}  // namespace

ParsedFormula parseFormula(const QString& text)
{
    try {
        return {Parser(text).whole(), std::nullopt};
    } catch (const FormulaFailure& failure) {
        return {std::nullopt, failure.problem};
    }
}

QString quotedName(const QString& name)
{
    bool isPlain = !name.isEmpty() && isNameStart(name.front());
    for (const QChar character : name)
        isPlain = isPlain && isNamePart(character);
    if (isPlain)
        return name;
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString withNames(const QString& text, const RenamedName& renamed)
{
    const ParsedFormula parsed = parseFormula(text);
    QString result = text;
    if (!parsed.tree)
        return result;
    qsizetype moved = 0;
    visitNames(*parsed.tree, [&](const FormulaNode& node) {
        const std::optional<FormulaName> name = renamed({node.agent, node.text});
        if (!name)
            return;
        const QString written =
            (name->agent ? quotedName(*name->agent) + QLatin1Char('.') : QString()) + quotedName(name->property);
        result.replace(node.position + moved, node.length, written);
        moved += written.size() - node.length;
    });
    return result;
}

std::vector<FormulaName> namesIn(const QString& text)
{
    std::vector<FormulaName> names;
    if (const ParsedFormula parsed = parseFormula(text); parsed.tree)
        visitNames(*parsed.tree, [&](const FormulaNode& node) { names.push_back({node.agent, node.text}); });
    return names;
}

}  // namespace plotix
