// The dialog in which a batch is signed.
#include "mixing/frmInitials.h"
#include "MixingTest.h"
#include "Settle.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QFile>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::NumberBox;
using platform::TextBox;
using support::child;

namespace {

const platform::BoxStyle information{platform::Buttons::Ok, platform::Icon::Information};
const QString missing = "Must designate initials of compounder and verifier to log.";

const char* const designed[] = {"txtfrm_Name",     "lbllog_Lot",  "lbllog_Initials", "txtInitials",
                                "lbllog_Verified", "txtVerified", "cmdOK",           "cmdCancel"};

class frmInitialsTest : public MixingTest {
protected:
    void SetUp() override {
        MixingTest::SetUp();
        dialog = std::make_unique<frmInitials>(context);
    }
    void TearDown() override {
        dialog.reset();
        MixingTest::TearDown();
    }
    TextBox* box(const QString& name) const { return child<TextBox>(*dialog, name); }
    void show(const std::function<void()>& script) {
        asker.expectModal("frmInitials", [script](QWidget&) { script(); });
        dialog->showModal();
    }
    /// Where the designed controls stand in a dialog of that name and lot, with the card or without.
    QMap<QString, QRect> places(const QString& lot, bool card) {
        dialog = std::make_unique<frmInitials>(context);
        dialog->setFormula(document(formulaXml()));
        dialog->setResults(stopped());
        dialog->log_Lot(lot);
        child<QWidget>(*dialog, "mixSummary")->setVisible(card);
        QMap<QString, QRect> places;
        show([&] {
            support::settle();
            for (const char* name : designed)
                places[name] = child<QWidget>(*dialog, name)->geometry();
            press("cmdCancel");
        });
        return places;
    }
    static QByteArray deliveredGerman() {
        QFile delivered(QString(SORVANTO_SOURCE_DIR) + "/languages/GermanTranslation.xml");
        EXPECT_TRUE(delivered.open(QIODevice::ReadOnly));
        return delivered.readAll();
    }
    platform::XmlDocumentPtr stopped() const {
        return document("<Results Value=\"SV26\"><Interuption Value=\"U\"/>"
                        "<TotalMixingRevolutions Value=\"1760\"/></Results>");
    }
    void press(const QString& button) const { child<QPushButton>(*dialog, button)->click(); }
    void sign(const QString& initials = "RK", const QString& verified = "LM") const {
        box("txtInitials")->setText(initials);
        box("txtVerified")->setText(verified);
    }
    QWidget* focused() const { return dialog->focusWidget(); }
    /// Runs the action and tells whether the mixer was told that the dialog has answered: it then shows its
    /// panel anew.
    bool tellsMixer(const std::function<void()>& action) const {
        auto* footnote = child<QLabel>(main->mixer(), "mixerFootnote");
        footnote->setText("not shown anew");
        action();
        return footnote->text() != "not shown anew";
    }
    /// Types a name into the writable box and presses Enter; the quantity question is answered (empty: cancel).
    void name(const QString& typed, const QString& quantity) {
        asker.expectModal("frmMake", [quantity](QWidget& form) {
            if (!quantity.isEmpty())
                QTest::keyClicks(child<NumberBox>(form, "txtQTY"), quantity);
            child<QPushButton>(form, quantity.isEmpty() ? "CancelButton" : "OKButton")->click();
        });
        enterName(typed);
    }
    void enterName(const QString& typed) const {
        box("txtfrm_Name")->setText(typed);
        QTest::keyClick(box("txtfrm_Name"), Qt::Key_Return);
    }

    std::unique_ptr<frmInitials> dialog;
};

TEST_F(frmInitialsTest, Texts) {
    EXPECT_EQ(str(dialog->windowTitle()), "Log Initials");
    EXPECT_EQ(str(child<QLabel>(*dialog, "lbllog_Initials")->text()), "Logged");
    EXPECT_EQ(str(child<QLabel>(*dialog, "lbllog_Verified")->text()), "Verified");
    dialog->log_Lot("AB0012");
    EXPECT_EQ(str(child<QLabel>(*dialog, "lbllog_Lot")->text()), "AB0012");
}

TEST_F(frmInitialsTest, AStoredFormulaTakesWhatWasMixed) {
    dialog->setFormula(document(formulaXml()));
    EXPECT_EQ(str(box("txtfrm_Name")->text()), "Cooling Gel");
    EXPECT_TRUE(box("txtfrm_Name")->isReadOnlyBox());
    const clsFormulaPtr formula = dialog->getFormula();
    ASSERT_TRUE(formula);
    EXPECT_EQ(formula->FormulaID, 1);
    EXPECT_EQ(formula->frm_FormType, 5);
    EXPECT_EQ(formula->makeQuantity(), 25);
    EXPECT_EQ(formula->frm_JarSize, 7) << "set behind makeQuantity, which picks one of its own";
    EXPECT_EQ(str(formula->frm_Mix->xml()), str(mixXml()));
    formula->Chemical->moveFirst();
    EXPECT_EQ(str(formula->Chemical->value("fch_Qty").toString()), "3.086");
    show([&] {
        EXPECT_EQ(focused(), box("txtInitials"));
        press("cmdCancel");
    });
}

TEST_F(frmInitialsTest, AnUnnamedMixOffersTheName) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    EXPECT_FALSE(box("txtfrm_Name")->isReadOnlyBox());
    EXPECT_EQ(str(box("txtfrm_Name")->text()), "");
    show([&] {
        EXPECT_EQ(focused(), box("txtfrm_Name"));
        sign();
        press("cmdOK");
    });
    EXPECT_EQ(dialog->getFormula(), nullptr);
}

