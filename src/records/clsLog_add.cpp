// Writing a finished batch: its signatures, its row of the table Log and its frozen lines. No step undoes
// another: a failure on the way leaves what was written before it.
#include "records/clsLog.h"

#include "history/HistoryChain.h"
#include "history/HistoryDeed.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/data/Engine.h"
#include "platform/data/Transaction.h"
#include "records/BatchBook.h"
#include "records/BatchRecord.h"
#include "records/RecordStatements.h"
#include "records/SigningDialog.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// The mixer makes the lot: the value of the results and the preparation number, joined.
QString lotOf(const XmlDocument& results) {
    return nodeValue(results, u"//Results"_s) + nodeValue(results, u"//Results/PreparationNumber"_s);
}

QString quoted(const QString& text) { return u"'"_s + text + u"', "_s; }

QString doubled(const QString& text) { return quoted(doubledApostrophes(text)); }

/// The piece of a value that comes from the results, which may be missing.
template <class Value>
QString fromResults(const XmlDocumentPtr& results, Value value) {
    return results ? quoted(value(*results)) : u"'',"_s;
}

QString insertHead() {
    QString statement = u"INSERT INTO "_s;
    statement += u" Log ("_s;
    for (const QString& column :
         {u" [FormulaID], "_s, u" [log_Name], "_s, u" [log_Strength], "_s, u" [log_Desc], "_s,
          u" [log_Units], "_s, u" [log_FormType], "_s, u" [log_Quantity], "_s, u" [log_JarSize], "_s,
          u" [log_NDC], "_s, u" [log_Date], "_s, u" [log_Lot], "_s, u" [log_Initials], "_s,
          u" [log_Verified], "_s, u" [log_Results], "_s, u" [log_Version],"_s, u" [log_AWP], "_s,
          u" [log_Cost], "_s, u" [log_Notes], "_s, u" [log_Mix] "_s})
        statement += column;
    statement += u" ) "_s;
    statement += u" VALUES ("_s;
    return statement;
}

/// The values in the order of the columns; what the user did not type directly goes in raw.
QString insertValues(const clsFormula& formula, const SigningDialog& signatures,
                     const XmlDocumentPtr& results, const QDateTime& moment) {
    QString values = quoted(QString::number(formula.FormulaID));
    values += doubled(formula.frm_Name);
    values += doubled(formula.frm_Strength);
    values += doubled(formula.frm_Desc);
    values += doubled(formula.frm_Units);
    values += doubled(QString::number(formula.frm_FormType));
    values += QString::number(formula.makeQuantity()) + u", "_s;
    values += quoted(QString::number(formula.frm_JarSize));
    values += quoted(formula.frm_NDC);
    values += quoted(dateText(moment));
    values += fromResults(results, lotOf);
    values += quoted(signatures.initials());
    values += quoted(signatures.verified());
    values += fromResults(results, [](const XmlDocument& document) { return document.xml(); });
    values += fromResults(results, [](const XmlDocument& document) {
        return nodeValue(document, u"//Results/HardwareVersion"_s);
    });
    values += quoted(formula.frm_AWP.toText());
    values += quoted(formula.frm_Cost.toText());
    values += u"'', "_s;
    values += u"'"_s + deref(formula.frm_Mix).xml() + u"'); "_s;
    return values;
}

/// As the engine reads a text that goes in raw.
QString raw(QString text) { return text.replace("''"_L1, "'"_L1); }

/// What insertValues gives, before it is worded.
LogColumns insertedColumns(const clsFormula& formula, const SigningDialog& signatures,
                           const XmlDocumentPtr& results, const QDateTime& moment) {
    return {{"FormulaID", QString::number(formula.FormulaID)},
            {"log_Name", formula.frm_Name},
            {"log_Strength", formula.frm_Strength},
            {"log_Desc", formula.frm_Desc},
            {"log_Units", formula.frm_Units},
            {"log_FormType", QString::number(formula.frm_FormType)},
            {"log_Quantity", QString::number(formula.makeQuantity())},
            {"log_JarSize", QString::number(formula.frm_JarSize)},
            {"log_NDC", raw(formula.frm_NDC)},
            {"log_Date", dateText(moment)},
            {"log_Lot", results ? raw(lotOf(*results)) : QString()},
            {"log_Initials", raw(signatures.initials())},
            {"log_Verified", raw(signatures.verified())},
            {"log_Results", results ? raw(results->xml()) : QString()},
            {"log_Version", results ? raw(nodeValue(*results, u"//Results/HardwareVersion"_s)) : QString()},
            {"log_AWP", formula.frm_AWP.toText()},
            {"log_Cost", formula.frm_Cost.toText()},
            {"log_Notes", QString()},
            {"log_Mix", raw(deref(formula.frm_Mix).xml())}};
}

