// sorvanto-report, the executable itself, on the sample pharmacy: what it writes, what it refuses and how it
// says so.
#include "TestDatabase.h"
#include "db/Archive.h"
#include "db/DatabaseFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QStringList range{"--from", "2020-01-01", "--to", "2027-01-01"};

/// Each report with what it takes, on records that the sample has.
std::vector<QStringList> allReports() {
    return {{"worksheet", "--formula", "1", "--quantity", "100"},
            {"formula-log", "--log", "1"},
            {"batch-labels", "--log", "1", "--labels", "4", "--position", "3"},
            QStringList{"log-report", "--formula", "1"} + range,
            QStringList{"jar-usage"} + range,
            {"rx-labels", "--rx", "1", "--labels", "2", "--position", "30"},
            QStringList{"patient", "--patient", "1"} + range,
            {"chemicals"},
            {"recall", "--batch", "SV260001"}};
}

class ReportTool : public ::testing::Test {
protected:
    void SetUp() override {
        createSample(path("s.mdb"));
        for (const char* language : {"English", "German"}) {
            const QString name = QLatin1String(language) + u"Translation.xml"_s;
            ASSERT_TRUE(QFile::copy(SORVANTO_SOURCE_DIR "/languages/" + name, path(name)));
        }
        write("options.xml", options("$", 0));
    }
    static QByteArray options(const QByteArray& currency, int language) {
        return "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation/><Language>" +
               QByteArray::number(language) + "</Language><DefPrinter/><DefCurrency>" + currency +
               "</DefCurrency></Options><Pharmacy><StoreName>Kelmar Systems</StoreName>"
               "<Address>418 Larkspur Ct.</Address><City>Fenwick</City><State>ZZ</State>"
               "<PostalCode>54321</PostalCode><Phone>(555)010-0188</Phone><Fax>(555)010-0189</Fax>"
               "<DEA>123456789</DEA><ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed>"
               "</Pharmacy></Configuration>";
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

    /// Runs the executable in the test's folder without a display; gives its exit code.
    int runBare(const QStringList& arguments, const QString& locale = "en_US.UTF-8") {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
            environment.remove(name);
        environment.insert("LC_ALL", locale);
        environment.insert("XDG_DATA_HOME", path("data"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder.path());
        process.start(SORVANTO_BIN_DIR "/sorvanto-report", arguments);
        EXPECT_TRUE(process.waitForFinished(60'000)) << qPrintable(process.errorString());
        out = QString::fromUtf8(process.readAllStandardOutput());
        err = QString::fromUtf8(process.readAllStandardError());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return process.exitCode();
    }
    /// With the test's database, options and a PDF to write.
    int run(const QStringList& report, const QString& locale = "en_US.UTF-8") {
        return runBare(report +
                           QStringList{"--database", "s.mdb", "--options", "options.xml", "--pdf", "out.pdf"},
                       locale);
    }
    QString pdfText(const QString& name = "out.pdf") const {
        QProcess process;
        process.start("pdftotext", {"-layout", path(name), "-"});
        EXPECT_TRUE(process.waitForFinished(60'000));
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    QString out, err;

private:
    QTemporaryDir m_folder;
};

TEST_F(ReportTool, WritesEachReportAsPdfAndSpreadsheet) {
    for (const QStringList& report : allReports()) {
        const QString name = report.front();
        ASSERT_EQ(run(report + QStringList{"--xls", "out.xls"}), 0)
            << qPrintable(name) << ": " << qPrintable(err);
        EXPECT_TRUE(content("out.pdf").startsWith("%PDF-")) << qPrintable(name);
        EXPECT_TRUE(content("out.xls").startsWith("\xD0\xCF\x11\xE0")) << qPrintable(name);
        EXPECT_EQ(err, "") << qPrintable(name);
        EXPECT_EQ(out, "") << qPrintable(name);
        QFile::remove(path("out.pdf"));
        QFile::remove(path("out.xls"));
        ASSERT_EQ(runBare(report +
                          QStringList{"--database", "s.mdb", "--options", "options.xml", "--xls", "out.xls"}),
                  0);
        EXPECT_FALSE(QFile::exists(path("out.pdf")));
        QFile::remove(path("out.xls"));
    }
}

TEST_F(ReportTool, SpeaksTheLanguageWithTheCustomsOfTheSystem) {
    const QStringList report = allReports().front();
    ASSERT_EQ(run(report + QStringList{"--language", "German"}, "de_DE.UTF-8"), 0) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains(u"Ansatzblatt – Sorvanto")) << qPrintable(pdfText());
    EXPECT_TRUE(pdfText().contains(u"4,85 €"));
    ASSERT_EQ(run(report), 0) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("Formula Worksheet -- Sorvanto"));
    EXPECT_TRUE(pdfText().contains("$4.85"));
}

TEST_F(ReportTool, TakesPharmacyCurrencyAndLanguageFromTheOptions) {
    write("mine.xml", options("R$", 2).replace("Kelmar Systems", "Apotheke am Markt"));
    const QStringList files{"--database", "s.mdb", "--options", "mine.xml", "--pdf", "out.pdf"};
    ASSERT_EQ(runBare(allReports().at(1) + files), 0) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("Apotheke am Markt")) << qPrintable(pdfText());
    EXPECT_TRUE(pdfText().contains("R$"));
    EXPECT_TRUE(pdfText().contains("Bestandteile"));
}

TEST_F(ReportTool, TakesThemFromTheProgramsFolder) {
    ASSERT_TRUE(QDir(path("data")).mkpath("sorvanto") && QDir(path("asked")).mkpath("."));
    for (const QString& name : {u"options.xml"_s, u"GermanTranslation.xml"_s}) {
        ASSERT_TRUE(QFile::copy(path(name), path("data/sorvanto/") + name));
        ASSERT_TRUE(QFile::copy(path(name), path("asked/") + name));
    }
    write("data/sorvanto/options.xml", options("R$", 2).replace("Kelmar Systems", "Apotheke am Markt"));
    write("asked/options.xml", options("R$", 2).replace("Kelmar Systems", "Apotheke am Tor"));
    const QStringList report = allReports().at(1) + QStringList{"--database", "s.mdb", "--pdf", "out.pdf"};
    ASSERT_EQ(runBare(report), 0) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("Apotheke am Markt")) << qPrintable(pdfText());
    EXPECT_TRUE(pdfText().contains("Bestandteile"));
    ASSERT_EQ(runBare(report + QStringList{"--folder", "asked"}), 0) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("Apotheke am Tor")) << qPrintable(pdfText());
}

TEST_F(ReportTool, LabelsStartAtThePositionAndAreAsManyAsAsked) {
    ASSERT_EQ(run({"batch-labels", "--log", "1", "--labels", "4", "--position", "29"}), 0) << qPrintable(err);
    const QStringList pages = pdfText().split('\f', Qt::SkipEmptyParts);
    ASSERT_EQ(pages.size(), 2);
    EXPECT_EQ(pages.at(0).count("SV260001"), 2) << qPrintable(pages.at(0));
    EXPECT_EQ(pages.at(1).count("SV260001"), 2) << qPrintable(pages.at(1));
}

TEST_F(ReportTool, DatesBoundTheRows) {
    support::runSql(path("s.mdb"),
                    "UPDATE RXs SET PatientID = 1; UPDATE RXs SET rxs_Date = '2026-02-03 00:00:00',"
                    " rxs_Doctor = 'Inside'; UPDATE RXs SET rxs_Date = '2026-02-04 00:00:00',"
                    " rxs_Doctor = 'Outside' WHERE RXsID > 1");
    ASSERT_EQ(run({"patient", "--patient", "1", "--from", "2026-02-03", "--to", "2026-02-03T23:59"}), 0)
        << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("Inside"));
    EXPECT_FALSE(pdfText().contains("Outside"));
}

TEST_F(ReportTool, ARecallIsAskedByLotNdcNameBatchOrPatient) {
    support::runSql(
        path("s.mdb"),
        "DELETE FROM LogChem; DELETE FROM RXs; DELETE FROM Log; INSERT INTO Log (LogID, log_Name, log_Lot,"
        " log_Date) VALUES (1, 'Cooling Gel', 'B1', '2026-01-05 10:00:00'), (2, 'Plain Base', 'B2',"
        " '2026-02-05 10:00:00'); INSERT INTO LogChem (LogID, lch_Name, lch_Lot, lch_NDC) VALUES (1,"
        " 'Menthol', 'L-77', 'N-7'), (2, 'Stock', 'B1', 'N-8'); UPDATE Patient SET pat_LName = 'Nobody';"
        "UPDATE Patient SET pat_LName = 'Abernathy' WHERE PatientID = 1; INSERT INTO RXs (LogID, PatientID,"
        " rxs_Date, rxs_QTY) VALUES (2, 1, '2026-02-06 00:00:00', 30)");
    const auto listed = [&](const QStringList& what) {
        EXPECT_EQ(run(QStringList{"recall"} + what), 0) << qPrintable(err);
        const QString text = pdfText();
        return QStringList{text.contains("Cooling Gel  ") ? "first" : "",
                           text.contains("Plain Base  ") ? "second" : "",
                           text.contains("Abernathy") ? "patient" : ""}
            .join(' ');
    };
    EXPECT_EQ(listed({"--lot", "l-77"}).toStdString(), "first second patient") << qPrintable(pdfText());
    EXPECT_EQ(listed({"--ndc", "N-8"}).toStdString(), " second patient");
    EXPECT_EQ(listed({"--name", "menth"}).toStdString(), "first second patient");
    EXPECT_EQ(listed({"--batch", "B2"}).toStdString(), " second patient");
    EXPECT_EQ(listed({"--batch", "L-77"}).toStdString(), "  ") << "a lot that was bought is no batch's";
    EXPECT_TRUE(pdfText().contains("2 batches were searched")) << qPrintable(pdfText());
    EXPECT_EQ(listed({"--patient", "1"}).toStdString(), " second patient");
    EXPECT_EQ(err, "");
    EXPECT_EQ(listed({"--lot", "L-77", "--to", "2026-01-05"}).toStdString(), "first  ");
    EXPECT_EQ(err, "sorvanto-report: 1 batch outside these dates is not listed.\n")
        << "said beside the paper, too";
    EXPECT_EQ(listed({"--lot", "L-77", "--from", "2026-02-05"}).toStdString(), " second patient");
}

TEST_F(ReportTool, ARecallGoesThroughTheArchivesBesideTheDatabase) {
    support::runSql(path("s.mdb"),
                    "UPDATE Log SET log_Date = '2020-01-05 10:00:00' WHERE log_Lot = 'SV260001'");
    archiveDatabase(path("s.mdb"), path("old.mdb"), QDate(2020, 2, 1));
    const QStringList recall{"recall", "--batch", "SV260001"};
    ASSERT_EQ(run(recall), 0) << qPrintable(err);
    EXPECT_EQ(err, "");
    EXPECT_TRUE(pdfText().contains("An archive with")) << qPrintable(pdfText());
    EXPECT_TRUE(pdfText().contains("1 batch ·"));
    QFile::remove(path("old.mdb"));
    ASSERT_EQ(run(recall), 0);
    EXPECT_TRUE(err.contains("is not at hand and was not searched")) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("0 batches ·") && pdfText().contains("What is counted here is not final."))
        << qPrintable(pdfText());
}

