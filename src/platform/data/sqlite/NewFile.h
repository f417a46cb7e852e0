// A new database file, made by whole scripts in one transaction under a provisional name, so that what bears the wished
// one is whole. It goes with the object unless it was finished.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

struct sqlite3;

namespace platform::sqlite {

class NewFile {
public:
    /// Readable by its owner alone. Throws permissionDenied when a file of that name exists or can't be made.
    explicit NewFile(const QString& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Any number of statements, with a semicolon behind each.
    void run(const QByteArray& statements);
    /// Gives the file its name. Throws as the constructor and as replaceFile do.
    void finish();

private:
    [[noreturn]] void refuse(const QString& why) const;
    void refuseTaken() const;

    QString m_path, m_part;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> m_database;
};

}  // namespace platform::sqlite