/// The journal has the rows before the first of them is written, so that a batch that a failure leaves half
/// written can be completed. Without that, none is.
void takeDown(const clsFormula& formula, const LogColumns& columns) {
    const ConnectionPtr connection = basMain::gConnection;
    if (!batchJournal || !connection || connection->state() != 1)
        return;
    BatchRows rows = rowsToBeWritten(*connection, columns, formula.Chemical.get());
    if (const HistoryHead head = historyHead(connection->engine()); head.count > 0)
        rows.history = toText(head);
    if (!rows.empty())
        batchJournal->takeDown(rows);
}

/// An empty set of the batch's lines that takes new rows.
RecordsetPtr openForLines(std::int32_t log) {
    QString statement = u"SELECT "_s;
    statement += u"LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, "
                 "lch_Supplier, lch_Form, lch_GUID, lch_QTY  "_s;
    statement += u"FROM LogChem "_s;
    statement += u"WHERE (LogID = "_s;
    statement += QString::number(log);
    statement += u")"_s;
    RecordsetPtr lines = Recordset::create();
    lines->open(statement, openDB(), LockType::Optimistic);
    return lines;
}

/// Copies the scaled lines of the formula, each written before the next.
void freezeLines(std::int16_t log, Recordset& from, Recordset& to) {
    if (from.recordCount() == 0)
        return;
    const QStringList taken{u"ChemicalID"_s, u"chm_Name"_s, u"chm_Units"_s, u"chm_Lot"_s,
                            u"chm_NDC"_s,    u"chm_Cost"_s, u"chm_AWP"_s,   u"chm_Supplier"_s,
                            u"chm_Form"_s,   u"chm_GUID"_s, u"fch_Qty"_s};
    const QStringList frozen{u"LogID"_s,        u"ChemicalID"_s, u"lch_Name"_s, u"lch_Units"_s,
                             u"lch_Lot"_s,      u"lch_NDC"_s,    u"lch_Cost"_s, u"lch_AWP"_s,
                             u"lch_Supplier"_s, u"lch_Form"_s,   u"lch_GUID"_s, u"lch_QTY"_s};
    std::vector<std::vector<QVariant>> lines;
    for (from.moveFirst(); !from.eof(); from.moveNext()) {
        lines.push_back({QVariant(static_cast<qint64>(log))});
        for (const QString& name : taken)
            lines.back().push_back(from.value(name));
    }
    to.addRows(frozen, lines);
}

/// A commit for each row, as a file has it, would be two ways to a server and back. There they are one span; what was
/// written before a failure is kept all the same.
class RowsTogether {
public:
    explicit RowsTogether(const Connection& connection) {
        if (connection.engine().isServer())
            m_span.emplace(connection.engine());
    }
    template <class Write>
    auto operator()(Write write) {
        try {
            auto written = write();
            keep();
            return written;
        } catch (const RuntimeError&) {
            keep();
            throw;
        }
    }

private:
    void keep() {
        if (m_span)
            m_span->commit();
    }

    std::optional<Transaction> m_span;
};

}  // namespace

clsLogPtr clsLog::addLog(const XmlDocumentPtr& Formula, const XmlDocumentPtr& Results) {
    return guarded(u"clsLog:addLog"_s, clsLogPtr(), [&]() -> clsLogPtr {
        const auto signatures = makeSigningDialog ? makeSigningDialog() : nullptr;
        deref(signatures).setFormula(Formula);
        signatures->log_Lot(lotOf(deref(Results)));
        signatures->setResults(Results);
        signatures->showModal();
        const clsFormulaPtr formula = signatures->getFormula();
        if (!formula)
            return nullptr;
        // A base batch of 0 has to fail here, before anything is written; the factor itself is not needed.
        static_cast<void>(quotient(formula->makeQuantity(), formula->frm_Quantity));

        const QDateTime moment = now();
        strSQL = insertHead() + insertValues(*formula, *signatures, Results, moment);
        takeDown(*formula, insertedColumns(*formula, *signatures, Results, moment));
        const ConnectionPtr connection = openDB();
        const HistoryDeed deed(connection->engine(), Deed::Signed);
        return RowsTogether(*connection)([&] {
            connection->execute(strSQL);
            const std::int32_t identity = toInt32(lastIdentity());
            auto log = std::make_shared<clsLog>();
            log->openLog(identity, {});
            const RecordsetPtr lines = openForLines(identity);
            freezeLines(log->LogID, deref(formula->Chemical), *lines);
            log->Chemical = lines;
            return log;
        });
    });
}

}  // namespace sorvanto
