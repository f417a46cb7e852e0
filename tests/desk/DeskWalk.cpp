// The steps. What can only end in a report of an error is not walked: a save or paper of no record, the worksheet
// of a formula that is gone.
#include "DeskWalk.h"

#include "Settle.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"

#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using desk::Mix;
using support::child;

namespace {

/// From here on texts are discarded, so that the twenty that are kept at most, those still in their boxes included,
/// never run out: a text that was thinned out would be missed by the model.
constexpr std::size_t manyDrafts = 12;

constexpr int wholeMix = 600'000;  // milliseconds, longer than any of the mixes
constexpr std::size_t stepsTold = 25;
const QRegularExpression writing(u"INSERT|UPDATE|DELETE"_s);
}  // namespace

void DeskWalk::seed() {
    DeskTest::seed();
    sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (2, 'Bo', 'Leigh'), (3, 'Cy', 'Moor');"
        "UPDATE Patient SET pat_Notes = ''; UPDATE Formula SET frm_Desc = '' WHERE frm_Desc IS NULL;"
        "UPDATE Formula SET frm_FormType = 9, frm_Mix = (SELECT frm_Mix FROM Formula WHERE FormulaID = 1);");
}

void DeskWalk::SetUp() {
    DeskTest::SetUp();
    readRows();
    model.start();
}

// ---- the steps ---------------------------------------------------------------------------------------------

DeskWalk::Step DeskWalk::choose() {
    using Maker = Step (DeskWalk::*)();
    static const std::vector<std::pair<int, Maker>> makers{
        {45, &DeskWalk::clickStep},       {12, &DeskWalk::keyStep},   {16, &DeskWalk::typeStep},
        {9, &DeskWalk::searchStep},       {10, &DeskWalk::mixerStep}, {4, &DeskWalk::stripStep},
        {2, &DeskWalk::prescriptionStep},
    };
    if (model.drafts.size() > manyDrafts)
        return stripStep();
    for (;;) {
        int at = pick(98);
        for (const auto& [weight, maker] : makers) {
            if ((at -= weight) >= 0)
                continue;
            if (Step step = (this->*maker)(); step.inModel)
                return step;
            break;
        }
    }
}

bool DeskWalk::isWalked(const QString& tool) const {
    const bool paper =
        tool.startsWith("mnu"_L1) &&
        !desk::isToolOn(tool.endsWith('x') ? tool.chopped(1) : tool, chemicals, desk::DeskState::Empty);
    if (model.onShow == currentFormula)
        return tool != "mnuWorksheet"_L1 || !model.hasFormula ||
               model.rows.at(formulas).count(model.formula) > 0;
    return model.canSave(model.onShow) || (!paper && tool != "cmdSave"_L1);
}

DeskWalk::Step DeskWalk::clickStep() {
    static const QStringList others{"cmdCurrent",  "cmdFormulas",       "cmdChemicals", "cmdLogs",
                                    "cmdPatients", "mnuLogs",           "mnuChemicals", "mnuFormulas",
                                    "mnuPatients", "mnuCurrentFormula", "cmdOptions",   "mnuAbout",
                                    "mnuUpdate",   "mnuPrint",          "mnuExport"};
    QStringList tools = desk::recordTools() + others;
    QString tool = tools.at(pick(static_cast<int>(tools.size())));
    const bool entry = tool.startsWith("mnu"_L1) && desk::recordTools().contains(tool);
    if (!isWalked(tool) || (entry && pick(4) != 0))  // a preview takes longer than all the rest
        return {};
    if (entry && pick(3) == 0)
        tool += 'x'_L1;
    const bool byMouse = pick(2) == 0;
    return {u"click "_s + tool, [=, this] { model.click(tool.endsWith('x') ? tool.chopped(1) : tool); },
            [=, this] { clickInWindow(tool, byMouse); }};
}

DeskWalk::Step DeskWalk::keyStep() {
    static const QStringList tools{"cmdFirst",    "cmdPrevious", "cmdNext", "cmdLast",     "cmdMake",
                                   "cmdNew",      "cmdEdit",     "cmdSave", "cmdCopy",     "cmdCancel",
                                   "cmdDelete",   "cmdSearch",   "cmdLogs", "cmdFormulas", "cmdCurrent",
                                   "cmdPatients", "cmdChemicals"};
    const QString name = tools.at(pick(static_cast<int>(tools.size())));
    if (!isWalked(name))
        return {};
    return {u"keys of "_s + name, [=, this] { model.click(name); },
            [=, this] {
                EXPECT_TRUE(test::waitFor([&] {  // it comes back late from a window that was closed
                    window->activateWindow();
                    return QApplication::activeWindow() == window.get();
                }));
                child<QWidget>(*window, "cmdFormulas")->setFocus();
                QTest::keySequence(window.get(), tool(name).action().shortcut());
            }};
}

