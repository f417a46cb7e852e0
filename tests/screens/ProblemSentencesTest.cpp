// Failures that a pharmacist meets, made to happen in the whole window: what the strip says about them.
#include "ScreenTest.h"

#include "core/ErrorStrip.h"
#include "core/ProblemTexts.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "support/Child.h"

#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

const char* const noApostrophe =
    "A search text can’t hold an apostrophe: use the list’s filter, or the text before it.";
const char* const nothingFound =
    "Nothing was found, so nothing was saved. Show a record first, or make a new one.";

class ProblemSentencesTest : public ScreenTest {
protected:
    void seed() override {
        seedLogs();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Jane', 'Doe');");
    }
    /// What the strip says since the last call; empty while it is hidden.
    QString said() {
        const auto* strip = window->findChild<ErrorStrip*>();
        const QString text = strip->isVisibleTo(window.get())
                                 ? support::child<QLabel>(*strip, "lblReport")->text()
                                 : QString();
        dropReports();
        QCoreApplication::processEvents();  // the click is over
        return text;
    }
};

TEST_F(ProblemSentencesTest, AnApostropheInASearchText) {
    load();
    for (const char* opener : {"cmdFormulas", "cmdLogs", "cmdPatients"}) {
        click(opener);
        search("O'Brien");
        EXPECT_EQ(str(said()), noApostrophe) << opener;
    }
}

TEST_F(ProblemSentencesTest, ALongSentenceWrapsInAWindowThatKeepsItsSize) {
    load();
    window->resize(1100, 740);
    basMain::ErrorReporter->ReportPath(folder.path("missing"));
    QCoreApplication::processEvents();
    const QSize before = window->size();
    basMain::ErrorReporter->ReportError("database is locked by another program", "70", "test", 0,
                                        "clsLog:addLog", {}, true, false, true, true);
    dropReports();
    QCoreApplication::processEvents();
    const auto* text = support::child<QLabel>(*window, "lblReport");
    const auto* strip = window->findChild<ErrorStrip*>();
    EXPECT_GT(text->heightForWidth(text->width()), text->fontMetrics().lineSpacing()) << "not long enough";
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
    EXPECT_EQ(window->size(), before);
    EXPECT_LE(strip->mapTo(window.get(), QPoint()).y() + strip->height(), window->statusBar()->y());
}

TEST_F(ProblemSentencesTest, AnEditThatBelongsToNoRecord) {
    load();
    search("no such formula");
    click("cmdEdit");
    control<platform::TextBox>(formulas, "txtfrm_Name").setText("A name");
    control<platform::NumberBox>(formulas, "txtfrm_Quantity").setValue(100.0);
    control<platform::ChoiceBox>(formulas, "cbofrm_JarSize").setListIndex(2);
    click("cmdSave");
    EXPECT_EQ(str(said()), nothingFound);
}

TEST_F(ProblemSentencesTest, ACopyAfterLinesWereAdded) {
    load();
    click("cmdEdit");
    asker.expectInputBox("Enter all or part of chemical name", "Asp", "Search Chemical");
    asker.expectInputBox("Input desired quantity for chemical", "5", u""_s);
    control<QPushButton>(formulas, "cmdAdd").click();
    click("cmdSave");
    click("cmdCopy");
    EXPECT_TRUE(said().startsWith("Page away and back before copying: lines were added."));
}

TEST_F(ProblemSentencesTest, AQuantityThatIsNoNumber) {
    load();
    click("cmdEdit");
    asker.expectInputBox("Enter all or part of chemical name", "Asp", "Search Chemical");
    asker.expectInputBox("Input desired quantity for chemical", "'", u""_s);
    control<QPushButton>(formulas, "cmdAdd").click();
    EXPECT_TRUE(said().startsWith("The quantity can not be read, so the ingredient was not added."));
}

TEST_F(ProblemSentencesTest, AFormulaWithoutAJar) {
    load();
    click("cmdEdit");
    control<platform::ChoiceBox>(formulas, "cbofrm_JarSize").setListIndex(-1);
    click("cmdSave");
    EXPECT_TRUE(said().startsWith("No jar size is chosen, so nothing was saved."));
}

TEST_F(ProblemSentencesTest, AnApostropheInAPhoneNumber) {
    load();
    click("cmdPatients");
    click("cmdEdit");
    control<platform::TextBox>(patients, "txtpat_Phone").setText("555'1");
    click("cmdSave");
    EXPECT_TRUE(said().startsWith("A postal code, phone or fax number can’t hold an apostrophe."));
}

}  // namespace
