// Reads a database file as it stands, with none of the program's settings: for what looks at it from outside.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct sqlite3;

namespace platform::sqlite {

class FileReader {
public:
    /// Shared: beside programs that write it. AsItLies: a file that nobody writes, without a lock or a file beside it;
    /// what waits in its write-ahead log is not seen.
    enum class Reading { Shared, AsItLies };

    /// Throws RuntimeError when the file can't be opened for reading.
    explicit FileReader(const QString& path, Reading reading = Reading::Shared);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    /// All rows of a statement as texts; numbers with all their digits, NULL as the empty text. Throws RuntimeError
    /// when the engine refuses the statement.
    QList<QStringList> rows(const QString& statement) const;

private:
    sqlite3* m_database = nullptr;
};

}  // namespace platform::sqlite