DeskWalk::Step DeskWalk::typeStep() {
    std::vector<desk::Box> here;
    for (const desk::Box& box : desk::boxes()) {
        if (box.screen == model.onShow)
            here.push_back(box);
    }
    if (here.empty())
        return {};
    const desk::Box box = here.at(static_cast<std::size_t>(pick(static_cast<int>(here.size()))));
    const bool number = QLatin1String(box.name) == "txtfrm_Quantity"_L1;
    const QString text = number         ? QString::number(11 + m_step % 900)
                         : pick(8) == 0 ? QString()
                                        : u"T%1"_s.arg(m_step);
    return {u"type \"%1\" into %2"_s.arg(text, QLatin1String(box.name)),
            [=, this] { model.type(box.name, text); }, [=, this] { typeInWindow(box.name, text); }};
}

DeskWalk::Step DeskWalk::searchStep() {
    static const QStringList texts{"cool", "Plain", "T", "Copy", "zzz", "Cam", "le", "Lee", "T1", ""};
    const QString text = texts.at(pick(static_cast<int>(texts.size())));
    return {u"search \"%1\""_s.arg(text), [=, this] { model.search(text); },
            [=, this] {
                auto* box = window->findChild<QLineEdit*>(u"searchBox"_s);
                if (!box || !box->isEnabled())
                    return;
                tool(u"txtSearch"_s).setText(text);
                QTest::keyClick(box, Qt::Key_Return);
                EXPECT_EQ(str(tool(u"txtSearch"_s).text()), "");
            }};
}

DeskWalk::Step DeskWalk::prescriptionStep() {
    if (model.onShow != patients || !model.hasPrescription())
        return {};
    return {u"select the prescription"_s, [this] { model.selectPrescription(); },
            [this] { control<platform::RecordGrid>(patients, u"grdRXs"_s).selectRow(0); }};
}

DeskWalk::Step DeskWalk::stripStep() {
    if (model.drafts.empty())
        return {};
    const bool back = pick(2) == 0 && model.drafts.size() < manyDrafts;
    return {back ? u"bring back"_s : u"discard"_s, [=, this] { back ? model.bringBack() : model.discard(); },
            [=, this] {
                child<QPushButton>(*window, back ? "cmdBringBack" : "cmdDiscard")->click();
                support::settle();
                for (QWidget* found : QApplication::topLevelWidgets()) {
                    if (found->objectName() == "DraftReader"_L1)
                        found->close();
                }
            }};
}

DeskWalk::Step DeskWalk::mixerStep() {
    const auto press = [this](const char* button) { return [=, this] { panelButton(button)->click(); }; };
    const bool idle = model.mix == Mix::None;
    switch (pick(5)) {
    case 0:
        if (!model.offers.empty() && (idle || model.mix == Mix::Loaded))
            return {
                u"log this mix"_s, [this] { model.logOffer(); },
                [this] { window->mixer().findChildren<QPushButton*>(u"mixerLogMix"_s).front()->click(); }};
        break;
    case 1:
        if (!idle && model.mix != Mix::Running)
            break;
        if (idle && std::all_of(model.screens.begin(), model.screens.end(),
                                [](const auto& screen) { return screen.second.locked; }))
            break;
        return {u"quit, and stay"_s,
                [this] { model.mix == Mix::Running ? model.stayForTheMix() : model.quit(); },
                [this] {
                    window->bar().click(tool(u"mnuExit"_s));
                    if (panelButton("mixerConnect")->isVisible())
                        panelButton("mixerConnect")->click();
                }};
    case 2:
        if (model.mix == Mix::Running)
            return {u"link lost and back"_s, [] {}, [this] { loseLinkAndBack(); }};
        break;
    case 3:
        if (model.mix == Mix::Running && pick(2) == 0)
            return {u"stopped at the device"_s, [this] { model.mixFails(); }, [this] { stopAtTheDevice(); }};
        break;
    default:
        break;
    }
    switch (model.mix) {
    case Mix::Loaded:
        return {u"start"_s, [this] { model.startMix(); }, press("mixerStart")};
    case Mix::Running:
        return {u"the mix ends"_s, [this] { model.mixEnds(); }, [this] { endTheMix(); }};
    case Mix::Waits:
        return {u"sign now"_s, [this] { model.signNow(); }, press("mixerSign")};
    case Mix::None:
        break;
    }
    return {};
}

// ---- in the windows ----------------------------------------------------------------------------------------

void DeskWalk::clickInWindow(const QString& name, bool byMouse) {
    if (auto* button = window->findChild<QToolButton*>(name); byMouse && button && !button->menu()) {
        if (button->isEnabled())
            QTest::mouseClick(button, Qt::LeftButton);
    } else {
        window->bar().click(tool(name));
    }
    while (closePreview()) {
    }
}

void DeskWalk::typeInWindow(const QString& name, const QString& text) {
    auto& box = control<QWidget>(model.onShow, name);
    QWidget* editor = &box;
    if (!qobject_cast<QLineEdit*>(editor) && !qobject_cast<QPlainTextEdit*>(editor))
        editor = box.findChild<QPlainTextEdit*>();
    ASSERT_NE(editor, nullptr) << str(name);
    editor->setFocus();
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        QTest::keyClicks(editor, text);
}

