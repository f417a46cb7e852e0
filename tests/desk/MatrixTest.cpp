// The mixer's events, and what has to hold after each.
#include "MatrixTest.h"

#include "Settle.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "screens/BrowsingScreen.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTextEdit>
#include <iostream>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using mixersim::SimulatedMixer;
using support::child;

std::ostream& operator<<(std::ostream& out, const ModalThing& thing) { return out << thing.name; }

namespace {
constexpr int wholeShortMix = 20'000;  // milliseconds, longer than the mix
}  // namespace

const std::vector<MixerEvent>& MatrixTest::events() {
    const auto progress = [](MatrixTest& d) {
        d.line.run(1'000);
        EXPECT_TRUE(d.relinked());
    };
    const auto loseLink = [](MatrixTest& d) {
        d.line.cut();
        support::settle();
    };
    const auto regainLink = [](MatrixTest& d) {
        d.line.present = true;
        EXPECT_TRUE(d.relinked());
    };
    static const std::vector<MixerEvent> all{
        {"progress", progress, Ending::Logged, false},
        {"ended", [](MatrixTest& d) { d.endMix(); }},
        {"stopped by the user",
         [](MatrixTest& d) {
             d.line.run(1'000);
             d.panelButton("mixerStop")->click();
             EXPECT_TRUE(test::waitFor([&] { return d.waits() || d.logCount() > d.logsBefore; }));
         }},
        {"stopped at the device",
         [](MatrixTest& d) {
             d.line.mixer.pressEmergencyStop();
             EXPECT_TRUE(test::waitFor([&] { return d.panelButton("mixerOk")->isVisible(); }));
         },
         Ending::Without, true, [](MatrixTest& d) { d.line.mixer.releaseEmergencyStop(); }},
        {"fault",
         [](MatrixTest& d) {
             d.line.mixer.overload();
             EXPECT_TRUE(test::waitFor([&] { return d.panelButton("mixerOk")->isVisible(); }));
         },
         Ending::Without},
        {"link lost and back",
         [=](MatrixTest& d) {
             loseLink(d);
             regainLink(d);
         },
         Ending::Logged, false},
        {"results of an earlier mix",
         [=](MatrixTest& d) {
             loseLink(d);
             d.line.run(wholeShortMix);
             regainLink(d);
             EXPECT_TRUE(test::waitFor([&] {
                 return d.waits() || d.offers().size() > d.offersBefore || d.logCount() > d.logsBefore;
             }));
         }},
        {"a second mixer",
         [](MatrixTest& d) {
             d.own = d.line.mixer;
             d.replug(SimulatedMixer({protocol::version, "SIM-2.1", "SV0777"}, 3));
         },
         Ending::Logged, false,
         [](MatrixTest& d) {
             d.replug(d.own);
             EXPECT_TRUE(
                 test::waitFor([&] { return d.GetParam().signing || d.window->mixer().mixUnderWay(); }));
         }},
    };
    return all;
}

std::vector<ModalThing> MatrixTest::all() {
    std::vector<ModalThing> things = questions();
    const std::vector<ModalThing> more = windows();
    things.insert(things.end(), more.begin(), more.end());
    return things;
}

void MatrixTest::SetUp() {
    DeskTest::SetUp();
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);  // they start unlocked
    click(u"cmdFormulas"_s);
    if (GetParam().before)
        GetParam().before(*this);
}

void MatrixTest::TearDownTestSuite() {
    std::cout << "matrix: " << combinations << " combinations of what is open and what the mixer does\n";
}

bool MatrixTest::relinked() {
    const auto before = line.transcript.size();
    return test::waitFor([&] { return line.transcript.size() > before + 3; });
}

void MatrixTest::replug(const SimulatedMixer& mixer) {
    line.cut();
    support::settle();
    line.mixer = mixer;
    line.present = true;
    EXPECT_TRUE(relinked());
}

int MatrixTest::accounted() const {
    return logCount() - logsBefore + static_cast<int>(offers().size() - offersBefore) + (waits() ? 1 : 0) +
           (window->mixer().mixUnderWay() ? 1 : 0);
}

QString MatrixTest::rows() const {
    QStringList keys;
    for (const char* statement :
         {"SELECT FormulaID, frm_Name FROM Formula", "SELECT FormChemID, fch_Qty FROM FormChem",
          "SELECT ChemicalID, chm_Name FROM Chemical", "SELECT PatientID FROM Patient",
          "SELECT RXsID, LogID FROM RXs"})
        keys << sqlText(QString::fromLatin1(statement));
    return keys.join(u'\n');
}

QStringList MatrixTest::textsIn(const QWidget& window) {
    QStringList texts;
    for (const QLineEdit* box : window.findChildren<QLineEdit*>())
        texts << box->text();
    for (const QTextEdit* box : window.findChildren<QTextEdit*>())
        texts << box->toPlainText();
    return texts;
}

void MatrixTest::happens() {
    ++happened;
    const QWidget* const modal = modalOnShow();
    const QWidget* const popup = QApplication::activePopupWidget();
    const QWidget& read = modal ? *modal : *window;
    const QStringList before = textsIn(read);
    const QString screenText = caption();
    const bool toBeSigned = !GetParam().signing && event->ending == Ending::Logged;
    if (!GetParam().blocks) {
        if (toBeSigned)
            sign();
        return event->happen(*this);
    }
    event->happen(*this);
    support::settle();
    EXPECT_EQ(modalOnShow(), modal) << "another window came up";
    EXPECT_EQ(QApplication::activePopupWidget(), popup);
    EXPECT_EQ(textsIn(read), before) << "typed text";
    EXPECT_EQ(str(caption()), str(screenText)) << "the screen behind it";
    if (!GetParam().signing) {
        EXPECT_EQ(accounted(), event->ending == Ending::Without ? 0 : 1);
    }
    if (toBeSigned)
        sign();
}

void MatrixTest::happensIn(const QString& name, const QString& button) {
    whileOpen(name, [this, button](QWidget& on) {
        for (auto* box : on.findChildren<QLineEdit*>()) {
            if (box->isVisible() && !box->isReadOnly() && !box->objectName().startsWith("qt_"_L1) &&
                !on.inherits("QFileDialog"))
                box->setText(u"7"_s);
        }
        happens();
        if (button.isEmpty())
            on.close();
        else
            child<QPushButton>(on, button.toLatin1().constData())->click();
    });
}

void MatrixTest::pass(const QString& name, const QString& button) {
    whileOpen(name,
              [button](QWidget& on) { child<QPushButton>(on, button.toLatin1().constData())->click(); });
}

void MatrixTest::unlock(const QString& screenButton) {
    click(screenButton);
    click(u"cmdEdit"_s);
}

void MatrixTest::typed(ScreenNumber number, const QString& box) {
    auto& field = control<QWidget>(number, box);
    if (auto* memo = qobject_cast<platform::MemoBox*>(&field))
        memo->setText(u"typed"_s);
    else
        control<QLineEdit>(number, box).setText(u"typed"_s);
}

void MatrixTest::openCell(const QString& text) {
    click(u"cmdFormulas"_s);
    click(u"cmdFirst"_s);
    click(u"cmdNext"_s);
    click(u"cmdEdit"_s);
    child<QTabWidget>(*window->screen(formulas), "tabFormula")->setCurrentIndex(1);
    typeInCell(control<platform::RecordGrid>(formulas, u"grdIngredients"_s), 0, u"fch_Qty"_s, text);
}

void MatrixTest::signUnnamed() {
    whileOpen(u"frmInitials"_s, [](QWidget& form) {
        auto* name = child<platform::TextBox>(form, "txtfrm_Name");
        name->setText(u"Plain Base"_s);
        QTest::keyClick(name, Qt::Key_Return);
        child<platform::TextBox>(form, "txtInitials")->setText(u"RK"_s);
        child<platform::TextBox>(form, "txtVerified")->setText(u"LM"_s);
        child<QPushButton>(form, "cmdOK")->click();
    });
}

// The mix ends on a free desk, so that its signing comes up; the thing opens inside it or is the signing.
void MatrixTest::beginSigning() {
    startMix(u"Cooling Gel"_s, GetParam().formula);
    line.run(wholeShortMix);
}

void MatrixTest::signNowAndDiscard() {
    if (offers().size() == offersBefore) {  // else it is logged from there
        EXPECT_TRUE(test::waitFor([&] { return waits(); }));
        panelButton("mixerSign")->click();
        EXPECT_TRUE(test::waitFor([&] { return logCount() > logsBefore && !modalOnShow(); }));
    }
    auto* strip = child<QWidget>(*window, "draftStrip");
    const bool inBox = textsIn(*window->screen(logs)).contains(u"typed"_s);
    EXPECT_TRUE(strip->isVisible() || inBox) << "typed text is nowhere";
    for (const char* screen : {"cmdLogs", "cmdFormulas"}) {
        click(QLatin1String(screen));
        click(u"cmdCancel"_s);
    }
    while (strip->isVisible())
        child<QPushButton>(*strip, "cmdDiscard")->click();
}

void MatrixTest::finish() {
    if (event->afterwards)
        event->afterwards(*this);
    const bool signedNow = GetParam().signedNow && event->ending == Ending::Logged;
    if (!signedNow)
        click(u"cmdCancel"_s);  // what was typed is given up
    if (event->ending == Ending::Without) {
        QPushButton* ok = panelButton("mixerOk");
        EXPECT_TRUE(test::waitFor([&] { return ok->isVisible() && ok->isEnabled(); }));
        ok->click();
        EXPECT_TRUE(test::waitFor([&] { return !ok->isVisible(); }));
        EXPECT_EQ(logCount(), logsBefore);
        EXPECT_EQ(accounted(), 0);
        return;
    }
    if (window->mixer().mixUnderWay() && !GetParam().signing) {
        EXPECT_TRUE(test::waitFor([&] { return panelButton("mixerStop")->isVisible(); }));
        line.run(wholeShortMix);
    }
    if (signedNow)
        signNowAndDiscard();
    const auto logged = [&] { return logCount() > logsBefore && !modalOnShow(); };
    const auto offered = [&]() -> QPushButton* {
        for (auto* button : window->mixer().findChildren<QPushButton*>(u"mixerLogMix"_s)) {
            if (button->isVisible() && button->isEnabled() && offers().size() > offersBefore)
                return button;
        }
        return nullptr;
    };
    ASSERT_TRUE(test::waitFor([&] { return logged() || offered(); })) << str(offers().join(u'\n'));
    if (!logged())
        offered()->click();
    EXPECT_TRUE(test::waitFor(logged));
    EXPECT_TRUE(test::waitFor([&] { return !waits() && offers().size() == offersBefore; }));
    EXPECT_EQ(logCount(), logsBefore + 1);
    EXPECT_EQ(window->current(), formulas);
}

void MatrixTest::cross(const MixerEvent& chosen) {
    SCOPED_TRACE(std::string(GetParam().name) + " / " + chosen.name);
    event = &chosen;
    logsBefore = logCount();
    offersBefore = offers().size();
    happened = 0;
    const QString before = rows();
    if (GetParam().signing)
        beginSigning();
    else
        startMix();
    GetParam().open(*this);
    EXPECT_EQ(happened, 1) << "it was not on show";
    finish();
    if (!GetParam().changesRows) {
        EXPECT_EQ(str(rows()), str(before)) << "rows that nobody asked to change";
    }
    ++combinations;
}

TEST_P(MatrixTest, AMixerEventDisturbsNothing) {
    // All of them by SORVANTO_MATRIX=all; else two for each thing, others for the next.
    static int row = 0;
    ++row;
    const bool whole = qEnvironmentVariable("SORVANTO_MATRIX") == "all"_L1;
    int number = 0;
    for (const MixerEvent& each : events()) {
        if ((GetParam().signing && each.needsMix) || (!whole && (row + number++) % 4 != 0))
            continue;
        cross(each);
        if (HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Everything, MatrixTest, testing::ValuesIn(MatrixTest::all()),
                         [](const testing::TestParamInfo<ModalThing>& each) {
                             QString name = QString::fromLatin1(each.param.name);
                             name.replace(QRegularExpression(u"[^A-Za-z0-9]+"_s), u"_"_s);
                             return name.toStdString();
                         });
