// Which row is meant: the shared search and its list.
#include "RecordsTest.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/QtAsker.h"
#include "platform/widgets/RecordGrid.h"
#include "records/clsSearch.h"
#include "records/frmSearchRS.h"
#include "support/BrokenTranslator.h"
#include "support/Child.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

using namespace sorvanto;
using support::child;

namespace {

const platform::BoxStyle information{platform::Buttons::Ok, platform::Icon::Information};

class SearchListTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedChemicals();
    }
    /// Batches from 100 on, of the lots X100 and so on, a minute apart.
    void fillLog(int count) const {
        const QDateTime first(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
        QStringList batches;
        for (int key = 100; key < 100 + count; ++key)
            batches << QString("(%1, 'Gel', 'X%1', '%2')")
                           .arg(key)
                           .arg(platform::storedDate(first.addSecs(60 * key)));
        place().runInBulk(databasePath(), "INSERT INTO Log (LogID, log_Name, log_Lot, log_Date) VALUES " +
                                              batches.join(", "));
    }
    static platform::RecordsetPtr rows(const QString& condition,
                                       const QString& fields = "ChemicalID, chm_Name") {
        auto set = platform::Recordset::create();
        set->open("SELECT " + fields + " FROM Chemical " + condition, openDB());
        return set;
    }
    static std::int32_t choose(const platform::RecordsetPtr& set) {
        return sharedSearch().searchList(set, 0, 0);
    }
    static platform::RecordGrid* list(QWidget& form) { return child<platform::RecordGrid>(form, "TDBList1"); }
    static void press(QWidget& form, const char* button) { child<QPushButton>(form, button)->click(); }
    static void type(QWidget& form, const QString& keys) { QTest::keyClicks(list(form), keys); }
    static int selected(QWidget& form) {
        const auto found = list(form)->selectionModel()->selectedRows();
        return found.isEmpty() ? -1 : found.front().row();
    }
};

TEST_F(SearchListTest, NoRowIsTold) {
    asker.expectMsgBox("No Records");
    EXPECT_EQ(choose(rows("WHERE ChemicalID = 99")), 0);
}

TEST_F(SearchListTest, TheMessageOfNoRowsIsNeverTranslated) {
    folder.write("GermanTranslation.xml",
                 "<Translations Language=\"German\"><Translate English=\"No Records\" "
                 "Translated=\"Nichts\"/></Translations>");
    startConfiguration(2);
    asker.expectMsgBox("No Records");
    EXPECT_EQ(choose(rows("WHERE ChemicalID = 99")), 0);
}

TEST_F(SearchListTest, OneRowIsTakenWithoutADialog) {
    EXPECT_EQ(choose(rows("WHERE ChemicalID = 3")), 3);
    EXPECT_TRUE(asker.asked().isEmpty());
}

TEST_F(SearchListTest, TheSharedObjectIsMadeOnFirstUse) {
    EXPECT_FALSE(basMain::Search);
    clsSearch& search = sharedSearch();
    EXPECT_EQ(basMain::Search.get(), &search);
    EXPECT_EQ(&sharedSearch(), &search);
    EXPECT_FALSE(search.Succeed());
}

TEST_F(SearchListTest, SeveralRowsAreShownWithTheKeyHiddenAndNoneChosen) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        EXPECT_EQ(str(form.windowTitle()), "Search Records");
        platform::RecordGrid& grid = *list(form);
        EXPECT_EQ(grid.model()->rowCount(), 4);
        EXPECT_TRUE(grid.isColumnHidden(0));
        EXPECT_FALSE(grid.isColumnHidden(1));
        EXPECT_EQ(str(grid.model()->headerData(1, Qt::Horizontal).toString()), "chm_Name");
        EXPECT_EQ(str(grid.model()->index(2, 1).data().toString()), "Camphor");
        EXPECT_EQ(selected(form), -1);
        EXPECT_EQ(str(child<QLabel>(form, "lblCount")->text()), "4");
        grid.selectRow(0);
        EXPECT_EQ(str(child<QLabel>(form, "lblCount")->text()), "1 / 4");
        grid.selectRow(1);
        EXPECT_EQ(str(child<QLabel>(form, "lblCount")->text()), "2 / 4");
        press(form, "cmdOK");
    });
    EXPECT_EQ(choose(rows("")), 2);
    EXPECT_TRUE(sharedSearch().Succeed());
    EXPECT_EQ(sharedSearch().ID().toInt(), 2);
}

TEST_F(SearchListTest, ASearchInsideASearchHasAListOfItsOwn) {
    asker.expectModal("frmSearchRS", [&](QWidget& outer) {
        asker.expectModal("frmSearchRS", [&](QWidget& inner) {
            EXPECT_NE(&inner, &outer);
            list(inner)->selectRow(0);
            press(inner, "cmdOK");
        });
        EXPECT_EQ(choose(rows("WHERE ChemicalID > 2")), 3);
        EXPECT_TRUE(outer.isVisible());
        list(outer)->selectRow(1);
        press(outer, "cmdOK");
    });
    EXPECT_EQ(choose(rows("")), 2);
}

