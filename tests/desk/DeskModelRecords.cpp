// The words of the click table that are about records, one small function each.
#include "DeskModel.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace desk {

void Model::open(ScreenNumber number, int key) {
    Screen& screen = screens[number];
    const auto found = rows[number].find(key);
    if (found != rows[number].end()) {
        screen.key = key;
        screen.record = found->second;
        return;
    }
    if (number != formulas)
        tell(u"No Records"_s);
    if (number == logs)
        return;  // the batch stays
    screen.key = 0;
    screen.record = blank(number);
}

void Model::openAt(ScreenNumber number) {
    const Screen& screen = screens[number];
    if (screen.set.empty())
        return;
    open(number, screen.set.at(static_cast<std::size_t>(screen.at)));
}

bool Model::first(ScreenNumber number) {
    screens[number].at = 0;
    if (!screens[number].set.empty()) {
        openAt(number);
        show(number);
    }
    return true;
}

bool Model::last(ScreenNumber number) {
    screens[number].at = static_cast<int>(screens[number].set.size()) - 1;
    openAt(number);
    return show(number);
}

bool Model::next(ScreenNumber number) {
    Screen& screen = screens[number];
    screen.at = std::min(screen.at + 1, static_cast<int>(screen.set.size()) - 1);
    openAt(number);
    return show(number);
}

bool Model::previous(ScreenNumber number) {
    screens[number].at = std::max(screens[number].at - 1, 0);
    openAt(number);
    return show(number);
}

std::vector<int> Model::found(ScreenNumber number) const {
    const QString column = number == patients    ? u"txtpat_LName"_s
                           : number == logs      ? u"txtlog_Name"_s
                           : number == chemicals ? u"txtchm_Name"_s
                                                 : u"txtfrm_Name"_s;
    std::vector<int> keys;
    for (const auto& [key, texts] : rows.at(number)) {
        if (!m_search.isEmpty() && texts[column].startsWith(m_search, Qt::CaseInsensitive))
            keys.push_back(key);
    }
    return keys;
}

/// Several come up as a list.
int Model::chooseIn(const std::vector<int>& keys) {
    if (keys.size() < 2)
        return keys.empty() ? 0 : keys.front();
    const int key =
        chance(3) ? 0 : keys.at(static_cast<std::size_t>(m_choose(static_cast<int>(keys.size()))));
    ask(u"frmSearchRS"_s, {}, key == 0 ? u"cmdCancel"_s : u"cmdOK"_s, key);
    return key;
}

bool Model::search(ScreenNumber number) {
    const std::vector<int> keys = found(number);
    const int key = chooseIn(keys);
    if (keys.empty() || key != 0) {
        open(number, key);
    } else if (number != logs) {  // a batch stays on view when the list is left
        screens[number].key = 0;
        screens[number].record = blank(number);
    }
    return true;
}

bool Model::show(ScreenNumber number) {
    Screen& screen = screens[number];
    lose(number);
    screen.boxes = screen.record;
    view(number);
    if (number == patients)
        m_selected = false;
    return showCaption(number);
}

void Model::view(ScreenNumber number) {
    Screen& screen = screens[number];
    screen.viewed = screen.key;
    screen.viewedName = nameOf(number, screen.record);
}

bool Model::showCaption(ScreenNumber number) {
    const Screen& screen = screens[number];
    caption = captionOf(number) + u"  :  "_s + nameOf(number, screen.record) +
              (screen.locked ? QString() : u"  (Edit)"_s);
    return true;
}

QString Model::nameOf(ScreenNumber screen, const Texts& record) const {
    if (screen == patients)
        return record[u"txtpat_LName"_s] + u", "_s + record[u"txtpat_FName"_s];
    return record[screen == formulas    ? u"txtfrm_Name"_s
                  : screen == chemicals ? u"txtchm_Name"_s
                                        : u"txtlog_Name"_s];
}

bool Model::lock(ScreenNumber number) { return screens[number].locked = true; }

bool Model::unlock(ScreenNumber number) {
    screens[number].locked = false;
    return true;
}

bool Model::makeNew(ScreenNumber number) { return screens[number].isNew = true; }

