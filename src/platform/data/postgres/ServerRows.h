// The rows of a result, with what each column is and its values as the program holds them.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/postgres/ServerStore.h"

namespace platform::postgres {

/// column: of the result.
ResultColumn resultColumn(const ServerStore& store, const Result& result, int column);

/// See Query::value.
QVariant valueOf(const Result& result, int row, int column, const ColumnType& type);

}  // namespace platform::postgres
