// How long it takes to follow a lot through 32,000 batches with 300,000 lines of 9,000 lots, one of them in
// 320 batches; the baseline is the engine's own look for the lines of one lot.
#include "db/DatabaseFile.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "trace/Tracer.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

constexpr auto rows = R"(
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32000)
INSERT INTO Log (LogID, log_Name, log_Lot, log_Date, log_Quantity, log_Units, log_Cost, log_AWP) SELECT i, 'Formula ' || (i % 200),
  'SV' || i, datetime('2023-01-01', i || ' hours'), 100, 'GMS', 9, 18 FROM n;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300000)
INSERT INTO LogChem (LogID, lch_Cost, lch_AWP, lch_Name, lch_NDC, lch_Lot, lch_QTY, lch_Units) SELECT 1 + i % 32000, 1, 2, 'Chemical ' || (i % 300),
  'N-' || (i % 300), CASE WHEN i % 100 = 0 THEN 'EVERYWHERE' WHEN i % 50 = 1 THEN 'SV' || (1 + i % 900)
  ELSE 'LOT-' || (i % 9000) END, 2.5, 'GMS' FROM n;
INSERT INTO Patient (PatientID, pat_LName, pat_FName, pat_Phone) VALUES (1, 'Abernathy', 'Margaret', '440-555-0117');
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32000)
INSERT INTO RXs (LogID, PatientID, rxs_QTY) SELECT i, 1, 30.0 FROM n;
)";

class Pharmacy {
public:
    Pharmacy() : connection(std::make_shared<platform::Connection>()) {
        createDatabase(folder.filePath(u"trace.mdb"_s));
        connection->open(u"Data Source="_s + folder.filePath(u"trace.mdb"_s));
        platform::Transaction transaction(connection->engine());
        for (const QString& statement : QString::fromLatin1(rows).split(u';')) {
            if (!statement.trimmed().isEmpty())
                run(statement, {});
        }
        transaction.commit();
        tracer = std::make_unique<Tracer>(connection, QStringList());
    }
    int run(const QString& sql, const QVariantList& values) {
        platform::Query statement(connection->engine(), sql, sql);
        for (int i = 0; i < values.size(); ++i)
            statement.bind(i + 1, values[i]);
        int count = 0;
        while (statement.step())
            ++count;
        return count;
    }

    QTemporaryDir folder;
    platform::ConnectionPtr connection;
    std::unique_ptr<Tracer> tracer;
};

Pharmacy& pharmacy() {
    static auto* one = new Pharmacy;  // ends with the process
    return *one;
}

void bareLines(benchmark::State& state) {
    pharmacy();  // is made outside the time
    for (auto _ : state)
        benchmark::DoNotOptimize(
            pharmacy().run(u"SELECT LogID FROM LogChem WHERE lch_Lot = ?"_s, {u"LOT-4711"_s}));
}

void findLot(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(pharmacy().tracer->find(u"LOT-4711"_s));
}

void findByName(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(pharmacy().tracer->find(u"cal 217"_s));
}

void similarLots(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(pharmacy().tracer->similarTo(u"LOT-4711"_s));
}

void followed(benchmark::State& state, const QString& lot) {
    const Tracer& tracer = *pharmacy().tracer;
    std::size_t batches = 0;
    for (auto _ : state)
        batches = tracer.whereWent(tracer.find(lot).ingredients, {}, {}).batches.size();
    state.counters["batches"] = static_cast<double>(batches);
}

/// As in a window that was just opened: nothing is known of the file yet.
void firstList(benchmark::State& state) {
    const platform::ConnectionPtr& database = pharmacy().connection;
    for (auto _ : state) {
        const Tracer tracer(database, QStringList());
        benchmark::DoNotOptimize(
            tracer.whereWent(tracer.find(u"LOT-4711"_s).ingredients, {}, {}).batches.size());
    }
}

void lackingLines(benchmark::State& state) {
    const platform::ConnectionPtr& database = pharmacy().connection;
    for (auto _ : state)
        benchmark::DoNotOptimize(Tracer(database, QStringList()).lookForLackingLines());
}

}  // namespace

BENCHMARK(bareLines)->Unit(benchmark::kMillisecond);
BENCHMARK(firstList)->Unit(benchmark::kMillisecond);
BENCHMARK(lackingLines)->Unit(benchmark::kMillisecond);
BENCHMARK(findLot)->Unit(benchmark::kMillisecond);
BENCHMARK(findByName)->Unit(benchmark::kMillisecond);
BENCHMARK(similarLots)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(followed, one lot, u"LOT-4711"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(followed, a lot of 320 batches, u"EVERYWHERE"_s)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