TEST_F(frmInitialsTest, NoIDAndNoDocumentAreUnnamedMixesToo) {
    dialog->setFormula(document(formulaXml("")));
    EXPECT_FALSE(box("txtfrm_Name")->isReadOnlyBox());
    dialog->setFormula(nullptr);
    EXPECT_FALSE(box("txtfrm_Name")->isReadOnlyBox());
    EXPECT_EQ(dialog->getFormula(), nullptr);
}

TEST_F(frmInitialsTest, TheSameInitialsTwiceAreShownAndNotBlocked) {
    dialog->setFormula(document(formulaXml()));
    sign("RK", "LM");
    EXPECT_FALSE(box("txtVerified")->property("caution").toBool());
    sign("rk ", " RK");
    EXPECT_TRUE(box("txtInitials")->property("caution").toBool());
    EXPECT_TRUE(box("txtVerified")->property("caution").toBool());
    EXPECT_EQ(str(box("txtVerified")->accessibleDescription()), "Logged and verified by the same initials.");
    show([&] { press("cmdOK"); });
    EXPECT_TRUE(dialog->getFormula());
    sign("", "");
    EXPECT_FALSE(box("txtVerified")->property("caution").toBool()) << "nothing typed is nothing twice";
}

TEST_F(frmInitialsTest, PlannedAndDoneStandBelowWithoutMovingTheRest) {
    sql("UPDATE Formula SET frm_Units = 'GMS' WHERE FormulaID = 1");
    dialog->setFormula(document(formulaXml()));
    dialog->setResults(stopped());
    const auto text = [&](const char* name) { return str(child<QLabel>(*dialog, name)->text()); };
    EXPECT_EQ(text("mixSummaryBatch"), "Cooling Gel · 25 GMS in 300 ml");
    EXPECT_EQ(text("doneInterrupted"), "Yes");
    EXPECT_EQ(text("doneTime"), "–") << "not followed";
    show([&] {
        const auto* card = child<QFrame>(*dialog, "mixSummary");
        const auto* ok = child<QPushButton>(*dialog, "cmdOK");
        EXPECT_EQ(dialog->width(), 368);
        EXPECT_EQ(card->geometry().left(), 24);
        EXPECT_EQ(card->width(), 320);
        EXPECT_EQ(card->y() - ok->geometry().bottom() - 1, 16);
        EXPECT_EQ(box("txtfrm_Name")->geometry().topLeft(), QPoint(24, 24));
        EXPECT_EQ(dialog->height() - card->geometry().bottom() - 1, 24);
        EXPECT_EQ(child<QLabel>(*dialog, "doneSteps")->height(), 24);
        EXPECT_EQ(child<QLabel>(*dialog, "doneSteps")->width(), 72);
        press("cmdCancel");
    });
}

TEST_F(frmInitialsTest, TheToldControlsStandWhereTheyStoodWithoutTheCard) {
    folder.write("GermanTranslation.xml", deliveredGerman());
    for (const bool themed : {false, true}) {
        if (themed)
            platform::applyTheme(*qApp, false);
        for (const int language : {0, 2}) {
            startConfiguration(std::int16_t(language));
            for (const char* lot : {"", "SV04260012"})
                EXPECT_EQ(places(lot, true), places(lot, false)) << themed << language << lot;
        }
    }
}

