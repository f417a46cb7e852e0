// The table's types are those of the delivered database.
#include "SampleRows.h"

#include "TestDatabase.h"

#include <QFile>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

SampleRows::SampleRows(int rows) {
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("Can't make a file in the temporary folder.");
    file.close();
    runSql(
        path(),
        u"CREATE TABLE Line (LineID INTEGER PRIMARY KEY, Name TEXT(50), Qty DOUBLE CHECK (Qty < 50000), "
        u"Cost CURRENCY, Done YESNO, Made DATETIME, Note TEXT(20));"
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
        u"INSERT INTO Line SELECT i, 'Line ' || i, i + 0.5, i + 0.25, i % 2 = 0, '2026-03-07 00:00:00', 'n' "
        u"FROM n WHERE %1 > 0;"_s.arg(rows));
    m_connection = std::make_shared<platform::Connection>();
    m_connection->open(u"Provider=Test;Data Source=%1;"_s.arg(path()));
}

platform::RecordsetPtr SampleRows::open(bool editable) const {
    auto rows = platform::Recordset::create();
    rows->open(u"SELECT * FROM Line ORDER BY LineID"_s, m_connection,
               editable ? platform::LockType::Optimistic : platform::LockType::ReadOnly,
               platform::CursorLocation::Client);
    return rows;
}

QString SampleRows::stored(int line, const QString& column) const {
    const Rows rows = runSql(path(), u"SELECT %1 FROM Line WHERE LineID = %2"_s.arg(column).arg(line));
    return rows.empty() ? QString() : rows.front().front();
}

}  // namespace support
