// The rules that carry a tokenised statement over to SQLite: names, strings, dates, derived tables,
// the last auto-number, and the values that INSERT and UPDATE give to typed columns.
#include "platform/data/Dialect.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/data/ColumnType.h"
#include "platform/data/DateLiteral.h"
#include "platform/data/Lexer.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = Token::Kind;
using Tokens = std::vector<Token>;

/// More parentheses than any sensible statement has, and fewer than the engine's own limit.
constexpr int deepest = 50;

[[noreturn]] void refuse(const QString& reason) { throw RuntimeError(error::statement, reason); }

QString quotedPath(const QString& path) {
    QStringList parts = path.split(u'.');
    for (QString& part : parts)
        part = quotedName(part);
    return parts.join(u'.');
}

QString quotedText(const QString& text) { return u'\'' + doubledApostrophes(text) + u'\''; }

/// Parentheses close what they open, not too deep; gives the tokens without a final semicolon.
Tokens checked(Tokens tokens) {
    if (!tokens.empty() && tokens.back().is(Kind::Semicolon))
        tokens.pop_back();
    int depth = 0;
    for (const Token& token : tokens) {
        if (token.is(Kind::Semicolon))
            refuse(u"Characters found after end of statement"_s);
        depth += token.is(Kind::Open) ? 1 : token.is(Kind::Close) ? -1 : 0;
        if (depth < 0)
            refuse(u"Extra ) in statement"_s);
        if (depth > deepest)
            refuse(u"Statement is nested too deeply"_s);
    }
    if (depth > 0)
        refuse(u"Missing ) in statement"_s);
    return tokens;
}

StatementKind kindOf(const Tokens& tokens) {
    if (!tokens.empty()) {
        if (tokens.front().isWord("SELECT"))
            return StatementKind::Select;
        if (tokens.front().isWord("INSERT"))
            return StatementKind::Insert;
        if (tokens.front().isWord("UPDATE"))
            return StatementKind::Update;
        if (tokens.front().isWord("DELETE"))
            return StatementKind::Delete;
    }
    refuse(u"A statement begins with SELECT, INSERT, UPDATE or DELETE"_s);
}

class Writer {
public:
    explicit Writer(const Tokens& tokens) : m_tokens(tokens) {
        m_pieces.reserve(tokens.size());
        for (std::size_t i = 0; i < tokens.size(); ++i)
            m_pieces.push_back(piece(i));
    }

    void replace(std::size_t token, const QString& text) { m_pieces[token] = text; }
    const QString& text(std::size_t token) const { return m_pieces[token]; }

    /// Tokens from begin to before end, with the blanks that stood between them.
    QString join(std::size_t begin, std::size_t end) const {
        QString sql;
        for (std::size_t i = begin; i < end; ++i) {
            if (i > begin && (m_tokens[i].spaceBefore || wouldMerge(i)))
                sql += u' ';
            sql += m_pieces[i];
        }
        return sql;
    }
    QString join() const { return join(0, m_tokens.size()); }

private:
    bool isAlias(std::size_t i) const { return i > 0 && m_tokens[i - 1].isWord("AS"); }

    QString piece(std::size_t i) const {
        const Token& token = m_tokens[i];
        switch (token.kind) {
        case Kind::Name:
            return name(i);
        case Kind::Bracket:
            return isAlias(i) ? quotedName(token.text) : quotedPath(token.text);
        case Kind::Derived:
            return derived(token.text);
        case Kind::String:
            return quotedText(token.text);
        case Kind::Date:
            return sqlLiteral(dateLiteral(token.text));
        case Kind::Identity:
            return u"last_insert_rowid()"_s;
        default:
            return token.text;
        }
    }

    QString name(std::size_t i) const {
        const Token& token = m_tokens[i];
        const bool qualified = (i > 0 && m_tokens[i - 1].is(Kind::Dot)) ||
                               (i + 1 < m_tokens.size() && m_tokens[i + 1].is(Kind::Dot));
        if (!qualified && token.isWord("TRUE"))
            return u"1"_s;
        if (!qualified && token.isWord("FALSE"))
            return u"0"_s;
        return token.text;
    }

    static QString derived(const QString& statement) {
        const Tokens tokens = checked(tokenize(statement));
        return u'(' + Writer(tokens).join() + u')';
    }

