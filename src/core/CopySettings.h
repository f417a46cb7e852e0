// Where else copies of the databases go, what is noted of each one's last copy, and which database was last open under
// which path: copies.ini beside the program.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvanto {

struct CopySettings {
    QString secondPlace;  ///< a folder on a stick or a share; empty: none
    QString
        lastRehearsal;  ///< the month, as "2026-03", in which a copy of this database was last put back and checked
    std::optional<std::int64_t>
        batchesAtCopy{};  ///< that this database had ever logged when it was last copied
    QString identity{};   ///< of this database; empty for one without

    QString problem{};  ///< why the file could not be read; empty when it was

    static QString file();
    /// identity: of the database that the notes are about. Never throws.
    static CopySettings read(const QString& identity = {});
    /// Throws where the file could not be read or can't be written.
    void write() const;

    /// Identity of the database that was last open under that path, or address; empty when none is known. When the file is
    /// lost, nothing else tells which copies are of it.
    static QString identityOf(const QString& database);
    /// Writes only what is new; throws as write().
    static void remember(const QString& database, const QString& identity);
};

}  // namespace sorvanto
