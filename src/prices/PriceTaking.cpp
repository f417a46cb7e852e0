#include "prices/PriceTaking.h"

#include "history/HistoryDeed.h"
#include "platform/data/Transaction.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString updateOf(const PriceProposal& proposal, const StockedChemical& chemical) {
    QString statement = u"UPDATE Chemical SET [chm_Cost] = '"_s + proposal.cost.price->toText() + u"'"_s;
    if (proposal.awp.price)
        statement += u", [chm_AWP] = '"_s + proposal.awp.price->toText() + u"'"_s;
    return statement + u" WHERE [ChemicalID] = "_s + QString::number(chemical.key);
}

}  // namespace

bool takePrices(const platform::ConnectionPtr& connection, const PriceProposals& proposals,
                const PriceStock& stock, const QString& file) {
    platform::Engine& engine = connection->engine();
    platform::Transaction transaction(engine);
    const HistoryDeed deed(engine, Deed::Imported, file);
    if (stockedChemicals(connection) != stock.chemicals())
        return false;
    for (const PriceProposal& each : proposals.all()) {
        if (each.ticked)
            connection->execute(updateOf(each, stock.at(each.place)));
    }
    transaction.commit();
    return true;
}

}  // namespace sorvanto
