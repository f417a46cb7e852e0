// The result set: current row, moves, pending changes and the callbacks of bound grids. Rows come from
// a RowStore, changes leave by a RowWriter.
#include "platform/data/Recordset.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Criterion.h"
#include "platform/data/RowLoader.h"
#include "platform/data/RowWriter.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace platform {

struct Recordset::Private {
    ConnectionPtr connection;
    QString statement;
    QString orderWithin;
    std::function<bool()> goesOn;
    bool inMemory = false;
    bool writable = false;
    FieldList fields;
    std::unique_ptr<RowStore> rows;  // empty: closed
    std::int64_t current = 0;        // -1 before the first row, the count behind the last
    bool adding = false;
    Changes pending;
    std::map<int, std::function<void()>> callbacks;
    int lastCallback = 0;

    RowStore& store() const {
        if (!rows)
            fail(error::objectClosed, u"The result set is closed"_s);
        return *rows;
    }
    [[noreturn]] void fail(std::int32_t number, const QString& reason) const {
        throw RuntimeError(number, reason, u"Database"_s, statement);
    }
    std::int64_t count() const { return store().count(); }
    std::unique_ptr<RowStore> rowsInMemory() const {
        auto copy = std::make_unique<MemoryRows>(fields.count());
        for (std::int64_t row = 0; row < count(); ++row)
            copy->append(store().row(row));
        return copy;
    }
    bool onRow() const { return current >= 0 && current < count(); }
    void needRow() const {
        if (!adding && !onRow())
            fail(error::noCurrentRecord, u"There is no current record"_s);
    }
    void notify() const {
        const auto listeners = callbacks;  // a listener may add or remove one
        for (const auto& [handle, callback] : listeners) {
            if (callbacks.count(handle) != 0)
                callback();
        }
    }
    void load() {
        LoadedRows loaded = loadRows(connection, statement, orderWithin, inMemory, goesOn);
        fields = std::move(loaded.fields);
        rows = std::move(loaded.rows);
        current = 0;
        adding = false;
        pending.clear();
    }
    void drop() {
        adding = false;
        pending.clear();
    }
    void write();
    void writeEdit();
    void writeNew();
    Changes newRow(const std::vector<int>& places, const std::vector<QVariant>& values) const;
    void writeRows(const std::vector<Changes>& rows);
    void added(const Changes& values, std::int64_t id);
};

void Recordset::Private::write() {
    if (!adding && pending.empty())
        return;
    try {
        adding ? writeNew() : writeEdit();
    } catch (...) {
        drop();
        notify();
        throw;
    }
    drop();
}

void Recordset::Private::writeEdit() {
    RowStore::Row row = store().row(current);
    if (connection)
        RowWriter(*connection, fields, statement).update(row, pending);
    for (const auto& [field, value] : pending)
        row[static_cast<std::size_t>(field)] = value;
    store().changed(current, row);
}

void Recordset::Private::writeNew() {
    added(pending, connection ? RowWriter(*connection, fields, statement).insert(pending) : 0);
}

/// id: of the row that the table has.
void Recordset::Private::added(const Changes& values, std::int64_t id) {
    RowStore::Row row(static_cast<std::size_t>(fields.count()));
    for (const auto& [field, value] : values)
        row[static_cast<std::size_t>(field)] = value;
    if (connection && inMemory)  // else it is read when it is asked for
        RowWriter(*connection, fields, statement).readBack(id, values, row);
    store().added(row, id);
    current = count() - 1;
}

Changes Recordset::Private::newRow(const std::vector<int>& places,
                                   const std::vector<QVariant>& values) const {
    Changes row;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const int field = places[i];
        if (connection && fields.info(field).baseTable.isEmpty())
            fail(error::notUpdatable, u"The field \"%1\" can't be changed"_s.arg(fields.info(field).name));
        row[field] = fields.type(field).convert(values[i]);
    }
    return row;
}

void Recordset::Private::writeRows(const std::vector<Changes>& values) {
    if (!connection || inMemory) {
        for (const Changes& row : values)
            added(row, connection ? RowWriter(*connection, fields, statement).insert(row) : 0);
        return;
    }
    std::size_t row = 0;
    RowWriter(*connection, fields, statement).insertInTurn(values, [&](std::int64_t id) {
        added(values[row++], id);
    });
}

Recordset::Recordset() : d(std::make_unique<Private>()) {}

Recordset::~Recordset() = default;

RecordsetPtr Recordset::create() { return RecordsetPtr(new Recordset); }

void Recordset::setOrderWithin(const QString& columns) { d->orderWithin = columns; }

void Recordset::setGoesOn(std::function<bool()> goesOn) { d->goesOn = std::move(goesOn); }

void Recordset::open(const QString& statement, const ConnectionPtr& connection, LockType lock,
                     CursorLocation location) {
    if (isOpen())
        d->fail(error::invalidProcedureCall, u"The result set is already open"_s);
    if (connection)
        connection->announce(statement);
    d->connection = connection;
    d->statement = statement;
    d->inMemory = location == CursorLocation::Client;
    d->writable = lock == LockType::Optimistic || lock == LockType::Pessimistic;
    d->load();
    d->notify();
}

void Recordset::close() {
    d->store();
    d->rows.reset();
    d->fields = FieldList();
    d->connection.reset();
    d->drop();
    d->notify();
}

bool Recordset::isOpen() const { return d->rows != nullptr; }

void Recordset::requery() {
    d->store();
    if (!d->connection)
        d->fail(error::objectClosed, u"The result set is disconnected"_s);
    d->drop();
    d->connection->announce(d->statement);
    d->load();
    d->notify();
}

