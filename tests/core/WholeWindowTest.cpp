// The main window with its real screens on a real database.
#include "Child.h"
#include "TestProgram.h"
#include "config/clsOptions.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "screens/frmFormula.h"
#include "shared/RecordScreen.h"
#include "shared/basMain.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::child;

class WholeWindowTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        // The mixer's port leads nowhere, so that no real device of this computer is opened.
        ASSERT_TRUE(QDir().mkpath(folder.path("ports")));
        ASSERT_TRUE(QFile::link("/nowhere/COM1", folder.path("ports/COM1")));
    }
    void TearDown() override {
        window.reset();
        TestProgram::TearDown();
    }
    void make() {
        basMain::Options.reset();
        basMain::Language.reset();
        Parts parts = realParts(context);
        parts.reporter = [this] { return reporter; };
        window = std::make_unique<frmMain>(parts);
    }
    void load() {
        make();
        window->Form_Load();
        window->show();
    }
    /// The sample pharmacy.
    void fillDatabase() {
        createDatabase();
        QFile sample(QString(SORVANTO_SOURCE_DIR) + "/data/sample.sql");
        ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
        sql(QString::fromUtf8(sample.readAll()));
    }
    /// "screen  :  " and the name that the column has in the n-th row (from 1) of the statement.
    QString caption(const QString& screen, const QString& statement, int n) const {
        const support::Rows rows = sql(statement + u" LIMIT 1 OFFSET %1"_s.arg(n - 1));
        return "Sorvanto Control Panel: " + screen + "  :  " + support::rowsText(rows);
    }
    QString formula(int n) const {
        return caption("Formulas", "SELECT frm_Name FROM Formula ORDER BY frm_Name", n);
    }
    /// The program pages by key.
    QString chemical(int n) const {
        const QString key = sql("SELECT ChemicalID FROM Chemical ORDER BY ChemicalID")
                                .at(static_cast<std::size_t>(n - 1))
                                .first();
        return caption("Chemicals", "SELECT chm_Name FROM Chemical WHERE ChemicalID = " + key, 1);
    }
    platform::Tool& tool(const QString& band, const QString& name) {
        return window->bar().band(band).tool(name);
    }
    void click(const QString& band, const QString& name) { window->bar().click(tool(band, name)); }
    bool on(const QString& name) { return tool("MainBar", name).enabled(); }

    std::unique_ptr<frmMain> window;
};

TEST_F(WholeWindowTest, OpensOnTheFirstFormulaWithoutAQuestion) {
    fillDatabase();
    load();
    EXPECT_EQ(window->windowTitle(), formula(1));
    EXPECT_TRUE(window->screen(formulas)->isVisible());
    EXPECT_TRUE(window->mixer().isVisible());
    EXPECT_EQ(child<QLabel>(*window, "lblDatabase")->text(), "sorvanto.mdb");
    EXPECT_TRUE(asker.asked().isEmpty());
    EXPECT_EQ(window->windowState() & Qt::WindowMinimized, 0);
}

TEST_F(WholeWindowTest, EachScreenShowsItsOwnToolsAndOneScreenIsSeen) {
    fillDatabase();
    load();
    struct Row {
        const char* button;
        int number;
        bool edit, makeOn;
    };
    // The chemical screen starts unlocked.
    for (const Row& row :
         {Row{"cmdCurrent", currentFormula, false, false}, Row{"cmdFormulas", formulas, true, true},
          Row{"cmdChemicals", chemicals, false, false}, Row{"cmdLogs", logs, true, false},
          Row{"cmdPatients", patients, true, true}}) {
        click("FormBar", row.button);
        EXPECT_EQ(on("cmdEdit"), row.edit) << row.button;
        EXPECT_EQ(on("cmdMake"), row.makeOn) << row.button;
        EXPECT_TRUE(on("cmdOptions"));
        for (int number = 0; number < screenCount; ++number)
            EXPECT_EQ(window->screen(number)->isVisible(), number == row.number) << row.button << number;
    }
}

