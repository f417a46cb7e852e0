// The values of an earlier day in the boxes of today's record: typed as the user would, and saved by nobody but him.
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"
#include "screens/BoxText.h"
#include "screens/BoxValue.h"
#include "screens/BrowsingScreen.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr qsizetype mostLinesNamed = 8;

QString namedLines(const QStringList& lines) {
    const QString named = lines.mid(0, mostLinesNamed).join(u"; "_s);
    return lines.size() > mostLinesNamed ? named + u"; …"_s : named;
}

}  // namespace

// The tool itself unlocks the record, with all that it refuses.
bool BrowsingScreen::unlockedFor(std::int64_t key) {
    if (m_locked && recordOnView().key == key)
        clickTool("MainBar", u"cmdEdit"_s);
    return !m_locked && recordOnView().key == key;
}

std::vector<DraftField> BrowsingScreen::fieldsOf(const PastValues& past) const {
    const std::vector<DraftField> typed = m_drafts.typedTexts();
    std::vector<DraftField> fields;
    for (DraftField& field : m_drafts.shown()) {
        const QString column = columnOfBox(field.control);
        const auto sameColumn = [&](const QString& name) { return name.toLower() == column; };
        const auto columns = past.then.keys();
        const auto found = std::find_if(columns.begin(), columns.end(), sameColumn);
        const auto* box = findChild<QWidget*>(field.control);
        const bool isTyped = std::any_of(typed.begin(), typed.end(), [&](const DraftField& other) {
            return other.control == field.control;
        });
        if (!box || found == columns.end() || (!past.changed.contains(*found) && !isTyped))
            continue;
        const auto text = boxTextOf(m_context, *box, column, past.then.value(*found));
        if (text && *text != field.typed) {
            field.typed = *text;
            fields.push_back(field);
        }
    }
    return fields;
}

void BrowsingScreen::useValues(const PastValues& past) {
    guarded(tag(u"useValues"_s), [&] {
        if (!unlockedFor(past.key))
            return announce(translated(u"Choose Edit on the record first: it can not be changed now."_s));
        const std::vector<DraftField> fields = fieldsOf(past);
        m_drafts.type(fields);
        const bool others = fillPastParts(past);
        QString text =
            (fields.empty() && !others ? translated(u"The boxes show the values of %1 already."_s)
                                       : translated(u"Filled in as it was on %1; nothing is saved yet."_s))
                .replace(u"%1"_s, past.day);
        if (!past.lines.isEmpty())
            text += u' ' + translated(u"These lines differ and are changed by hand: %1"_s)
                               .replace(u"%1"_s, namedLines(past.lines));
        announce({text, {}, !past.lines.isEmpty()});
    });
}

}  // namespace sorvanto
