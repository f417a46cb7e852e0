// The rules that carry a tokenised statement over to the engine: its kind, the values that INSERT and UPDATE give
// to typed columns, and the lists that can be read by their keys.
#include "platform/data/Dialect.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/ColumnType.h"
#include "platform/data/DateLiteral.h"
#include "platform/data/Expressions.h"
#include "platform/data/Lexer.h"
#include "platform/data/OrderReader.h"
#include "platform/data/StatementWriter.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = Token::Kind;
using Tokens = std::vector<Token>;

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
    refuseStatement(u"A statement begins with SELECT, INSERT, UPDATE or DELETE"_s);
}

/// Converts the values of an INSERT or UPDATE to the types of their columns.
class ValueRule {
public:
    ValueRule(const Tokens& tokens, const DeclaredType& declaredType, StatementWriter& writer)
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
        const QString declared = m_declaredType(table, column);
        const ColumnType type = ColumnType::fromDeclaration(declared);
        if (type.kind == FieldKind::Computed || begin >= end)
            return;
        const std::optional<QVariant> value = literal(begin, end);
        if (!value) {
            m_writer.wrap(begin, end, m_writer.words().valueFor(declared));
            return;
        }
        if (type.isText()) {
            if (at(begin, Kind::Number) && end == begin + 1)
                m_writer.replace(begin, m_writer.words().numberForText(m_tokens[begin].text));
            return;
        }
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
    StatementWriter& m_writer;
};

/// Finds the parts of "SELECT columns FROM table [alias] [WHERE ...] [ORDER BY ...]".
class SingleTable {
public:
    SingleTable(const Tokens& tokens, const StatementWriter& writer, const EngineWords& words)
        : m_tokens(tokens), m_writer(writer), m_words(words) {}

    void describe(Translation& translation) const {
        const std::size_t from = endOfColumns();
        if (from == 0 || !isName(from + 1))
            return;
        const Token& table = m_tokens[from + 1];
        std::size_t rest = from + 2;
        QString name = m_writer.text(from + 1);
        if (isName(rest) && !isClause(rest))
            name = m_writer.text(rest++);
        if (!isPlainRest(rest))
            return;
        const QString source = m_writer.join(from, rest);
        translation.table = table.text;
        translation.whole = rest == m_tokens.size();
        translation.rowKey = name + u'.' + m_words.rowKey(table.text);
        translation.keysSql =
            u"SELECT %1 %2 %3"_s.arg(translation.rowKey, source, m_writer.join(rest, m_tokens.size()));
        translation.rowSql = u"%1 %2 WHERE %3 = ?"_s.arg(m_writer.join(0, from), source, translation.rowKey);
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
    bool isPlainRest(std::size_t begin) const {
        if (begin < m_tokens.size() && !isClause(begin))
            return false;
        int depth = 0;
        bool ordered = false;
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
    const StatementWriter& m_writer;
    const EngineWords& m_words;
};

}  // namespace

Around EngineWords::valueFor(const QString& declaredType) const {
    return {u"dialect_value(%1, "_s.arg(quotedText(declaredType)), u")"_s};
}

QString EngineWords::hex(const QString& bytes) const { return u"hex(%1)"_s.arg(bytes); }

QString EngineWords::literalOf(const QString& column, const QString&) const {
    return u"quote(%1)"_s.arg(quotedName(column));
}

QString EngineWords::clock(const QString& moment, const QString& minutesAhead) const {
    return u"strftime('%Y-%m-%d %H:%M:%f', %1, %2 || ' minutes')"_s.arg(moment, minutesAhead);
}

QString EngineWords::listedNumbers(const QString& place) const { return u"json_each(%1)"_s.arg(place); }

QString EngineWords::listedTexts(const QString& place) const { return u"json_each(%1)"_s.arg(place); }

QString EngineWords::listedTriples(const QString& place) const {
    return u"(SELECT json_extract(value, '$[0]') AS one, json_extract(value, '$[1]') AS two, "
           "json_extract(value, '$[2]') AS three FROM json_each(%1))"_s.arg(place);
}

QString translateOrder(const QString& columns, const EngineWords& words) {
    const Tokens tokens = statementTokens(u"ORDER BY "_s + columns);
    StatementWriter writer(tokens, words);
    writeOrders(tokens, writer);
    return writer.join(2, tokens.size());
}

Translation translateStatement(const QString& statement, const EngineWords& words,
                               const DeclaredType& declaredType) {
    try {
        const Tokens tokens = statementTokens(statement);
        Translation translation;
        translation.kind = kindOf(tokens);
        StatementWriter writer(tokens, words);
        rewriteExpressions(tokens, writer);
        writeOrders(tokens, writer);
        if (declaredType && translation.kind == StatementKind::Insert)
            ValueRule(tokens, declaredType, writer).insert();
        if (declaredType && translation.kind == StatementKind::Update)
            ValueRule(tokens, declaredType, writer).update();
        translation.sql = writer.join();
        if (translation.kind == StatementKind::Insert && tokens.size() > 2)
            translation.table = tokens[2].text;
        if (translation.kind == StatementKind::Select) {
            translation.order = rowOrder(tokens, writer);
            SingleTable(tokens, writer, words).describe(translation);
        }
        return translation;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), failure.description(), u"Database"_s, statement);
    }
}

}  // namespace platform