TEST_F(frmInitialsTest, AmberComesWithTheSameInitialsGoesWithOthersAndMovesNothing) {
    platform::applyTheme(*qApp, false);
    dialog->setFormula(document(formulaXml()));
    show([&] {
        const auto places = [&] {
            support::settle();
            QList<QRect> found;
            for (const char* name : designed)
                found << child<QWidget>(*dialog, name)->geometry();
            return found;
        };
        const auto edge = [&](const char* name) {
            const QImage image = box(name)->grab().toImage();
            return image.pixelColor(image.width() / 2, 0);
        };
        const QColor amber = platform::theme().warning;
        sign("RK", "R");
        const QList<QRect> before = places();
        EXPECT_NE(edge("txtInitials"), amber);
        box("txtVerified")->setText("RK");
        EXPECT_EQ(places(), before);
        EXPECT_EQ(edge("txtInitials"), amber);
        EXPECT_EQ(edge("txtVerified"), amber) << "with the focus or without";
        EXPECT_TRUE(box("txtVerified")->actions().constFirst()->isVisible());
        box("txtVerified")->setText("RKL");
        EXPECT_NE(edge("txtInitials"), amber);
        EXPECT_NE(edge("txtVerified"), amber);
        EXPECT_FALSE(box("txtVerified")->actions().constFirst()->isVisible());
        EXPECT_EQ(str(box("txtVerified")->accessibleDescription()), "");
        press("cmdCancel");
    });
}

TEST_F(frmInitialsTest, RevolutionsHaveTheMarksOfTheSystem) {
    for (const auto& [locale, shown] : {std::pair("de_DE", u"1.760"_s), std::pair("en_US", u"1,760"_s),
                                        std::pair("de_CH", u"1\u2019760"_s)}) {
        platform::setSystemLocale(QLocale(locale));
        dialog->setFormula(document(formulaXml()));
        dialog->setResults(stopped());
        EXPECT_EQ(str(child<QLabel>(*dialog, "doneRevolutions")->text()), str(shown)) << locale;
    }
    platform::setSystemLocale({});
}

TEST_F(frmInitialsTest, OkNeedsBothInitialsAndTellsTheMixerInAnyCase) {
    dialog->setFormula(document(formulaXml()));
    show([&] {
        const std::pair<const char*, const char*> bad[] = {{"", ""}, {"RK", ""}, {"", "LM"}, {"RK", "   "}};
        for (const auto& [initials, verified] : bad) {
            sign(initials, verified);
            asker.expectMsgBox(missing, information);
            EXPECT_TRUE(tellsMixer([&] { press("cmdOK"); }));
            EXPECT_TRUE(dialog->isVisible());
        }
        sign(" RK ", "LM");
        EXPECT_TRUE(tellsMixer([&] { press("cmdOK"); }));
    });
    EXPECT_EQ(str(dialog->initials()), " RK ") << "left as typed";
    EXPECT_EQ(str(dialog->verified()), "LM");
    EXPECT_TRUE(dialog->getFormula());
}

TEST_F(frmInitialsTest, CancelCloseBoxAndEscapeLogNothingAndTellTheMixer) {
    const std::function<void()> ways[] = {[&] { press("cmdCancel"); }, [&] { dialog->close(); },
                                          [&] { QTest::keyClick(dialog.get(), Qt::Key_Escape); }};
    for (const auto& way : ways) {
        dialog = std::make_unique<frmInitials>(context);
        dialog->setFormula(document(formulaXml()));
        show([&] {
            sign();
            EXPECT_TRUE(tellsMixer(way));
        });
        EXPECT_EQ(dialog->getFormula(), nullptr);
    }
}

TEST_F(frmInitialsTest, EnterMovesOnAndAtLastPressesOkOnce) {
    dialog->setFormula(document(formulaXml()));
    show([&] {
        QTest::keyClicks(box("txtInitials"), "RK");
        QTest::keyClick(box("txtInitials"), Qt::Key_Return);
        EXPECT_EQ(focused(), box("txtVerified"));
        asker.expectMsgBox(missing, information);
        QTest::keyClick(box("txtVerified"), Qt::Key_Return);
        EXPECT_TRUE(dialog->isVisible());
        QTest::keyClicks(box("txtVerified"), "LM");
        QTest::keyClick(box("txtVerified"), Qt::Key_Return);
        EXPECT_FALSE(dialog->isVisible());
    });
}

TEST_F(frmInitialsTest, EnterInAReadOnlyNameMovesOnAlone) {
    dialog->setFormula(document(formulaXml()));
    show([&] {
        box("txtfrm_Name")->setFocus();
        QTest::keyClick(box("txtfrm_Name"), Qt::Key_Return);
        EXPECT_EQ(focused(), box("txtInitials"));
        EXPECT_TRUE(dialog->isVisible());
        press("cmdCancel");
    });
}

