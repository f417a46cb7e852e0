// How each kind of token is written, and which neighbours need a blank between them.
#include "platform/data/StatementWriter.h"

#include "platform/basic/Text.h"
#include "platform/data/ColumnType.h"
#include "platform/data/DateLiteral.h"
#include "platform/data/Dialect.h"
#include "platform/data/DialectWords.h"
#include "platform/data/Expressions.h"
#include "platform/data/OrderReader.h"
#include "platform/data/TokenView.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = Token::Kind;

QString writtenPath(const QString& path, const EngineWords& words) {
    QStringList parts = path.split(u'.');
    for (QString& part : parts)
        part = words.name(part, false);
    return parts.join(u'.');
}

QString derivedTable(const QString& statement, const EngineWords& words) {
    const std::vector<Token> tokens = statementTokens(statement);
    StatementWriter writer(tokens, words);
    rewriteExpressions(tokens, writer);
    writeOrders(tokens, writer);
    return u'(' + writer.join() + u')';
}

bool isMark(const Token& token) {
    return token.is(Kind::Open) || token.is(Kind::Close) || token.is(Kind::Comma) || token.is(Kind::Dot) ||
           token.is(Kind::Operator);
}

}  // namespace

QString quotedName(QString name) { return u'"' + name.replace(u'"', "\"\""_L1) + u'"'; }

QString quotedText(const QString& text) { return u'\'' + doubledApostrophes(text) + u'\''; }

StatementWriter::StatementWriter(const std::vector<Token>& tokens, const EngineWords& words)
    : m_tokens(tokens), m_words(words) {
    m_pieces.reserve(tokens.size());
    for (std::size_t i = 0; i < tokens.size(); ++i)
        m_pieces.push_back({{}, written(i), {}});
}

QString StatementWriter::written(std::size_t i) const {
    const Token& token = m_tokens[i];
    switch (token.kind) {
    case Kind::Bracket:
        if (isAlias(i))
            return m_words.alias(token.text, false);
        refuseStranger(i);
        return writtenPath(token.text, m_words);
    case Kind::Derived:
        return derivedTable(token.text, m_words);
    case Kind::String:
        return quotedText(token.text);
    case Kind::Date:
        return sqlLiteral(dateLiteral(token.text));
    case Kind::Identity:
        return m_words.lastKey();
    case Kind::Name:
        if (isAlias(i))
            return m_words.alias(token.text, true);
        if (!isName(i))
            return token.text;
        refuseStranger(i);
        return m_words.name(token.text, true);
    default:
        return token.text;
    }
}

/// A name in brackets, or with a table in front, could still be a function of the engine's: one that is called, and one
/// that a server takes for a column of the whole row.
void StatementWriter::refuseStranger(std::size_t i) const {
    const TokenView tokens(m_tokens);
    const QString& name = m_tokens[i].text;
    const bool isTarget = i > 0 && m_tokens[i - 1].isWord("INTO");
    if (tokens.at(i + 1, Kind::Open) && !isTarget)
        refuseStatement(u"No such function: %1"_s.arg(name));
    const QString column = name.section(u'.', -1);
    const bool ofTable = name.contains(u'.') || (i > 0 && tokens.at(i - 1, Kind::Dot));
    if (ofTable && !m_words.knowsColumn(column) && !definesAlias(column))
        refuseStatement(u"No such column: %1"_s.arg(name));
}

bool StatementWriter::definesAlias(const QString& name) const {
    for (std::size_t i = 0; i < m_tokens.size(); ++i) {
        const QString& text = m_tokens[i].text;
        const bool defines = m_tokens[i].is(Kind::Derived)
                                 ? text.contains(name, Qt::CaseInsensitive)
                                 : isAlias(i) && text.compare(name, Qt::CaseInsensitive) == 0;
        if (defines)
            return true;
    }
    return false;
}

/// Not a word of the dialect, and not a function.
bool StatementWriter::isName(std::size_t i) const {
    const TokenView tokens(m_tokens);
    if (tokens.at(i + 1, Kind::Dot) || (i > 0 && tokens.at(i - 1, Kind::Dot)))
        return true;
    const bool takesColumns = i > 0 && m_tokens[i - 1].isWord("INTO");
    return tokens.nameAt(i) && (takesColumns || !tokens.at(i + 1, Kind::Open)) &&
           !isOneOf(m_tokens[i], {"NULL", "TRUE", "FALSE"});
}

void StatementWriter::wrap(std::size_t begin, std::size_t end, const QString& before, const QString& after) {
    m_pieces[begin].before.prepend(before);
    m_pieces[end - 1].after.append(after);
}

QString StatementWriter::join(std::size_t begin, std::size_t end) const {
    QString sql;
    for (std::size_t i = begin; i < end; ++i) {
        if (i > begin && (m_tokens[i].spaceBefore || wouldMerge(i)))
            sql += u' ';
        const Piece& piece = m_pieces[i];
        sql += piece.before + piece.text + piece.after;
    }
    return sql;
}

/// Two words, texts or numbers side by side would be read as one.
bool StatementWriter::wouldMerge(std::size_t i) const {
    const Token& before = m_tokens[i - 1];
    const Token& here = m_tokens[i];
    if (before.is(Kind::Number) || here.is(Kind::Number))
        return before.is(Kind::Dot) || here.is(Kind::Dot) || (!isMark(before) && !isMark(here));
    return (!isMark(before) && !isMark(here)) || (before.is(Kind::Operator) && here.is(Kind::Operator));
}

}  // namespace platform
