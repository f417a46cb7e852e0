// The database file read straight, past the program's own data layer.
#pragma once

#include "platform/data/sqlite/FileReader.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

namespace tour {

class RawDatabase {
public:
    /// Opens the file for reading; ends the tour when that can't be done.
    explicit RawDatabase(const QString& path);

    /// All rows of a statement as texts; numbers with all their digits, NULL as the empty text.
    QList<QStringList> rows(const QString& statement) const;
    /// The one value of a statement that gives one row.
    QString value(const QString& statement) const;
    int number(const QString& statement) const { return value(statement).toInt(); }

private:
    std::unique_ptr<platform::sqlite::FileReader> m_reader;
};

}  // namespace tour