void DeskWalk::endTheMix() {
    ++mixesEnded;
    line.run(wholeMix);
    EXPECT_TRUE(test::waitFor([&] { return waits() || !panelButton("mixerStop")->isVisible(); }));
}

void DeskWalk::loseLinkAndBack() {
    line.cut();
    support::settle();
    line.present = true;
    EXPECT_TRUE(test::waitFor([&] { return panelButton("mixerStop")->isEnabled(); }));
}

void DeskWalk::stopAtTheDevice() {
    line.mixer.pressEmergencyStop();
    EXPECT_TRUE(test::waitFor([&] { return panelButton("mixerOk")->isVisible(); }));
    line.mixer.releaseEmergencyStop();
    EXPECT_TRUE(test::waitFor([&] { return panelButton("mixerOk")->isEnabled(); }));
    panelButton("mixerOk")->click();
    EXPECT_TRUE(test::waitFor([&] { return !panelButton("mixerOk")->isVisible(); }));
}

void DeskWalk::expectWindow(const desk::Question& question, bool mixEndsInside) {
    ++windowsSeen;
    whileOpen(question.window, [=, this](QWidget& on) {
        QString said = on.windowTitle();
        for (const QLabel* label : on.findChildren<QLabel*>())
            said += '\n'_L1 + label->text();
        for (const QLineEdit* box : on.findChildren<QLineEdit*>())
            said += '\n'_L1 + box->text();
        EXPECT_TRUE(said.contains(question.says)) << str(said) << "\ninstead of " << str(question.says);
        if (mixEndsInside)
            endTheMix();
        if (question.window == "frmInitials"_L1 && question.press == "cmdOK"_L1) {
            child<QLineEdit>(on, "txtInitials")->setText(u"RK"_s);
            child<QLineEdit>(on, "txtVerified")->setText(u"LM"_s);
        }
        if (question.key != 0) {
            auto* list = child<platform::RecordGrid>(on, "TDBList1");
            for (int row = 0; row < list->model()->rowCount(); ++row) {
                if (list->dataSource()->valueAt(row, 0).toInt() == question.key)
                    list->selectRow(row);
            }
        }
        if (question.press.isEmpty())
            on.close();
        else
            child<QPushButton>(on, question.press)->click();
    });
}

// ---- the walk ----------------------------------------------------------------------------------------------

bool DeskWalk::take(Step step) {
    model.questions.clear();
    const Mix before = model.mix;
    step.inModel();
    const bool inside =
        before == Mix::Running && model.mix == Mix::Running && !model.questions.empty() && pick(3) == 0;
    if (inside) {
        step.text += u", the mix ends inside"_s;
        model.mixEnds();
    }
    model.rest();
    for (const desk::Question& question : model.questions)
        step.text += u", %1 %2"_s.arg(question.window, question.press);
    m_lastSteps.push_back(step.text);
    if (m_lastSteps.size() > stepsTold)
        m_lastSteps.pop_front();
    const auto came = shown.size() + static_cast<qsizetype>(model.questions.size());
    for (const desk::Question& question : model.questions)
        expectWindow(question, inside && &question == &model.questions.front());
    step.inWindow();
    EXPECT_TRUE(test::waitFor([&] { return shown.size() >= came && !modalOnShow(); }))
        << "a window did not come up";
    const bool starts = model.mix == Mix::Loaded, runs = model.mix == Mix::Running;
    if (starts != panelButton("mixerStart")->isEnabled() || runs != panelButton("mixerStop")->isVisible() ||
        (model.mix == Mix::Waits) != waits()) {
        EXPECT_TRUE(test::waitFor([&] {
            return starts == panelButton("mixerStart")->isEnabled() &&
                   runs == panelButton("mixerStop")->isVisible() && (model.mix == Mix::Waits) == waits();
        })) << "the mixer";
    }
    support::settle();
    readControls();
    // The file is read where something was written, and now and then where nothing should have been.
    const bool written = m_step % 50 == 0 || !statements.filter(writing).isEmpty();
    statements.clear();
    QString expected = modelText(), seen = windowText();
    if (written) {
        expected += '\n'_L1 + rowsInModel();
        seen += '\n'_L1 + rowsInFile();
    }
    EXPECT_EQ(str(seen), str(expected));
    EXPECT_TRUE(reporter->calls.empty());
    return !HasFailure();
}

void DeskWalk::walk(int steps, unsigned seed) {
    m_random.seed(seed);
    for (m_step = 1; m_step <= steps; ++m_step) {
        if (take(choose()))
            continue;
        std::string told;
        for (const QString& step : m_lastSteps)
            told += "  " + str(step) + "\n";
        FAIL() << "SORVANTO_SEED=" << seed << " SORVANTO_WALK=" << m_step
               << " walks here again. The last steps:\n"
               << told;
    }
}
