// Questions about the tokens of a statement, by their index; none is too large.
#pragma once

#include "platform/data/Lexer.h"

#include <QStringView>
#include <vector>

namespace platform {

class TokenView {
public:
    /// The tokens are not copied and have to stay.
    explicit TokenView(const std::vector<Token>& tokens) : m_tokens(tokens) {}

    std::size_t size() const { return m_tokens.size(); }
    const Token& operator[](std::size_t i) const { return m_tokens[i]; }
    bool at(std::size_t i, Token::Kind kind) const { return i < m_tokens.size() && m_tokens[i].is(kind); }
    bool wordAt(std::size_t i, const char* word) const {
        return i < m_tokens.size() && m_tokens[i].isWord(word);
    }
    /// A column or a function.
    bool nameAt(std::size_t i) const;
    /// One of these operators of one sign.
    bool signAt(std::size_t i, QStringView signs) const;
    bool startsExpression(std::size_t i) const;
    /// The parenthesis that closes this one.
    std::size_t closeOf(std::size_t open) const;

private:
    const std::vector<Token>& m_tokens;
};

}  // namespace platform