    /// Two words, texts or numbers side by side would be read as one.
    bool wouldMerge(std::size_t i) const {
        const auto isMark = [](const Token& token) {
            return token.is(Kind::Open) || token.is(Kind::Close) || token.is(Kind::Comma) ||
                   token.is(Kind::Dot) || token.is(Kind::Operator);
        };
        const Token& before = m_tokens[i - 1];
        const Token& here = m_tokens[i];
        if (before.is(Kind::Number) || here.is(Kind::Number))
            return before.is(Kind::Dot) || here.is(Kind::Dot) || (!isMark(before) && !isMark(here));
        return (!isMark(before) && !isMark(here)) || (before.is(Kind::Operator) && here.is(Kind::Operator));
    }

    const Tokens& m_tokens;
    std::vector<QString> m_pieces;
};

/// Converts the values of an INSERT or UPDATE to the types of their columns.
class ValueRule {
public:
    ValueRule(const Tokens& tokens, const DeclaredType& declaredType, Writer& writer)
        : m_tokens(tokens), m_declaredType(declaredType), m_writer(writer) {}

    /// INSERT INTO table ( columns ) VALUES ( values )
    void insert() {
        if (!wordAt(1, "INTO") || !nameAt(2) || !at(3, Kind::Open))
            return;
        QStringList columns;
        std::size_t i = 4;
        for (; nameAt(i); i += 2) {
            columns << m_tokens[i].text;
            if (!at(i + 1, Kind::Comma))
                break;
        }
        if (!at(i + 1, Kind::Close) || !wordAt(i + 2, "VALUES") || !at(i + 3, Kind::Open))
            return;
        i += 4;
        for (const QString& column : columns) {
            const std::size_t end = endOfValue(i);
            convert(m_tokens[2].text, column, i, end);
            if (!at(end, Kind::Comma))
                return;
            i = end + 1;
        }
    }

    /// UPDATE table SET column = value, ...
    void update() {
        if (!nameAt(1) || !wordAt(2, "SET"))
            return;
        for (std::size_t i = 3; nameAt(i) && at(i + 1, Kind::Operator);) {
            const std::size_t end = endOfValue(i + 2);
            convert(m_tokens[1].text, m_tokens[i].text, i + 2, end);
            if (!at(end, Kind::Comma))
                return;
            i = end + 1;
        }
    }

private:
    bool at(std::size_t i, Kind kind) const { return i < m_tokens.size() && m_tokens[i].is(kind); }
    bool nameAt(std::size_t i) const { return at(i, Kind::Name) || at(i, Kind::Bracket); }
    bool wordAt(std::size_t i, const char* word) const {
        return i < m_tokens.size() && m_tokens[i].isWord(word);
    }

    /// Behind the last token of the value that starts here.
    std::size_t endOfValue(std::size_t i) const {
        int depth = 0;
        for (; i < m_tokens.size(); ++i) {
            const Token& token = m_tokens[i];
            if (depth == 0 && (token.is(Kind::Comma) || token.is(Kind::Close) || token.isWord("WHERE")))
                break;
            depth += token.is(Kind::Open) ? 1 : token.is(Kind::Close) ? -1 : 0;
        }
        return i;
    }

    /// The value of a literal, nothing for NULL and for anything that has to be computed.
    std::optional<QVariant> literal(std::size_t begin, std::size_t end) const {
        const bool isSigned = end == begin + 2 && at(begin, Kind::Operator) && at(begin + 1, Kind::Number) &&
                              (m_tokens[begin].text == u"-" || m_tokens[begin].text == u"+");
        if (isSigned)
            return (m_tokens[begin].text == u"-" ? u"-"_s : QString()) + m_tokens[begin + 1].text;
        if (end != begin + 1)
            return {};
        const Token& token = m_tokens[begin];
        if (token.is(Kind::String) || token.is(Kind::Number))
            return token.text;
        if (token.is(Kind::Date))
            return dateLiteral(token.text);
        if (token.isWord("TRUE") || token.isWord("FALSE"))
            return token.isWord("TRUE");
        return {};
    }

