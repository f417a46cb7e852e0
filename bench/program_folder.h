// A program folder as it lies at a pharmacy, in a temporary place: options, languages, and a database in
// which every table is filled up to a count.
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace bench {

class ProgramFolder {
public:
    /// rows: of every table; 0 takes the sample pharmacy as it is delivered.
    explicit ProgramFolder(int rows);

    QString path() const { return m_folder.path(); }
    QString database() const { return m_folder.filePath("sorvanto.mdb"); }
    /// Runs statements straight on the database.
    void run(const char* statements) const;
    /// Puts the built executable of that name into the folder; gives its path.
    QString addExecutable(const QString& name) const;

private:
    QTemporaryDir m_folder;
};

}  // namespace bench
