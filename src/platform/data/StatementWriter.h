// Writes the tokens of a statement for the engine: names, texts, dates and derived tables each in its own way,
// and around them what the rules of the dialect have put there.
#pragma once

#include "platform/data/Dialect.h"
#include "platform/data/Lexer.h"

#include <QString>
#include <vector>

namespace platform {

/// A text as a literal.
QString quotedText(const QString& text);

class StatementWriter {
public:
    /// Neither is copied; both have to stay.
    StatementWriter(const std::vector<Token>& tokens, const EngineWords& words);

    /// Writes something else in the place of one token.
    void replace(std::size_t token, const QString& text) { m_pieces[token].text = text; }
    /// Puts texts around the tokens from begin to before end, outside of what stands there already.
    void wrap(std::size_t begin, std::size_t end, const QString& before, const QString& after);
    void wrap(std::size_t begin, std::size_t end, const Around& around) {
        wrap(begin, end, around.before, around.after);
    }
    const QString& text(std::size_t token) const { return m_pieces[token].text; }

    /// Tokens from begin to before end, with the blanks that stood between them.
    QString join(std::size_t begin, std::size_t end) const;
    QString join() const { return join(0, m_tokens.size()); }

    const EngineWords& words() const { return m_words; }

private:
    struct Piece {
        QString before, text, after;
    };

    bool isAlias(std::size_t i) const { return i > 0 && m_tokens[i - 1].isWord("AS"); }
    bool isName(std::size_t i) const;
    /// Throws statement for a name by which an engine could be asked for what is none of the records.
    void refuseStranger(std::size_t i) const;
    bool definesAlias(const QString& name) const;
    QString written(std::size_t i) const;
    bool wouldMerge(std::size_t i) const;

    const std::vector<Token>& m_tokens;
    const EngineWords& m_words;
    std::vector<Piece> m_pieces;
};

}  // namespace platform
