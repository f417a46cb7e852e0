// Statements of the program's own making, whose words both engines know: names are written without quotes and
// parameters as question marks there.
#pragma once

#include "platform/data/postgres/Catalogue.h"

#include <QString>

namespace platform::postgres {

struct OwnStatement {
    QString sql;
    bool reads = false;  ///< changes nothing
};

/// The statement for the server: names of the catalogue as it spells them, in quotes, parameters with numbers. Texts and
/// names in quotes stay.
OwnStatement ownStatement(const QString& statement, const Catalogue& catalogue);

}  // namespace platform::postgres
