// The row of the table Log with its frozen lines: finding, signing off, deleting.
// The writing of a new batch stands in clsLog_add.cpp.
#include "records/clsLog.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
#include "records/BatchBook.h"
#include "records/BatchRecord.h"
#include "records/LogSearch.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// Reads the row the set stands on into the object, by position and in order: a NULL date
/// ends it half filled.
void readLog(clsLog& log, const Recordset& row) {
    log.LogID = nullInt16(row.value(0));
    log.log_Lot = nullText(row.value(1));
    log.log_Date = toDate(nullText(row.value(2)));
    log.log_Name = nullText(row.value(3));
    log.log_Quantity = nullInt16(row.value(4));
    log.log_JarSize = nullInt16(row.value(5));
    log.log_NDC = nullText(row.value(6));
    log.log_Cost = nullCurrency(row.value(7));
    log.log_AWP = nullCurrency(row.value(8));
    log.log_Initials = nullText(row.value(9));
    log.log_Verified = nullText(row.value(10));
    log.log_Results->loadXML(nullText(row.value(11)));
    log.log_Mix->loadXML(nullText(row.value(12)));
    log.log_Version = nullText(row.value(13));
    log.log_Notes = nullText(row.value(14));
    log.log_Desc = nullText(row.value(15));
    log.log_Strength = nullText(row.value(16));
    log.log_Units = nullText(row.value(17));
    log.log_FormType = nullInt16(row.value(18));
    log.FormulaID = nullInt16(row.value(19));
}

QString logLines(std::int32_t log) {
    QString statement = u"SELECT "_s;
    statement += u"LogChem.lch_Name, LogChem.lch_QTY, LogChem.lch_Lot, "_s;
    statement += u"LogChem.lch_Cost, LogChem.lch_AWP, LogChem.lch_NDC, LogChem.lch_Supplier, "_s;
    statement += u"LogChem.lch_Form, LogChem.lch_Units, LogChem.LogChemID, Chemical.chm_Notes "_s;
    statement += u"FROM LogChem LEFT OUTER JOIN Chemical ON Chemical.ChemicalID = "_s;
    statement += u"LogChem.ChemicalID "_s;
    statement += u"WHERE "_s;
    statement += u"(((LogID)= "_s + QString::number(log) + u"));"_s;
    return statement;
}

/// The journal knows of a deletion before it happens, so that the batch is not offered again; unless it
/// happened, the note goes with this object.
class DeletionNote {
public:
    explicit DeletionNote(std::int16_t key) {
        const ConnectionPtr connection = openDB();
        if (batchJournal && connection->state() == 1)
            batchJournal->noteDeletion(storedBatch(*connection, key));
    }
    ~DeletionNote() {
        if (batchJournal && !m_deleted)
            guarded(u"clsLog:deleteLog"_s, [] { batchJournal->undoDeletion(); });
    }
    DeletionNote(const DeletionNote&) = delete;
    DeletionNote& operator=(const DeletionNote&) = delete;

    bool kept(bool deleted) {
        m_deleted = deleted;
        return deleted;
    }

private:
    bool m_deleted = false;
};

}  // namespace

clsLog::clsLog() : log_Results(XmlDocument::create()), log_Mix(XmlDocument::create()) {}

clsLogPtr clsLog::copy() const {
    auto copied = std::make_shared<clsLog>(*this);
    copied->log_Results = deref(log_Results).cloneDeep();
    copied->log_Mix = deref(log_Mix).cloneDeep();
    return copied;
}

void clsLog::openLog(std::int32_t key, const QString& Search) {
    guarded(u"clsLog:openLog"_s, [&] {
        strSQL = logSearch(LogSearch::OfLog, Search, QString::number(key));
        std::vector<ReadAhead::Set> lists;
        if (Search.isEmpty())
            lists.push_back({logLines(key)});
        const ReadAhead rest(basMain::gConnection, lists);
        const RecordsetPtr rows = openLogSearch(strSQL);
        chooseRow(rows, u"LogID"_s);
        if (!rows->eof())
            readLog(*this, *rows);
        rows->close();
        strSQL = logLines(key);  // of the argument, also after a search
        Chemical = openEditableList(strSQL);
    });
}

bool clsLog::saveLog(const clsLogPtr& Log) {
    return guarded(u"clsLog:saveLog"_s, false, [&] {
        const clsLog& log = deref(Log);
        strSQL = u"UPDATE [Log] SET "_s;
        strSQL += u"[log_Initials] = '"_s + userText(log.log_Initials) + u"',"_s;
        strSQL += u"[log_Verified] = '"_s + userText(log.log_Verified) + u"',"_s;
        strSQL += u"[log_Notes] = '"_s + userText(log.log_Notes) + u"'"_s;
        strSQL += u" WHERE [LogID] = "_s + QString::number(log.LogID);
        return openDB()->execute(strSQL) > 0;
    });
}

bool clsLog::deleteLog(const clsLogPtr& Log) {
    return guarded(u"clsLog:deleteLog"_s, false, [&] {
        const clsLogPtr held = Log;  // the screen may show another one when the question is answered
        const clsLog& log = deref(held);
        if (!confirmedDeletion(translated(u"%1 %2 ?"_s), log.log_Name))
            return false;
        strSQL = u"DELETE FROM "_s;
        strSQL += u"[Log] WHERE "_s;
        strSQL += u"(LogID = "_s + QString::number(log.LogID) + u");"_s;
        DeletionNote note(log.LogID);
        try {
            return note.kept(openDB()->execute(strSQL) > 0);
        } catch (const RuntimeError& failure) {
            if (!isRefusedRelation(failure))
                throw;
            tellRefusal(log.log_Name, u"is currently used in a prescription,\rit can not be deleted."_s);
            return false;
        }
    });
}

}  // namespace sorvanto