std::int64_t Recordset::recordCount() const { return d->count(); }

bool Recordset::bof() const { return !d->adding && (d->current < 0 || d->count() == 0); }

bool Recordset::eof() const { return !d->adding && d->current >= d->count(); }

void Recordset::moveFirst() {
    d->write();
    d->current = 0;
    d->store();
    d->notify();
}

void Recordset::moveLast() {
    d->write();
    d->current = std::max<std::int64_t>(d->count() - 1, 0);
    d->notify();
}

void Recordset::moveNext() {
    d->write();
    if (d->current >= d->count())
        d->fail(error::noCurrentRecord, u"There is no record after the last"_s);
    ++d->current;
    d->notify();
}

void Recordset::movePrevious() {
    d->write();
    if (d->current < 0 || d->count() == 0)
        d->fail(error::noCurrentRecord, u"There is no record before the first"_s);
    --d->current;
    d->notify();
}

std::int64_t Recordset::position() const { return !d->adding && d->onRow() ? d->current : -1; }

void Recordset::setPosition(std::int64_t row) {
    if (row < 0 || row >= d->count())
        d->fail(error::noCurrentRecord, u"The result set has no row %1"_s.arg(row));
    if (!d->adding && row == d->current)
        return;
    d->write();
    d->current = row;
    d->notify();
}

void Recordset::find(const QString& criterion) {
    d->write();
    const Criterion wanted(criterion);
    const int field = fieldIndex(wanted.field());
    std::int64_t row = std::max<std::int64_t>(d->current, 0);
    while (row < d->count() && !wanted.accepts(d->store().value(row, field)))
        ++row;
    d->current = row;
    d->notify();
}

int Recordset::fieldCount() const {
    d->store();
    return d->fields.count();
}

const FieldInfo& Recordset::fieldInfo(int field) const {
    d->store();
    return d->fields.info(field);
}

int Recordset::fieldIndex(const QString& name) const {
    d->store();
    const int field = d->fields.find(name);
    if (field < 0)
        d->fail(error::itemNotFound, u"The result set has no field \"%1\""_s.arg(name));
    return field;
}

bool Recordset::hasField(const QString& name) const {
    d->store();
    return d->fields.find(name) >= 0;
}

QVariant Recordset::value(int field) const {
    d->needRow();
    d->fields.info(field);
    if (const auto changed = d->pending.find(field); changed != d->pending.end())
        return changed->second;
    return d->adding ? QVariant() : d->store().value(d->current, field);
}

QVariant Recordset::value(const QString& name) const { return value(fieldIndex(name)); }

QVariant Recordset::valueAt(std::int64_t row, int field) const {
    if (row < 0 || row >= d->count())
        d->fail(error::noCurrentRecord, u"The result set has no row %1"_s.arg(row));
    if (!d->adding && row == d->current)
        return value(field);
    d->fields.info(field);
    return d->store().value(row, field);
}

void Recordset::setValue(int field, const QVariant& value) {
    d->needRow();
    const FieldInfo& info = d->fields.info(field);
    if (d->connection && (!d->writable || info.baseTable.isEmpty()))
        d->fail(error::notUpdatable, u"The field \"%1\" can't be changed"_s.arg(info.name));
    d->pending[field] = d->fields.type(field).convert(value);
    if (!d->connection && !d->adding)
        d->write();
    d->notify();
}

void Recordset::setValue(const QString& name, const QVariant& value) { setValue(fieldIndex(name), value); }

void Recordset::addNew() {
    d->store();
    if (d->connection && !d->writable)
        d->fail(error::notUpdatable, u"The result set is read-only"_s);
    d->write();
    d->adding = true;
    d->notify();
}

void Recordset::update() {
    d->store();
    const bool changes = hasPendingChanges();
    d->write();
    if (changes)
        d->notify();
}

void Recordset::addRows(const QStringList& names, const std::vector<std::vector<QVariant>>& rows) {
    d->store();
    if (d->connection && !d->writable)
        d->fail(error::notUpdatable, u"The result set is read-only"_s);
    d->write();
    std::vector<int> places;
    for (const QString& name : names)
        places.push_back(fieldIndex(name));
    std::vector<Changes> changes;
    std::exception_ptr refused;
    const auto tried = [&](auto step) {
        try {
            step();
        } catch (const RuntimeError&) {
            refused = std::current_exception();
        }
    };
    tried([&] {
        for (const std::vector<QVariant>& row : rows)
            changes.push_back(d->newRow(places, row));
    });
    tried([&] { d->writeRows(changes); });  // those in front of one that does not fit
    d->notify();
    if (refused)
        std::rethrow_exception(refused);
}

void Recordset::cancelUpdate() {
    d->store();
    d->drop();
    d->notify();
}

bool Recordset::hasPendingChanges() const { return d->adding || !d->pending.empty(); }

RecordsetPtr Recordset::copy() const {
    RecordsetPtr copied = create();
    copied->d->statement = d->statement;
    copied->d->fields = d->fields;
    copied->d->rows = d->rowsInMemory();
    copied->d->inMemory = true;
    copied->d->writable = d->writable;
    return copied;
}

void Recordset::disconnect() {
    d->write();
    if (!d->inMemory) {
        d->rows = d->rowsInMemory();
        d->inMemory = true;
    }
    d->store();
    d->connection.reset();
}

bool Recordset::isConnected() const { return d->connection != nullptr; }

int Recordset::onChange(std::function<void()> callback) {
    d->callbacks.emplace(++d->lastCallback, std::move(callback));
    return d->lastCallback;
}

void Recordset::removeCallback(int handle) { d->callbacks.erase(handle); }

}  // namespace platform