TEST_F(frmInitialsTest, NamingTakesTheRecipeFromTheFormulaAndTheRestFromTheMixer) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    show([&] {
        name("Cool", "20");
        EXPECT_EQ(str(box("txtfrm_Name")->text()), "Cooling Gel");
        EXPECT_EQ(focused(), box("txtInitials"));
        sign();
        press("cmdOK");
    });
    const clsFormulaPtr formula = dialog->getFormula();
    ASSERT_TRUE(formula);
    EXPECT_EQ(formula->FormulaID, 1);
    EXPECT_EQ(formula->makeQuantity(), 20);
    EXPECT_EQ(formula->frm_FormType, 9) << "of the named formula";
    EXPECT_EQ(formula->frm_JarSize, 7);
    EXPECT_EQ(str(formula->frm_Mix->xml()), str(mixXml()));
    EXPECT_FALSE(folder.has("mixes") && !QDir(folder.path("mixes")).isEmpty(QDir::Files))
        << "nothing is loaded";
}

TEST_F(frmInitialsTest, ACancelledQuantityLeavesNoFormula) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    show([&] {
        name("Cool", "");
        EXPECT_EQ(str(box("txtfrm_Name")->text()), "Cool") << "as typed";
        EXPECT_EQ(focused(), box("txtInitials"));
        sign();
        press("cmdOK");
    });
    EXPECT_EQ(dialog->getFormula(), nullptr);
}

TEST_F(frmInitialsTest, AnUnknownNameAsksNoQuantityAndEmptiesTheBox) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    show([&] {
        enterName("unheard of");
        EXPECT_EQ(str(box("txtfrm_Name")->text()), "");
        EXPECT_EQ(focused(), box("txtInitials"));
        press("cmdCancel");
    });
}

TEST_F(frmInitialsTest, ANameMayBeGivenAgain) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    show([&] {
        name("Cool", "");
        name("Cool", "30");
        sign();
        press("cmdOK");
    });
    ASSERT_TRUE(dialog->getFormula());
    EXPECT_EQ(dialog->getFormula()->makeQuantity(), 30);
}

TEST_F(frmInitialsTest, ADocumentWithoutANodeIsAFailureAndLogsNothing) {
    for (const char* node : {"<Type>5</Type>", "<Make>25</Make>", "<Size>7</Size>"}) {
        dialog = std::make_unique<frmInitials>(context);
        dialog->setFormula(document(formulaXml().remove(node)));
        expectReport("frmInitials:setformula");
        EXPECT_EQ(dialog->getFormula(), nullptr) << node;
    }
    dialog->setFormula(document(formulaXml().remove(mixXml())));
    expectReport("frmInitials:setformula");
    EXPECT_EQ(dialog->getFormula(), nullptr);
}

TEST_F(frmInitialsTest, AnIDThatIsNoKeyIsAFailure) {
    for (const char* id : {"<ID>40000</ID>", "<ID>one</ID>"}) {
        dialog->setFormula(document(formulaXml(id)));
        expectReport("frmInitials:setformula");
        EXPECT_EQ(dialog->getFormula(), nullptr);
    }
}

TEST_F(frmInitialsTest, AFormulaDeletedMeanwhileCanNotBeLogged) {
    dialog->setFormula(document(formulaXml("<ID>77</ID>")));
    expectReport("frmInitials:setformula");
    EXPECT_EQ(dialog->getFormula(), nullptr);
    EXPECT_FALSE(box("txtfrm_Name")->isReadOnlyBox()) << "another one may be named";
}

TEST_F(frmInitialsTest, NamingForADocumentWithoutItsNodesLogsNothing) {
    for (const QString& node : {u"<Size>7</Size>"_s, mixXml()}) {
        dialog = std::make_unique<frmInitials>(context);
        dialog->setFormula(document(formulaXml("<ID>0</ID>").remove(node)));
        show([&] {
            name("Cool", "20");
            sign();
            press("cmdOK");
        });
        expectReport("frmInitials:makeFormula");
        EXPECT_EQ(dialog->getFormula(), nullptr) << str(node);
    }
}

TEST_F(frmInitialsTest, NamingAFormulaWithoutABaseBatchLogsNothing) {
    dialog->setFormula(document(formulaXml("<ID>0</ID>")));
    show([&] {
        name("No Batch", "20");
        sign();
        press("cmdOK");
    });
    expectReport("frmInitials:makeFormula");
    EXPECT_EQ(dialog->getFormula(), nullptr);
}

TEST_F(frmInitialsTest, IsTheDialogOfTheLogOnceInstalled) {
    makeSigningDialog = nullptr;
    frmInitials::install(context);
    ASSERT_TRUE(makeSigningDialog);
    EXPECT_NE(dynamic_cast<frmInitials*>(makeSigningDialog().get()), nullptr);
    makeSigningDialog = nullptr;
}

}  // namespace
