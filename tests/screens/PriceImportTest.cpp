// Prices from a supplier's list, as the user of the chemical screen takes them.
#include "Announced.h"
#include "ScreenTest.h"
#include "Waiting.h"

#include "platform/widgets/Theme.h"
#include "screens/PriceList.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using support::child;

namespace {

const platform::BoxStyle said{platform::Buttons::Ok, platform::Icon::Exclamation};
const QString filter = u"Price lists|*.csv;*.txt;*.xls;*.xlsx"_s;

class PriceImportTest : public ScreenTest {
protected:
    void seed() override {
        seedChemicals();
        priceAll();
    }
    void priceAll() const {
        sql("UPDATE Chemical SET chm_Units = 'GMS', chm_Cost = '1', chm_AWP = '2', chm_NDC = '0338-0049-0' || ChemicalID, "
            "chm_Lot = 'L' || ChemicalID");
    }
    void openScreen(const QByteArray& list = {}) {
        if (!list.isEmpty())
            folder.write(u"prices.csv"_s, list);
        load();
        click(u"cmdChemicals"_s);
    }
    /// Opens the list and drives its window.
    void import(const std::function<void(QWidget&)>& script) {
        asker.expectFile(filter, folder.path(u"prices.csv"_s), u"Import prices"_s);
        asker.expectModal(u"PriceWindow"_s, script);
        click(u"cmdImport"_s);
        asker.verify();
    }
    static QAbstractItemModel& rows(const QWidget& form) {
        return *child<QTableView>(form, "grdPrices")->model();
    }
    static std::string cell(const QWidget& form, int row, int column) {
        return str(rows(form).index(row, column).data().toString());
    }
    static std::string column(const QWidget& form, int column) {
        QStringList texts;
        for (int row = 0; row < rows(form).rowCount(); ++row)
            texts << rows(form).index(row, column).data().toString();
        return str(texts.join(u" | "_s));
    }
    static std::string ticks(const QWidget& form) {
        QString text;
        for (int row = 0; row < rows(form).rowCount(); ++row) {
            const QVariant state = rows(form).index(row, PriceRowsModel::tick).data(Qt::CheckStateRole);
            text += !state.isValid() ? u'-' : state.toInt() == Qt::Checked ? u'x' : u'o';
        }
        return str(text);
    }
    static std::string label(const QWidget& form, const char* name) {
        return str(child<QLabel>(form, name)->text());
    }
    static void press(const QWidget& form, const char* name) { child<QPushButton>(form, name)->click(); }
    std::string stored() const {
        return str(sqlText("SELECT chm_Name, chm_Cost, chm_AWP FROM Chemical ORDER BY ChemicalID"));
    }
};

const QByteArray list = "Name;NDC;Lot;Preis;AWP;Packungsgröße;Einheit\n"
                        "Aspirin;0338-0049-01;;120,00;;100;g\n"
                        "Borax;0338-0049-02;;28,50;57,00;100;g\n"
                        "Camphor;;;110,00;;100;g\n"
                        "Menthol;0338-0049-04;;100,00;200,00;100;g\n"
                        "Zinc;0338-0049-77;;9,00;;100;g\n";

TEST_F(PriceImportTest, TheListShowsWhatWouldChange) {
    openScreen(list);
    import([](QWidget& form) {
        EXPECT_EQ(column(form, PriceRowsModel::chemical), "Aspirin · L1 | Borax · L2 | Camphor · L3 | Menthol · L4 | Zinc · "
                                                          "0338-0049-77");
    EXPECT_EQ(ticks(form), "xoo--") << "by NDC with pack and unit, and no more than twice or less than half";
    EXPECT_EQ(cell(form, 1, PriceRowsModel::calculation), "28.50 for 100 g = 0.285 a GMS");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::oldCost), "1");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::newCost), "0.285");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::factor), "0.29");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::oldAwp), "2");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::newAwp), "0.57");
    EXPECT_EQ(cell(form, 1, PriceRowsModel::remark), "Less than half");
    EXPECT_EQ(cell(form, 2, PriceRowsModel::foundBy), "Name");
    EXPECT_EQ(cell(form, 3, PriceRowsModel::remark), "Unchanged");
    EXPECT_EQ(cell(form, 4, PriceRowsModel::remark), "No chemical has this NDC, lot or name");
    EXPECT_EQ(cell(form, 4, PriceRowsModel::row), "6") << "as the file counts";
    const auto color = [&](int row, int column) {
        return rows(form).index(row, column).data(Qt::ForegroundRole).value<QBrush>().color();
    };
    EXPECT_EQ(color(1, PriceRowsModel::factor), platform::theme().warning);
    EXPECT_NE(color(0, PriceRowsModel::factor), platform::theme().warning);
    const auto isBold = [&](int row, int column) {
        return rows(form).index(row, column).data(Qt::FontRole).value<QFont>().weight() > QFont::Normal;
    };
    EXPECT_TRUE(isBold(1, PriceRowsModel::factor)) << "also where the row is chosen";
    EXPECT_FALSE(isBold(0, PriceRowsModel::factor));
    EXPECT_EQ(label(form, "lblCounts"), "3 changes · 1 unchanged · 1 unknown");
    EXPECT_EQ(str(child<QPushButton>(form, "cmdTake")->text()), "&Take 1 price");
    press(form, "cmdClose");
});
EXPECT_EQ(stored(), "Aspirin|1|2\nBorax|1|2\nCamphor|1|2\nMenthol|1|2") << "nothing without Take";
}  // namespace

