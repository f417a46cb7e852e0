// Writes the prices that the user has ticked: all of them or none.
#pragma once

#include "prices/PriceProposals.h"

namespace sorvanto {

enum class Taken {
    All,
    ChangedMeanwhile,  ///< one of the chemicals, since the stock was read; also by another bench, while this one writes
    Stopped            ///< by the user
};

/// Nothing is written unless the answer is All. One transaction from the first look to the last row: whatever gets a
/// turn meanwhile must not write by this connection. file: the list's name, which the history tells. Throws as
/// Connection::execute; nothing is written then.
Taken takePrices(const platform::ConnectionPtr& connection, const PriceProposals& proposals,
                 const PriceStock& stock, const QString& file, const PriceProgress& goesOn = {});

}  // namespace sorvanto
