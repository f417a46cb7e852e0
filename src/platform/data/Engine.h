// What keeps the records of a connection: everything that differs between one store and another lies behind this.
// One thread alone uses an engine.
#pragma once

#include "platform/data/Dialect.h"
#include "platform/data/RowKeys.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace platform {

struct ColumnType;
class FieldList;

/// Asked between the pieces of long work; true ends it.
using Cancelled = std::function<bool()>;

/// A column of a result; the tables' own names are empty where the value is calculated.
struct ResultColumn {
    QString name, declaredType, baseTable, baseColumn;
};

/// One prepared statement; Query tells what each means.
class EngineQuery {
public:
    virtual ~EngineQuery() = default;
    virtual void bind(int parameter, const QVariant& value) = 0;
    virtual bool step() = 0;
    virtual void reset() = 0;
    virtual bool isReadOnly() const = 0;
    virtual std::int64_t changedRows() const = 0;
    virtual int columnCount() const = 0;
    virtual ResultColumn column(int column) const = 0;
    virtual std::int64_t integer(int column) const = 0;
    virtual QVariant value(int column, const ColumnType& type) const = 0;
};

/// The rows of a SELECT on one table, which are known by their keys.
class KeyedSelect {
public:
    using Row = std::vector<QVariant>;
    virtual ~KeyedSelect() = default;
    /// In the order of the result. Asked once, before any row.
    virtual RowKeys keys() = 0;
    virtual const FieldList& fields() const = 0;
    /// The rows of these keys, as of one moment; an empty one where there is none any more.
    virtual std::vector<Row> rows(std::span<const std::int64_t> keys) = 0;
    /// How many that stand one behind the other are best read at once, where asking costs more than rows.
    virtual int rowsAtOnce() const { return 1; }
};

/// Which state of the records the statements of a span see where others change them meanwhile. In a file nobody does.
enum class Sees {
    Latest,  ///< each statement what others have kept until then; what others change at the same time is waited for
    OneMoment  ///< all of them that of the first one; a change of a row that another one has changed since throws Overtaken
};

/// An open span of changes; taken back unless it was committed.
class EngineSpan {
public:
    virtual ~EngineSpan() = default;
    virtual void commit() = 0;
};

/// A value as a function of the engine gets it: its kind ('i' whole, 'r' real, 't' text, 'b' bytes, 'n' NULL), and its
/// bytes, of a number those of its text; the engine's own, so they are copied by whoever keeps them beyond the call.
struct PlainValue {
    char kind = 'n';
    QByteArray bytes;
};
/// Gives a QByteArray, a QString, or nothing for NULL.
using EngineFunction = std::function<QVariant(const std::vector<PlainValue>& values)>;
/// Whether the same values always give the same result.
enum class FunctionResult { Same, OfTheMoment };

/// While it is open, all that is read is of one moment, whichever statements read it.
class EngineLook {
public:
    virtual ~EngineLook() = default;
};

/// Who a connection works for.
struct HistoryContext {
    QString person;                     ///< account and computer, "rkent@bench2"
    QString program;                    ///< its version
    std::function<int()> minutesAhead;  ///< of UTC, by the clock of the computer; asked at each change
};

class Engine {
public:
    Engine() = default;
    virtual ~Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// The path of a file, or the address of a server, as it was opened.
    virtual QString location() const = 0;
    /// Whether the records lie on a server, where other programs work on them too. Then there is no file to copy, to lock,
    /// to put back or to tidy up around.
    virtual bool isServer() const = 0;
    /// Whether nothing can be written here: each change throws permissionDenied.
    virtual bool isReadOnly() const = 0;
    /// From now on each change by this connection throws permissionDenied.
    virtual void refuseChanges() = 0;
    /// Whether each change throws permissionDenied, for either reason.
    virtual bool refusesChanges() = 0;
    /// Another number after any change, by this connection or by any other program, also after one was taken back.
    virtual std::int64_t changeState() = 0;
    /// The same by this connection alone, where others would have to be asked for: costs no way to a server.
    virtual std::int64_t ownChangeState() { return changeState(); }

