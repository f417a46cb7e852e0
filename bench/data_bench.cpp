// Opening of searches and key lists on full tables, reading of single records, and what the bare engine needs
// for the same statements.
#include "db/DatabaseFile.h"
#include "platform/data/Connection.h"
#include "platform/data/Dialect.h"
#include "platform/data/Recordset.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

using platform::ConnectionPtr;
using platform::CursorLocation;
using platform::Recordset;
using platform::RecordsetPtr;

/// One sample pharmacy of 32,767 rows a table for the whole run.
const ConnectionPtr& connection() {
    static QTemporaryDir folder;
    static const ConnectionPtr opened = [] {
        const QString path = folder.filePath(u"bench.mdb"_s);
        sorvanto::createSample(path, sorvanto::mostRows);
        auto made = std::make_shared<platform::Connection>();
        made->open(u"Data Source="_s + path);
        return made;
    }();
    return opened;
}

QString logSearch(const char* name) {
    return u"SELECT Log.LogID, Log.log_Lot as [Lot], Log.log_Date as [DateLogged], Log.log_Name as [FormulaName], Log.log_Quantity as [Quantity], "
           u"Log.log_JarSize as [JarSize], Log.log_NDC as [NDC], Log.log_Cost as [Cost], Log.log_AWP as [AWP], Log.log_Initials as [Initials], "
           u"Log.log_Verified as [Verified], Log.log_Results as [Results], Log.log_Mix as [Mix], Log.log_Version as [cVersion], "
           u"Log.log_Notes as [Notes], Log.log_Desc as [Description], Log.log_Strength as [Strength], Log.log_Units as [Units], "
           u"Log.log_FormType as [FormulaType], Log.FormulaID FROM Log WHERE ([Log.log_Name] Like '%1%') ORDER BY Log.log_Date DESC;"_s
               .arg(QLatin1String(name));
}

const char keyList[] = "SELECT FormulaID FROM Formula Order By frm_Name";
const char logKeys[] = "SELECT LogID FROM Log";
const char costSum[] =
    "SELECT  SUM(CostTable.ChemicalCost) AS TotalCost, SUM(CostTable.ChemicalAWP) AS TotalAWP FROM [SELECT (Chemical.chm_Cost * "
    "FormChem.fch_Qty) AS ChemicalCost, (Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP FROM  Chemical INNER JOIN FormChem ON "
    "Chemical.ChemicalID = FormChem.ChemicalID WHERE (((FormChem.FormulaID)=3))]. AS CostTable";

// The same over the lines of all formulas, in the dialect and with the engine's own operators.
const char costOfAllLines[] =
    "SELECT SUM(CostTable.ChemicalCost) AS TotalCost, SUM(CostTable.ChemicalAWP) AS TotalAWP FROM [SELECT (Chemical.chm_Cost * "
    "FormChem.fch_Qty) AS ChemicalCost, (Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP FROM Chemical INNER JOIN FormChem ON "
    "Chemical.ChemicalID = FormChem.ChemicalID]. AS CostTable";
const char ownCostOfAllLines[] =
    "SELECT SUM(ChemicalCost), SUM(ChemicalAWP) FROM (SELECT chm_Cost * fch_Qty AS ChemicalCost, chm_AWP * fch_Qty AS ChemicalAWP "
    "FROM Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID)";

RecordsetPtr open(const QString& statement, CursorLocation location = CursorLocation::Default) {
    RecordsetPtr set = Recordset::create();
    if (statement.endsWith("ORDER BY Log.log_Date DESC;"_L1))  // as the search for batches asks
        set->setOrderWithin(u"Log.log_Name DESC, Log.log_NDC DESC, Log.log_Lot DESC"_s);
    set->open(statement, connection(), platform::LockType::ReadOnly, location);
    return set;
}

void openSet(benchmark::State& state, const QString& statement) {
    connection();
    std::int64_t rows = 0;
    for (auto _ : state)
        rows = open(statement)->recordCount();
    state.counters["rows"] = static_cast<double>(rows);
}

