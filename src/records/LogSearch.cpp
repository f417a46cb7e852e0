// Fields of a batch search: 0 key, 1 lot, 2 date, 3 name, 4 quantity, 5 jar, 6 NDC, 7 cost, 8 AWP (the other
// way round for a prescription), 9 initials, 10 verifier, 11 results, 12 mix, 13 version, 14 notes,
// 15 description, 16 strength, 17 units, 18 type, 19 formula.
#include "records/LogSearch.h"

#include "records/SearchText.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

QString column(const QString& name, const QString& alias) {
    return u", Log."_s + name + u" as ["_s + alias + u"]"_s;
}

QString jarAlias(LogSearch use) {
    QString alias = translated(u"JarSize"_s);
    if (use == LogSearch::OfPrescription)
        alias.remove(u'(').remove(u')');
    return alias;
}

QString costAndAwp(LogSearch use) {
    const QString cost = column(u"log_Cost"_s, translated(u"Cost"_s));
    const QString awp = column(u"log_AWP"_s, translated(u"AWP"_s));
    return use == LogSearch::OfLog ? cost + awp : awp + cost;
}

QString columns(LogSearch use) {
    QString text = u"Log.LogID"_s;
    text += column(u"log_Lot"_s, translated(u"Lot"_s));
    text += column(u"log_Date"_s, translated(u"DateLogged"_s));
    text += column(u"log_Name"_s, translated(u"FormulaName"_s));
    text += column(u"log_Quantity"_s, translated(u"Quantity"_s));
    text += column(u"log_JarSize"_s, jarAlias(use));
    text += column(u"log_NDC"_s, translated(u"NDC"_s));
    text += costAndAwp(use);
    text += column(u"log_Initials"_s, translated(u"Initials"_s));
    text += column(u"log_Verified"_s, translated(u"Verified"_s));
    text += column(u"log_Results"_s, translated(u"Results"_s));
    text += column(u"log_Mix"_s, translated(u"Mix"_s));
    // The "c" stands before the word alone, in front of any translation.
    text +=
        column(u"log_Version"_s, (use == LogSearch::OfLog ? u"c"_s : QString()) + translated(u"Version"_s));
    text += column(u"log_Notes"_s, translated(u"Notes"_s));
    text += column(u"log_Desc"_s, translated(u"Description"_s));
    text += column(u"log_Strength"_s, translated(u"Strength"_s));
    text += column(u"log_Units"_s, translated(u"Units"_s));
    text += column(u"log_FormType"_s, translated(u"FormulaType"_s));
    text += u", Log.FormulaID "_s;
    return text;
}

QString filter(QString& search, const QString& keyText) {
    switch (searchByFirst(search, {u'#', u'?'})) {
    case SearchBy::Key:
        return u"WHERE ([Log.LogID] = "_s + keyText + u")"_s;
    case SearchBy::Code:
        return likeFilter(u"Log.log_NDC"_s, search);
    case SearchBy::Lot:
        return likeFilter(u"Log.log_Lot"_s, search);
    case SearchBy::Name:
        break;
    }
    return likeFilter(u"Log.log_Name"_s, search);
}

}  // namespace

QString logSearch(LogSearch use, QString search, const QString& keyText) {
    QString statement = u"SELECT "_s;
    statement += columns(use);
    statement += u"FROM Log "_s;
    statement += filter(search, keyText);
    statement += u" ORDER BY Log.log_Date DESC;"_s;
    return statement;
}

platform::RecordsetPtr openLogSearch(const QString& statement) {
    const auto rows = platform::Recordset::create();
    rows->setOrderWithin(u"Log.log_Name DESC, Log.log_NDC DESC, Log.log_Lot DESC"_s);
    rows->open(statement, openDB(), platform::LockType::Pessimistic);
    return rows;
}

}  // namespace sorvanto