TEST_F(SearchListTest, OkWithoutARowAsksForOneAndStays) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        asker.expectMsgBox("Select a row before clicking OK", information);
        press(form, "cmdOK");
        EXPECT_TRUE(form.isVisible());
        asker.expectMsgBox("Select a row before clicking OK", information);
        QTest::keyClick(list(form), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        press(form, "cmdCancel");
    });
    EXPECT_EQ(choose(rows("")), 0);
}

TEST_F(SearchListTest, ADoubleClickEqualsOk) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        platform::RecordGrid& grid = *list(form);
        const QPoint place = grid.visualRect(grid.model()->index(3, 1)).center();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, place);
    });
    EXPECT_EQ(choose(rows("")), 4);
}

TEST_F(SearchListTest, EnterEqualsOkAndArrowsBeginAtTheEnds) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        QTest::keyClick(list(form), Qt::Key_Down);
        EXPECT_EQ(selected(form), 0);
        QTest::keyClick(list(form), Qt::Key_Down);
        QTest::keyClick(list(form), Qt::Key_Return);
    });
    EXPECT_EQ(choose(rows("")), 2);
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        QTest::keyClick(list(form), Qt::Key_End);
        QTest::keyClick(list(form), Qt::Key_Enter);
    });
    EXPECT_EQ(choose(rows("")), 4);
}

TEST_F(SearchListTest, CancelEscAndTheCloseBoxGiveZeroAlsoAfterAChoice) {
    const std::function<void(QWidget&)> ways[] = {
        [&](QWidget& form) { press(form, "cmdCancel"); },
        [&](QWidget& form) { QTest::keyClick(list(form), Qt::Key_Escape); },
        [&](QWidget& form) { form.close(); },
    };
    for (const auto& way : ways) {
        asker.expectModal("frmSearchRS", [&](QWidget& form) {
            list(form)->selectRow(2);
            press(form, "cmdOK");
        });
        EXPECT_EQ(choose(rows("")), 3);
        asker.expectModal("frmSearchRS", [&](QWidget& form) {
            list(form)->selectRow(2);
            way(form);
        });
        EXPECT_EQ(choose(rows("")), 0);
        EXPECT_FALSE(sharedSearch().Succeed());
    }
}

TEST_F(SearchListTest, ACancelledSearchIsARecordNotFound) {
    asker.expectModal("frmSearchRS", [](QWidget& form) { form.close(); });
    EXPECT_EQ(clsChemical().openChemical(0, "#333")->ChemicalID, 0);
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        list(form)->selectRow(1);
        press(form, "cmdOK");
    });
    EXPECT_EQ(clsChemical().openChemical(0, "#333")->ChemicalID, 4);
}

TEST_F(SearchListTest, TheRowChosenIsFoundAfterMovingUpAndDown) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        QTest::keyClick(list(form), Qt::Key_End);
        QTest::keyClick(list(form), Qt::Key_Home);
        list(form)->selectRow(0);
        press(form, "cmdOK");
    });
    EXPECT_EQ(clsChemical().openChemical(0, "#333")->ChemicalID, 3);
}

TEST_F(SearchListTest, CaptionsAreTranslatedAndTheFormCaptionIsNot) {
    startConfiguration(4);
    sharedSearch().FormCaption("Wahl");
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        EXPECT_EQ(str(form.windowTitle()), "Wahl");
        form.close();
    });
    choose(rows(""));
    const QByteArray file = folder.read("RussianTranslation.xml");
    EXPECT_EQ(file.count("<Translate "), 3);
    for (const char* text : {"English=\"OK\"", "English=\"Cancel\"", "English=\"Search Records\""})
        EXPECT_TRUE(file.contains(text)) << text;
}

TEST_F(SearchListTest, TranslatedCaptionsAndRequest) {
    folder.write(
        "GermanTranslation.xml",
        "<Translations Language=\"German\"><Translate English=\"Cancel\" Translated=\"Abbrechen\"/>"
        "<Translate English=\"Select a row before clicking OK\" Translated=\"Zeile\"/></Translations>");
    startConfiguration(2);
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        EXPECT_EQ(str(child<QPushButton>(form, "cmdCancel")->text()), "Abbrechen");
        asker.expectMsgBox("Zeile", information);
        press(form, "cmdOK");
        form.close();
    });
    choose(rows(""));
}