TEST_F(ReportTool, AWrongCommandLineIsToldAndWritesNothing) {
    const QStringList rest{"--database", "s.mdb", "--options", "options.xml"};
    const QStringList pdf = rest + QStringList{"--pdf", "out.pdf"};
    const std::vector<std::pair<QStringList, QString>> wrong{
        {{}, "No report is named"},
        {{"novel"}, "There is no report \"novel\""},
        {{"chemicals", "patient"}, "\"patient\" is too much"},
        {{"chemicals", "--colour", "red"}, "colour"},
        {QStringList{"chemicals"} + rest, "Nothing to write"},
        {{"chemicals", "--pdf", "out.pdf"}, "--database is missing"},
        {QStringList{"chemicals", "--xls", "./out.pdf"} + pdf, "must be different files"},
        {{"chemicals", "--database", "s.mdb", "--pdf", "s.mdb"}, "must be different files"},
        {QStringList{"chemicals", "--rx", "1"} + pdf, "chemicals doesn't take --rx"},
        {QStringList{"chemicals", "--lot", "1"} + pdf, "chemicals doesn't take --lot"},
        {QStringList{"recall"} + pdf, "recall takes exactly one of --patient, --lot, --ndc, --name, --batch"},
        {QStringList{"recall", "--lot", "A", "--batch", "B"} + pdf, "recall takes exactly one of"},
        {QStringList{"recall", "--lot", "A", "--to", "tomorrow"} + pdf, "not \"tomorrow\""},
        {QStringList{"recall", "--lot", "A", "--formula", "1"} + pdf, "recall doesn't take --formula"},
        {QStringList{"worksheet", "--formula", "1"} + pdf, "worksheet needs --quantity"},
        {QStringList{"worksheet", "--formula", "1", "--quantity", "0"} + pdf, "from 1 to 32767, not \"0\""},
        {QStringList{"worksheet", "--formula", "1", "--quantity", "32768"} + pdf, "not \"32768\""},
        {QStringList{"worksheet", "--formula", "1", "--quantity", "2.5"} + pdf, "not \"2.5\""},
        {QStringList{"worksheet", "--formula", "x", "--quantity", "2"} + pdf,
         "--formula takes a whole number"},
        {QStringList{"worksheet", "--formula", "-1", "--quantity", "2"} + pdf, "--formula"},
        {QStringList{"formula-log", "--log", "1", "--log", "2"} + pdf, "--log is given more than once"},
        {QStringList{"formula-log", "--log", ""} + pdf, "--log has no value"},
        {QStringList{"batch-labels", "--log", "1", "--labels", "40000", "--position", "1"} + pdf,
         "not \"40000\""},
        {QStringList{"batch-labels", "--log", "1", "--labels", "1", "--position", "31"} + pdf,
         "from 1 to 30, not \"31\""},
        {QStringList{"jar-usage", "--from", "2026-02-30", "--to", "2026-03-01"} + pdf, "not \"2026-02-30\""},
        {QStringList{"jar-usage", "--from", "01.02.2026", "--to", "2026-03-01"} + pdf, "not \"01.02.2026\""},
        {QStringList{"jar-usage", "--from", "2026-03-02", "--to", "2026-03-01"} + pdf,
         "--to lies before --from"},
        {QStringList{"chemicals", "--language", "Klingon"} + pdf, "not \"Klingon\""},
    };
    for (const auto& [arguments, message] : wrong) {
        EXPECT_EQ(runBare(arguments), 2) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(err.startsWith("sorvanto-report: ")) << qPrintable(err);
        EXPECT_TRUE(err.section('\n', 0, 0).contains(message)) << qPrintable(err.section('\n', 0, 0));
        EXPECT_TRUE(err.contains("--database FILE"));
        EXPECT_EQ(out, "");
        EXPECT_FALSE(QFile::exists(path("out.pdf"))) << qPrintable(arguments.join(' '));
    }
    EXPECT_EQ(runBare({"--help"}), 0);
    EXPECT_TRUE(out.contains("sorvanto-report NAME --database FILE"));
    EXPECT_EQ(err, "");
}

