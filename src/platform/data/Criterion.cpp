// The criterion of a search within a result set.
#include "platform/data/Criterion.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Lexer.h"

using namespace Qt::StringLiterals;

namespace platform {

Criterion::Criterion(const QString& text) {
    std::vector<Token> tokens = tokenize(text);
    const bool negative = tokens.size() == 4 && tokens[2].text == "-"_L1;
    if (negative)
        tokens.erase(tokens.begin() + 2);
    const bool good = tokens.size() == 3 &&
                      (tokens[0].is(Token::Kind::Name) || tokens[0].is(Token::Kind::Bracket)) &&
                      tokens[1].text == "="_L1 &&
                      (tokens[2].is(Token::Kind::Number) || (tokens[2].is(Token::Kind::String) && !negative));
    if (!good)
        throw RuntimeError(error::invalidProcedureCall, u"Invalid criterion: %1"_s.arg(text), u"Database"_s);
    m_field = tokens[0].text;
    m_text = tokens[2].text;
    m_isNumber = tokens[2].is(Token::Kind::Number);
    if (m_isNumber)
        m_number = (negative ? -1.0 : 1.0) * toDouble(m_text);
}

bool Criterion::accepts(const QVariant& value) const {
    if (!value.isValid())
        return false;
    if (!m_isNumber)
        return valueText(value).compare(m_text, Qt::CaseInsensitive) == 0;
    if (value.userType() == QMetaType::LongLong)
        return static_cast<double>(value.toLongLong()) == m_number;
    if (value.userType() == QMetaType::QString)
        return false;
    return toDouble(value) == m_number;
}

}  // namespace platform