    void convert(const QString& table, const QString& column, std::size_t begin, std::size_t end) {
        const std::optional<QVariant> value = literal(begin, end);
        if (!value)
            return;
        const ColumnType type = ColumnType::fromDeclaration(m_declaredType(table, column));
        if (type.kind == ColumnKind::Computed || type.isText())
            return;
        try {
            m_writer.replace(begin, sqlLiteral(type.convert(*value)));
        } catch (const RuntimeError& failure) {
            throw RuntimeError(error::dataMismatch,
                               u"Data type mismatch: %1 does not fit the column %2 (%3)"_s.arg(
                                   quotedText(value->toString().left(80)), column, failure.description()));
        }
        if (end == begin + 2)
            m_writer.replace(begin + 1, QString());
    }

    const Tokens& m_tokens;
    const DeclaredType& m_declaredType;
    Writer& m_writer;
};

/// Finds the parts of "SELECT columns FROM table [alias] [WHERE ...] [ORDER BY ...]".
class SingleTable {
public:
    SingleTable(const Tokens& tokens, const Writer& writer) : m_tokens(tokens), m_writer(writer) {}

    void describe(Translation& translation) const {
        const std::size_t from = endOfColumns();
        if (from == 0 || !isName(from + 1))
            return;
        const Token& table = m_tokens[from + 1];
        std::size_t rest = from + 2;
        QString name = m_writer.text(from + 1);
        if (isName(rest) && !isClause(rest))
            name = m_writer.text(rest++);
        bool ordered = false;
        if (!isPlainRest(rest, ordered))
            return;
        const QString source = m_writer.join(from, rest);
        translation.table = table.text;
        translation.ordered = ordered;
        translation.rowId = name + u".rowid"_s;
        translation.keysSql =
            u"SELECT %1 %2 %3"_s.arg(translation.rowId, source, m_writer.join(rest, m_tokens.size()));
        translation.rowSql = u"%1 %2 WHERE %3 = ?"_s.arg(m_writer.join(0, from), source, translation.rowId);
    }

private:
    bool isName(std::size_t i) const {
        return i < m_tokens.size() && (m_tokens[i].is(Kind::Name) || m_tokens[i].is(Kind::Bracket));
    }
    bool isClause(std::size_t i) const { return m_tokens[i].isWord("WHERE") || m_tokens[i].isWord("ORDER"); }

    /// Place of FROM behind a list of plain columns, 0 when it is anything else.
    std::size_t endOfColumns() const {
        for (std::size_t i = 1; i < m_tokens.size(); ++i) {
            const Token& token = m_tokens[i];
            if (token.isWord("FROM"))
                return i > 1 ? i : 0;
            if (token.isWord("DISTINCT") || token.isWord("CASE"))
                return 0;
            const bool plain =
                isName(i) || token.is(Kind::Dot) || token.is(Kind::Comma) || token.text == "*"_L1;
            if (!plain)
                return 0;
        }
        return 0;
    }

    /// Whether only conditions and an order by columns follow.
    bool isPlainRest(std::size_t begin, bool& ordered) const {
        if (begin < m_tokens.size() && !isClause(begin))
            return false;
        int depth = 0;
        for (std::size_t i = begin; i < m_tokens.size(); ++i) {
            const Token& token = m_tokens[i];
            depth += token.is(Kind::Open) ? 1 : token.is(Kind::Close) ? -1 : 0;
            if (depth > 0)
                continue;
            ordered = ordered || token.isWord("ORDER");
            if (ordered && token.is(Kind::Number))
                return false;
            for (const char* word : {"GROUP", "HAVING", "UNION", "INTERSECT", "EXCEPT", "LIMIT", "WINDOW"}) {
                if (token.isWord(word))
                    return false;
            }
        }
        return true;
    }

    const Tokens& m_tokens;
    const Writer& m_writer;
};

}  // namespace

Translation translateStatement(const QString& statement, const DeclaredType& declaredType) {
    try {
        const Tokens tokens = checked(tokenize(statement));
        Translation translation;
        translation.kind = kindOf(tokens);
        Writer writer(tokens);
        if (declaredType && translation.kind == StatementKind::Insert)
            ValueRule(tokens, declaredType, writer).insert();
        if (declaredType && translation.kind == StatementKind::Update)
            ValueRule(tokens, declaredType, writer).update();
        translation.sql = writer.join();
        if (translation.kind == StatementKind::Select)
            SingleTable(tokens, writer).describe(translation);
        return translation;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), failure.description(), u"Database"_s, statement);
    }
}

QString quotedName(QString name) { return u'"' + name.replace(u'"', "\"\""_L1) + u'"'; }

QString toSqlite(const QString& statement) { return translateStatement(statement).sql; }

}  // namespace platform
