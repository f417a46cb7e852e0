// How long a supplier's list of 10,000 rows takes from its bytes to what would change, and to the records; the baseline
// is the same text parted at its separators and nothing more.
#include "db/DatabaseFile.h"
#include "history/HistorySeal.h"
#include "platform/data/sqlite/FileEngine.h"
#include "prices/PriceFile.h"
#include "prices/PriceTaking.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

constexpr int rows = 10'000;

class Shop {
public:
    Shop() {
        QFile file(path());
        if (file.open(QFile::WriteOnly)) {
            file.write("Name;NDC;Price;AWP;Size;Unit\n");
            for (int row = 0; row < rows; ++row)
                file.write(u"Chemical %1;%2-0001-01;%3,50;%4,00;%5;g\n"_s.arg(row)
                               .arg(10'000 + row)
                               .arg(20 + row % 80)
                               .arg(40 + row % 160)
                               .arg(100 + row % 5)
                               .toUtf8());
        }
        createDatabase(database());
        connection->open(u"Data Source="_s + database());
        keepHistory(*connection, {u"rkent@bench2"_s, u"1"_s});
        sqlite3_exec(
            platform::sqlite::handleOf(connection->engine()),
            qPrintable(
                u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n "
                "WHERE i < %1) INSERT INTO Chemical (chm_Name, chm_NDC, chm_Lot, chm_Units, chm_Cost, chm_AWP) SELECT "
                "'Chemical ' || i, (10000 + i) || '-0001-01', 'L' || i, 'GMS', 0.5, 1 FROM n"_s.arg(rows -
                                                                                                    1)),
            nullptr, nullptr, nullptr);
    }
    QString path() const { return folder.filePath(u"list.csv"_s); }
    QString database() const { return folder.filePath(u"prices.mdb"_s); }

    QTemporaryDir folder;
    platform::ConnectionPtr connection = std::make_shared<platform::Connection>();
};

Shop& shop() {
    static Shop one;
    return one;
}

void partedOnly(benchmark::State& state) {
    QFile file(shop().path());
    if (!file.open(QFile::ReadOnly))
        return state.SkipWithError("no list");
    const QString text = QString::fromUtf8(file.readAll());
    for (auto _ : state) {
        for (const QString& line : text.split(u'\n'))
            benchmark::DoNotOptimize(line.split(u';'));
    }
}

/// From the file to the table of what would change.
void previewed(benchmark::State& state) {
    for (auto _ : state) {
        const PriceFile file(shop().path());
        const PriceTable table = file.readText(file.encoding(), file.separatorIn(file.encoding())).table;
        const PriceColumns columns = guessedColumns(table);
        const PriceStock stock(stockedChemicals(shop().connection));
        const PriceProposals proposals(table, columns, stock);
        state.counters["changes"] = proposals.count(PriceState::change);
    }
}

void taken(benchmark::State& state) {
    const PriceFile file(shop().path());
    const PriceTable table = file.readText(file.encoding(), u';').table;
    const PriceColumns columns = guessedColumns(table);
    for (auto _ : state) {
        state.PauseTiming();
        sqlite3_exec(platform::sqlite::handleOf(shop().connection->engine()),
                     "UPDATE Chemical SET chm_Cost = 0.5", nullptr, nullptr, nullptr);
        const PriceStock stock(stockedChemicals(shop().connection));
        const PriceProposals proposals(table, columns, stock);
        state.counters["ticked"] = proposals.ticked();
        state.ResumeTiming();
        if (takePrices(shop().connection, proposals, stock, u"list.csv"_s) != Taken::All)
            state.SkipWithError("not taken");
    }
}

}  // namespace

BENCHMARK(partedOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(previewed)->Unit(benchmark::kMillisecond);
BENCHMARK(taken)->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
