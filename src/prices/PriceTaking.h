// Writes the prices that the user has ticked: all of them or none.
#pragma once

#include "prices/PriceProposals.h"

namespace sorvanto {

/// False where one of the chemicals was changed since the stock was read; nothing is written then. In one go, without a
/// turn for anything else that might write meanwhile. file: the list's name, which the history tells. Throws as
/// Connection::execute; nothing is written then.
bool takePrices(const platform::ConnectionPtr& connection, const PriceProposals& proposals,
                const PriceStock& stock, const QString& file);

}  // namespace sorvanto
