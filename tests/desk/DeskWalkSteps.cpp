// The steps. What can only end in a report of an error is not walked: a save or paper of no record, the worksheet
// of a formula that is gone or has no base batch.
#include "DeskWalk.h"

#include "Settle.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/CommandBar.h"

#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using desk::Mix;
using support::child;

namespace {

/// From here on texts are discarded, so that the twenty that are kept at most, those still in their boxes included,
/// never run out: a text that was thinned out would be missed by the model.
constexpr std::size_t manyDrafts = 12;

}  // namespace

DeskWalk::Step DeskWalk::choose() {
    using Maker = Step (DeskWalk::*)();
    static const std::vector<std::pair<int, Maker>> makers{
        {45, &DeskWalk::clickStep},       {12, &DeskWalk::keyStep},   {16, &DeskWalk::typeStep},
        {9, &DeskWalk::searchStep},       {10, &DeskWalk::mixerStep}, {4, &DeskWalk::stripStep},
        {2, &DeskWalk::prescriptionStep},
    };
    if (model.drafts.size() > manyDrafts)
        return stripStep();
    if (model.mix == Mix::Running && !model.isFree() && pick(3) == 0)  // seldom by chance alone
        return mixEndsStep();
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
        return tool != "mnuWorksheet"_L1 || !model.hasFormula || model.hasBaseBatch(model.formula);
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
                                   "cmdDelete",   "txtSearch",   "cmdLogs", "cmdFormulas", "cmdCurrent",
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
                QTest::keySequence(window.get(), tool(name).keysTool().action().shortcut());
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
            [=, this] { model.type(box.name, text); }, [=, this] { typeInWindow(box, text); }};
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
        if (!model.offers.empty() && (idle || model.mix == Mix::Loaded)) {
            const int at = pick(static_cast<int>(model.offers.size()));
            return {
                u"log this mix, of %1 the %2."_s.arg(model.offers.size()).arg(at + 1),
                [=, this] { model.logOffer(static_cast<std::size_t>(at)); },
                [=, this] { window->mixer().findChildren<QPushButton*>(u"mixerLogMix"_s).at(at)->click(); }};
        }
        break;
    case 1:
        if (model.mix == Mix::Loaded)
            break;
        if (model.mix != Mix::Running && std::all_of(model.screens.begin(), model.screens.end(),
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
        return mixEndsStep();
    case Mix::Waits:
        return {u"sign now"_s, [this] { model.signNow(); }, press("mixerSign")};
    case Mix::None:
        if (model.onShow == formulas && model.isOn(u"cmdMake"_s))
            return {u"click cmdMake"_s, [this] { model.click(u"cmdMake"_s); },
                    [this] { clickInWindow(u"cmdMake"_s, false); }};
    }
    return {};
}

DeskWalk::Step DeskWalk::mixEndsStep() {
    return {u"the mix ends"_s, [this] { model.mixEnds(); }, [this] { endTheMix(); }};
}