/// The baseline: the same statement stepped through, each value fetched and dropped.
void bareEngine(benchmark::State& state, const QByteArray& sql) {
    sqlite3* database = platform::sqlite::handleOf(connection()->engine());
    std::int64_t rows = 0;
    for (auto _ : state) {
        sqlite3_stmt* prepared = nullptr;
        sqlite3_prepare_v2(database, sql.constData(), -1, &prepared, nullptr);
        const int columns = sqlite3_column_count(prepared);
        for (rows = 0; sqlite3_step(prepared) == SQLITE_ROW; ++rows) {
            for (int column = 0; column < columns; ++column)
                benchmark::DoNotOptimize(sqlite3_column_text(prepared, column));
        }
        sqlite3_finalize(prepared);
    }
    state.counters["rows"] = static_cast<double>(rows);
}

void pair(const char* name, const QString& statement) {
    benchmark::RegisterBenchmark(name, openSet, statement)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(
        (std::string(name) + "/bare_engine").c_str(), bareEngine,
        platform::translateStatement(statement, platform::sqlite::fileWords()).sql.toUtf8())
        ->Unit(benchmark::kMicrosecond);
}

/// What a search list shows: the first screen of rows after opening.
void searchAndShow(benchmark::State& state) {
    const QString statement = logSearch("");
    connection();
    for (auto _ : state) {
        const RecordsetPtr set = open(statement);
        for (std::int64_t row = 0; row < 40; ++row) {
            for (int field = 0; field < set->fieldCount(); ++field)
                benchmark::DoNotOptimize(set->valueAt(row, field));
        }
    }
}

void nextRecord(benchmark::State& state) {
    const RecordsetPtr keys = open(QString::fromLatin1(logKeys));
    for (auto _ : state) {
        keys->moveNext();
        if (keys->eof())
            keys->moveFirst();
        benchmark::DoNotOptimize(keys->value(0));
    }
}

void openOneRecord(benchmark::State& state) {
    qint64 key = 0;
    for (auto _ : state) {
        key = key % sorvanto::mostRows + 1;
        QString statement = logSearch("");
        statement.replace("[Log.log_Name] Like '%'"_L1, u"[Log.LogID] = %1"_s.arg(key));
        const RecordsetPtr set = open(statement);
        benchmark::DoNotOptimize(set->value(12));
    }
}

void everyRowInTurn(benchmark::State& state) {
    const RecordsetPtr set = open(logSearch(""));
    for (auto _ : state) {
        for (set->moveFirst(); !set->eof(); set->moveNext())
            benchmark::DoNotOptimize(set->value(11));
    }
}

void translate(benchmark::State& state) {
    const QString statement = logSearch("hydro");
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::translateStatement(statement, platform::sqlite::fileWords()));
}

}  // namespace

int main(int argc, char** argv) {
    pair("open/formula_keys_32767", QString::fromLatin1(keyList));
    pair("open/log_keys_32767", QString::fromLatin1(logKeys));
    pair("open/log_search_32767_hits_20_columns", logSearch(""));
    pair("open/log_search_hydro", logSearch("hydro"));
    pair("open/log_search_no_hit", logSearch("zzz"));
    pair("open/cost_sum", QString::fromLatin1(costSum));
    pair("open/cost_of_all_lines", QString::fromLatin1(costOfAllLines));
    benchmark::RegisterBenchmark("open/cost_of_all_lines/own_operators", bareEngine,
                                 QByteArray(ownCostOfAllLines))
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("search_32767_and_show_40_rows", searchAndShow)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("next_key", nextRecord);
    benchmark::RegisterBenchmark("open_one_record_by_key", openOneRecord)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("every_row_of_32767_in_turn", everyRowInTurn)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("translate_log_search", translate)->Unit(benchmark::kMicrosecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
