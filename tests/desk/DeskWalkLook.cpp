// What the model and the windows show, line by line, so that a difference can be read.
#include "DeskWalk.h"

#include "mixer/ctlSorvanto.h"
#include "platform/widgets/CommandBar.h"
#include "screens/BrowsingScreen.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

/// How many texts are kept; one alone is not counted.
QString countText(std::size_t drafts) { return drafts > 1 ? u" (of %1)"_s.arg(drafts) : QString(); }

QString countInWindow(const QWidget& window) {
    const auto* count = support::child<QLabel>(window, "lblDraftCount");
    return count->isVisible() ? u" (of %1)"_s.arg(count->text().section(u' ', -1)) : QString();
}

constexpr ScreenNumber recordScreens[] = {formulas, chemicals, patients, logs};

/// The record on view is the screen's own affair; a class of the family may ask for it.
struct Looker : BrowsingScreen {
    static DraftRecord recordOf(const BrowsingScreen& screen) { return (screen.*(&Looker::recordOnView))(); }
};

const ScreenRow& rowOf(ScreenNumber number) {
    return *std::find_if(screenTable.begin(), screenTable.end(),
                         [&](const ScreenRow& row) { return row.number == number; });
}

/// Both forms of a menu entry.
QStringList allTools() {
    QStringList tools = desk::recordTools();
    for (const QString& tool : desk::recordTools()) {
        if (tool.startsWith("mnu"_L1))
            tools << tool + 'x'_L1;
    }
    return tools;
}

QString screenLine(ScreenNumber number, bool locked, int key, const QStringList& texts, bool marked,
                   const QStringList& open) {
    return u"%1: %2 key %3, %4%5\n  open: %6"_s.arg(
        QString::fromLatin1(rowOf(number).text), locked ? u"locked"_s : u"open"_s, QString::number(key),
        texts.join(u" | "_s), marked ? u"  (marked)"_s : QString(), open.join(u' '));
}

}  // namespace

QString DeskWalk::screenInModel(ScreenNumber number) const {
    const desk::Screen& screen = model.screens.at(number);
    QStringList texts, open;
    for (const desk::Box& box : desk::boxes()) {
        if (box.screen == number)
            texts << screen.typed.value(box.name, screen.boxes.value(box.name));
    }
    for (const auto& [name, isOpen] : m_controls.at(number)) {
        if (desk::isControlOpen(name, number, screen.locked))
            open << name;
    }
    return screenLine(number, screen.locked, screen.key, texts, !screen.typed.isEmpty(), open);
}

QString DeskWalk::screenInWindow(ScreenNumber number) const {
    const auto& onView = screen<BrowsingScreen>(number);
    QStringList texts, open;
    for (const desk::Box& box : desk::boxes()) {
        if (box.screen == number)
            texts << text(number, box.name);
    }
    for (const auto& [name, isOpen] : m_controls.at(number)) {
        if (isOpen)
            open << name;
    }
    return screenLine(number, onView.formLocked(), Looker::recordOf(onView).key, texts,
                      !tool(rowOf(number).button).mark().isEmpty(), open);
}

// Read once for both texts.
void DeskWalk::readControls() {
    for (const ScreenNumber number : recordScreens) {
        auto& controls = m_controls[number];
        controls.clear();
        for (const QString& state : lockStates(number).split('\n', Qt::SkipEmptyParts)) {
            if (!state.startsWith("lnkRecipeChanges"_L1))  // a server has a history of what was seeded, too
                controls.push_back({state.section(':', 0, 0), state.endsWith(": open"_L1)});
        }
    }
}

QString DeskWalk::modelText() const {
    QStringList lines{model.title()}, on;
    for (const QString& tool : allTools()) {
        if (model.isOn(tool.endsWith('x') ? tool.chopped(1) : tool))
            on << tool;
    }
    lines << u"on: "_s + on.join(u' ') << u"pressed: "_s + QLatin1String(rowOf(model.onShow).button);
    for (const ScreenNumber number : recordScreens)
        lines << screenInModel(number);
    lines << u"current: "_s + model.formulaShown
          << u"strip: "_s + model.stripText() + countText(model.drafts.size());
    const bool waits = model.mix == desk::Mix::Waits;
    QStringList offered;
    for (const desk::Batch& offer : model.offers)
        offered << (offer.name.isEmpty() ? u"Unnamed mix"_s : offer.name);
    lines << u"mix: %1%2%3, on offer: %4"_s.arg(model.mix == desk::Mix::Loaded ? u"can start"_s : QString(),
                                                model.mix == desk::Mix::Running ? u"runs"_s : QString(),
                                                waits ? u"waits"_s : QString(), offered.join(u" | "_s));
    return lines.join('\n');
}