    /// How the dialect's words are written here.
    virtual const EngineWords& words() const = 0;
    /// Prepares a statement in the engine's own words, of the program's own making. original: for the error's report.
    virtual std::unique_ptr<EngineQuery> prepare(const QString& sql, const QString& original) = 0;
    /// Prepares what a statement of the dialect was translated to, which a user may have had a hand in.
    virtual std::unique_ptr<EngineQuery> prepareTranslated(const Translation& translation,
                                                           const QString& statement) = 0;
    /// Throws RuntimeError(statement) where this SELECT can't be read by keys, or is wrong in itself.
    virtual std::unique_ptr<KeyedSelect> keyedSelect(const Translation& translation,
                                                     const QString& statement) = 0;
    /// Adds a row; gives its key.
    virtual std::int64_t insert(const QString& table, const QStringList& columns,
                                const std::vector<QVariant>& values, const QString& statement) = 0;
    /// Adds rows as insert does, one after the other: taken hears the key of each. The first that is refused ends it and
    /// throws; those in front of it stay. A server gets the rows of an open span by one message.
    using KeyTaker = std::function<void(std::int64_t key)>;
    virtual void insertInTurn(const QString& table, const QStringList& columns,
                              const std::vector<std::vector<QVariant>>& rows, const QString& statement,
                              const KeyTaker& taken) {
        for (const std::vector<QVariant>& row : rows)
            taken(insert(table, columns, row, statement));
    }
    /// Begins a span of changes, or one within another, which sees what that one sees. statement: what a failure's report
    /// names. Throws permissionDenied when nothing can be written. See Transaction.
    virtual std::unique_ptr<EngineSpan> beginSpan(const QString& statement, Sees sees) = 0;
    /// Others wait, from now to the end of the open span, before they change this row or one that refers to it.
    virtual void holdRow(const QString& /*table*/, std::int64_t /*key*/) {}
    /// Nothing is changed by this connection while it is open, but within a span that was open before. Others may be kept
    /// from writing meanwhile.
    virtual std::unique_ptr<EngineLook> beginLook() = 0;

    // The catalogue.
    virtual QStringList tables() = 0;
    /// In their order.
    virtual QStringList columns(const QString& table) = 0;
    /// Empty when there is no such column.
    virtual QString declaredType(const QString& table, const QString& column) = 0;
    /// Whether the column is (part of) the table's primary key.
    virtual bool isKey(const QString& table, const QString& column) = 0;
    /// Whether rows of this name can be read by their keys: those of a table, not of a view.
    virtual bool hasKeys(const QString& table) = 0;
    /// The highest key that the table has ever given out; 0 before the first.
    virtual std::int64_t lastKey(const QString& table) = 0;
    /// The same of several, in their order.
    virtual std::vector<std::int64_t> lastKeys(const QStringList& tables) {
        std::vector<std::int64_t> keys;
        for (const QString& table : tables)
            keys.push_back(lastKey(table));
        return keys;
    }

    /// The mark by which the store tells its version; 0 when it has none.
    virtual std::int64_t version() = 0;
    /// Runs all statements and sets the mark, or does nothing. source: whom the report of a broken relation names.
    virtual void migrate(const QStringList& statements, std::int64_t version, const QString& source) = 0;

    /// Keeps a name for this connection until it is closed, among all that work on the records, also over a line that was
    /// lost meanwhile. False while another one keeps it. Where nobody shares the records there is nobody to ask.
    virtual bool keepName(const QString& /*name*/) { return true; }
    /// Gives it up; does nothing where it is not kept.
    virtual void giveUpName(const QString& /*name*/) {}
    /// What the connection that keeps a name says of itself, "rkent@bench2 1.6"; empty where none does.
    virtual QString nameKeeper(const QString& /*name*/) { return {}; }

    /// What is asked over each line that takes the place of a lost one, and of its answer why nobody may work by it; empty
    /// where all is well. Then whatever would go by that line throws general with this reason.
    virtual void setAdmission(const QString& /*question*/,
                              const std::function<QString(const QString& answer)>& /*refusal*/) {}
    /// Whether the last line was refused so.
    virtual bool isRefused() const { return false; }

    /// Tells a store that writes and seals its own history who changes its records from now on. False where it has none of
    /// that kind: then a function of the program seals what the store writes.
    virtual bool tellWriter(const HistoryContext& /*writer*/) { return false; }
    /// What the changes are to the user from now on, nothing special where both are empty. Never throws: such a store
    /// may be told with the next statement, any other one keeps to the functions.
    virtual void tellDeed(const QString& /*deed*/, const QString& /*note*/) noexcept {}

    /// Gives statements a function of any number of values.
    virtual void addFunction(const char* name, FunctionResult result, EngineFunction function) = 0;

    /// To be called every few seconds while nothing else is done: notices a line that has broken, or that brings no answer
    /// any more, and opens another one, so that no click has to wait for that. Waits for nothing itself.
    virtual void lookAfter() {}
    /// For how many milliseconds the store has not been heard, where its line is known to be broken; 0 while it stands.
    virtual std::int64_t awayFor() const { return 0; }

    /// See ReadAhead: until the end lists that are known by keys bring their first rows along, and the next that is read
    /// these SELECTs of prepareTranslated, which are likely to be run behind it in this order.
    virtual void beginReadAhead(const QStringList& /*statements*/) {}
    virtual void endReadAhead() {}
    /// For what never changes while the store is open, under a name of whoever has asked for it, so that it is asked once.
    QVariant& kept(const QString& name) { return m_kept[name]; }

    /// What is wrong with the store as a whole, a line each; a cancelled look gives what was found until then.
    virtual QStringList problems(const Cancelled& cancelled) = 0;

private:
    QHash<QString, QVariant> m_kept;
};

}  // namespace platform
