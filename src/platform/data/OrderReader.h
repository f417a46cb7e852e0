// Reads from a SELECT in which order its rows come.
#pragma once

#include "platform/data/Dialect.h"
#include "platform/data/StatementWriter.h"

namespace platform {

/// tokens: of the whole statement; writer: with all its expressions rewritten.
RowOrder rowOrder(const std::vector<Token>& tokens, const StatementWriter& writer);

/// Writes behind each part of an ORDER BY, also of an inner one, where nothing stands among the values.
void writeOrders(const std::vector<Token>& tokens, StatementWriter& writer);

}  // namespace platform
