// Columns go from what a record is known by to what tells its namesakes apart.
#include "screens/ListedTables.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Values.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

using platform::ListKind;

QString money(const QVariant& value) {
    return platform::withLocalMarks(platform::format(platform::toCurrency(value), u"###,##0.00"_s),
                                    QLocale());
}

/// An entry of a table of names; a code outside of it is shown as it is.
QString entry(const QStringList& table, const QVariant& code) {
    const int place = code.toInt();
    return place >= 0 && place < table.size() ? table[place] : code.toString();
}

/// Without the time of day, by which it still sorts.
QString day(const QVariant& moment) {
    return platform::dateText(QDateTime(moment.toDateTime().date(), QTime(0, 0), Qt::UTC));
}

/// What a batch's results tell about it: 1 stopped before its end, 2 made by the simulated mixer, 3 both.
const QString markOfResults =
    u"CASE WHEN instr(log_Results, '<Interuption Value=\"U\"') > 0 THEN 1 ELSE 0 END"
    " + CASE WHEN instr(log_Results, '<HardwareVersion Value=\"SIM') > 0 THEN 2 ELSE 0 END"_s;

QString mark(const QVariant& code) {
    QStringList words;
    if ((code.toInt() & 1) != 0)
        words << translated(u"interrupted"_s);
    if ((code.toInt() & 2) != 0)
        words << translated(u"simulated"_s);
    return words.join(u", "_s);
}

}  // namespace

ListedTable listedFormulas(const Context& context) {
    const auto jar = [&context](const QVariant& code) { return entry(context.jarSizes, code); };
    const auto mixType = [&context](const QVariant& code) { return entry(context.mixTypes, code); };
    return {u"Formula"_s,
            u"FormulaID"_s,
            {{u"frm_Name"_s, {translated(u"Name"_s)}},
             {u"frm_Strength"_s, {translated(u"Strength"_s), ListKind::Words, 84}},
             {u"frm_FormType"_s, {translated(u"Type"_s), ListKind::Words, 92, mixType}},
             {u"frm_Quantity"_s, {translated(u"Quantity"_s), ListKind::Number, 70}},
             {u"frm_JarSize"_s, {translated(u"Jar"_s), ListKind::Words, 64, jar}},
             {u"frm_NDC"_s, {translated(u"NDC"_s), ListKind::Words, 118}}},
            translated(u"Filter formulas"_s),
            translated(u"Formulas"_s),
            translated(u"Formula %1 of %2"_s),
            translated(u"%1 formula | %1 formulas"_s),
            translated(u"%2 of %1 formula | %2 of %1 formulas"_s)};
}

ListedTable listedChemicals() {
    return {u"Chemical"_s,
            u"ChemicalID"_s,
            {{u"chm_Name"_s, {translated(u"Name"_s)}},
             {u"chm_Lot"_s, {translated(u"Lot"_s), ListKind::Words, 84}},
             {u"chm_NDC"_s, {translated(u"NDC"_s), ListKind::Words, 108}},
             {u"chm_Units"_s, {translated(u"Units"_s), ListKind::Words, 56}},
             {u"chm_Cost"_s, {translated(u"Cost"_s), ListKind::Number, 64, money}},
             {u"chm_AWP"_s, {translated(u"AWP"_s), ListKind::Number, 64, money}},
             {u"chm_Supplier"_s, {translated(u"Supplier"_s), ListKind::Words, 100}}},
            translated(u"Filter chemicals"_s),
            translated(u"Chemicals"_s),
            translated(u"Chemical %1 of %2"_s),
            translated(u"%1 chemical | %1 chemicals"_s),
            translated(u"%2 of %1 chemical | %2 of %1 chemicals"_s)};
}

ListedTable listedLogs() {
    return {u"Log"_s,
            u"LogID"_s,
            {{u"log_Lot"_s, {translated(u"Lot"_s), ListKind::Words, 98}},
             {u"log_Name"_s, {translated(u"Name"_s)}},
             {u"log_Date"_s, {translated(u"Date"_s), ListKind::Date, 86, day}},
             {u"log_Quantity"_s, {translated(u"Quantity"_s), ListKind::Number, 70}},
             {u"log_Initials"_s, {translated(u"Initials"_s), ListKind::Words, 60}},
             {u"log_Verified"_s, {translated(u"Verified"_s), ListKind::Words, 64}},
             {markOfResults, {translated(u"Remark"_s), ListKind::Words, 84, mark}}},
            translated(u"Filter batches"_s),
            translated(u"Logs"_s),
            translated(u"Batch %1 of %2"_s),
            translated(u"%1 batch | %1 batches"_s),
            translated(u"%2 of %1 batch | %2 of %1 batches"_s),
            2,
            Qt::DescendingOrder,
            2};
}

ListedTable listedPatients() {
    return {u"Patient"_s,
            u"PatientID"_s,
            {{u"pat_LName"_s, {translated(u"Last Name"_s)}},
             {u"pat_FName"_s, {translated(u"First Name"_s), ListKind::Words, 120}},
             {u"pat_BDay"_s, {translated(u"Birthdate"_s), ListKind::Date, 92}},
             {u"pat_Phone"_s, {translated(u"Phone"_s), ListKind::Words, 110}},
             {u"pat_City"_s, {translated(u"City"_s), ListKind::Words, 110}}},
            translated(u"Filter patients"_s),
            translated(u"Patients"_s),
            translated(u"Patient %1 of %2"_s),
            translated(u"%1 patient | %1 patients"_s),
            translated(u"%2 of %1 patient | %2 of %1 patients"_s)};
}

}  // namespace sorvanto
