// A delivery on the chemical screen: the lot is added, formulas take it, and what they store is brought up to date.
#include "Announced.h"
#include "ScreenTest.h"
#include "Waiting.h"

#include "platform/widgets/Boxes.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <functional>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::NumberBox;
using support::child;

namespace {

class NewLotTest : public ScreenTest {
protected:
    void seed() override {
        seedFormulas();
        sql("INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES "
            "(15, 3, 3, 4, 0, 1)");
    }
    /// The screen with Camphor on show, in formulas 1 and 3.
    void showCamphor() {
        load();
        click(u"cmdChemicals"_s);
        click(u"cmdCancel"_s);
        click(u"cmdNext"_s);
        click(u"cmdNext"_s);
        ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Camphor");
    }
    void inWindow(const char* name, const std::function<void(QWidget&)>& deed) {
        asker.expectModal(QLatin1String(name), deed);
    }
    static void typeInto(QWidget& form, const char* box, const QString& text) {
        auto* edit = child<QLineEdit>(form, box);
        edit->setFocus();
        edit->selectAll();
        edit->insert(text);
        emit edit->textEdited(edit->text());
    }
    /// Letter by letter, as a user does.
    static void keyInto(QWidget& form, const char* box, const QString& text) {
        auto* edit = child<QLineEdit>(form, box);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    /// A pack of 100 for 28.50; its unit is still to come.
    static void keyPack(QWidget& form) {
        keyInto(form, "txtPackPrice", u"28.50"_s);
        keyInto(form, "txtPackSize", u"100"_s);
    }
    static std::string cost(QWidget& form) { return str(child<NumberBox>(form, "txtCost")->text()); }
    static void press(QWidget& form, const char* button) { child<QPushButton>(form, button)->click(); }
    static std::string said(QWidget& form, const char* label) {
        return str(child<QLabel>(form, label)->text());
    }
    static QAbstractItemModel& model(QWidget& form, const char* list) {
        return *child<QTableView>(form, list)->model();
    }
    static std::string rows(QWidget& form, const char* list) {
        QStringList all;
        for (int row = 0; row < model(form, list).rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model(form, list).columnCount(); ++column)
                cells << model(form, list).index(row, column).data().toString();
            const bool ticked =
                model(form, list).index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
            all << (ticked ? u"[x] "_s : u"[ ] "_s) + cells.join(u'|');
        }
        return str(all.join(u'\n'));
    }
    static void untick(QWidget& form, const char* list, int row) {
        auto* view = child<QTableView>(form, list);
        view->setCurrentIndex(view->model()->index(row, 0));
        QTest::keyClick(view, Qt::Key_Space);
    }
    std::string lines() const {
        return str(sqlText("SELECT FormChemID || ':' || ChemicalID FROM FormChem WHERE ChemicalID IN (3, 5) "
                           "ORDER BY FormChemID"));
    }
};

TEST_F(NewLotTest, TheDeliveryIsAddedAndFormulasUseItFromNowOn) {
    showCamphor();
    support::Announced announced;
    inWindow("NewLotWindow", [](QWidget& form) {
        EXPECT_EQ(str(form.windowTitle()), "New lot of Camphor");
        EXPECT_EQ(rows(form, "grdFormulas"), "[x] Arnica Salve\n[x] Cooling Gel");
        EXPECT_EQ(str(child<QLineEdit>(form, "txtSupplier")->text()), "Harbor");
        typeInto(form, "txtLot", u"L301"_s);
        typeInto(form, "txtSupplier", u"O'Hara"_s);
        typeInto(form, "txtPackPrice", u"28.50"_s);
        typeInto(form, "txtPackSize", u"100"_s);
        typeInto(form, "txtPackUnit", u"g"_s);
        EXPECT_EQ(said(form, "lblCalculation"), "28.50 for 100 g = 0.285 a GMS");
        EXPECT_EQ(str(child<NumberBox>(form, "txtCost")->text()), "0.285");
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(
        str(sqlText(
            "SELECT chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Supplier FROM Chemical "
            "WHERE ChemicalID = 5")),
        "Camphor|GMS|L301|333-33|0.285|4.5|O'Hara");
    EXPECT_EQ(lines(), "11:5\n15:5");
    EXPECT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "L301");
    EXPECT_FALSE(on(u"cmdSave"_s)) << "as after saving";
    ASSERT_FALSE(announced.texts().isEmpty());
    EXPECT_EQ(str(announced.last().text), "New lot L301: 2 formulas use it now");
}

TEST_F(NewLotTest, ByTheKeyboardAloneAScannersEnterAddsNothing) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        form.activateWindow();
        ASSERT_TRUE(support::becomesActive(&form));
        const auto focus = [] { return str(QApplication::focusWidget()->objectName()); };
        EXPECT_EQ(focus(), "txtLot");
        QTest::keyClicks(QApplication::focusWidget(), u"L301"_s);
        for (const char* next : {"txtSupplier", "txtPackPrice", "txtPackSize", "txtPackUnit", "txtCost",
                                 "txtAWP", "grdFormulas"}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            EXPECT_EQ(focus(), next);
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_EQ(rows(form, "grdFormulas"), "[ ] Arnica Salve\n[x] Cooling Gel");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_EQ(rows(form, "grdFormulas"), "[x] Arnica Salve\n[x] Cooling Gel")
            << "all that are chosen get what the first has not";
        EXPECT_TRUE(form.isVisible());
        QTest::keyClick(&form, Qt::Key_A, Qt::AltModifier);
        EXPECT_TRUE(support::waitFor([&] { return !form.isVisible(); }));
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(lines(), "11:5\n15:5");
}

TEST_F(NewLotTest, AnUntickedFormulaKeepsTheFormerLot) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        untick(form, "grdFormulas", 0);
        EXPECT_EQ(rows(form, "grdFormulas"), "[ ] Arnica Salve\n[x] Cooling Gel");
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(lines(), "11:5\n15:3");
}

TEST_F(NewLotTest, WithoutALotOrWithOneThatIsThereNothingIsAdded) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        const auto* add = child<QPushButton>(form, "cmdAdd");
        EXPECT_FALSE(add->isEnabled());
        EXPECT_EQ(said(form, "lblMessage"), "The lot of the delivery is needed.");
        typeInto(form, "txtLot", u" l300 "_s);
        EXPECT_FALSE(add->isEnabled());
        EXPECT_EQ(said(form, "lblMessage"), "Lot l300 of this chemical is there already.");
        typeInto(form, "txtLot", u"L400"_s);
        EXPECT_TRUE(add->isEnabled()) << "another chemical's lot";
        typeInto(form, "txtCost", u"-1"_s);
        EXPECT_FALSE(add->isEnabled());
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical")), "4");
}

