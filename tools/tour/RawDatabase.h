// The database file read straight, past the program's own data layer.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct sqlite3;

namespace tour {

class RawDatabase {
public:
    /// Opens the file for reading; ends the tour when that can't be done.
    explicit RawDatabase(const QString& path);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    /// All rows of a statement as texts; numbers with all their digits, NULL as the empty text.
    QList<QStringList> rows(const QString& statement) const;
    /// The one value of a statement that gives one row.
    QString value(const QString& statement) const;
    int number(const QString& statement) const { return value(statement).toInt(); }

private:
    sqlite3* m_handle = nullptr;
};

}  // namespace tour