TEST_F(PriceImportTest, TheSpaceBarHasARowFromTheBeginning) {
    openScreen(list);
    import([](QWidget& form) {
        form.activateWindow();
    ASSERT_TRUE(support::becomesActive(&form));
    ASSERT_EQ(str(QApplication::focusWidget()->objectName()), "grdPrices");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(ticks(form), "ooo--");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(ticks(form), "xxo--");
    press(form, "cmdClose");
});
}

/// What the cell of the box shows with the focus differs in its upper and lower edge alone, as in any other cell of the row.
TEST_F(PriceImportTest, TheFocusIsNoSecondBox) {
    openScreen(list);
    import([](QWidget& form) {
        auto& view = *child<QTableView>(form, "grdPrices");
    form.activateWindow();
    ASSERT_TRUE(support::becomesActive(&form));
    const auto inside = [&] {
        const QRect cell = view.visualRect(view.model()->index(0, PriceRowsModel::tick));
        return view.viewport()->grab(cell.adjusted(4, 4, 0, -4)).toImage();
    };
    const QImage with = inside();
    ASSERT_TRUE(view.hasFocus());
    view.clearFocus();
    EXPECT_EQ(with, inside());
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, WhatIsTickedIsTakenAndShown) {
    openScreen(list);
    click(u"cmdCancel"_s);
    import([](QWidget& form) {
        auto& view = *child<QTableView>(form, "grdPrices");
    view.setFocus();
    view.selectRow(1);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(ticks(form), "xxo--");
    press(form, "cmdTake");
});
EXPECT_EQ(stored(), "Aspirin|1.2|2\nBorax|0.285|0.57\nCamphor|1|2\nMenthol|1|2");
EXPECT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Aspirin") << "the record on show stays";
EXPECT_EQ(str(text(chemicals, u"txtchm_Cost"_s)), "$ 1.20");
}

class PricedFormulasTest : public PriceImportTest {
protected:
    void seed() override {
        seedFormulas();
        priceAll();
    }
};

TEST_F(PricedFormulasTest, AfterTakingRecalculateIsOfferedForTheFormulasThatCostSomethingElse) {
    openScreen(list);
    click(u"cmdCancel"_s);
    click(u"cmdFormulas"_s);
    ASSERT_EQ(str(text(formulas, u"txtfrm_Cost"_s)), "$ 3.00");
    click(u"cmdChemicals"_s);
    support::Announced announced;
    import([](QWidget& form) { press(form, "cmdTake");
});
ASSERT_EQ(announced.texts(), QStringList{u"1 price taken"_s});
ASSERT_EQ(announced.last().actions.size(), 1U);
EXPECT_EQ(announced.last().actions.front().text, u"Recalculate"_s);
asker.expectModal(u"RepricingWindow"_s, [](QWidget& form) {
    const auto& model = *child<QTableView>(form, "grdPrices")->model();
    ASSERT_GE(model.rowCount(), 1);
    QStringList cells;
    for (int column = 0; column < 4; ++column)
        cells << model.index(0, column).data().toString();
    EXPECT_EQ(str(cells.join(u'|')), "Arnica Salve|3.00|3.60|+0.60") << "what it cost before the list";
    press(form, "cmdClose");
});
announced.last().actions.front().run();
asker.verify();
click(u"cmdFormulas"_s);
EXPECT_EQ(str(text(formulas, u"txtfrm_Cost"_s)), "$ 3.60") << "the formula on show follows";
}

TEST_F(PricedFormulasTest, WhereNoFormulaCostsSomethingElseNothingIsOffered) {
    sql("DELETE FROM FormChem WHERE ChemicalID = 1");
    openScreen(list);
    support::Announced announced;
    import([](QWidget& form) { press(form, "cmdTake");
});
ASSERT_EQ(announced.texts(), QStringList{u"1 price taken"_s});
EXPECT_TRUE(announced.last().actions.empty());
}

TEST_F(PriceImportTest, SpaceTicksAllChosenRows) {
    openScreen(list);
    import([](QWidget& form) {
        auto& view = *child<QTableView>(form, "grdPrices");
    view.selectAll();
    view.setCurrentIndex(view.model()->index(1, 0));
    view.selectAll();
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(ticks(form), "xxx--");
    EXPECT_EQ(str(child<QPushButton>(form, "cmdTake")->text()), "&Take 3 prices");
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(ticks(form), "ooo--");
    EXPECT_FALSE(child<QPushButton>(form, "cmdTake")->isEnabled());
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, ADecimalMarkInDoubtIsAsked) {
    openScreen("NDC;Price;Size;Unit\n0338-0049-01;1.234;1;kg\n");
    import([](QWidget& form) {
        EXPECT_EQ(rows(form).rowCount(), 0);
    EXPECT_EQ(label(form, "lblMessage"),
              "Price of a pack: \"1.234\" can be read in two ways. Choose the decimal mark of this column.");
    auto& mark = *child<QComboBox>(form, "cboMarkPrice");
    EXPECT_EQ(mark.currentIndex(), -1);
    EXPECT_FALSE(child<QComboBox>(form, "cboMarkAWP")->isEnabled());
    mark.setCurrentIndex(1);
    EXPECT_EQ(cell(form, 0, PriceRowsModel::newCost), "1.234");
    mark.setCurrentIndex(0);
    EXPECT_EQ(cell(form, 0, PriceRowsModel::newCost), "0.0012");
    EXPECT_FALSE(child<QLabel>(form, "lblMessage")->isVisible());
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, ColumnsEncodingAndSeparatorCanBeSwitched) {
    openScreen("what;costs;code\nAspirin;120;0338-0049-01\n");
    import([](QWidget& form) {
        EXPECT_EQ(label(form, "lblMessage"), "Choose the column that has the price of a pack.");
    child<QComboBox>(form, "cboPrice")->setCurrentIndex(2);
    EXPECT_EQ(label(form, "lblMessage"), "Choose the column that has the NDC, the lot or the name.");
    child<QComboBox>(form, "cboNDC")->setCurrentIndex(3);
    EXPECT_EQ(cell(form, 1, PriceRowsModel::chemical) + cell(form, 0, PriceRowsModel::chemical),
              "codeAspirin · L1");
    EXPECT_EQ(cell(form, 0, PriceRowsModel::remark),
              "More than twice as much; The list has no pack: taken as the price of one unit");
    child<QComboBox>(form, "cboSeparator")->setCurrentIndex(0);
    EXPECT_EQ(child<QComboBox>(form, "cboPrice")->count(), 2) << "one column now, and the choice of none";
    child<QComboBox>(form, "cboEncoding")->setCurrentIndex(1);
    EXPECT_EQ(rows(form).rowCount(), 0);
    child<QComboBox>(form, "cboEncoding")->setCurrentIndex(0);
    EXPECT_EQ(str(child<QComboBox>(form, "cboPrice")->itemText(2)), "2: costs")
        << "the separator is found anew";
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, ARareSeparatorStandsBesideTheUsualOnes) {
    openScreen("sep=^\nName^NDC^Price\nAspirin^0338-0049-01^120\n");
    import([](QWidget& form) {
        EXPECT_EQ(str(child<QComboBox>(form, "cboSeparator")->currentText()), "^");
    EXPECT_EQ(child<QComboBox>(form, "cboSeparator")->count(), 5);
    EXPECT_EQ(cell(form, 0, PriceRowsModel::chemical), "Aspirin · L1");
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, WhatWasTypedIsSavedOrCancelledFirst) {
    openScreen(list);
    QTest::keyClicks(&control<QWidget>(chemicals, u"txtchm_Notes"_s), u"typed"_s);
    asker.expectMsgBox(u"Save or cancel what you have typed first."_s, said);
    click(u"cmdImport"_s);
    asker.verify();
    click(u"cmdCancel"_s);
    click(u"cmdNew"_s);
    asker.expectMsgBox(u"Save or cancel what you have typed first."_s, said);
    click(u"cmdImport"_s);
    asker.verify();
}

TEST_F(PriceImportTest, AFileThatIsNoListIsToldBeforeAWindowComes) {
    openScreen("<html><table>");
    asker.expectFile(filter, folder.path(u"prices.csv"_s), u"Import prices"_s);
    asker.expectMsgBox(
        u"This is a web page under another name. Open it in a spreadsheet program and save it as .xlsx or "
        ".csv."_s,
        said);
    click(u"cmdImport"_s);
    asker.verify();
    asker.expectFile(filter, QString(), u"Import prices"_s);
    click(u"cmdImport"_s);
    asker.verify();
}

TEST_F(PriceImportTest, ChangesOfAnotherProgramAreShownBeforeAnythingIsTaken) {
    openScreen(list);
    import([this](QWidget& form) {
        sql("UPDATE Chemical SET chm_Cost = '1.2' WHERE chm_Name = 'Aspirin'");
    asker.expectMsgBox(
        u"Another program has changed chemicals meanwhile, so nothing was taken. The list now shows them "
        "as they are: look at it again."_s,
        said);
    press(form, "cmdTake");
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(label(form, "lblCounts"), "2 changes · 2 unchanged · 1 unknown");
    press(form, "cmdClose");
});
EXPECT_EQ(stored(), "Aspirin|1.2|2\nBorax|1|2\nCamphor|1|2\nMenthol|1|2");
}

TEST_F(PriceImportTest, TheToolIsThereForChemicalsAlone) {
    load();
    EXPECT_FALSE(on(u"cmdImport"_s));
    click(u"cmdChemicals"_s);
    EXPECT_TRUE(on(u"cmdImport"_s)) << "also while the record could be changed, as at first";
    click(u"cmdFormulas"_s);
    EXPECT_FALSE(on(u"cmdImport"_s));
}

TEST_F(PriceImportTest, TheListIsOneOfNumbersAndTicks) {
    openScreen(list + "Aspirin;;L1;n/a;;100;g\n");
    import([](QWidget& form) {
        QAbstractItemModel& model = rows(form);
    const auto isRight = [&](int column) {
        return (model.index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
    };
    for (const int number : {PriceRowsModel::row, PriceRowsModel::oldCost, PriceRowsModel::newCost,
                             PriceRowsModel::factor, PriceRowsModel::oldAwp, PriceRowsModel::newAwp})
        EXPECT_TRUE(isRight(number)) << number;
    for (const int text : {PriceRowsModel::chemical, PriceRowsModel::calculation, PriceRowsModel::remark})
        EXPECT_FALSE(isRight(text)) << text;
    const auto canBeTicked = [&](int row, int column) {
        return model.index(row, column).flags().testFlag(Qt::ItemIsUserCheckable);
    };
    EXPECT_TRUE(canBeTicked(0, PriceRowsModel::tick));
    EXPECT_FALSE(canBeTicked(0, PriceRowsModel::chemical));
    EXPECT_FALSE(canBeTicked(3, PriceRowsModel::tick)) << "unchanged";
    const QModelIndex tick = model.index(1, PriceRowsModel::tick);
    EXPECT_TRUE(model.setData(tick, Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(ticks(form), "xxo---");
    EXPECT_TRUE(model.setData(tick, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(ticks(form), "xoo---");
    EXPECT_EQ(cell(form, 4, PriceRowsModel::calculation), "") << "nothing found";
    EXPECT_EQ(cell(form, 5, PriceRowsModel::calculation), "") << "found, but without a price";
    press(form, "cmdClose");
});
}

TEST_F(PriceImportTest, TakingCanBeStoppedAndTakesNothingThen) {
    place().runInBulk(databasePath(),
                      u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_NDC, chm_Units, chm_Cost, chm_AWP) "
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                      "SELECT 100 + i, 'Many ' || i, 'N' || i, 'GMS', 1, 2 FROM n"_s);
    // Work that a quick machine has done before its window is due could not be stopped.
    place().slowDown(databasePath(), u"Chemical"_s);
    QByteArray many = "NDC;Price;Size;Unit\n";
    for (int i = 1; i <= 5000; ++i)
        many += "N" + QByteArray::number(i) + ";120;100;g\n";
    openScreen(many);
    import([this](QWidget& form) {
        EXPECT_EQ(str(child<QPushButton>(form, "cmdTake")->text()), "&Take 5,000 prices");
    QTimer stop;
    bool stopped = false;
    QObject::connect(&stop, &QTimer::timeout, &form, [&] {
        for (QWidget* shown : QApplication::topLevelWidgets()) {
            if (auto* progress = qobject_cast<QProgressDialog*>(shown);
                progress && progress->isVisible() && !stopped) {
                EXPECT_EQ(str(progress->labelText()), "Taking prices");
                EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical WHERE chm_Cost <> '1'")), "0");
                stopped = true;
                progress->cancel();
            }
        }
    });
    stop.start(1);
    press(form, "cmdTake");
    EXPECT_TRUE(stopped);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(label(form, "lblMessage"), "Stopped: no price was taken.");
    EXPECT_EQ(str(child<QPushButton>(form, "cmdTake")->text()), "&Take 5,000 prices") << "once more";
    press(form, "cmdClose");
});
EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical WHERE chm_Cost <> '1'")), "0");
}

}  // namespace
