// Where else copies of the database go, when the last one was tried out, and which database was last open under
// which path: copies.ini beside the program.
#pragma once

#include <QString>

namespace sorvanto {

struct CopySettings {
    QString secondPlace;    ///< a folder on a stick or a share; empty: none
    QString lastRehearsal;  ///< the month, as "2026-03", in which a copy was last put back and checked

    QString problem{};  ///< why the file could not be read; empty when it was

    static QString file();
    /// Never throws.
    static CopySettings read();
    /// Throws where the file could not be read or can't be written.
    void write() const;

    /// Identity of the database that was last open under that path; empty when none is known. When the file is
    /// lost, nothing else tells which copies are of it.
    static QString identityOf(const QString& database);
    /// Writes only what is new; throws as write().
    static void remember(const QString& database, const QString& identity);
};

}  // namespace sorvanto
