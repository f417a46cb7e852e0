// A small database file with one table of every kind of column, and sets over it.
#pragma once

#include "platform/data/Recordset.h"

#include <QTemporaryDir>

namespace support {

class SampleRows {
public:
    /// Makes the table Line with that many rows: "Line 1", quantity 1.5, cost 1.25, even lines done.
    explicit SampleRows(int rows = 3);

    QString path() const { return m_folder.filePath("sample.mdb"); }
    /// Client-side and editable, or read-only.
    platform::RecordsetPtr open(bool editable = true) const;
    /// The stored value of a column, read past the program's own data layer.
    QString stored(int line, const QString& column) const;

private:
    QTemporaryDir m_folder;
    platform::ConnectionPtr m_connection;
};

}  // namespace support
