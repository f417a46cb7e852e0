// A result set: rows of a statement with a current row, fields by position or name, and, for
// client-side sets, edits that go to the table of each column by themselves.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/FieldKind.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

namespace error {
inline constexpr std::int32_t notUpdatable = 3251;  ///< the set, row or field can't be changed
}  // namespace error

enum class CursorLocation { Default = 2, Client = 3 };
enum class LockType { Default = -1, ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };

/// What a column is: its name in the set, its kind and defined size in characters (texts; else bytes).
struct FieldInfo {
    QString name;
    FieldKind kind = FieldKind::Computed;
    int definedSize = 0;
    QString baseTable;  ///< empty for computed columns
    QString baseColumn;
};

class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

class Recordset {
public:
    static RecordsetPtr create();
    ~Recordset();

    /// Columns by which rows stand that the statement has no order for, before their keys: "RXs.rxs_Date". For a set
    /// that is not open yet; the statement's text stays as it is.
    void setOrderWithin(const QString& columns);
    /// Asked now and then while a client-side cursor reads all rows; false ends that, and the set stays closed. For a set
    /// that is not open yet.
    void setGoesOn(std::function<bool()> goesOn);
    /// Opens and stands on the first row (bof and eof are both true on an empty set). Rows that the statement leaves in
    /// any order stand in that of their keys, whatever indexes there are. Every set knows its rows and
    /// their order from here on, whatever others add, so that no kind of cursor is asked for. Throws as execute.
    void open(const QString& statement, const ConnectionPtr& connection, LockType lock = LockType::Default,
              CursorLocation location = CursorLocation::Default);
    void close();
    bool isOpen() const;
    /// Runs the statement again and stands on the first row.
    void requery();

    std::int64_t recordCount() const;
    bool bof() const;
    bool eof() const;
    /// On an empty set moveFirst and moveLast do nothing; moveNext at eof and movePrevious at bof throw
    /// noCurrentRecord.
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    /// Row number from 0, -1 when there is no current row. A row being added has none yet.
    std::int64_t position() const;
    void setPosition(std::int64_t row);
    /// Forward from the current row to the first with field = value; "LogID = 12". Stands at eof when
    /// there is none.
    void find(const QString& criterion);

    int fieldCount() const;
    const FieldInfo& fieldInfo(int field) const;
    /// Position of a name (case ignored); throws itemNotFound.
    int fieldIndex(const QString& name) const;
    bool hasField(const QString& name) const;
    /// NULL (invalid), qint64, double, Currency, bool, QDateTime or QString by the declared type.
    /// Throws noCurrentRecord or itemNotFound.
    QVariant value(int field) const;
    QVariant value(const QString& name) const;
    /// A value of another row, for a grid; the current row stays.
    QVariant valueAt(std::int64_t row, int field) const;

    /// Changes a field of the current row. On a connected client-side or addNew row it is pending until
    /// update(); moving to another row updates by itself. On a disconnected set it stays in memory.
    /// The value is converted to the column's type; throws typeMismatch or dataMismatch when it can't be,
    /// with the row unchanged.
    void setValue(int field, const QVariant& value);
    void setValue(const QString& name, const QVariant& value);
    /// Starts a new row; update() inserts it.
    void addNew();
    /// Writes pending changes: for each table with changed columns one UPDATE by its key column, or one
    /// INSERT. On failure the pending changes are dropped, the row shows the stored values, and it throws.
    void update();
    /// addNew, setValue of these fields in their order, and update for each row, one after the other: the first that is
    /// refused ends it and throws, those in front of it stay. The lines of a batch reach a server together.
    void addRows(const QStringList& names, const std::vector<std::vector<QVariant>>& rows);
    void cancelUpdate();
    bool hasPendingChanges() const;

    /// The rows as they are now in a set of its own, which stands on the first row, is cut off from the
    /// database and stays in memory.
    RecordsetPtr copy() const;
    /// Cuts the set off from the database: what follows stays in memory.
    void disconnect();
    bool isConnected() const;

    /// Called after the current row, its values or the set changed; for bound grids. Returns a handle.
    int onChange(std::function<void()> callback);
    void removeCallback(int handle);

private:
    Recordset();
    struct Private;
    std::unique_ptr<Private> d;
};

}  // namespace platform
