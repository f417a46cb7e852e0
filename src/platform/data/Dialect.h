// Turns a statement of the program's dialect into one of the engine: a lexer and a few small rules.
// The dialect and each rule are described in docs/database.md.
#pragma once

#include <QString>
#include <functional>
#include <utility>
#include <vector>

namespace platform {

/// A name as engines take it, in double quotes.
QString quotedName(QString name);

/// Declared type of a column of a table, empty when there is none.
using DeclaredType = std::function<QString(const QString& table, const QString& column)>;

/// What is put around an expression.
struct Around {
    QString before, after;
};

/// How an engine writes what each writes in its own way. What is not said otherwise is written as a file takes it.
class EngineWords {
public:
    EngineWords() = default;
    virtual ~EngineWords() = default;
    EngineWords(const EngineWords&) = delete;
    EngineWords& operator=(const EngineWords&) = delete;

    /// The key that was given to the newest row.
    virtual QString lastKey() const = 0;
    /// The column by which a row of this table is known.
    virtual QString rowKey(const QString& table) const = 0;
    /// The name of a table, a column or what stands for one, which was written bare or in brackets. Throws statement
    /// for one that must not be asked for.
    virtual QString name(const QString& name, bool bare) const { return bare ? name : quotedName(name); }
    /// False where a name behind that of a table is no column of any, and could mean something else here.
    virtual bool knowsColumn(const QString& /*name*/) const { return true; }
    /// The name that a statement gives to a column.
    virtual QString alias(const QString& name, bool bare) const { return bare ? name : quotedName(name); }
    /// Behind what rows are ordered by, so that nothing comes before every value.
    virtual QString nullsPlace(bool /*descending*/) const { return {}; }

    /// A condition as the value -1 or 0.
    virtual Around truthAsValue() const { return {QStringLiteral("-("), QStringLiteral(")")}; }
    /// Whether a column is a condition as it stands.
    virtual bool columnIsCondition() const { return true; }
    /// A text that stands beside no column.
    virtual Around textAlone() const { return {}; }
    /// A literal number that a column of texts gets.
    virtual QString numberForText(const QString& number) const { return number; }
    /// A calculated value that a column of this declared type gets.
    virtual Around valueFor(const QString& declaredType) const;
    /// The function that stands for this operator between two values; empty where one function takes a whole row of
    /// them, operators included.
    virtual QString operatorFunction(const QString& /*sign*/) const { return {}; }
    /// A value that such a function takes.
    virtual Around operatorValue(const QString& /*sign*/) const { return {}; }
    virtual QString function(const QString& name) const { return name; }
    /// The operator Like before this literal pattern, and the pattern; both empty where they stay as they are. Throws
    /// statement for a pattern that is none.
    virtual std::pair<QString, QString> like(const QString& /*pattern*/, bool /*negated*/) const {
        return {};
    }
    /// A text that is compared by that operator.
    virtual Around likeText() const { return {}; }

    // For statements of the program's own making, which are written for all engines.

    /// Bytes as hexadecimal digits.
    virtual QString hex(const QString& bytes) const;
    /// The value of a column as the engine quotes it in the history.
    virtual QString literalOf(const QString& column, const QString& declaredType) const;
    /// A moment of UTC, "2026-11-21 14:05:09.123", by a clock that is so many minutes ahead of it, in the same form.
    virtual QString clock(const QString& moment, const QString& minutesAhead) const;
    /// A table with the one column "value": the numbers, or the texts as columns hold them, of a JSON array that is bound to
    /// this place ("?1").
    virtual QString listedNumbers(const QString& place) const;
    virtual QString listedTexts(const QString& place) const;
    /// The columns "one", "two" and "three" of texts, of a JSON array of arrays of three.
    virtual QString listedTriples(const QString& place) const;
};

/// What a SELECT says of the order of its rows, and by what the rest can be ordered.
struct RowOrder {
    bool complete = false;    ///< nothing can be put behind: several SELECTs, DISTINCT, sums over rows
    bool ordered = false;     ///< the statement has an ORDER BY
    bool descending = false;  ///< in its last column
    QString groups;           ///< what it groups by
    /// Table and column of each that is selected by both names, in their order.
    std::vector<std::pair<QString, QString>> columns;
};

enum class StatementKind { Select, Insert, Update, Delete };

struct Translation {
    StatementKind kind = StatementKind::Select;
    QString sql;
    /// Only for a SELECT of plain columns from one table: the row ids of the result in its order,
    /// and one row by its id (the parameter). All empty otherwise.
    QString keysSql;
    QString rowSql;
    QString table;       ///< also of an INSERT
    QString rowKey;      ///< with the name of the table
    bool whole = false;  ///< all rows of the table, in the order of their keys
    RowOrder order;      ///< of a SELECT
};

/// The statement for an engine, with what a result set needs besides. Values that INSERT and UPDATE give to a column
/// are converted to its declared type; throws dataMismatch for one that can't be. Throws statement when the text is
/// not one single statement of the allowed kinds (SELECT, INSERT, UPDATE, DELETE), has an unclosed string or
/// bracket, or a comment.
Translation translateStatement(const QString& statement, const EngineWords& words,
                               const DeclaredType& declaredType = {});

/// The columns of an ORDER BY, written for an engine.
QString translateOrder(const QString& columns, const EngineWords& words);

}  // namespace platform
