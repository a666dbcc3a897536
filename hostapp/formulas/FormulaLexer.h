#pragma once

#include <QtCore/QString>

/// The words of a formula, one after the other. *Borrows* the text. One thread.
namespace plotix {

struct FormulaToken {
    enum class Kind { End, Number, Word, Quoted, Unit, Sign };
    Kind kind = Kind::End;
    int position = 0, length = 0;
    QString text;  ///< a word, a quoted name without its marks, a unit without brackets, a sign
    double number = 0;

    bool is(const char* sign) const { return kind == Kind::Sign && text == QLatin1String(sign); }
    bool isName() const { return kind == Kind::Word || kind == Kind::Quoted; }
};

class FormulaLexer {
public:
    explicit FormulaLexer(const QString& text) : m_text(text) { next(); }

    const FormulaToken& current() const { return m_token; }
    /// To the next token. Throws FormulaFailure for a quotation mark or a bracket that is not closed.
    void next();

    /// The word right here is taken as a unit, behind a number; nothing of it: an empty text.
    QString takeUnit();
    /// Everything up to a comma or bracket is taken as a unit.
    FormulaToken takeUnitArgument();

private:
    QChar at(int position) const { return position < m_text.size() ? m_text.at(position) : QChar(); }
    void readNumber();
    void readQuoted();
    void readBrackets();
    void readSign();

    const QString& m_text;
    int m_at = 0;  // behind the current token
    FormulaToken m_token;
};

bool isNameStart(QChar character);
bool isNamePart(QChar character);

}  // namespace plotix
