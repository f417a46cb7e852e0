// What a price list and its proposals say of themselves, in the user's language.
#pragma once

#include "prices/PriceFile.h"
#include "prices/PriceProposals.h"

#include <QString>
#include <QStringList>

namespace sorvanto {

/// A sentence for a list that can't be read.
QString priceFaultText(PriceFault fault, const QString& detail);

QString priceFieldText(PriceField field);
QString foundByText(FoundBy by);

/// "28.50 for 100 g = 0.285 a GMS", or why there is no price; empty where the row was not weighed.
QString calculationText(const PriceProposal& proposal, const PriceStock& stock);

/// What is to be known of a proposal before it is taken, or why it can't be.
QStringList remarksOn(const PriceProposal& proposal, const PriceTable& table, const PriceColumns& columns,
                      const PriceStock& stock);

/// "1.25" for a price that rose by a quarter; empty where there was none before.
QString factorText(platform::Currency now, platform::Currency before);

}  // namespace sorvanto
