// Where else copies of the database go, and when the last one was tried out: copies.ini beside the program.
#pragma once

#include <QString>

namespace sorvanto {

struct CopySettings {
    QString secondPlace;    ///< a folder on a stick or a share; empty: none
    QString lastRehearsal;  ///< the month, as "2026-03", in which a copy was last put back and checked

    static CopySettings read();
    void write() const;
};

}  // namespace sorvanto
