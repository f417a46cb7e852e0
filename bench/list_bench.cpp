// The record list of the log with 32,767 batches: how long until it stands, and how long each key in its filter takes
// up to the picture.
#include "db/DatabaseFile.h"
#include "platform/data/Connection.h"
#include "platform/data/TableReader.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordList.h"
#include "platform/widgets/Theme.h"
#include "screens/ListedTables.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int pieceRows = 1000;  // as the program reads them

platform::TableReader reader(const sorvanto::ListedTable& table) {
    static QTemporaryDir folder;
    static const platform::ConnectionPtr connection = [] {
        const QString path = folder.filePath(u"bench.mdb"_s);
        sorvanto::createSample(path, sorvanto::mostRows);
        auto made = std::make_shared<platform::Connection>();
        made->open(u"Data Source="_s + path);
        return made;
    }();
    QStringList expressions;
    for (const sorvanto::ListedColumn& column : table.columns)
        expressions << column.expression;
    return {connection, table.table, table.key, expressions};
}

int collect(platform::RecordList& list, const sorvanto::ListedTable& table) {
    platform::TableReader rows = reader(table);
    int read = 0;
    for (auto piece = rows.next(pieceRows); !piece.empty(); piece = rows.next(pieceRows)) {
        list.collect(piece);
        read += static_cast<int>(piece.size());
    }
    return read;
}

/// As it stands beside the log at 1920.
platform::RecordList& logList() {
    static platform::RecordList list;
    static const bool filled = [] {
        const sorvanto::ListedTable table = sorvanto::listedLogs();
        std::vector<platform::ListColumn> columns;
        for (const sorvanto::ListedColumn& column : table.columns)
            columns.push_back(column.column);
        list.setColumns(columns, table.sortColumn, table.sortOrder);
        list.setDayRange(table.dayColumn, u"From"_s, u"To"_s);
        list.resize(652, 900);
        list.show();
        collect(list, table);
        list.showCollected();
        return true;
    }();
    Q_UNUSED(filled);
    return list;
}

void paint(platform::RecordList& list) { benchmark::DoNotOptimize(list.grab()); }

void painted(benchmark::State& state) {
    platform::RecordList& list = logList();
    for (auto _ : state)
        paint(list);
}
BENCHMARK(painted)->Unit(benchmark::kMillisecond);

/// All pieces one after the other; the program does other things between two of them.
void readAndShown(benchmark::State& state) {
    platform::RecordList& list = logList();
    for (auto _ : state) {
        state.counters["rows"] = collect(list, sorvanto::listedLogs());
        list.showCollected();
        paint(list);
    }
}
BENCHMARK(readAndShown)->Unit(benchmark::kMillisecond);

/// The text is typed a key at a time and taken away again; the time is that of a key.
void keyInFilter(benchmark::State& state, const char16_t* text) {
    platform::RecordList& list = logList();
    auto& box = *list.findChild<QLineEdit*>(u"txtListFilter"_s);
    const QString typed = QString::fromUtf16(text);
    for (auto _ : state) {
        for (qsizetype keys = 1; keys <= typed.size(); ++keys) {
            box.setText(typed.left(keys));
            paint(list);
        }
        state.PauseTiming();
        box.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * typed.size());
    state.counters["a key"] =
        benchmark::Counter(static_cast<double>(typed.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(keyInFilter, Common, u"suspension")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keyInFilter, Nothing, u"zzzzzzzzzz")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keyInFilter, TwoWords, u"gel sv0426")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keyInFilter, Accents, u"crème à l'u")->Unit(benchmark::kMillisecond);

void dayChosen(benchmark::State& state) {
    platform::RecordList& list = logList();
    auto& from = *list.findChild<platform::DateBox*>(u"txtListFrom"_s);
    int day = 0;
    for (auto _ : state) {
        from.setValue(QDateTime(QDate(2025, 1, 1).addDays(++day % 300), QTime(0, 0), Qt::UTC));
        emit from.valueEdited();
        paint(list);
    }
    from.clear();
    emit from.valueEdited();
}
BENCHMARK(dayChosen)->Unit(benchmark::kMillisecond);

void sorted(benchmark::State& state, int column) {
    platform::RecordList& list = logList();
    auto& rows = *list.findChild<QTableView*>(u"grdRecordList"_s);
    Qt::SortOrder order = Qt::AscendingOrder;
    for (auto _ : state) {
        order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        rows.sortByColumn(column, order);
        paint(list);
    }
}
BENCHMARK_CAPTURE(sorted, ByLot, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sorted, ByDate, 2)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    platform::applyTheme(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
