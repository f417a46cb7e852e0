#include "prices/PriceTaking.h"

#include "history/HistoryDeed.h"
#include "platform/data/Overtaken.h"
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

Taken takeWhole(const platform::ConnectionPtr& connection, const PriceProposals& proposals,
                const PriceStock& stock, const QString& file, const PriceProgress& goesOn) {
    const auto isStopped = [&](double done) { return goesOn && !goesOn(done); };
    platform::Engine& engine = connection->engine();
    platform::Transaction transaction(engine, u"UPDATE Chemical"_s, platform::Sees::OneMoment);
    const HistoryDeed deed(engine, Deed::Imported, file);
    bool stopped = false;
    const auto now =
        stockedChemicals(connection, [&](double) { return !(stopped = stopped || isStopped(-1)); });
    if (stopped)
        return Taken::Stopped;
    if (now != stock.chemicals())
        return Taken::ChangedMeanwhile;
    const int ticked = proposals.ticked();
    int written = 0;
    for (const PriceProposal& each : proposals.all()) {
        if (!each.ticked)
            continue;
        if (isStopped(static_cast<double>(written++) / ticked))
            return Taken::Stopped;
        connection->execute(updateOf(each, stock.at(each.place)));
    }
    transaction.commit();
    return Taken::All;
}

}  // namespace

Taken takePrices(const platform::ConnectionPtr& connection, const PriceProposals& proposals,
                 const PriceStock& stock, const QString& file, const PriceProgress& goesOn) {
    try {
        return takeWhole(connection, proposals, stock, file, goesOn);
    } catch (const platform::Overtaken&) {
        return Taken::ChangedMeanwhile;
    }
}

}  // namespace sorvanto
