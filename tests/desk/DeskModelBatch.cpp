// The words of the click table that are about a batch, what its mix does, and drafts.
#include "DeskModel.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace desk {

// ---- the way of a batch ------------------------------------------------------------------------------------

bool Model::handOver(ScreenNumber number) {
    hasFormula = true;
    formula = screens[number].key;
    formulaName = nameOf(number, screens[number].record);
    show(number);
    switchTo(currentFormula);
    m_left = true;
    return false;
}

bool Model::prescribe(ScreenNumber) {
    if (!hasPrescription()) {
        tell(u"No prescriptions"_s);
        return true;
    }
    if (!m_selected) {
        tell(u"You must select a prescription."_s);
        return true;
    }
    constexpr int ofTheBatch = 1;
    const auto found = rows[formulas].find(ofTheBatch);
    hasFormula = true;
    formula = found == rows[formulas].end() ? 0 : ofTheBatch;
    formulaName = formula == 0 ? QString() : nameOf(formulas, found->second);
    switchTo(currentFormula);
    m_left = true;
    return false;
}

bool Model::findFormula(ScreenNumber) {
    hasFormula = true;
    formula = chooseIn(found(formulas));
    formulaName = formula == 0 ? QString() : nameOf(formulas, rows[formulas][formula]);
    return true;
}

bool Model::make(ScreenNumber) {
    formulaShown = formulaName;
    if (formula <= 0)
        return true;
    const bool yes = hasBaseBatch(formula) && !chance(3);
    ask(u"frmMake"_s, {}, yes ? u"OKButton"_s : u"CancelButton"_s);
    if (!yes)
        return true;
    formulaName = formulaShown = nameOf(formulas, rows[formulas][formula]);
    if (mix == Mix::Running || mix == Mix::Waits)
        return true;  // the panel says that the mixer is busy
    mix = Mix::Loaded;
    m_failed = false;
    mixed = {formula, formulaName};
    return true;
}

bool Model::hasBaseBatch(int formulaKey) const {
    const auto found = rows.at(formulas).find(formulaKey);
    return found != rows.at(formulas).end() && found->second[u"txtfrm_Quantity"_s] != "0"_L1;
}

bool Model::worksheet(ScreenNumber) {
    ask(u"frmMake"_s, {}, u"CancelButton"_s);
    return true;
}

bool Model::paper(ScreenNumber) {
    if (!hasFormula)
        tell(u"No Formula selected!"_s);
    return true;
}

bool Model::label(ScreenNumber number) {
    if (number == patients && !hasPrescription())
        tell(u"No records"_s);
    else
        ask(u"frmSelPrint"_s, {}, {});
    return true;
}

bool Model::dates(ScreenNumber) {
    ask(u"frmReportDate"_s, {}, u"cmdCancel"_s);
    return true;
}

bool Model::isMixed(int key) const {
    return (mix != Mix::None && mixed.formula == key) ||
           std::any_of(offers.begin(), offers.end(),
                       [&](const Batch& offer) { return offer.formula == key; });
}

void Model::mixFails() {
    mix = Mix::None;
    m_failed = true;
}

void Model::rest() {
    if (mix == Mix::Waits && isFree())
        signMix();
}

// It keeps its place while it is not signed.
void Model::logOffer(std::size_t at) {
    if (sign(offers.at(at).formula))
        offers.erase(offers.begin() + static_cast<std::ptrdiff_t>(at));
}

void Model::signMix() {
    mix = Mix::None;
    if (!sign(mixed.formula))
        offers.push_back(mixed);
}

// Signed or not, the formulas come on show; the batches are passed through with the new one. It is logged under
// the name that the formula bears by then.
bool Model::sign(int key) {
    const QString name = nameOf(formulas, rows[formulas][key]);
    const bool yes = !chance(3);
    ask(u"frmInitials"_s, name, yes ? u"cmdOK"_s : u"cmdCancel"_s);
    if (yes) {
        newRow(logs, {{u"txtlog_Name"_s, name}, {u"txtlog_Initials"_s, u"RK"_s}, {u"txtlog_Notes"_s, {}}});
        read(logs);
        show(logs);
        switchTo(logs);
        hear(u"cmdLogs"_s);
    }
    switchTo(formulas);
    hear(u"cmdFormulas"_s);
    return yes;
}

// ---- drafts ------------------------------------------------------------------------------------------------

void Model::lose(ScreenNumber number) {
    Screen& screen = screens[number];
    if (screen.typed.isEmpty())
        return;
    Draft draft{++m_draftIds, number, screen.viewed, screen.viewedName, screen.typed, {}};
    for (auto typed = screen.typed.begin(); typed != screen.typed.end(); ++typed)
        draft.replaced[typed.key()] = screen.boxes[typed.key()];
    drafts.insert(drafts.begin(), draft);
    screen.typed.clear();
}

QString Model::stripText() const {
    if (drafts.empty())
        return {};
    const Draft& draft = drafts.front();
    static const QRegularExpression letters(u"[A-Za-z0-9]"_s);
    QString title = draft.name;
    for (const Box& each : desk::boxes()) {  // of a record without a name the first text
        if (!title.contains(letters) && each.screen == draft.screen)
            title = draft.typed.value(each.name);
    }
    const bool deleted = rows.at(draft.screen).count(draft.key) == 0;
    return u"Unsaved text of \"%1\" was %2"_s.arg(title, deleted ? u"kept. The record has been deleted."_s
                                                                 : u"replaced."_s);
}

bool Model::isReplacedStill(const Draft& draft) const {
    const Screen& screen = screens.at(draft.screen);
    for (auto text = draft.replaced.begin(); text != draft.replaced.end(); ++text) {
        const QString now = screen.boxes[text.key()];
        if (now != text.value() && now != draft.typed[text.key()])
            return false;
    }
    const bool named = draft.screen == formulas || draft.screen == chemicals;  // these bear a GUID
    return named || nameOf(draft.screen, screen.record) == draft.name;
}

void Model::bringBack() {
    const Draft draft = drafts.front();
    if (draft.tried || rows.at(draft.screen).count(draft.key) == 0)
        return;  // it can be read
    switchTo(draft.screen);
    for (const ScreenRow& row : screenTable) {
        if (row.number == draft.screen)
            hear(QString::fromLatin1(row.button));
    }
    Screen& screen = screens[draft.screen];
    screen.isNew = false;
    screen.locked = true;
    open(draft.screen, draft.key);
    show(draft.screen);
    if (!isReplacedStill(draft)) {
        for (Draft& each : drafts)
            each.tried = each.tried || each.id == draft.id;
        return;
    }
    unlock(draft.screen);
    show(draft.screen);
    for (auto text = draft.typed.begin(); text != draft.typed.end(); ++text) {
        if (screen.boxes[text.key()] != text.value())
            screen.typed[text.key()] = text.value();
    }
    std::erase_if(drafts, [&](const Draft& other) { return other.id == draft.id; });
}

}  // namespace desk
