// A batch with 30 lines, each row written and committed as the program does it, on the disk of the folder that
// is named first (else the system's scratch folder): with the history of changes, and without it. Then the work on a
// long history. "batches" or "long" behind the folder does the one alone.
#include "db/DatabaseFile.h"
#include "history/HistoryBook.h"
#include "history/HistoryChain.h"
#include "history/HistoryRange.h"
#include "history/HistoryReplay.h"
#include "history/HistorySeal.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/data/Recordset.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <sqlite3.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QString where = QDir::tempPath();

constexpr int lines = 30;
constexpr int rowsOfMemos = 60;

/// A sample pharmacy, open.
class Pharmacy {
public:
    explicit Pharmacy(bool withHistory) : m_folder(where + u"/history-XXXXXX"_s) {
        const QString path = m_folder.filePath(u"bench.mdb"_s);
        sorvanto::createSample(path, 1000);
        m_connection->open(u"Data Source="_s + path);
        if (withHistory)
            sorvanto::keepHistory(*m_connection);
        else
            dropHistory();
    }
    const platform::ConnectionPtr& connection() const { return m_connection; }

private:
    void dropHistory() {
        sqlite3_exec(platform::sqlite::handleOf(m_connection->engine()), "DROP TABLE IF EXISTS History",
                     nullptr, nullptr, nullptr);
        QStringList triggers;
        {
            const QString list =
                u"SELECT name FROM sqlite_schema WHERE type = 'trigger' AND name LIKE 'History%'"_s;
            platform::Query row(m_connection->engine(), list, list);
            while (row.step())
                triggers << row.value(0, {platform::FieldKind::Text, 0}).toString();
        }
        for (const QString& trigger : triggers)
            sqlite3_exec(platform::sqlite::handleOf(m_connection->engine()),
                         ("DROP TRIGGER " + trigger).toUtf8().constData(), nullptr, nullptr, nullptr);
    }

    QTemporaryDir m_folder;
    platform::ConnectionPtr m_connection = std::make_shared<platform::Connection>();
};

void logBatch(const platform::ConnectionPtr& connection) {
    const QString memo = u"<Row><Speed>1200</Speed><Time>60</Time></Row>"_s.repeated(rowsOfMemos);
    connection->execute(
        u"INSERT INTO Log (FormulaID, log_Name, log_Strength, log_Units, log_Quantity, log_Lot, log_Mix, log_Results) "
        "VALUES (3, 'Hydrocortisone 1% Cream', '1%', 'GMS', 100, 'SV04269012', '%1', '%1')"_s.arg(memo));
    const auto rows = platform::Recordset::create();
    rows->open(
        u"SELECT LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, "
        "lch_Supplier, lch_Form, lch_GUID, lch_QTY FROM LogChem WHERE (LogID = -1)"_s,
        connection, platform::LockType::Optimistic);
    for (int line = 0; line < lines; ++line) {
        rows->addNew();
        rows->setValue(u"LogID"_s, qint64{7});
        rows->setValue(u"ChemicalID"_s, qint64{3});
        for (const auto& [column, text] : {std::pair{u"lch_Name"_s, u"Hydrocortisone Micronized"_s},
                                           {u"lch_Units"_s, u"GMS"_s},
                                           {u"lch_Lot"_s, u"HC24118"_s},
                                           {u"lch_NDC"_s, u"00000-2101-25"_s},
                                           {u"lch_Supplier"_s, u"Northfield"_s},
                                           {u"lch_Form"_s, u"PWD"_s},
                                           {u"lch_GUID"_s, u"9E3779B1-9E37-444F-87DB-0A5E6F8E96FB"_s},
                                           {u"lch_Cost"_s, u"2.85"_s},
                                           {u"lch_AWP"_s, u"6.9"_s}})
            rows->setValue(column, text);
        rows->setValue(u"lch_QTY"_s, 1.5);
        rows->update();
    }
}

constexpr double nanosecondsInMillisecond = 1e6;

/// In milliseconds: until the disk has it, and the processor's part of that.
struct Cost {
    double wall = 0, processor = 0;
};

