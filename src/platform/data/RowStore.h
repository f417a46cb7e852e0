// Where the rows of a result set are: all in memory, or their keys in memory and the rows in the store.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/Engine.h"
#include "platform/data/FieldList.h"
#include "platform/data/RowKeys.h"

#include <QVariant>
#include <cstdint>
#include <memory>
#include <vector>

namespace platform {

class RowStore {
public:
    using Row = std::vector<QVariant>;
    virtual ~RowStore() = default;

    virtual std::int64_t count() const = 0;
    /// row from 0 to count - 1. Throws noCurrentRecord when the row is gone from the file.
    virtual QVariant value(std::int64_t row, int field) = 0;
    virtual Row row(std::int64_t row) = 0;
    /// The row has been written with these values; id is its row id where the file gave it one, else 0.
    virtual void changed(std::int64_t row, const Row& values) = 0;
    virtual void added(const Row& values, std::int64_t id) = 0;
};

/// All rows in memory, one after the other.
class MemoryRows : public RowStore {
public:
    explicit MemoryRows(int fields) : m_fields(static_cast<std::size_t>(fields)) {}
    void append(Row row);

    std::int64_t count() const override;
    QVariant value(std::int64_t row, int field) override;
    Row row(std::int64_t row) override;
    void changed(std::int64_t row, const Row& values) override;
    void added(const Row& values, std::int64_t id) override;

private:
    std::size_t m_fields;
    std::vector<QVariant> m_cells;
};

/// Keys of one table's rows in memory; a row is read when it is asked for, and the newest are kept.
class KeysetRows : public RowStore {
public:
    /// keys in the order of the result. statement: for the errors.
    KeysetRows(ConnectionPtr connection, std::unique_ptr<KeyedSelect> select, RowKeys keys,
               QString statement);
    const FieldList& fields() const { return m_select->fields(); }

    std::int64_t count() const override;
    QVariant value(std::int64_t row, int field) override;
    Row row(std::int64_t row) override;
    void changed(std::int64_t row, const Row& values) override;
    void added(const Row& values, std::int64_t id) override;

private:
    struct Kept {
        std::int64_t id = 0;
        Row values;
    };
    Kept& place(std::int64_t row);
    const Row& read(std::int64_t row);
    std::int64_t ahead(std::int64_t row);
    void readAround(std::int64_t row);
    void fetch(std::int64_t row, std::int64_t count);
    int keyField() const;

    ConnectionPtr m_connection;
    std::unique_ptr<KeyedSelect> m_select;
    QString m_text;
    RowKeys m_keys;
    std::vector<Kept> m_kept;
    std::int64_t m_lastFetched = -2;
    std::int64_t m_ahead;  ///< rows that the next reading in a row gets
    int m_keyField;
};

}  // namespace platform
