// The operators of the dialect mean what they mean there, not what the engine makes of the same signs:
// each calculation becomes a call of a function of ExpressionFunctions.h.
#pragma once

#include "platform/data/StatementWriter.h"

namespace platform {

/// Rewrites every expression of a statement in its writer. Throws RuntimeError(statement) on a missing
/// operand and on a function or an operator that the dialect doesn't have, dataMismatch where a text is
/// compared with a number.
void rewriteExpressions(const std::vector<Token>& tokens, StatementWriter& writer);

}  // namespace platform