TEST_F(SearchListTest, ColumnsFollowTypeAndSize) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const auto& columns = list(form)->columns();
        const int character = list(form)->fontMetrics().averageCharWidth() + 1;
        ASSERT_EQ(columns.size(), 5U);
        EXPECT_TRUE(columns[0].hidden);
        EXPECT_EQ(columns[1].width, 50 * character);  // TEXT(100)
        EXPECT_EQ(columns[2].width, 10 * character);  // TEXT(20)
        EXPECT_EQ(columns[3].width, 22 * character);  // money
        EXPECT_EQ(str(columns[3].numberFormat), "");
        EXPECT_EQ(columns[4].width, 22 * character);  // long text
        form.close();
    });
    choose(rows("", "ChemicalID, chm_Name, chm_Units, chm_Cost, chm_Notes"));
}

TEST_F(SearchListTest, ADoubleIsShownAsMoneyAndAFlagAsAWord) {
    sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Mix) VALUES (1, 'F', '');"
        "INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES (1, 1, 1234.5, 0, 1), "
        "(1, 2, 0, 1, 1)");
    auto set = platform::Recordset::create();
    set->open("SELECT FormChemID, fch_Qty, fch_QS FROM FormChem", openDB());
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const QAbstractItemModel& model = *list(form)->model();
        EXPECT_EQ(str(model.index(0, 1).data().toString()), "$1,234.50");
        EXPECT_EQ(str(model.index(0, 2).data().toString()), "No");
        EXPECT_EQ(str(model.index(1, 2).data().toString()), "Yes");
        form.close();
    });
    choose(set);
}

TEST_F(SearchListTest, TypingJumpsToTheFirstTextColumn) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const auto* typed = child<QLabel>(form, "lblTyped");
        type(form, "me");
        EXPECT_EQ(selected(form), 3);
        EXPECT_EQ(str(typed->text()), "me");
        type(form, "b");  // fits no row with what stands before it: begins anew
        EXPECT_EQ(selected(form), 1);
        EXPECT_EQ(str(typed->text()), "b");
        type(form, "o");
        QTest::keyClick(list(form), Qt::Key_Backspace);
        EXPECT_EQ(str(typed->text()), "b");
        type(form, "zz");
        EXPECT_EQ(str(typed->text()), "");
        EXPECT_EQ(selected(form), 1);
        type(form, "CAM");
        EXPECT_EQ(selected(form), 2);
        QTest::keyClick(list(form), Qt::Key_Escape);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(str(typed->text()), "");
        QTest::keyClick(list(form), Qt::Key_Return);
    });
    EXPECT_EQ(choose(rows("")), 3);
}

TEST_F(SearchListTest, TypingJumpsAmongManyRowsInTheOrderOfTheList) {
    sql("INSERT INTO Chemical (chm_Name) WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE "
        "i < 499) SELECT 'Item ' || i FROM n");
    const auto set = rows("WHERE chm_Name LIKE 'Item%' ORDER BY chm_Name DESC");
    sql("DELETE FROM Chemical WHERE chm_Name = 'Item 470'");
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        type(form, "item 3");
        EXPECT_EQ(selected(form), 100);
        EXPECT_EQ(str(list(form)->model()->index(selected(form), 1).data().toString()), "Item 399");
        type(form, "01");
        EXPECT_EQ(str(list(form)->model()->index(selected(form), 1).data().toString()), "Item 301");
        press(form, "cmdCancel");
    });
    EXPECT_EQ(choose(set), 0);
}

TEST_F(SearchListTest, TypingInAListWithoutTextsChangesNothing) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        type(form, "a");
        EXPECT_EQ(selected(form), -1);
        EXPECT_EQ(str(child<QLabel>(form, "lblTyped")->text()), "");
        press(form, "cmdCancel");
    });
    EXPECT_EQ(choose(rows("", "ChemicalID, chm_Cost")), 0);
}

TEST_F(SearchListTest, OneLetterAgainAndAgainWalksThroughItsRows) {
    sql("INSERT INTO Chemical (ChemicalID, chm_Name) VALUES (10, 'Alum'), (11, 'Agar')");
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        QList<int> seen;
        for (int i = 0; i < 4; ++i) {
            type(form, "a");
            seen << selected(form);
        }
        EXPECT_EQ(seen, (QList<int>{0, 4, 5, 0}));
        form.close();
    });
    choose(rows(""));
}

TEST_F(SearchListTest, AFailureIsReportedUnderItsLabelAndTheRestGoesOn) {
    asker.expectMsgBox("No Records");
    EXPECT_EQ(choose(nullptr), 0);
    EXPECT_EQ(str(expectReport("clsSearch:ShowList").number), "91");
    platform::setAsker(nullptr);
    EXPECT_EQ(choose(rows("")), 0);
    platform::setAsker(&asker);
    expectReport("clsSearch:ShowList");
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        list(form)->selectRow(0);
        press(form, "cmdOK");
    });
    EXPECT_EQ(choose(rows("")), 1);
}

