#include "platform/data/sqlite/StatementEnd.h"

#include <sqlite3.h>

namespace platform::sqlite {

bool endsStatement(const QByteArray& text) { return sqlite3_complete(text.constData()) != 0; }

}  // namespace platform::sqlite
