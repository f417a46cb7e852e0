// The window of the model: clicks to words, switching, quitting.
//   DeskModelRecords.cpp   the words on records        DeskModelBatch.cpp   those of the way of a batch, and drafts
#include "DeskModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace desk {
Model::Model(std::function<int(int)> choose) : m_choose(std::move(choose)) {}

const std::map<QString, Model::Word>& Model::words() {
    static const std::map<QString, Word> all{
        {"first", &Model::first},         {"previous", &Model::previous},
        {"next", &Model::next},           {"last", &Model::last},
        {"search", &Model::search},       {"show", &Model::show},
        {"caption", &Model::showCaption}, {"lock", &Model::lock},
        {"unlock", &Model::unlock},       {"read", &Model::read},
        {"clear", &Model::clear},         {"forget", &Model::forget},
        {"drop", &Model::drop},           {"new", &Model::makeNew},
        {"old", &Model::noLongerNew},     {"add", &Model::add},
        {"copy", &Model::copy},           {"remove", &Model::remove},
        {"save", &Model::save},           {"hand-over", &Model::handOver},
        {"prescribe", &Model::prescribe}, {"make", &Model::make},
        {"find", &Model::findFormula},    {"worksheet", &Model::worksheet},
        {"label", &Model::label},         {"dates", &Model::dates},
        {"paper", &Model::paper},
    };
    return all;
}

bool Model::run(const QStringList& names, ScreenNumber screen) {
    return std::all_of(names.begin(), names.end(),
                       [&](const QString& name) { return (this->*words().at(name))(screen); });
}

QString Model::captionOf(ScreenNumber screen) {
    for (const ScreenRow& row : screenTable) {
        if (row.number == screen)
            return u"Sorvanto Control Panel: "_s + QString::fromLatin1(row.text);
    }
    return {};
}

void Model::ask(const QString& window, const QString& says, const QString& press, int key) {
    questions.push_back({window, says, press, key});
}

Texts Model::blank(ScreenNumber screen) const {
    Texts texts;
    for (const Box& each : desk::boxes()) {
        if (each.screen == screen)
            texts[each.name] = each.name == "txtfrm_Quantity"_L1 ? u"0"_s : QString();
    }
    return texts;
}

// ---- the window --------------------------------------------------------------------------------------------

void Model::start() {
    for (const ScreenNumber screen : {formulas, chemicals, logs, patients}) {
        screens[screen].record = blank(screen);
        read(screen);
        openAt(screen);
        show(screen);
    }
    screens[chemicals].locked = false;
    switchTo(formulas);
    hear(u"cmdFormulas"_s);
    questions.clear();
}

void Model::switchTo(ScreenNumber screen) {
    onShow = screen;
    caption = captionOf(screen);
}

void Model::hear(const QString& tool) {
    const ScreenNumber screen = onShow;
    m_left = false;
    run(wordsOf(tool, screen), screen);
    if (screen == patients && !m_left)
        show(screen);
    if (m_left)  // the click goes on to the screen that listens now
        run(wordsOf(tool, onShow), onShow);
}

void Model::click(const QString& tool) {
    if (!isOn(tool))
        return;
    if (tool == "cmdOptions"_L1 || tool == "mnuOptions"_L1)
        ask(u"frmOptions"_s, {}, u"cmdCancel"_s);
    if (tool == "mnuAbout"_L1)
        ask(u"frmAbout"_s, {}, {});
    if (tool == "cmdTrace"_L1)
        ask(u"TraceWindow"_s, {}, {});
    if (tool == "cmdNewLot"_L1)
        askNewLot();
    if (tool == "cmdImport"_L1)
        askImport();
    if (const ScreenRow* row = screenOfTool(tool))
        switchTo(row->number);
    if (tool == "txtSearch"_L1)
        return;        // it takes the keyboard
    m_search.clear();  // also that of the search button
    hear(tool);
}

// What is typed, and what a mix still needs, stands in its way.
void Model::askNewLot() {
    const Screen& screen = screens.at(chemicals);
    if (screen.empty || screen.key == 0)
        return;
    if (!screen.typed.isEmpty() || rows.at(chemicals).at(screen.key).value(u"txtchm_Name"_s).isEmpty())
        return tell(u"Save or cancel what you typed first"_s);
    if (mix == Mix::Running || mix == Mix::Waits || !offers.empty())
        return tell(u"A mix is not logged yet"_s);
    if ((mix == Mix::Loaded || m_failed) && lines[mixed.formula].count(screen.key) != 0)
        return tell(u"is in the mixer and not mixed yet"_s);
    ask(u"NewLotWindow"_s, {}, {});
}

void Model::askImport() {
    const Screen& screen = screens.at(chemicals);
    if (!screen.locked && (screen.isNew || !screen.typed.isEmpty()))
        return tell(u"Save or cancel what you have typed first"_s);
    ask(u"QFileDialog"_s, {}, {});
}

void Model::search(const QString& text) {
    if (!isOn(u"txtSearch"_s))
        return;
    m_search = text;
    hear(u"txtSearch"_s);
}

bool Model::isOn(const QString& tool) const {
    if (onShow == currentFormula)
        return isToolOn(tool, onShow, DeskState::Locked);
    const Screen& screen = screens.at(onShow);
    const bool empty = screen.empty && (screen.locked || onShow == formulas || onShow == logs);
    return isToolOn(tool, onShow,
                    empty           ? DeskState::Empty
                    : screen.locked ? DeskState::Locked
                                    : DeskState::Unlocked);
}

void Model::type(const QString& name, const QString& text) {
    Screen& screen = screens.at(onShow);
    if (!isControlOpen(name, onShow, screen.locked))
        return;
    screen.typed[name] = text;
    if (screen.boxes[name] == text)
        screen.typed.remove(name);
}

bool Model::isFree() const { return onShow == currentFormula || screens.at(onShow).typed.isEmpty(); }

// The mixer's line is closed before; of the screens that are open the last one keeps the window.
void Model::quit() {
    ScreenNumber keeps = currentFormula;
    for (const ScreenNumber screen : {formulas, chemicals, logs, patients}) {
        if (!screens[screen].locked)
            keeps = screen;
    }
    for (const ScreenNumber screen : {formulas, chemicals, logs, patients}) {
        if (screens[screen].locked)
            continue;
        const bool stays = screen == keeps || chance(3);
        const QString press = stays ? u"Cancel"_s : canSave(screen) && chance(2) ? u"Yes"_s : u"No"_s;
        askBox(u"data not saved! Save Changes?"_s, press);
        if (press == "Yes"_L1)
            run(screen == logs ? QStringList{"lock", "save"} : QStringList{"save", "old"}, screen);
        else if (screen == chemicals)
            lock(screen);
        if (press == "No"_L1 && screens[screen].locked)
            giveUp(screen);
        if (stays)
            break;
    }
    hear(u"mnuExit"_s);
}

// The text stays in its boxes, and is nobody's typing any more.
void Model::giveUp(ScreenNumber number) {
    Screen& screen = screens[number];
    for (auto typed = screen.typed.begin(); typed != screen.typed.end(); ++typed)
        screen.boxes[typed.key()] = typed.value();
    forget(number);
}

void Model::stayForTheMix() {
    askBox(u"is being mixed"_s, u"No"_s);
    hear(u"mnuExit"_s);
}

}  // namespace desk