TEST_F(ReportTool, WhatCantBeDoneIsToldAndLeavesTheOldFile) {
    write("out.pdf", "yesterday's");
    write("garbage.mdb", QByteArray("garbage ").repeated(600));
    write("broken.xml", "<Configuration><Opt");
    support::runSql(path("s.mdb"), "UPDATE Formula SET frm_Quantity = 0 WHERE FormulaID = 2;"
                                   "UPDATE Formula SET frm_Mix = NULL WHERE FormulaID = 3");
    const QStringList outputs{"--options", "options.xml", "--pdf", "out.pdf"};
    const auto on = [&](const QString& database) { return QStringList{"--database", database} + outputs; };
    const std::vector<std::pair<QStringList, QString>> failing{
        {QStringList{"worksheet", "--formula", "999", "--quantity", "1"} + on("s.mdb"),
         "There is no formula 999"},
        {QStringList{"worksheet", "--formula", "2", "--quantity", "1"} + on("s.mdb"), "Division by zero"},
        {QStringList{"worksheet", "--formula", "3", "--quantity", "1"} + on("s.mdb"), "Invalid use of Null"},
        {QStringList{"formula-log", "--log", "999"} + on("s.mdb"), "There is no batch 999"},
        {QStringList{"batch-labels", "--log", "999", "--labels", "1", "--position", "1"} + on("s.mdb"),
         "There is no batch 999"},
        {QStringList{"log-report", "--formula", "999"} + range + on("s.mdb"), "There is no formula 999"},
        {QStringList{"rx-labels", "--rx", "999", "--labels", "1", "--position", "1"} + on("s.mdb"),
         "There is no prescription 999"},
        {QStringList{"patient", "--patient", "999"} + range + on("s.mdb"), "There is no patient 999"},
        {QStringList{"jar-usage", "--from", "2000-01-01", "--to", "2000-02-01"} + on("s.mdb"), "No records"},
        {QStringList{"recall", "--patient", "999"} + on("s.mdb"), "There is no patient 999"},
        {QStringList{"chemicals"} + on("missing.mdb"), "There is no database missing.mdb"},
        {QStringList{"chemicals"} + on("garbage.mdb"), "garbage.mdb"},
        {{"chemicals", "--database", "s.mdb", "--options", "no.xml", "--pdf", "out.pdf"}, "no.xml"},
        {{"chemicals", "--database", "s.mdb", "--options", "broken.xml", "--pdf", "out.pdf"}, "options.xml"},
        {QStringList{"chemicals", "--language", "French"} + on("s.mdb"), "FrenchTranslation.xml"},
        {{"chemicals", "--database", "s.mdb", "--options", "options.xml", "--pdf", "no/out.pdf"},
         "no/out.pdf"},
    };
    for (const auto& [arguments, message] : failing) {
        EXPECT_EQ(runBare(arguments), 1) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(err.startsWith("sorvanto-report: ") && err.contains(message))
            << qPrintable(arguments.join(' ')) << "\n"
            << qPrintable(err);
        EXPECT_EQ(content("out.pdf"), "yesterday's") << qPrintable(arguments.join(' '));
    }
}

