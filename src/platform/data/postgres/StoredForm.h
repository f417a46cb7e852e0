// A stored value on its way to the server and back: the one form of WholeStore, and the server's texts.
#pragma once

#include "platform/data/WholeStore.h"
#include "platform/data/postgres/Result.h"

#include <QString>

namespace platform::postgres {

/// column: of the result, whose values are of that declared type.
PlainValue storedForm(const Result& result, int row, int column, const QString& declaredType);

/// The texts of one column of these rows as the server reads an array of them. Throws dataMismatch for what no text of
/// the server can be: bytes in a column of texts, a null character, broken characters; named: the column, for
/// the error.
QString arrayOf(const std::vector<StoredRow>& rows, std::size_t column, const QString& declaredType,
                const QString& named);

}  // namespace platform::postgres
