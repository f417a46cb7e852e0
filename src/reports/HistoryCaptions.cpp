#include "reports/HistoryCaptions.h"

#include "history/HistoryDeed.h"
#include "platform/basic/Dates.h"
#include "platform/report/Report.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

struct Caption {
    QLatin1String column;
    const char* english;
};

constexpr Caption captions[] = {
    {"chm_Name"_L1, "Chemical Name"},
    {"chm_Units"_L1, "Unit of Measure"},
    {"chm_Lot"_L1, "Lot Number"},
    {"chm_NDC"_L1, "NDC"},
    {"chm_Cost"_L1, "Cost per Unit"},
    {"chm_AWP"_L1, "AWP per Unit"},
    {"chm_Notes"_L1, "Notes"},
    {"chm_Form"_L1, "Chemical Form"},
    {"chm_Supplier"_L1, "Supplier"},
    {"frm_Name"_L1, "Formula Name"},
    {"frm_Desc"_L1, "Description"},
    {"frm_Strength"_L1, "Strength"},
    {"frm_Units"_L1, "Units"},
    {"frm_Instructions"_L1, "Mix Notes"},
    {"frm_Quantity"_L1, "Quantity"},
    {"frm_JarSize"_L1, "Jar Size"},
    {"frm_FormType"_L1, "Formula Type"},
    {"frm_AWP"_L1, "AWP"},
    {"frm_NDC"_L1, "Formula NDC"},
    {"frm_Mix"_L1, "Mix settings"},
    {"fch_Qty"_L1, "Qty"},
    {"fch_QS"_L1, "QS"},
    {"fch_Active"_L1, "Active"},
    {"log_Name"_L1, "Formula Name"},
    {"log_Strength"_L1, "Strength"},
    {"log_Desc"_L1, "Description"},
    {"log_Units"_L1, "Units"},
    {"log_FormType"_L1, "Formula Type"},
    {"log_Quantity"_L1, "Quantity"},
    {"log_JarSize"_L1, "Jar Size"},
    {"log_NDC"_L1, "NDC"},
    {"log_Date"_L1, "Date"},
    {"log_Lot"_L1, "Lot #"},
    {"log_Initials"_L1, "Logged"},
    {"log_Verified"_L1, "Verified"},
    {"log_AWP"_L1, "AWP"},
    {"log_Cost"_L1, "Cost"},
    {"log_Notes"_L1, "Log Notes"},
    {"log_Mix"_L1, "Mix settings"},
    {"lch_Name"_L1, "Name"},
    {"lch_Units"_L1, "Units"},
    {"lch_Lot"_L1, "Lot"},
    {"lch_NDC"_L1, "NDC"},
    {"lch_Cost"_L1, "Cost"},
    {"lch_AWP"_L1, "AWP"},
    {"lch_Supplier"_L1, "Supplier"},
    {"lch_QTY"_L1, "Qty"},
    {"pat_FName"_L1, "First Name"},
    {"pat_LName"_L1, "Last Name"},
    {"pat_Address1"_L1, "Address"},
    {"pat_City"_L1, "City"},
    {"pat_State"_L1, "State"},
    {"pat_Zip"_L1, "Zip Code"},
    {"pat_Country"_L1, "Country"},
    {"pat_BDay"_L1, "Birthdate"},
    {"pat_Phone"_L1, "Phone"},
    {"pat_Fax"_L1, "Fax"},
    {"pat_Notes"_L1, "Notes"},
    {"rxs_Date"_L1, "Date"},
    {"rxs_QTY"_L1, "Qty"},
    {"rxs_Cost"_L1, "Cost"},
    {"rxs_Price"_L1, "Price"},
    {"rxs_Consult"_L1, "Consult"},
    {"rxs_Doctor"_L1, "Doctor"},
};

QString entryOf(const QStringList& table, const QVariant& index) {
    const QString entry = table.value(index.toInt());
    return entry.isEmpty() ? index.toString() : entry;
}

/// "Camphor · L3", as they were at that change. What came after it is known by its number: a clock may be set back.
QString chemicalText(platform::Engine& database, const QVariant& key, std::int64_t change) {
    const QString table = u"Chemical"_s;
    const qint64 number = key.toLongLong();
    std::vector<HistoryEntry> later = historyOf(database, table, number);
    std::erase_if(later, [&](const HistoryEntry& entry) { return entry.number < change; });
    const std::vector<PastRow> then =
        recordAsOf(database, table, number, later, QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
    if (then.empty())
        return key.toString();
    const auto& values = then.front().values;
    QStringList parts{values.value(u"chm_Name"_s).toString(), values.value(u"chm_Lot"_s).toString()};
    parts.removeAll(QString());
    return parts.join(u" · "_s);
}

/// That a line takes another chemical; of one that is made or deleted its name says which.
bool isOtherChemical(const HistoryEntry& entry, const HistoryField& field) {
    return entry.table == "FormChem"_L1 && entry.what == "changed"_L1 && field.name == "ChemicalID"_L1;
}

}  // namespace

