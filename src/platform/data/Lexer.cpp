// The lexer of the statement dialect: one pass from left to right, one token at a time.
#include "platform/data/Lexer.h"

#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// More parentheses than any sensible statement has, and fewer than the engine's own limit.
constexpr int deepest = 50;

bool startsName(QChar c) { return c.isLetter() || c == u'_'; }

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool continuesName(QChar c) { return startsName(c) || isDigit(c) || c.isMark(); }

bool isBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

class Lexer {
public:
    explicit Lexer(const QString& statement) : m_text(statement) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        for (;;) {
            const bool space = skipBlanks();
            if (m_at >= m_text.size())
                return tokens;
            tokens.push_back(next());
            tokens.back().spaceBefore = space;
        }
    }

private:
    QChar peek(qsizetype ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text.at(m_at + ahead) : QChar();
    }

    bool skipBlanks() {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && isBlank(m_text.at(m_at)))
            ++m_at;
        return m_at > start;
    }

    Token next() {
        const QChar c = peek();
        if (c == u'\'' || c == u'"')
            return string(c);
        if (c == u'[')
            return bracket();
        if (c == u'#')
            return {Token::Kind::Date, upTo(u'#', "date")};
        if (isDigit(c) || (c == u'.' && isDigit(peek(1))))
            return number();
        if (startsName(c))
            return name();
        if (c == u'@')
            return identity();
        return mark();
    }

    Token string(QChar quote) {
        QString text;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (peek() != quote) {
                if (peek().isNull())
                    refuseStatement(u"Null character in text"_s);
                text += peek();
            } else if (peek(1) == quote) {
                text += quote;
                ++m_at;
            } else {
                ++m_at;
                return {Token::Kind::String, text};
            }
        }
        refuseStatement(u"Missing closing quote in text"_s);
    }

    /// The text between the mark at the current place and the next closing mark.
    QString upTo(QChar closing, const char* what) {
        const qsizetype end = m_text.indexOf(closing, m_at + 1);
        if (end < 0)
            refuseStatement(u"Missing %1 after %2"_s.arg(closing).arg(QLatin1String(what)));
        const QString text = m_text.mid(m_at + 1, end - m_at - 1);
        if (text.contains(QChar()))
            refuseStatement(u"Null character in %1"_s.arg(QLatin1String(what)));
        m_at = end + 1;
        return text;
    }

    Token bracket() {
        const QString text = upTo(u']', "name");
        const QString start = text.trimmed().left(7).toUpper();
        const bool select = start.startsWith("SELECT"_L1) && start.size() == 7 && !continuesName(start.at(6));
        if (!select || peek() != u'.')
            return {Token::Kind::Bracket, text};
        ++m_at;
        return {Token::Kind::Derived, text};
    }

    Token number() {
        const qsizetype start = m_at;
        const auto digits = [this] {
            while (isDigit(peek()))
                ++m_at;
        };
        digits();
        if (peek() == u'.') {
            ++m_at;
            digits();
        }
        if (peek() == u'e' || peek() == u'E') {
            const qsizetype sign = peek(1) == u'+' || peek(1) == u'-' ? 1 : 0;
            if (isDigit(peek(1 + sign))) {
                m_at += 1 + sign;
                digits();
            }
        }
        return {Token::Kind::Number, m_text.mid(start, m_at - start)};
    }

    Token name() {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && continuesName(peek()))
            ++m_at;
        return {Token::Kind::Name, m_text.mid(start, m_at - start)};
    }

    Token identity() {
        const QLatin1String word("@@IDENTITY");
        const QString found = m_text.mid(m_at, word.size());
        if (found.compare(word, Qt::CaseInsensitive) != 0 || continuesName(peek(word.size())))
            refuseStatement(u"Syntax error at @"_s);
        m_at += word.size();
        return {Token::Kind::Identity, found};
    }

    Token mark() {
        const QChar c = peek();
        if ((c == u'-' && peek(1) == u'-') || (c == u'/' && peek(1) == u'*'))
            refuseStatement(u"Comments are not allowed in a statement"_s);
        const auto single = [&](Token::Kind kind) {
            ++m_at;
            return Token{kind, QString(c)};
        };
        switch (c.unicode()) {
        case u'(':
            return single(Token::Kind::Open);
        case u')':
            return single(Token::Kind::Close);
        case u',':
            return single(Token::Kind::Comma);
        case u'.':
            return single(Token::Kind::Dot);
        case u';':
            return single(Token::Kind::Semicolon);
        case u'+':
        case u'-':
        case u'*':
        case u'/':
        case u'\\':
        case u'^':
        case u'&':
        case u'=':
            return single(Token::Kind::Operator);
        case u'<':
        case u'>':
            return comparison();
        default:
            refuseStatement(u"Syntax error at character \"%1\""_s.arg(c));
        }
    }

    Token comparison() {
        const QString two = m_text.mid(m_at, 2);
        const bool pair = two == "<="_L1 || two == ">="_L1 || two == "<>"_L1;
        m_at += pair ? 2 : 1;
        return {Token::Kind::Operator, pair ? two : two.left(1)};
    }

    const QString& m_text;
    qsizetype m_at = 0;
};

}  // namespace

bool Token::isWord(const char* word) const {
    return kind == Kind::Name && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

void refuseStatement(const QString& reason) { throw RuntimeError(error::statement, reason); }

std::vector<Token> tokenize(const QString& statement) { return Lexer(statement).run(); }

std::vector<Token> statementTokens(const QString& statement) {
    using Kind = Token::Kind;
    std::vector<Token> tokens = tokenize(statement);
    if (!tokens.empty() && tokens.back().is(Kind::Semicolon))
        tokens.pop_back();
    int depth = 0;
    for (const Token& token : tokens) {
        if (token.is(Kind::Semicolon))
            refuseStatement(u"Characters found after end of statement"_s);
        depth += token.is(Kind::Open) ? 1 : token.is(Kind::Close) ? -1 : 0;
        if (depth < 0)
            refuseStatement(u"Extra ) in statement"_s);
        if (depth > deepest)
            refuseStatement(u"Statement is nested too deeply"_s);
    }
    if (depth > 0)
        refuseStatement(u"Missing ) in statement"_s);
    return tokens;
}

}  // namespace platform
