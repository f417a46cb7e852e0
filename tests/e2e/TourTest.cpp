// The real program from end to end, in processes of its own: the whole tour, a batch that outlives the
// program, initials that the database refuses, and a second start.
#include "Pharmacy.h"

#include "support/Waiting.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr const char* batchRow =
    "SELECT FormulaID, log_Name, log_Quantity, log_JarSize, log_Cost, log_AWP, log_Lot, log_Initials, log_Verified "
    "FROM Log ORDER BY LogID DESC LIMIT 1";

}  // namespace

TEST_F(Pharmacy, TheTourMakesItsBatchesAndAllItsPaper) {
    const Ending end = tour();
    ASSERT_FALSE(end.killed);
    ASSERT_EQ(end.code, 0) << end.err.toStdString();
    EXPECT_EQ(sql("SELECT count(*) FROM Log"), "13");
    for (const char* pdf : {"worksheet", "formula-log", "batch-labels", "rx-labels", "log-report",
                            "jar-usage", "chemicals", "patient"})
        EXPECT_TRUE(QFile::exists(path(u"tour/%1.pdf"_s.arg(pdf)))) << pdf;
    for (const char* sheet : {"Worksheet", "FormulaLog", "LogAvery8160", "LogReport", "JarUsage", "RXLabel",
                              "RXReport", "Chemicals"}) {
        QFile file(path(u"%1.xls"_s.arg(sheet)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.read(4) == QByteArray("\xD0\xCF\x11\xE0", 4))
            << sheet;
    }
    const QStringList pictures = QDir(path("tour")).entryList({"*.png"});
    EXPECT_GE(pictures.filter("dark-").size(), 1);
    EXPECT_GE(pictures.filter("language2-").size(), 14);
    EXPECT_GE(pictures.size(), 40);
    EXPECT_FALSE(pictures.contains("problem.png"));
}

TEST_F(Pharmacy, ABatchOutlivesTheProgramThatWasKilledBeforeLoggingIt) {
    const Ending death = tour({"--stop-after", "mixdone"});
    ASSERT_TRUE(death.killed) << death.err.toStdString();
    const QString lot = death.out.trimmed();
    ASSERT_FALSE(lot.isEmpty());
    EXPECT_EQ(sql("SELECT count(*) FROM Log"), "12");
    const QString results = journalledResults();
    ASSERT_FALSE(results.isEmpty());

    const Ending end = tour({"--recover"});
    ASSERT_EQ(end.code, 0) << end.err.toStdString();
    EXPECT_EQ(end.out.trimmed(), lot);
    EXPECT_EQ(sql(batchRow), "1|Hydrocortisone 1% Cream|35|4|1.6959|3.8894|" + lot.toStdString() + "|MR|JT");
    EXPECT_EQ(sql("SELECT log_Results FROM Log ORDER BY LogID DESC LIMIT 1"), results.toStdString());
    EXPECT_EQ(
        sql("SELECT lch_QTY, lch_Cost FROM LogChem WHERE LogID = (SELECT max(LogID) FROM Log) ORDER BY LogChemID"),
        "0.35|1\n0.7|0.01\n33.95|0.69");
    EXPECT_TRUE(QDir(path("mixes")).entryList(QDir::Files).isEmpty());
}

TEST_F(Pharmacy, RefusedInitialsAreReportedAndTheMixStaysOnOffer) {
    const Ending vain = tour({"--sign-in-vain", "O'K"});
    ASSERT_EQ(vain.code, 0) << vain.err.toStdString();
    EXPECT_EQ(sql("SELECT count(*) FROM Log"), "12");

    const Ending end = tour({"--recover"});
    ASSERT_EQ(end.code, 0) << end.err.toStdString();
    EXPECT_EQ(end.out, vain.out);
    EXPECT_EQ(sql("SELECT count(*) FROM Log"), "13");
}

TEST_F(Pharmacy, AFailureInAnEventIsReportedAndTheProgramGoesOn) {
    const Ending end = tour({"--fail-in-an-event"});
    EXPECT_FALSE(end.killed);
    EXPECT_EQ(end.code, 0) << end.err.toStdString();
}

TEST_F(Pharmacy, ASecondStartIsRefusedAndLeavesTheFirstAlone) {
    // The real executable looks for its files beside itself.
    ASSERT_TRUE(QFile::copy(executable("sorvanto"), path("sorvanto")));
    QFile options(path("options.xml"));
    ASSERT_TRUE(options.open(QIODevice::WriteOnly));
    options.write(optionsWithPrinter(QString()).toUtf8());
    options.close();
    QProcess first;
    first.setProcessEnvironment(environment());
    first.start(path("sorvanto"), QStringList());
    ASSERT_TRUE(first.waitForStarted());
    // It holds the lock from the middle of its start on.
    const QDeadlineTimer until(support::patience);
    while (!until.hasExpired() && !QFile::exists(path("sorvanto.lock")))
        ASSERT_FALSE(first.waitForFinished(50)) << "The first program ended.";
    ASSERT_TRUE(QFile::exists(path("sorvanto.lock")));

    const Ending second = tour({"--second-instance"});
    EXPECT_EQ(second.code, 0) << second.err.toStdString();
    EXPECT_FALSE(first.waitForFinished(500)) << "The first program ended.";
    EXPECT_EQ(sql("SELECT count(*) FROM Log"), "12");
    first.terminate();
    first.waitForFinished();
}

}  // namespace e2e