QString DeskWalk::windowText() const {
    QStringList lines{caption()}, toolsOn, pressed;
    for (const QString& name : allTools()) {
        if (on(name))
            toolsOn << name;
    }
    for (const ScreenRow& row : screenTable) {
        if (tool(row.button).checked())
            pressed << QLatin1String(row.button);
        EXPECT_EQ(window->screen(row.number)->isVisible(), tool(row.button).checked()) << row.text;
    }
    lines << u"on: "_s + toolsOn.join(u' ') << u"pressed: "_s + pressed.join(u' ');
    for (const ScreenNumber number : recordScreens)
        lines << screenInWindow(number);
    const auto* strip = support::child<QLabel>(*window, "lblDraft");
    lines << u"current: "_s + text(currentFormula, u"txtfrm_Name"_s)
          << u"strip: "_s + (strip->isVisible() ? strip->text() + countInWindow(*window) : QString());
    const bool waiting = waits();
    QStringList offered;
    for (const QString& offer : offers())
        offered << offer.section(u" \u00B7 "_s, 0, 0);
    lines << u"mix: %1%2%3, on offer: %4"_s.arg(panelButton("mixerStart")->isEnabled() ? u"can start"_s
                                                                                       : QString(),
                                                panelButton("mixerStop")->isVisible() ? u"runs"_s : QString(),
                                                waiting ? u"waits"_s : QString(), offered.join(u" | "_s));
    return lines.join('\n');
}

QString DeskWalk::rowsInModel() const {
    QStringList lines;
    for (const ScreenNumber number : recordScreens) {
        for (const auto& [key, texts] : model.rows.at(number)) {
            QStringList row{QLatin1String(desk::tableOf(number)), QString::number(key)};
            for (const desk::Box& box : desk::boxes()) {
                if (box.screen == number)
                    row << texts.value(box.name);
            }
            lines << row.join('|');
        }
    }
    for (const auto& [formula, chemicalKeys] : model.lines) {
        for (const int chemical : chemicalKeys)
            lines << u"line|%1|%2"_s.arg(formula).arg(chemical);
    }
    for (const int log : model.prescribed)
        lines << u"rx|%1"_s.arg(log);
    return lines.join('\n');
}

QString DeskWalk::rowsInFile() const {
    QStringList rows;
    const auto read = [&](const QString& statement) {
        rows << sqlText(statement).split('\n', Qt::SkipEmptyParts);
    };
    for (const ScreenNumber number : recordScreens) {
        QString reading = u"SELECT '%1', %2"_s.arg(QLatin1String(desk::tableOf(number)),
                                                   QLatin1String(desk::keyOf(number)));
        for (const desk::Box& box : desk::boxes()) {
            if (box.screen == number)
                reading += u", "_s + QLatin1String(box.column);
        }
        read(reading + u" FROM %1 ORDER BY 2"_s.arg(QLatin1String(desk::tableOf(number))));
    }
    read(u"SELECT 'line', FormulaID, ChemicalID FROM FormChem ORDER BY 2, 3"_s);
    read(u"SELECT 'rx', LogID FROM RXs ORDER BY 2"_s);
    return rows.join('\n');
}

// The walk begins with what stands in the file.
void DeskWalk::readRows() {
    for (const ScreenNumber number : recordScreens) {
        model.rows[number].clear();
        model.lastKey[number] = 0;
    }
    for (const QString& row : rowsInFile().split('\n')) {
        const QStringList cells = row.split('|');
        if (cells[0] == "line"_L1) {
            model.lines[cells[1].toInt()].insert(cells[2].toInt());
            continue;
        }
        if (cells[0] == "rx"_L1) {
            model.prescribed.insert(cells[1].toInt());
            continue;
        }
        for (const ScreenNumber number : recordScreens) {
            if (cells[0] != QLatin1String(desk::tableOf(number)))
                continue;
            qsizetype cell = 2;
            for (const desk::Box& box : desk::boxes()) {
                if (box.screen == number)
                    model.rows[number][cells[1].toInt()][box.name] = cells[cell++];
            }
            model.lastKey[number] = std::max(model.lastKey[number], cells[1].toInt());
        }
    }
}
