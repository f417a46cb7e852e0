// Writes the tokens of a statement as SQLite: names, texts, dates and derived tables each in its own way,
// and around them what the rules of the dialect have put there.
#pragma once

#include "platform/data/Lexer.h"

#include <QString>
#include <vector>

namespace platform {

/// A text as a literal of SQLite.
QString quotedText(const QString& text);

class StatementWriter {
public:
    /// The tokens are not copied and have to stay.
    explicit StatementWriter(const std::vector<Token>& tokens);

    /// Writes something else in the place of one token.
    void replace(std::size_t token, const QString& text) { m_pieces[token].text = text; }
    /// Puts texts around the tokens from begin to before end, outside of what stands there already.
    void wrap(std::size_t begin, std::size_t end, const QString& before, const QString& after);
    const QString& text(std::size_t token) const { return m_pieces[token].text; }

    /// Tokens from begin to before end, with the blanks that stood between them.
    QString join(std::size_t begin, std::size_t end) const;
    QString join() const { return join(0, m_tokens.size()); }

private:
    struct Piece {
        QString before, text, after;
    };

    bool isAlias(std::size_t i) const { return i > 0 && m_tokens[i - 1].isWord("AS"); }
    QString written(std::size_t i) const;
    bool wouldMerge(std::size_t i) const;

    const std::vector<Token>& m_tokens;
    std::vector<Piece> m_pieces;
};

}  // namespace platform