TEST_F(NewLotTest, ALotThatAnotherProgramHasAddedMeanwhileIsNotAddedTwice) {
    showCamphor();
    inWindow("NewLotWindow", [this](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        sql("INSERT INTO Chemical (chm_Name, chm_Lot) VALUES ('camphor', 'l301')");
        EXPECT_TRUE(child<QPushButton>(form, "cmdAdd")->isEnabled()) << "not known yet";
        press(form, "cmdAdd");
        EXPECT_EQ(said(form, "lblMessage"), "Lot L301 of this chemical is there already.");
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical")), "5");
    EXPECT_EQ(lines(), "11:3\n15:3");
}

TEST_F(NewLotTest, WithoutATickedFormulaThereIsNothingToRecalculate) {
    showCamphor();
    support::Announced announced;
    inWindow("NewLotWindow", [](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        untick(form, "grdFormulas", 0);
        untick(form, "grdFormulas", 1);
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(str(announced.last().text), "New lot L301: 0 formulas use it now");
    EXPECT_TRUE(announced.last().actions.empty());
    EXPECT_EQ(lines(), "11:3\n15:3");
}

TEST_F(NewLotTest, APriceThatCantBeCalculatedLeavesTheCost) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        keyInto(form, "txtLot", u"L301"_s);
        keyPack(form);
        keyInto(form, "txtPackUnit", u"gr"_s);
        EXPECT_EQ(said(form, "lblCalculation"),
                  str(u"\"gr\" can mean different units, so the price can\u2019t be calculated."_s));
        EXPECT_EQ(cost(form), "2");
        EXPECT_EQ(said(form, "lblUntilNow"), "until now 2.00");
        const auto warns = [&] { return child<QLabel>(form, "lblUntilNow")->property("caution").toBool(); };
        for (const auto& [cost, far] : {std::pair("4", false), std::pair("4.0001", true),
                                        std::pair("1", false), std::pair("0.9999", true)}) {
            keyInto(form, "txtCost", QLatin1String(cost));
            EXPECT_EQ(warns(), far) << cost;
        }
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
}

TEST_F(NewLotTest, TheFirstLettersOfAUnitLeaveNoCostBehind) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        keyInto(form, "txtLot", u"L301"_s);
        keyPack(form);
        for (const QString& unit : {u"gal"_s, u"gtt"_s, u"kgx"_s, u"gr"_s}) {
            keyInto(form, "txtPackUnit", unit);
            EXPECT_TRUE(child<QLabel>(form, "lblCalculation")->property("caution").toBool()) << str(unit);
            EXPECT_EQ(cost(form), "2") << str(unit);
        }
        keyInto(form, "txtPackUnit", u"g"_s);
        EXPECT_EQ(cost(form), "0.285");
        for (const char* box : {"txtPackUnit", "txtPackSize", "txtPackPrice"}) {
            const QString typed = child<QLineEdit>(form, box)->text();
            keyInto(form, box, QString());
            EXPECT_EQ(cost(form), "2") << box;
            keyInto(form, box, typed);
            EXPECT_EQ(cost(form), "0.285") << box;
        }
        keyInto(form, "txtPackUnit", u"gr"_s);
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    EXPECT_EQ(str(sqlText("SELECT chm_Cost FROM Chemical WHERE ChemicalID = 5")), "2");
}

TEST_F(NewLotTest, ACostTypedByHandComesBackWhenThePackGivesNone) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        keyInto(form, "txtCost", u"3.1"_s);
        keyPack(form);
        keyInto(form, "txtPackUnit", u"gr"_s);
        EXPECT_EQ(cost(form), "3.1");
        keyInto(form, "txtPackUnit", u"g"_s);
        keyInto(form, "txtCost", u"0.3"_s);
        keyInto(form, "txtPackUnit", u"gr"_s);
        EXPECT_EQ(cost(form), "0.3") << "the last one typed";
        keyInto(form, "txtCost", u"-1"_s);
        keyInto(form, "txtPackUnit", u"gal"_s);
        EXPECT_EQ(cost(form), "2") << "the former one, where none could be read";
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
}

TEST_F(NewLotTest, WhatIsTypedIsSavedOrCancelledFirst) {
    showCamphor();
    click(u"cmdEdit"_s);
    control<platform::TextBox>(chemicals, u"txtchm_NDC"_s).setFocus();
    QTest::keyClicks(&control<platform::TextBox>(chemicals, u"txtchm_NDC"_s), "9");
    asker.expectMsgBox(u"Save or cancel what you typed first. Then add the new lot."_s,
                       platform::BoxStyle{platform::Buttons::Ok, platform::Icon::Information});
    click(u"cmdNewLot"_s);
    click(u"cmdCancel"_s);
    inWindow("NewLotWindow", [](QWidget& form) { press(form, "cmdCancel"); });
    click(u"cmdNewLot"_s);
}

TEST_F(NewLotTest, AChemicalThatAnotherProgramHasDeletedHasNoNewLot) {
    showCamphor();
    sql("DELETE FROM FormChem WHERE ChemicalID = 3; DELETE FROM Chemical WHERE ChemicalID = 3");
    asker.expectMsgBox(u"No Records"_s);
    click(u"cmdNewLot"_s);
    asker.verify();
}

TEST_F(NewLotTest, AFailureAddsNothingAndSaysSo) {
    showCamphor();
    inWindow("NewLotWindow", [this](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        failStatement(u"UPDATE FormChem"_s);
        press(form, "cmdAdd");
        EXPECT_EQ(said(form, "lblMessage"), "The lot was not added. Nothing was changed.");
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
    expectReport(u"NewLot:add"_s);
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical")), "4");
    EXPECT_EQ(lines(), "11:3\n15:3");
    EXPECT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "L300");
}

TEST_F(NewLotTest, ItIsThereForAChemicalAlone) {
    load();
    EXPECT_FALSE(on(u"cmdNewLot"_s));
    click(u"cmdChemicals"_s);
    EXPECT_TRUE(on(u"cmdNewLot"_s)) << "also while nothing was typed in the first, open state";
    click(u"cmdLogs"_s);
    EXPECT_FALSE(on(u"cmdNewLot"_s));
    force(u"cmdNewLot"_s);
    asker.verify();
}

TEST_F(NewLotTest, TheKeyboardGoesFromTheLotToThePrices) {
    showCamphor();
    inWindow("NewLotWindow", [](QWidget& form) {
        EXPECT_EQ(form.focusWidget(), child<QWidget>(form, "txtLot"));
        QStringList way;
        for (int i = 0; i < 7; ++i) {
            way << form.focusWidget()->objectName();
            QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(str(way.join(u' ')),
                  "txtLot txtSupplier txtPackPrice txtPackSize txtPackUnit txtCost txtAWP");
        EXPECT_FALSE(child<QLabel>(form, "lblCalculation")->property("caution").toBool())
            << "what is not filled in yet is no fault";
        press(form, "cmdCancel");
    });
    click(u"cmdNewLot"_s);
}

TEST_F(NewLotTest, RecalculateShowsOldNewAndDifferenceAndStoresTheTicked) {
    load();
    // Cooling Gel: 1.2345 * 4.5 + 5 * 2.2 + 0.5 * 0.075; Arnica Salve: 3 * 1.25 + 4 * 4.5
    inWindow("RepricingWindow", [](QWidget& form) {
        EXPECT_EQ(rows(form, "grdPrices"), "[x] Arnica Salve|9.50|9.50|0.00|0.00|21.75|+21.75\n"
                                           "[x] Cooling Gel|7.984|7.984|0.00|16.60|16.5928|-0.0072");
        untick(form, "grdPrices", 0);
        press(form, "cmdStore");
    });
    support::Announced announced;
    click(u"mnuRecalculate"_s);
    EXPECT_EQ(str(sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID")), "16.5928\n0\n0");
    EXPECT_EQ(announced.texts(), QStringList{u"1 formula recalculated"_s});
    inWindow("RepricingWindow", [](QWidget& form) {
        EXPECT_EQ(rows(form, "grdPrices"), "[x] Arnica Salve|9.50|9.50|0.00|0.00|21.75|+21.75");
        press(form, "cmdStore");
    });
    click(u"mnuRecalculate"_s);
    inWindow("RepricingWindow", [](QWidget& form) {
        EXPECT_EQ(said(form, "lblMessage"),
                  "The stored AWP of each formula is what its chemicals come to now.");
        EXPECT_FALSE(child<QPushButton>(form, "cmdStore")->isEnabled());
        press(form, "cmdClose");
    });
    click(u"mnuRecalculate"_s);
}

TEST_F(NewLotTest, PricesThatCantBeStoredAreSaidToBeAsTheyWere) {
    load();
    support::Announced announced;
    const QString before = sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID");
    inWindow("RepricingWindow", [this](QWidget& form) {
        failStatement(u"UPDATE Formula"_s);
        press(form, "cmdStore");
        EXPECT_EQ(said(form, "lblMessage"), "The prices were not stored. Nothing was changed.");
        EXPECT_TRUE(form.isVisible());
        press(form, "cmdClose");
    });
    click(u"mnuRecalculate"_s);
    dropReports();
    EXPECT_EQ(sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID"), before);
    EXPECT_EQ(announced.texts(), QStringList()) << "nothing was recalculated";
}

TEST_F(NewLotTest, WhatWasChangedMeanwhileIsNotReplacedButShownAnew) {
    const std::string changed =
        "Another program has changed the records meanwhile, so nothing was stored. They are now shown as they are: "
        "look at them again.";
    showCamphor();
    inWindow("NewLotWindow", [&](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        sql("UPDATE Chemical SET chm_Cost = 9.5 WHERE ChemicalID = 3; DELETE FROM FormChem WHERE FormChemID = 15");
        press(form, "cmdAdd");
        EXPECT_EQ(said(form, "lblMessage"), changed);
        EXPECT_EQ(said(form, "lblUntilNow"), "until now 9.50");
        EXPECT_EQ(rows(form, "grdFormulas"), "[x] Cooling Gel");
        EXPECT_EQ(str(child<QLineEdit>(form, "txtLot")->text()), "L301") << "what was typed stays";
        EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical WHERE chm_Lot = 'L301'")), "0");
        press(form, "cmdAdd");
    });
    inWindow("RepricingWindow", [&](QWidget& form) {
        sql("UPDATE Formula SET frm_AWP = 3 WHERE FormulaID = 1");
        const QString before = sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID");
        press(form, "cmdStore");
        EXPECT_EQ(said(form, "lblMessage"), changed);
        EXPECT_NE(rows(form, "grdPrices").find("|3.00|"), std::string::npos) << "shown as it is";
        EXPECT_EQ(str(sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID")), str(before));
        press(form, "cmdStore");
    });
    support::Announced announced;
    click(u"cmdNewLot"_s);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical WHERE chm_Lot = 'L301'")), "1");
    click(u"mnuRecalculate"_s);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula WHERE frm_AWP = 3")), "0");
}

TEST_F(NewLotTest, AFailureAtTheSecondFormulaStoresNoPriceOfTheFirst) {
    load();
    const QString before = sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID");
    inWindow("RepricingWindow", [this](QWidget& form) {
        ASSERT_TRUE(rows(form, "grdPrices").starts_with("[x] Arnica Salve"));
        failStatement(u"WHERE [FormulaID] = 1"_s);
        press(form, "cmdStore");
        press(form, "cmdClose");
    });
    click(u"mnuRecalculate"_s);
    dropReports();
    EXPECT_EQ(str(sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID")), str(before));
}

TEST_F(NewLotTest, TheFormulaOnShowHasItsNewPrice) {
    load();
    ASSERT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Arnica Salve");
    sql("UPDATE Chemical SET chm_AWP = 100 WHERE ChemicalID = 3");
    inWindow("RepricingWindow", [](QWidget& form) { press(form, "cmdStore"); });
    click(u"mnuRecalculate"_s);
    EXPECT_EQ(control<NumberBox>(formulas, u"txtfrm_AWP"_s).toDouble(), 3 * 1.25 + 4 * 100);
}

TEST_F(NewLotTest, AfterADeliveryTheFormerCostsStandBesideTheNew) {
    showCamphor();
    support::Announced announced;
    inWindow("NewLotWindow", [](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        typeInto(form, "txtCost", u"3"_s);
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    inWindow("RepricingWindow", [](QWidget& form) {
        EXPECT_EQ(rows(form, "grdPrices"), "[x] Arnica Salve|9.50|13.50|+4.00|0.00|21.75|+21.75\n"
                                           "[x] Cooling Gel|7.984|9.2185|+1.2345|16.60|16.5928|-0.0072");
        press(form, "cmdClose");
    });
    ASSERT_EQ(announced.last().actions.size(), 1U);
    announced.last().actions.front().run();
}

TEST_F(NewLotTest, ACopyOfTheFormulaThatWasOnShowHasTheNewLot) {
    showCamphor();
    ASSERT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Arnica Salve");
    inWindow("NewLotWindow", [](QWidget& form) {
        typeInto(form, "txtLot", u"L301"_s);
        press(form, "cmdAdd");
    });
    click(u"cmdNewLot"_s);
    click(u"cmdFormulas"_s);
    click(u"cmdCopy"_s);
    EXPECT_EQ(str(sqlText("SELECT ChemicalID FROM FormChem WHERE FormulaID = 4 ORDER BY FormChemID")),
              "1\n5");
}

}  // namespace