bool Model::noLongerNew(ScreenNumber number) {
    screens[number].isNew = false;
    return true;
}

// The formulas by name, the others in the database's own order.
bool Model::read(ScreenNumber number) {
    Screen& screen = screens[number];
    screen.set.clear();
    for (const auto& row : rows[number])
        screen.set.push_back(row.first);
    if (number == formulas)
        std::stable_sort(screen.set.begin(), screen.set.end(), [&](int a, int b) {
            return rows[number][a][u"txtfrm_Name"_s].compare(rows[number][b][u"txtfrm_Name"_s],
                                                             Qt::CaseInsensitive) < 0;
        });
    screen.at = 0;
    screen.empty = screen.set.empty();
    return true;
}

bool Model::clear(ScreenNumber number) {
    Screen& screen = screens[number];
    lose(number);
    screen.boxes = blank(number);
    if (number != formulas) {
        screen.key = 0;
        screen.record = blank(number);
    }
    view(number);
    return true;
}

bool Model::forget(ScreenNumber number) {
    screens[number].typed.clear();
    view(number);
    return true;
}

bool Model::drop(ScreenNumber number) {
    Screen& screen = screens[number];
    if (!std::exchange(screen.isNew, false) || screen.key != screen.newKey)
        return true;  // the new row may have been left for another
    erase(number, screen.key);
    read(number);
    screen.key = 0;
    screen.record = blank(number);
    openAt(number);
    return true;
}

int Model::newRow(ScreenNumber number, Texts record) {
    const int key = ++lastKey[number];
    for (QString& text : record)
        text = text.trimmed();  // as the statements write texts
    rows[number][key] = std::move(record);
    open(number, key);
    return key;
}

bool Model::add(ScreenNumber number) {
    screens[number].newKey = newRow(number, blank(number));
    return true;
}

bool Model::copy(ScreenNumber number) {
    Texts record = screens[number].record;
    record[u"txtfrm_Name"_s].prepend(u"Copy of "_s);
    const int original = screens[number].key;
    const int key = newRow(number, record);
    lines[key] = lines[original];
    return true;
}

bool Model::isUsed(ScreenNumber number, int key) const {
    if (number == logs)
        return prescribed.count(key) > 0;
    return number == chemicals && std::any_of(lines.begin(), lines.end(),
                                              [&](const auto& made) { return made.second.count(key) > 0; });
}

void Model::erase(ScreenNumber number, int key) {
    rows[number].erase(key);
    if (number == formulas)
        lines.erase(key);
    if (number == patients && key == 1)
        prescribed.clear();
}

bool Model::remove(ScreenNumber number) {
    const Screen& screen = screens[number];
    const bool kept = number == formulas && isMixed(screen.key);
    const bool yes = !kept && chance(2);
    const QString name = nameOf(number, screen.record);
    askBox(u"Delete "_s + name, yes ? u"Yes"_s : chance(2) ? u"No"_s : u"Cancel"_s);
    if (!yes)
        return true;
    if (isUsed(number, screen.key)) {
        tell(u"is currently used"_s);
        return true;
    }
    const bool gone = number != logs || rows[number].count(screen.key) > 0;
    erase(number, screen.key);
    if (!gone)
        return true;
    if (number != patients)
        clear(number);
    first(number);
    return read(number);
}

bool Model::save(ScreenNumber number) {
    Screen& screen = screens[number];
    Texts now = screen.boxes;
    for (auto typed = screen.typed.begin(); typed != screen.typed.end(); ++typed)
        now[typed.key()] = typed.value();
    for (const Box& each : desk::boxes()) {
        const QString text = now.value(each.name);
        if (each.screen == number && *each.needed && (text.isEmpty() || text == "0"_L1)) {
            tell(QString::fromLatin1(each.needed));
            return false;
        }
    }
    rows[number][screen.key] = now;
    screen.record = now;
    forget(number);
    if (number == logs) {
        screen.boxes = now;  // they are not filled anew
        read(number);
        screen.at = static_cast<int>(std::find(screen.set.begin(), screen.set.end(), screen.key) -
                                     screen.set.begin());
        return true;
    }
    return show(number);
}

}  // namespace desk
