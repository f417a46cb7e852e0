// How often the clicks of the real screens wait for a server: each with all that its screen does, up to its picture.
#include "../screens/ScreenTest.h"
#include "SlowPlace.h"
#include "core/BenchWatch.h"
#include "core/DailyBackup.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordList.h"
#include "support/Waiting.h"

#include <QDateTimeEdit>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>

using namespace sorvanto;
using namespace Qt::StringLiterals;

namespace {

/// A click, and how many waits it has at most.
struct Click {
    const char* tool;
    int most;
};

/// On the sample pharmacy with 300 rows in each table.
class ScreenTripsTest : public ScreenTest {
protected:
    /// Formula 2 has thirty lines.
    void seed() override {
        sql(u"INSERT INTO \"FormChem\" (\"FormulaID\", \"ChemicalID\", \"fch_Qty\", \"fch_QS\", \"fch_Active\") "
            "SELECT 2, \"ChemicalID\", 1, 0, 1 FROM \"Chemical\" ORDER BY 2 LIMIT 30 - "
            "(SELECT count(*) FROM \"FormChem\" WHERE \"FormulaID\" = 2)"_s);
    }
    /// Without the look at what other benches do, which comes by itself every two seconds.
    void startAlone() {
        start();
        delete window->findChild<BenchWatch*>();
        settle();
    }
    void start() {
        Parts parts = realParts(context);
        parts.copies = [] {
            constexpr int never = 100'000'000;
            return std::make_unique<DailyBackup>(context, never);
        };
        load(std::move(parts));
        settle();
    }
    static void settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    template <class Action>
    void expectTrips(const QString& what, int most, Action action) {
        m_place.expectTrips(what, most, [&] {
            action();
            settle();
        });
    }
    /// On the screen of that name.
    void expectClicks(const QString& name, const std::vector<Click>& clicks) {
        for (const Click& one : clicks)
            expectTrips(name + u", "_s + QLatin1String(one.tool), one.most,
                        [&] { click(QLatin1String(one.tool)); });
    }
    void expectSearch(const QString& name, const QString& text, int most) {
        expectTrips(name + u", search"_s, most, [&] { search(text); });
    }
    /// Saves the new record on show, whose boxes have got what they need, and deletes it again.
    void expectSaveAndDeletion(const QString& name, const QString& record, int saving, int deleting) {
        expectTrips(name + u", save the new one"_s, saving, [this] { click("cmdSave"); });
        asker.expectMsgBox(u"Delete %1?"_s.arg(record), platform::deletionStyle, platform::Answer::Yes);
        expectTrips(name + u", delete"_s, deleting, [this] { click("cmdDelete"); });
    }
    void expectReport(const QString& name, const char* entry, int most) {
        expectClicks(name, {{entry, most}});
        EXPECT_TRUE(closePreview());
    }
    void answerQuantity() {
        asker.expectModal("frmMake", [](QWidget& make) {
            QTest::keyClicks(support::child<platform::NumberBox>(make, "txtQTY"), "30");
            support::child<QPushButton>(make, "OKButton")->click();
        });
    }
    /// Of all batches.
    void answerDates() {
        asker.expectModal("frmReportDate", [](QWidget& form) {
            const auto day = [](int year) { return QDateTime(QDate(year, 1, 1), QTime(0, 0), Qt::UTC); };
            support::child<QDateTimeEdit>(form, "dtBegin")->setDateTime(day(2000));
            support::child<QDateTimeEdit>(form, "dtEnd")->setDateTime(day(2040));
            support::child<QPushButton>(form, "cmdOK")->click();
        });
    }
    void sign() {
        asker.expectModal("frmInitials", [](QWidget& form) {
            support::child<platform::TextBox>(form, "txtInitials")->setText("RK");
            support::child<platform::TextBox>(form, "txtVerified")->setText("LM");
            support::child<QPushButton>(form, "cmdOK")->click();
        });
        emit window->mixer().mixDone(
            document("<Formula><ID>2</ID><Name>x</Name><Type>5</Type><Size>2</Size><QTY>10</QTY>"
                     "<Make>20</Make><CustomMix PreGrind=\"1\" FreeSpin=\"2\"/></Formula>"),
            document(resultsXml("CD", "0077")));
    }

