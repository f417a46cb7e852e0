// What the server has answered to one command.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>

struct pg_result;

namespace platform::postgres {

class Result {
public:
    /// Takes over what the client library gave; it may be null.
    explicit Result(pg_result* result = nullptr);

    int rows() const;
    int columns() const;
    bool isNull(int row, int column) const;
    /// Not copied: holds as long as the result does.
    QByteArray bytes(int row, int column) const;
    QString text(int row, int column) const { return QString::fromUtf8(bytes(row, column)); }
    std::int64_t integer(int row, int column) const { return bytes(row, column).toLongLong(); }

    QString columnName(int column) const;
    /// The server's number of the type; that of what it rests on where it is a domain.
    std::uint32_t columnType(int column) const;
    /// The server's number of the table that the column comes from, 0 where it is calculated, and its place there.
    std::uint32_t table(int column) const;
    int tableColumn(int column) const;

    /// By INSERT, UPDATE or DELETE.
    std::int64_t changedRows() const;
    bool failed() const;
    /// What was carried out, as "COMMIT"; a failed span answers that with "ROLLBACK".
    QByteArray tag() const;
    /// The five characters that name a failure; empty where the server said none.
    QByteArray state() const;
    /// The server's own sentence.
    QString message() const;

private:
    std::shared_ptr<pg_result> m_result;
};

}  // namespace platform::postgres
