// The walk: a step in the model, the same in the windows, and both compared.
#include "DeskWalk.h"

#include "Settle.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <utility>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using desk::Mix;
using support::child;

namespace {

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

// The model may be a screen further by now: a text typed as it was frees the desk for a mix that waits.
void DeskWalk::typeInWindow(const desk::Box& typed, const QString& text) {
    auto& box = control<QWidget>(typed.screen, typed.name);
    QWidget* editor = &box;
    if (!qobject_cast<QLineEdit*>(editor) && !qobject_cast<QPlainTextEdit*>(editor))
        editor = box.findChild<QPlainTextEdit*>();
    ASSERT_NE(editor, nullptr) << typed.name;
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

void DeskWalk::endsInAWait() {
    if (!std::exchange(m_endsInAWait, false))
        return;
    ++mixesEnded;
    line.run(wholeMix);
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
    if (!inside && before == Mix::Running && model.mix == Mix::Running && model.questions.empty() &&
        wantsEndInAWait()) {
        step.text += u", the mix ends in a wait"_s;
        m_endsInAWait = true;
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
    if (std::exchange(m_endsInAWait, false))  // nothing was waited for
        endTheMix();
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
