// Fields of a batch search: 0 key, 1 lot, 2 date, 3 name, 4 quantity, 5 jar, 6 NDC, 7 cost, 8 AWP (the other
// way round for a prescription), 9 initials, 10 verifier, 11 results, 12 mix, 13 version, 14 notes,
// 15 description, 16 strength, 17 units, 18 type, 19 formula.
#include "records/LogSearch.h"

#include "records/SearchText.h"
#include "shared/Translator.h"

namespace sorvanto {

namespace {

QString column(const QString& name, const QString& alias) { return ", Log." + name + " as [" + alias + "]"; }

QString jarAlias(LogSearch use) {
    QString alias = translated("JarSize");
    if (use == LogSearch::OfPrescription)
        alias.remove(u'(').remove(u')');
    return alias;
}

QString costAndAwp(LogSearch use) {
    const QString cost = column("log_Cost", translated("Cost"));
    const QString awp = column("log_AWP", translated("AWP"));
    return use == LogSearch::OfLog ? cost + awp : awp + cost;
}

QString columns(LogSearch use) {
    QString text = "Log.LogID";
    text += column("log_Lot", translated("Lot"));
    text += column("log_Date", translated("DateLogged"));
    text += column("log_Name", translated("FormulaName"));
    text += column("log_Quantity", translated("Quantity"));
    text += column("log_JarSize", jarAlias(use));
    text += column("log_NDC", translated("NDC"));
    text += costAndAwp(use);
    text += column("log_Initials", translated("Initials"));
    text += column("log_Verified", translated("Verified"));
    text += column("log_Results", translated("Results"));
    text += column("log_Mix", translated("Mix"));
    // The "c" stands before the word alone, in front of any translation.
    text += column("log_Version", (use == LogSearch::OfLog ? "c" : "") + translated("Version"));
    text += column("log_Notes", translated("Notes"));
    text += column("log_Desc", translated("Description"));
    text += column("log_Strength", translated("Strength"));
    text += column("log_Units", translated("Units"));
    text += column("log_FormType", translated("FormulaType"));
    text += ", Log.FormulaID ";
    return text;
}

QString filter(QString& search, const QString& keyText) {
    switch (searchByFirst(search, {u'#', u'?'})) {
    case SearchBy::Key:
        return "WHERE ([Log.LogID] = " + keyText + ")";
    case SearchBy::Code:
        return likeFilter("Log.log_NDC", search);
    case SearchBy::Lot:
        return likeFilter("Log.log_Lot", search);
    case SearchBy::Name:
        break;
    }
    return likeFilter("Log.log_Name", search);
}

}  // namespace

QString logSearch(LogSearch use, QString search, const QString& keyText) {
    QString statement = "SELECT ";
    statement += columns(use);
    statement += "FROM Log ";
    statement += filter(search, keyText);
    statement += " ORDER BY Log.log_Date DESC;";
    return statement;
}

}  // namespace sorvanto