TEST_F(SearchListTest, AFailingTextIsReportedByTheListAndHidesNothing) {
    const support::BrokenTranslator broken;
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        expectReport("frmSearchRS:Form_Load");
        press(form, "cmdOK");
        EXPECT_TRUE(form.isVisible());
        expectReport("frmSearchRS:cmdOK_Click");
        list(form)->selectRow(1);
        press(form, "cmdOK");
    });
    EXPECT_EQ(choose(rows("")), 2);
}

TEST_F(SearchListTest, StandsInTheMiddleOfTheScreen) {
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const QRect screen = form.screen()->geometry();
        EXPECT_EQ(form.x(), screen.left() + (screen.width() - form.width()) / 2);
        EXPECT_EQ(form.y(), screen.top() + (screen.height() - form.height()) / 2);
        form.close();
    });
    choose(rows(""));
}

TEST_F(SearchListTest, ARealModalRunEndsWithTheChoice) {
    platform::QtAsker real;
    platform::setAsker(&real);
    QTimer::singleShot(0, qApp, [] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_TRUE(form);
        list(*form)->selectRow(1);
        press(*form, "cmdOK");
    });
    const auto key = choose(rows(""));
    platform::setAsker(&asker);
    EXPECT_EQ(key, 2);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(SearchListTest, ManyHitsAreShownWhole) {
    fillLog(32000);
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        EXPECT_EQ(list(form)->model()->rowCount(), 32000);
        EXPECT_EQ(str(child<QLabel>(form, "lblCount")->text()), str(QLocale().toString(32000)));
        QTest::keyClicks(list(form), "X30000");
        press(form, "cmdOK");
    });
    clsLog log;
    log.openLog(0, "Gel");
    EXPECT_EQ(log.LogID, 30000);
}

TEST_F(SearchListTest, ALongListIsReadWhileNobodyTypes) {
    fillLog(2500);
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        for (int turn = 0; turn < 100; ++turn)
            QCoreApplication::processEvents();
        sql("UPDATE Log SET log_Lot = 'changed since'");
        QTest::keyClicks(list(form), "X2345");
        press(form, "cmdOK");
    });
    clsLog log;
    log.openLog(0, "Gel");
    EXPECT_EQ(log.LogID, 2345);
}

TEST_F(SearchListTest, IsAsWideAsItsColumnsAndShowsThemAll) {
    const QString columns = "ChemicalID, chm_Name, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Notes, chm_Form, "
                            "chm_GUID, chm_Supplier";
    for (const QString& fields : {u"ChemicalID, chm_Units"_s, columns}) {
        asker.expectModal("frmSearchRS", [&](QWidget& form) {
            const platform::RecordGrid& grid = *list(form);
            int sum = 0;
            for (std::size_t i = 0; i < grid.columns().size(); ++i)
                sum += grid.columnWidth(static_cast<int>(i));
            EXPECT_LE(sum, grid.viewport()->width()) << "a column stands out of sight";
            EXPECT_LE(form.frameGeometry().width(), form.screen()->availableGeometry().width());
            form.close();
        });
        choose(rows("", fields));
    }
}

TEST_F(SearchListTest, ChemicalsOfOneNameAreToldApartByLotUnitsAndSupplier) {
    sql("UPDATE Chemical SET chm_Name = 'Twin', chm_NDC = '1', chm_Lot = 'L' || ChemicalID, chm_Units = 'GMS', "
        "chm_Supplier = 'House'");
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const QAbstractItemModel& model = *list(form)->model();
        ASSERT_EQ(model.columnCount(), 6);
        QStringList heads, second;
        for (int column = 1; column < 6; ++column) {
            heads << model.headerData(column, Qt::Horizontal).toString();
            second << model.index(1, column).data().toString();
        }
        EXPECT_EQ(str(heads.join(u'|')), "chm_Name|chm_NDC|Lot|Units|Supplier");
        EXPECT_EQ(str(second.join(u'|')), "Twin|1|L2|GMS|House");
        list(form)->selectRow(2);
        press(form, "cmdOK");
    });
    EXPECT_EQ(choose(rows("", "ChemicalID, chm_Name, chm_NDC")), 3);
}

TEST_F(SearchListTest, AFailingTextLeavesTheColumnsOfTwinsInEnglish) {
    sql("UPDATE Chemical SET chm_Name = 'Twin'");
    const support::BrokenTranslator broken;
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        EXPECT_EQ(str(list(form)->model()->headerData(2, Qt::Horizontal).toString()), "Lot");
        expectReport("frmSearchRS:Form_Load");
        list(form)->selectRow(2);
        press(form, "cmdOK");
    });
    EXPECT_EQ(choose(rows("")), 3);
}

}  // namespace