    SlowPlace m_place;
};

TEST_F(ScreenTripsTest, TheStart) {
    expectTrips("the program is started", 20, [this] { start(); });
    EXPECT_EQ(window->current(), formulas);
    EXPECT_NE(text(formulas, "txtfrm_Name").toStdString(), "");
}

TEST_F(ScreenTripsTest, Formulas) {
    startAlone();
    expectClicks("formula", {{"cmdNext", 1},
                             {"cmdPrevious", 1},
                             {"cmdLast", 1},
                             {"cmdFirst", 1},
                             {"cmdEdit", 1},
                             {"cmdSave", 4},
                             {"cmdEdit", 1},
                             {"cmdCancel", 1},
                             {"cmdNew", 6}});
    control<platform::TextBox>(formulas, "txtfrm_Name").setText("New one");
    control<platform::NumberBox>(formulas, "txtfrm_Quantity").setText("10");
    expectSaveAndDeletion("formula", "New one", 3, 11);
}

TEST_F(ScreenTripsTest, AFormulaIsFoundPrintedLoadedAndItsBatchLogged) {
    startAlone();
    expectSearch("formula of 30 lines",
                 "#" + sqlText("SELECT \"frm_NDC\" FROM \"Formula\" WHERE \"FormulaID\" = 2"), 3);
    answerQuantity();
    expectReport("formula of 30 lines", "mnuWorksheet", 1);
    answerQuantity();
    expectTrips("formula of 30 lines, loaded to the mixer", 2, [this] { click("cmdMake"); });
    expectTrips("batch of 30 lines, signed and shown", 13, [this] { sign(); });
    EXPECT_EQ(
        sqlText(
            "SELECT count(*) FROM \"LogChem\" JOIN \"Log\" USING (\"LogID\") WHERE \"log_Lot\" = 'CD0077'"),
        "30");
}

TEST_F(ScreenTripsTest, Chemicals) {
    startAlone();
    expectClicks("chemical", {{"cmdChemicals", 2},
                              {"cmdCancel", 0},  // open for typing from the start
                              {"cmdNext", 1},
                              {"cmdPrevious", 1},
                              {"cmdLast", 1},
                              {"cmdFirst", 1},
                              {"cmdEdit", 1},
                              {"cmdSave", 3},
                              {"cmdNew", 5}});
    control<platform::TextBox>(chemicals, "txtchm_Name").setText("New one");
    expectSaveAndDeletion("chemical", "New one", 2, 7);
    expectSearch("chemical", "#" + sqlText("SELECT \"chm_NDC\" FROM \"Chemical\" WHERE \"ChemicalID\" = 2"),
                 1);
    expectReport("chemical", "mnuReport", 1);
}

TEST_F(ScreenTripsTest, Patients) {
    startAlone();
    expectClicks("patient",
                 {{"cmdPatients", 2}, {"cmdNext", 1}, {"cmdPrevious", 1}, {"cmdLast", 1}, {"cmdFirst", 1}});
    expectTrips("patient, tab of prescriptions", 0,
                [this] { window->screen(patients)->findChild<QTabWidget*>()->setCurrentIndex(1); });
    expectClicks("patient with prescriptions in front", {{"cmdNext", 1}, {"cmdPrevious", 1}});
    expectClicks("patient",
                 {{"cmdEdit", 1}, {"cmdSave", 3}, {"cmdEdit", 1}, {"cmdCancel", 1}, {"cmdNew", 6}});
    control<platform::TextBox>(patients, "txtpat_FName").setText("New");
    control<platform::TextBox>(patients, "txtpat_LName").setText("One");
    expectSaveAndDeletion("patient", "One, New", 2, 9);
    expectSearch("patient", "#" + sqlText("SELECT \"pat_Phone\" FROM \"Patient\" WHERE \"PatientID\" = 2"),
                 2);
}

TEST_F(ScreenTripsTest, Logs) {
    startAlone();
    expectClicks("batch", {{"cmdLogs", 3},
                           {"cmdNext", 2},
                           {"cmdPrevious", 2},
                           {"cmdLast", 2},
                           {"cmdFirst", 2},
                           {"cmdEdit", 2},
                           {"cmdSave", 5},
                           {"cmdEdit", 2},
                           {"cmdCancel", 2}});
    expectSearch("batch", "?" + sqlText("SELECT \"log_Lot\" FROM \"Log\" WHERE \"LogID\" = 2"), 4);
    expectReport("batch", "mnuFormulaLog", 2);
}

TEST_F(ScreenTripsTest, ALineThatIsLostWhileAReportIsReadNeverLeavesHalfOfOne) {
    using Fault = support::ServerProxy::Fault;
    startAlone();
    click("cmdLogs");
    const auto exported = [&](Fault fault) {
        folder.write("LogReport.xls", "former");
        answerDates();
        m_place.line().arm("TotalLogs", fault);
        click("mnuReportx");
        EXPECT_FALSE(m_place.line().isArmed());
        return folder.read("LogReport.xls");
    };
    EXPECT_TRUE(exported(Fault::LoseReply).startsWith("\xD0\xCF\x11\xE0")) << "read whole by another line";
    EXPECT_EQ(exported(Fault::LoseServer), "former");
    m_place.line().refuse(false);
    EXPECT_TRUE(std::any_of(reporter->calls.begin(), reporter->calls.end(), [](const auto& call) {
        return call.tag == "rptLogReport:FormulaID"_L1 && call.description.contains(u"can't be reached"_s);
    }));
    dropReports();
    EXPECT_FALSE(closePreview());
}

TEST_F(ScreenTripsTest, TheListOfASearchedLog) {
    startAlone();
    click("cmdLogs");
    asker.expectModal("frmSearchRS", [this](QWidget& list) {
        settle();
        EXPECT_LE(m_place.trips(), 5) << "the list with its rows, and what is read for typing";
        list.close();
    });
    expectTrips("batch, search of all, the list closed again", 8, [this] { search("%"); });
}

TEST_F(ScreenTripsTest, NoClickBesideTheRecordListAsksForOthers) {
    startAlone();
    window->resize(1920, 1040);
    const auto& list = *window->findChild<platform::RecordList*>();
    ASSERT_TRUE(support::waitFor([&] { return list.model().rowCount() > 0; }));
    settle();
    expectClicks("formula beside the list",
                 {{"cmdNext", 1}, {"cmdNext", 1}, {"cmdPrevious", 1}, {"cmdLast", 1}});
}

}  // namespace
