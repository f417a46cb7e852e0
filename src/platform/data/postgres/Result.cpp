#include "platform/data/postgres/Result.h"

#include <libpq-fe.h>

namespace platform::postgres {

namespace {

QByteArray field(const PGresult* result, int code) { return PQresultErrorField(result, code); }

}  // namespace

Result::Result(pg_result* result) : m_result(result, PQclear) {}

int Result::rows() const { return PQntuples(m_result.get()); }

int Result::columns() const { return PQnfields(m_result.get()); }

bool Result::isNull(int row, int column) const { return PQgetisnull(m_result.get(), row, column) != 0; }

QByteArray Result::bytes(int row, int column) const {
    return QByteArray::fromRawData(PQgetvalue(m_result.get(), row, column),
                                   PQgetlength(m_result.get(), row, column));
}

QString Result::columnName(int column) const { return QString::fromUtf8(PQfname(m_result.get(), column)); }

std::uint32_t Result::columnType(int column) const { return PQftype(m_result.get(), column); }

std::uint32_t Result::table(int column) const { return PQftable(m_result.get(), column); }

int Result::tableColumn(int column) const { return PQftablecol(m_result.get(), column); }

std::int64_t Result::changedRows() const { return QByteArray(PQcmdTuples(m_result.get())).toLongLong(); }

bool Result::failed() const {
    const ExecStatusType status = PQresultStatus(m_result.get());
    return status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK;
}

QByteArray Result::tag() const { return PQcmdStatus(m_result.get()); }

QByteArray Result::state() const { return field(m_result.get(), PG_DIAG_SQLSTATE); }

QString Result::message() const { return QString::fromUtf8(field(m_result.get(), PG_DIAG_MESSAGE_PRIMARY)); }

}  // namespace platform::postgres