TEST_F(ReportTool, LabelsWithAValueThatHasNoRoomAreNotMade) {
    support::runSql(path("s.mdb"), "UPDATE Log SET log_Strength = '1234567890.12345 mg / 1234567890.123 mL'");
    EXPECT_EQ(run({"batch-labels", "--log", "1", "--labels", "4", "--position", "1"}), 1);
    EXPECT_TRUE(err.contains("The label is not printed: \"Strength\" has no room")) << qPrintable(err);
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

TEST_F(ReportTool, ValuesWithoutRoomOnAReportAreTold) {
    support::runSql(path("s.mdb"), "UPDATE Chemical SET chm_Lot = 'LOTNUMBER-WITH-FORTY-CHARACTERS-0123456'"
                                   " WHERE ChemicalID = 1");
    ASSERT_EQ(run({"chemicals"}), 0);
    EXPECT_TRUE(err.contains("sorvanto-report: Page 1: no room even in small type")) << qPrintable(err);
    EXPECT_TRUE(pdfText().contains("####"));
}

TEST_F(ReportTool, ChangesNothingButItsOutput) {
    const QStringList before = files();
    std::vector<QByteArray> contents;
    for (const QString& file : before)
        contents.push_back(content(file));
    for (const QStringList& report : allReports())
        ASSERT_EQ(run(report + QStringList{"--language", "German"}), 0) << qPrintable(err);
    QFile::remove(path("out.pdf"));
    EXPECT_EQ(files(), before);
    for (qsizetype i = 0; i < before.size(); ++i)
        EXPECT_EQ(content(before.at(i)), contents.at(static_cast<std::size_t>(i)))
            << qPrintable(before.at(i));
}

}  // namespace
}  // namespace sorvanto