QString historyCaption(const QString& column) {
    if (column == "pat_Address2"_L1)
        return translated(u"Address"_s) + u" 2"_s;
    const auto* found = std::find_if(std::begin(captions), std::end(captions),
                                     [&](const Caption& caption) { return caption.column == column; });
    return found == std::end(captions) ? QString() : translated(QString::fromLatin1(found->english));
}

QString historyValue(const Context& context, const QString& column, const QVariant& value) {
    if (!value.isValid())
        return {};
    if (column.endsWith("_Mix"_L1))
        return u"…"_s;  // a document
    if (column.endsWith("_JarSize"_L1))
        return entryOf(context.jarSizes, value);
    if (column.endsWith("_FormType"_L1))
        return entryOf(context.mixTypes, value);
    if (column == "fch_QS"_L1 || column == "fch_Active"_L1)
        return translated(value.toInt() != 0 ? u"Yes"_s : u"No"_s);
    if (const QDateTime date = platform::fromStoredDate(value.toString());
        date.isValid() && (column.endsWith("Date"_L1) || column.endsWith("BDay"_L1)))
        return platform::dateText(date);
    return value.userType() == QMetaType::Double ? platform::shownText(value.toDouble(), QString())
                                                 : value.toString();
}

QString historyDeed(const HistoryEntry& entry) {
    const QString& what = entry.what;
    if (entry.deed == deedText(Deed::Signed))
        return translated(u"signed"_s);
    if (entry.deed == deedText(Deed::Imported) && entry.note.isEmpty())
        return translated(u"imported"_s);
    if (entry.deed == deedText(Deed::Imported))
        return translated(u"imported from %1"_s).replace(u"%1"_s, entry.note);
    if (entry.deed == deedText(Deed::Restored))
        return translated(u"restored"_s);
    if (entry.deed == deedText(Deed::NewLot))
        return translated(u"new lot of %1"_s).replace(u"%1"_s, entry.note);
    if (what == "made"_L1)
        return translated(u"made"_s);
    if (what == "changed"_L1)
        return translated(u"changed"_s);
    if (what == "deleted"_L1)
        return translated(u"deleted"_s);
    if (what == "begun"_L1)
        return translated(u"begun"_s);
    if (what == "restored"_L1)
        return translated(u"restored"_s);
    if (what.startsWith("archive"_L1))
        return translated(u"archived"_s);
    return translated(u"blanked"_s);
}

QString historyKind(const QString& table) {
    if (table == "Chemical"_L1)
        return translated(u"Chemical"_s);
    if (table == "Formula"_L1)
        return translated(u"Formula"_s);
    if (table == "FormChem"_L1)
        return translated(u"Ingredient"_s);
    if (table == "Log"_L1)
        return translated(u"Batch"_s);
    if (table == "LogChem"_L1)
        return translated(u"Ingredient of a batch"_s);
    if (table == "Patient"_L1)
        return translated(u"Patient"_s);
    return table == "RXs"_L1 ? translated(u"Prescription"_s) : QString();
}

QDateTime historyClock(const HistoryEntry& entry) {
    return QDateTime(entry.moment.date(), entry.moment.time(), Qt::UTC);
}

QString historyPerson(const QString& person) {
    return person.isEmpty() ? translated(u"another program"_s) : person;
}

HistoryLine historyLine(const Context& context, platform::Engine& database, const HistoryEntry& entry,
                        const HistoryField& field) {
    if (isOtherChemical(entry, field))
        return {translated(u"Ingredient"_s), chemicalText(database, field.before, entry.number),
                chemicalText(database, field.after, entry.number)};
    const bool deleted = entry.what == "deleted"_L1;
    HistoryLine line{historyCaption(field.name),
                     historyValue(context, field.name, deleted ? field.after : field.before),
                     deleted ? QString() : historyValue(context, field.name, field.after)};
    if (entry.what != "changed"_L1 && line.before.isEmpty() && line.after.isEmpty())
        line.caption.clear();
    return line;
}

std::vector<QStringList> historyLines(const Context& context, platform::Engine& database,
                                      const HistoryEntry& entry) {
    QStringList record{historyKind(entry.table), entry.name};
    record.removeAll(QString());
    QStringList head{platform::dateText(historyClock(entry)),
                     entry.table.isEmpty() ? entry.person : historyPerson(entry.person), historyDeed(entry),
                     record.join(u": "_s)};
    std::vector<QStringList> lines;
    for (const HistoryField& field : entry.fields) {
        const HistoryLine line = historyLine(context, database, entry, field);
        if (line.caption.isEmpty())
            continue;
        lines.push_back(head + QStringList{line.caption, line.before, line.after});
        head = {QString(), QString(), QString(), QString()};
    }
    if (lines.empty())
        lines.push_back(head + QStringList{QString(), QString(), QString()});
    return lines;
}

}  // namespace sorvanto
