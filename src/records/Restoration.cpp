#include "records/Restoration.h"

#include "history/HistoryDeed.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Transaction.h"
#include "records/BatchBook.h"
#include "records/BatchRecord.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// Within the transaction, so that the journal never says more than the log holds. What the engine then does not keep is
/// noted as deleted again.
class JournalNote {
public:
    JournalNote(const platform::Connection& connection, const DeletedRecord& deleted) {
        if (!batchJournal || deleted.table != "Log"_L1)
            return;
        m_rows = storedBatch(connection, deleted.key);
        batchJournal->noteRestored(*m_rows);
    }
    ~JournalNote() {
        if (!m_rows || m_kept)
            return;
        try {
            batchJournal->noteDeletion(*m_rows);
        } catch (const platform::RuntimeError&) {
        }
    }
    JournalNote(const JournalNote&) = delete;
    JournalNote& operator=(const JournalNote&) = delete;
    void keep() { m_kept = true; }

private:
    std::optional<BatchRows> m_rows;
    bool m_kept = false;
};

}  // namespace

DeletedRecord aboutToDelete(const Context& context, const QString& table, std::int64_t key) {
    const auto connection = context.connection;
    return {table, key, connection && connection->state() == 1 ? lastHistoryRow(connection->engine()) : 0};
}

Restored takeBackDeletion(Context& context, const DeletedRecord& deleted) {
    const auto connection = openDB(context);
    if (lastHistoryRow(connection->engine()) == 0)
        return Restored::NotInHistory;
    // Another bench can only have taken the key or the record that a row belongs to, and the server refuses both by itself.
    platform::Transaction transaction(connection->engine(), u"Undo"_s);
    const HistoryDeed deed(connection->engine(), Deed::Restored);
    const Restored result = addDeletedRows(connection->engine(), deleted);
    if (result != Restored::Whole)
        return result;
    JournalNote note(*connection, deleted);
    transaction.commit();
    note.keep();
    return result;
}

QString restoredText(Restored result, const QString& name) {
    const auto say = [&](const QString& text) { return translated(text).replace(u"%1"_s, name); };
    switch (result) {
    case Restored::Whole:
        return say(u"%1 restored"_s);
    case Restored::KeyTaken:
        return say(u"%1 can not be restored: another record has its number now."_s);
    case Restored::RelationGone:
        return say(u"%1 can not be restored: a record that it belongs to or uses is no longer there."_s);
    case Restored::ReadingOnly:
        return say(u"%1 can not be restored: the database is open for reading only."_s);
    case Restored::NotInHistory:
    case Restored::Unfaithful:
        break;
    }
    return say(u"%1 can not be restored: the history does not hold all of it."_s);
}

}  // namespace sorvanto