double processorTime() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 +
           static_cast<double>(now.tv_nsec) / nanosecondsInMillisecond;
}

Cost costOf(const platform::ConnectionPtr& connection) {
    QElapsedTimer timer;
    timer.start();
    const double before = processorTime();
    logBatch(connection);
    return {static_cast<double>(timer.nsecsElapsed()) / nanosecondsInMillisecond, processorTime() - before};
}

/// The least is what the work itself takes on a busy machine.
void tell(const char* what, std::vector<double> without, std::vector<double> with) {
    std::sort(without.begin(), without.end());
    std::sort(with.begin(), with.end());
    const auto line = [&](const char* which, std::size_t place) {
        std::printf("batch of %d lines, %s, %s of %zu: %.2f ms without, %.2f ms with history, ratio %.2f\n",
                    lines, what, which, with.size(), without.at(place), with.at(place),
                    with.at(place) / without.at(place));
    };
    line("median", with.size() / 2);
    line("least", 0);
}

/// In turns, since a disk has its moods.
void batches(int rounds) {
    Pharmacy plain(false);
    Pharmacy kept(true);
    std::vector<double> without, with, withoutProcessor, withProcessor;
    for (int round = 0; round < rounds; ++round) {
        const Cost one = costOf(plain.connection());
        const Cost other = costOf(kept.connection());
        without.push_back(one.wall);
        with.push_back(other.wall);
        withoutProcessor.push_back(one.processor);
        withProcessor.push_back(other.processor);
    }
    tell("until the disk has it", without, with);
    tell("processor time", withoutProcessor, withProcessor);
}

void timed(const char* what, const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    const double before = processorTime();
    work();
    std::printf("%s: %.2f ms, %.2f ms of a processor\n", what,
                static_cast<double>(timer.nsecsElapsed()) / nanosecondsInMillisecond,
                processorTime() - before);
}

/// A thousand chemicals, each changed a thousand times.
void longHistory() {
    Pharmacy pharmacy(true);
    platform::Engine& database = pharmacy.connection()->engine();
    sqlite3* file = platform::sqlite::handleOf(database);
    sqlite3_exec(file, "PRAGMA synchronous = OFF; BEGIN", nullptr, nullptr, nullptr);
    timed("1,000,000 changes, each kept and sealed", [&] {
        for (int round = 0; round < 1000; ++round)
            sqlite3_exec(file, "UPDATE Chemical SET chm_Cost = chm_Cost + 1", nullptr, nullptr, nullptr);
    });
    sqlite3_exec(file, "COMMIT", nullptr, nullptr, nullptr);
    timed("open for the next change", [&] { sorvanto::keepHistory(*pharmacy.connection()); });
    timed("one more change", [&] {
        pharmacy.connection()->execute(u"UPDATE Chemical SET chm_Lot = 'L' WHERE ChemicalID = 7"_s);
    });
    timed("the 1,000 changes of one record read", [&] { sorvanto::historyOf(database, u"Chemical"_s, 7); });
    timed("changes since a batch counted", [&] {
        sorvanto::changesSince(database, u"Chemical"_s, 7,
                               QDateTime(QDate(2026, 3, 7), QTime(14, 5), Qt::UTC));
    });
    timed("the newest 500 of all records read", [&] {
        sorvanto::HistoryRange range(database, {}, {}, sorvanto::HistoryOrder::NewestFirst);
        for (int i = 0; i < 500; ++i)
            static_cast<void>(range.next());
    });
    timed("all records of a day counted",
          [&] { static_cast<void>(sorvanto::historyRows(database, QDate(2026, 3, 7), QDate(2026, 3, 7))); });
    timed("the chain proved", [&] {
        std::printf("%lld problems, ", static_cast<long long>(sorvanto::chainProblems(database).size()));
    });
    timed("the records held against it", [&] {
        std::printf("%lld problems, ", static_cast<long long>(sorvanto::recordProblems(database).size()));
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1)
        where = QString::fromLocal8Bit(argv[1]);
    const QString part = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    if (part != "long"_L1)
        batches(41);
    if (part != "batches"_L1)
        longHistory();
    return 0;
}