TEST_F(WholeWindowTest, TheCaptionEndsUpAsTheShownRecordWhateverTheSecondInstanceSaid) {
    fillDatabase();
    load();
    click("FormBar", "cmdChemicals");
    EXPECT_EQ(window->windowTitle(), chemical(1) + "  (Edit)");
    click("MainBar", "cmdCancel");
    click("MainBar", "cmdNext");
    click("FormBar", "cmdFormulas");
    click("FormBar", "cmdChemicals");
    EXPECT_EQ(window->windowTitle(), chemical(2));
}

TEST_F(WholeWindowTest, MovingAndEditingGoThroughTheBar) {
    fillDatabase();
    load();
    click("MainBar", "cmdNext");
    EXPECT_EQ(window->windowTitle(), formula(2));
    click("MainBar", "cmdEdit");
    EXPECT_TRUE(window->windowTitle().endsWith("  (Edit)"));
    EXPECT_TRUE(on("cmdSave"));
    EXPECT_FALSE(on("cmdNext"));
    click("MainBar", "cmdCancel");
    EXPECT_FALSE(on("cmdSave"));
}

TEST_F(WholeWindowTest, AnUnsavedFormulaMayKeepTheProgramOpen) {
    fillDatabase();
    load();
    click("FormBar", "cmdChemicals");
    click("MainBar", "cmdCancel");
    click("FormBar", "cmdFormulas");
    click("MainBar", "cmdEdit");
    asker.expectMsgBox("Formula data not saved! Save Changes?",
                       {platform::Buttons::YesNoCancel, platform::Icon::Exclamation, false, true},
                       "Save Data?", platform::Answer::Cancel);
    window->close();
    EXPECT_EQ(programEnds, 0);
    EXPECT_TRUE(window->isVisible());
}

/// The width of the window, with and without a list beside the record.
class FirstPictureOfAllTest : public WholeWindowTest, public testing::WithParamInterface<int> {};

TEST_P(FirstPictureOfAllTest, IsTheLastOneOfTheStartButForTheMixer) {
    fillDatabase();
    make();
    const auto picture = [this] {
        window->resize(GetParam(), 768);
        QImage all = window->grab().toImage();
        const QWidget& panel = window->mixer();
        QPainter(&all).fillRect(QRect(panel.mapTo(window.get(), QPoint()), panel.size()), Qt::black);
        return all;
    };
    QImage first;
    window->Form_Load([&] {
        window->show();
        first = picture();
    });
    const QImage last = picture();
    EXPECT_EQ(first, last);
}
INSTANTIATE_TEST_SUITE_P(Widths, FirstPictureOfAllTest, testing::Values(1366, 1700));

/// Neither options.xml nor a database: the start goes on to the end all the same.
class EmptyFolderTest : public WholeWindowTest {
protected:
    QByteArray optionsXml() const override { return {}; }
};

TEST_F(EmptyFolderTest, TheWindowComesUpAndTheScreensReportTheirFailuresToRead) {
    asker.expectModal("frmWizard", [](QWidget& wizard) { wizard.close(); });
    asker.expectModal("StartQuestion", [](QWidget& offer) { offer.close(); });
    asker.alwaysAnswer("Database file not found. Please set in options");
    load();
    EXPECT_EQ(asker.asked().first().contains("frmWizard"), true);
    EXPECT_GT(asker.asked().filter("Database file not found").size(), 2);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->screen(formulas)->isVisible());
    EXPECT_EQ(basMain::Options->Language(), 0) << "a closed wizard means English";
    EXPECT_FALSE(folder.has("sorvanto.mdb"));
    expectReports("clsOptions:DBVersion");
    expectReports("frmFormula:getData");
    EXPECT_TRUE(window->findChild<QWidget*>("errorStrip")->isVisible());
    dropReports();
}

}  // namespace
