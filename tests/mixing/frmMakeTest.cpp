// The question of how much to make.
#include "mixing/frmMake.h"
#include "MixingTest.h"
#include "Settle.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Theme.h"

#include <QCheckBox>

using namespace sorvanto;
using platform::NumberBox;
using support::child;

namespace {

class frmMakeTest : public MixingTest {
protected:
    /// Shows the question preset to that quantity, runs the script, and gives the quantity accepted.
    double ask(double preset, const std::function<void(QWidget&)>& script) {
        frmMake question;
        question.MakeQty(preset);
        asker.expectModal("frmMake", script);
        question.showModal();
        return question.MakeQty();
    }
    static NumberBox* box(QWidget& form) { return child<NumberBox>(form, "txtQTY"); }
    static void press(QWidget& form, const char* button) { child<QPushButton>(form, button)->click(); }
};

TEST_F(frmMakeTest, TextsAndPreset) {
    frmMake question;
    EXPECT_EQ(str(question.windowTitle()), "Quantity to Make");
    EXPECT_EQ(str(child<QLabel>(question, "lblQty")->text()), "Enter Quantity");
    EXPECT_EQ(str(child<QCheckBox>(question, "chkPrint")->text()), "Print Worksheet");
    EXPECT_EQ(str(child<QPushButton>(question, "OKButton")->text()), "OK");
    EXPECT_EQ(str(child<QPushButton>(question, "CancelButton")->text()), "Cancel");
    EXPECT_FALSE(question.printWorksheet());
    question.MakeQty(250);
    EXPECT_EQ(str(box(question)->text()), "250");
    EXPECT_EQ(question.MakeQty(), 250);
}

TEST_F(frmMakeTest, NamesTheFormulaAndItsBaseBatch) {
    frmMake question;
    auto* batch = child<QLabel>(question, "lblBatch");
    EXPECT_TRUE(batch->isHidden()) << "nothing to name";
    clsFormula formula;
    formula.frm_Name = "Cooling Gel";
    formula.frm_Quantity = 240;
    formula.frm_Units = "MLS";
    question.setFormula(formula);
    EXPECT_FALSE(batch->isHidden());
    EXPECT_EQ(str(batch->text()), "Cooling Gel · base batch 240\u00A0MLS");
}

TEST_F(frmMakeTest, TheNameStandsBelowWholeAndMovesNothing) {
    for (const bool dark : {false, true}) {
        platform::applyTheme(*qApp, dark);
        for (const bool german : {false, true}) {
            startConfiguration(german ? 2 : 0);
            QMap<QString, QRect> places;
            const auto shown = [&](const QString& name) {
                frmMake question;
                question.MakeQty(240);
                clsFormula formula;
                formula.frm_Name = name;
                formula.frm_Quantity = 240;
                formula.frm_Units = "MLS";
                question.setFormula(formula);
                asker.expectModal("frmMake", [&](QWidget& form) {
                    support::settle();
                    const auto* batch = child<QLabel>(form, "lblBatch");
                    for (const char* control : {"lblQty", "txtQTY", "chkPrint", "OKButton", "CancelButton"}) {
                        const QRect place = child<QWidget>(form, control)->geometry();
                        EXPECT_EQ(places.value(control, place), place) << control << ", " << str(name);
                        places[control] = place;
                        EXPECT_TRUE(name.isEmpty() || batch->y() > place.bottom()) << control;
                    }
                    EXPECT_EQ(places.value("window", form.geometry()).width(), form.width());
                    places["window"] = form.geometry();
                    EXPECT_EQ(batch->isVisible(), !name.isEmpty());
                    EXPECT_TRUE(name.isEmpty() || batch->height() >= batch->heightForWidth(batch->width()))
                        << "not cut";
                    press(form, "CancelButton");
                });
                question.showModal();
            };
            shown({});
            shown("Cooling Gel");
            shown("Magic Mouthwash with Lidocaine, Diphenhydramine and Aluminium Hydroxide, sugar free");
        }
    }
}

TEST_F(frmMakeTest, OkTakesTheQuantity) {
    EXPECT_EQ(ask(10, [](QWidget& form) { press(form, "OKButton"); }), 10);
    EXPECT_EQ(ask(10,
                  [](QWidget& form) {
                      QTest::keyClicks(box(form), "25");  // the preset is selected whole
                      press(form, "OKButton");
                  }),
              25);
}

TEST_F(frmMakeTest, TheWholeTextIsSelectedWhenItComesUp) {
    ask(120, [](QWidget& form) {
        EXPECT_EQ(str(box(form)->selectedText()), "120");
        press(form, "CancelButton");
    });
}

TEST_F(frmMakeTest, CancelCloseBoxAndEscapeMeanNothing) {
    EXPECT_EQ(ask(10, [](QWidget& form) { press(form, "CancelButton"); }), 0);
    EXPECT_EQ(ask(10, [](QWidget& form) { form.close(); }), 0);
    EXPECT_EQ(ask(10, [](QWidget& form) { QTest::keyClick(&form, Qt::Key_Escape); }), 0);
}

TEST_F(frmMakeTest, EnterInTheBoxIsOk) {
    EXPECT_EQ(ask(10,
                  [](QWidget& form) {
                      QTest::keyClicks(box(form), "7");
                      QTest::keyClick(box(form), Qt::Key_Return);
                  }),
              7);
}

TEST_F(frmMakeTest, AnEmptyBoxIsNoQuantity) {
    EXPECT_EQ(ask(10,
                  [](QWidget& form) {
                      QTest::keyClick(box(form), Qt::Key_Delete);
                      press(form, "OKButton");
                  }),
              0);
}

TEST_F(frmMakeTest, TakesTheBoundsAndRefusesWhatLiesOutsideOrCanNotBeRead) {
    EXPECT_EQ(ask(10,
                  [](QWidget& form) {
                      for (const char* typed : {"0", "1001", "-1", "12abc", "1.234,5", "2.5", "abc"}) {
                          box(form)->selectAll();
                          QTest::keyClicks(box(form), typed);
                          press(form, "OKButton");
                          EXPECT_TRUE(form.isVisible()) << typed;
                          EXPECT_FALSE(platform::Hint::textOf(*box(form)).isEmpty()) << typed;
                      }
                      box(form)->selectAll();
                      QTest::keyClicks(box(form), "1000");
                      press(form, "OKButton");
                  }),
              1000);
    EXPECT_EQ(ask(10,
                  [](QWidget& form) {
                      QTest::keyClicks(box(form), "1");
                      press(form, "OKButton");
                  }),
              1);
}

TEST_F(frmMakeTest, TheFlagFollowsTheBox) {
    frmMake question;
    auto* print = child<QCheckBox>(question, "chkPrint");
    print->click();
    EXPECT_TRUE(question.printWorksheet());
    print->click();
    EXPECT_FALSE(question.printWorksheet());
    question.printWorksheet(true);
    EXPECT_TRUE(print->isChecked());
    EXPECT_TRUE(question.printWorksheet());
}

TEST_F(frmMakeTest, TextsAreTranslated) {
    folder.write(
        "GermanTranslation.xml",
        "<Translations Language=\"German\"><Translate English=\"Quantity to Make\" Translated=\"Menge\"/>"
        "</Translations>");
    startConfiguration(2);
    EXPECT_EQ(str(frmMake().windowTitle()), "Menge");
}

}  // namespace
