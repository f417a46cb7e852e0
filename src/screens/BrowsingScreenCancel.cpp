// What Cancel throws away can be had back for a while: typed text as a draft is, a new record by adding it once more.
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"
#include "screens/BrowsingScreen.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "shared/databaseInUse.h"

#include <QPointer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

/// The lines are those of a new record, in memory; none for a record that stays.
struct BrowsingScreen::ThrownAway {
    Draft draft;
    bool isNew = false;
    platform::RecordsetPtr lines{};
};

namespace {

/// What a new record's boxes show now and did not when it was added; part of it may have been saved since.
std::vector<DraftField> enteredSince(const std::vector<DraftField>& added, std::vector<DraftField> now) {
    for (DraftField& field : now) {
        const auto before = std::find_if(added.begin(), added.end(),
                                         [&](const DraftField& was) { return was.control == field.control; });
        if (before != added.end())
            field.replaced = before->typed;
    }
    std::erase_if(now, [](const DraftField& field) { return field.typed == field.replaced; });
    return now;
}

platform::RecordsetPtr recordLines(Context& context, const QString& table, const QString& keyColumn,
                                   std::int16_t key) {
    auto lines = platform::Recordset::create();
    lines->open(u"SELECT * FROM %1 WHERE (%2 = %3) ORDER BY %1ID"_s.arg(table, keyColumn).arg(key),
                openDB(context), platform::LockType::Optimistic);
    return lines;
}

/// A record that was never saved has no name but what was typed first.
QString nameOf(const Draft& draft) {
    const QString name = draft.title();
    const bool says =
        std::any_of(name.begin(), name.end(), [](QChar sign) { return sign.isLetterOrNumber(); });
    return says || draft.fields.empty() ? name : draft.fields.front().typed;
}

/// Each line anew, with a key of its own, and of another record.
void addLines(Context& context, platform::Recordset& from, const QString& table, const QString& keyColumn,
              std::int16_t key) {
    const auto to = recordLines(context, table, keyColumn, key);
    for (from.moveFirst(); !from.eof(); from.moveNext()) {
        to->addNew();
        for (int field = 0; field < from.fieldCount(); ++field) {
            const QString name = from.fieldInfo(field).name;
            const bool isKey = name.compare(keyColumn, Qt::CaseInsensitive) == 0;
            const QVariant value = isKey ? QVariant(static_cast<qint64>(key)) : from.value(field);
            if (name.compare(table + u"ID"_s, Qt::CaseInsensitive) != 0 && value.isValid())
                to->setValue(name, value);
        }
        to->update();
    }
}

}  // namespace

std::shared_ptr<BrowsingScreen::ThrownAway> BrowsingScreen::whatCancelThrowsAway() {
    return guarded(tag(u"keepTypedText"_s), std::shared_ptr<ThrownAway>(), [&] {
        auto thrown = std::make_shared<ThrownAway>();
        auto fields = m_drafts.typedTexts();
        if (m_new) {
            fields = enteredSince(m_asAdded, m_drafts.shown());
            if (!m_records.lines.isEmpty())
                thrown->lines =
                    recordLines(m_context, m_records.lines, m_records.key, recordOnView().key)->copy();
        }
        const bool hasLines = thrown->lines && thrown->lines->recordCount() > 0;
        if (fields.empty() && !hasLines)
            return std::shared_ptr<ThrownAway>();
        thrown->draft = m_drafts.draftOf(fields);
        thrown->isNew = m_new;
        return thrown;
    });
}

void BrowsingScreen::announceThrownAway(const std::shared_ptr<ThrownAway>& thrown) {
    if (!thrown)
        return;
    const QString text = thrown->isNew ? translated(u"New record thrown away: \"%1\""_s)
                                       : translated(u"Changes thrown away: \"%1\""_s);
    const auto again = [screen = QPointer<BrowsingScreen>(this), thrown] {
        if (screen)
            screen->haveBack(*thrown);
    };
    announce({QString(text).replace(u"%1"_s, nameOf(thrown->draft)),
              {{translated(u"Bring back"_s), again, true}},
              false});
}

void BrowsingScreen::clickTool(const char* band, const QString& name) const {
    MainWindow& main = platform::deref(m_context.window);
    main.ActiveBar_ToolClick(main.bar().band(QLatin1String(band)).tool(name));
}

void BrowsingScreen::haveBack(const ThrownAway& thrown) {
    guarded(tag(u"bringBack"_s), [&] {
        clickTool("FormBar", m_records.button);
        if (thrown.isNew && isDatabaseInUse(m_context, thrown.draft.database, thrown.draft.identity))
            haveNewRecordBack(thrown);
        else if (thrown.isNew || bringBack(thrown.draft) != DraftFit::Fits)
            m_drafts.offer(thrown.draft);  // to be read
    });
}

// The tool itself adds the record, with all that it asks and refuses.
void BrowsingScreen::haveNewRecordBack(const ThrownAway& thrown) {
    m_new = false;
    clickTool("MainBar", u"cmdNew"_s);
    if (!m_new)
        return m_drafts.offer(thrown.draft);
    if (thrown.lines) {
        guarded(tag(u"bringBack"_s), [&] {
            addLines(m_context, *thrown.lines, m_records.lines, m_records.key, recordOnView().key);
        });
        openRecord(recordOnView().key);
        refreshForm();
    }
    Draft draft = thrown.draft;
    const auto shown = m_drafts.shown();
    std::erase_if(draft.fields, [&](const DraftField& field) {
        return std::any_of(shown.begin(), shown.end(), [&](const DraftField& box) {
            return box.control == field.control && box.typed == field.typed;
        });
    });
    m_drafts.bringBack(draft);
    setMenuOptions();
}

}  // namespace sorvanto
