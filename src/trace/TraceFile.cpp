#include "trace/TraceFile.h"

#include "platform/basic/Folding.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <iterator>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::FieldKind;
using platform::Query;

/// Each different value of a column once, by one look into its index for each.
constexpr auto differentOnes =
    "WITH RECURSIVE found(value) AS (SELECT min(%2) FROM %1 WHERE %2 > '' UNION ALL "
    "SELECT (SELECT min(%2) FROM %1 WHERE %2 > found.value) FROM found WHERE found.value IS NOT NULL) "
    "SELECT value FROM found WHERE value IS NOT NULL"_L1;

/// One ingredient a row, its form and supplier as they were written last.
constexpr auto loggedIngredients =
    "SELECT lch_Name, lch_NDC, lch_Lot, lch_Form, lch_Supplier FROM LogChem WHERE LogChemID IN (SELECT max(LogChemID) "
    "FROM LogChem JOIN Log USING (LogID) WHERE %1 AND %2 GROUP BY lch_Name, lch_NDC, lch_Lot)"_L1;
constexpr auto chemicals =
    "SELECT chm_Name, chm_NDC, chm_Lot, chm_Form, chm_Supplier FROM Chemical WHERE %1"_L1;

constexpr auto prescriptionRows =
    "SELECT RXsID, RXs.LogID, PatientID, rxs_Date, pat_LName, pat_FName, pat_Phone, log_Name, log_Lot, rxs_QTY, "
    "log_Units, rxs_Doctor FROM RXs JOIN Log USING (LogID) JOIN Patient USING (PatientID) WHERE %1 AND %2"_L1;

/// Whether a column holds the text that is bound to this place, nothing being an empty one. A column compares as it was
/// declared, an expression of it would letter by letter.
constexpr auto holds = "(%1 = ?%2 OR (%1 IS NULL AND ?%2 = ''))"_L1;

QString isChemical() {
    return QStringList{holds.arg("chm_Name"_L1, "1"_L1), holds.arg("chm_Lot"_L1, "2"_L1),
                       holds.arg("chm_NDC"_L1, "3"_L1)}
        .join(u" AND "_s);
}

platform::Engine& engineOf(const platform::ConnectionPtr& connection) {
    if (!connection || connection->state() == 0)
        throw platform::RuntimeError(platform::error::objectClosed, u"The connection is closed"_s);
    return connection->engine();
}

/// A prepared question and the row that its answer stands at.
class Question {
public:
    Question(const platform::ConnectionPtr& connection, const QString& sql, const QVariantList& values = {})
        : m_statement(engineOf(connection), sql, sql) {
        if (!values.isEmpty())
            ask(values);
    }

    /// The same with other values; it is prepared once for all of them.
    void ask(const QVariantList& values) {
        m_statement.reset();
        for (int i = 0; i < values.size(); ++i)
            m_statement.bind(i + 1, values[i]);
    }
    bool next() { return m_statement.step(); }
    QString text(int column) const { return m_statement.value(column, {FieldKind::LongText}).toString(); }
    double real(int column) const { return m_statement.value(column, {FieldKind::Double}).toDouble(); }
    QDateTime date(int column) const { return m_statement.value(column, {FieldKind::Date}).toDateTime(); }
    std::int64_t key(int column) const { return m_statement.integer(column); }
    QStringList texts() {
        QStringList all;
        while (next())
            all << text(0);
        return all;
    }
    TraceFile::Keys keys() {
        TraceFile::Keys all;
        while (next())
            all.insert(key(0));
        return all;
    }

private:
    Query m_statement;
};

/// Keys as one bound value.
QString listed(const TraceFile::Keys& keys) {
    QJsonArray array;
    for (const std::int64_t key : keys)
        array.append(qint64(key));
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QString joined(const QString& last, const QString& first) {
    return last.isEmpty() || first.isEmpty() ? last + first : last + u", "_s + first;
}

constexpr auto formulas = "SELECT DISTINCT FormulaID, frm_Name, frm_Strength, frm_NDC FROM Formula %1"_L1;
constexpr auto formulaOrder = " ORDER BY frm_Name NULLS FIRST, FormulaID"_L1;

TracedFormula formulaIn(const Question& row) { return {row.key(0), row.text(1), row.text(2), row.text(3)}; }

std::vector<TracedFormula> formulasIn(Question rows) {
    std::vector<TracedFormula> all;
    while (rows.next())
        all.push_back(formulaIn(rows));
    return all;
}

constexpr auto patients = "SELECT PatientID, pat_LName, pat_FName, pat_Phone, pat_BDay FROM Patient %1"_L1;

TracedPatient patientIn(const Question& row) {
    return {row.key(0), joined(row.text(1), row.text(2)), row.text(3), row.date(4).date()};
}

}  // namespace

TraceFile::TraceFile(platform::ConnectionPtr connection, int number)
    : m_connection(std::move(connection)), m_number(number),
      m_own(number == 0 ? u"1 = 1"_s
                        : u"Log.LogID NOT IN (SELECT kmp_Old FROM KeyMap WHERE kmp_Table = 'Log')"_s) {}

const platform::EngineWords& TraceFile::words() const { return engineOf(m_connection).words(); }

std::int64_t TraceFile::batchCount() const {
    Question question(m_connection, u"SELECT count(*) FROM Log WHERE "_s + m_own);
    return question.next() ? question.key(0) : 0;
}

QStringList TraceFile::ingredientLots() const {
    QStringList lots = Question(m_connection, differentOnes.arg("LogChem"_L1, "lch_Lot"_L1)).texts();
    lots += Question(m_connection, differentOnes.arg("Chemical"_L1, "chm_Lot"_L1)).texts();
    return lots;
}

QStringList TraceFile::batchLots() const {
    return Question(m_connection, u"SELECT log_Lot FROM Log WHERE log_Lot > '' AND "_s + m_own).texts();
}

std::vector<Ingredient> TraceFile::ingredients(const QString& condition, const QStringList& texts) const {
    std::vector<Question> questions;
    questions.emplace_back(m_connection,
                           loggedIngredients.arg(QString(condition).replace(u'@', "lch_"_L1), m_own));
    if (m_number == 0)
        questions.emplace_back(m_connection, chemicals.arg(QString(condition).replace(u'@', "chm_"_L1)));
    std::vector<Ingredient> all;
    for (const QString& text : texts) {
        for (Question& rows : questions) {
            rows.ask({text});
            while (rows.next())
                all.push_back({rows.text(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4)});
        }
    }
    return all;
}

std::vector<Ingredient> TraceFile::ingredientsOfLot(const QString& lot) const {
    return ingredients(u"@Lot = ?"_s, {lot});
}

std::vector<Ingredient> TraceFile::ingredientsOfNdc(const QString& ndc) const {
    return ingredients(u"@NDC = ?"_s, {ndc});
}

std::vector<Ingredient> TraceFile::ingredientsNamed(const QString& text) const {
    const QString wanted = platform::folded(text);
    QStringList names = Question(m_connection, differentOnes.arg("LogChem"_L1, "lch_Name"_L1)).texts();
    names += Question(m_connection, differentOnes.arg("Chemical"_L1, "chm_Name"_L1)).texts();
    names.removeDuplicates();
    names.removeIf([&](const QString& name) { return !platform::folded(name).contains(wanted); });
    return ingredients(u"@Name = ?"_s, names);
}

// No lot is stored as an empty text or not at all; a look for either goes through the index.
TraceFile::Keys TraceFile::batchesWith(const std::vector<Ingredient>& ingredients) const {
    const auto question = [&](const QString& hasLot) {
        return Question(
            m_connection,
            u"SELECT LogID FROM LogChem JOIN Log USING (LogID) WHERE %1 AND %2 AND %3 AND %4"_s.arg(
                hasLot, holds.arg("lch_Name"_L1, "2"_L1), holds.arg("lch_NDC"_L1, "3"_L1), m_own));
    };
    Question ofLot = question(u"lch_Lot = ?1"_s);
    Question withoutLot = question(u"lch_Lot IS NULL AND ?1 = ''"_s);
    Keys all;
    for (const Ingredient& one : ingredients) {
        ofLot.ask({one.lot, one.name, one.ndc});
        all.merge(ofLot.keys());
        if (!one.lot.isEmpty())
            continue;
        withoutLot.ask({one.lot, one.name, one.ndc});
        all.merge(withoutLot.keys());
    }
    return all;
}

std::map<std::int64_t, QString> TraceFile::batchesWithLots(const QStringList& lots) const {
    Question rows(
        m_connection,
        u"SELECT LogID, value FROM %1 AS wanted CROSS JOIN LogChem JOIN Log USING (LogID) WHERE lch_Lot = value "
        "AND %2"_s.arg(words().listedTexts(u"?1"_s), m_own),
        {QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(lots)).toJson())});
    std::map<std::int64_t, QString> all;
    while (rows.next())
        all.emplace(rows.key(0), rows.text(1));
    return all;
}

TraceFile::Keys TraceFile::batchesMadeAs(const QString& lot) const {
    return Question(m_connection, u"SELECT LogID FROM Log WHERE log_Lot = ? AND "_s + m_own, {lot}).keys();
}

// Formulas keep their keys in every archive.
TraceFile::Keys TraceFile::batchesMadeOf(std::int64_t formula) const {
    return Question(m_connection, u"SELECT LogID FROM Log WHERE FormulaID = ? AND "_s + m_own,
                    {QVariant::fromValue<qint64>(formula)})
        .keys();
}

TraceFile::Keys TraceFile::batchesWithoutLines() const {
    return Question(
               m_connection,
               u"SELECT LogID FROM Log WHERE NOT EXISTS (SELECT 1 FROM LogChem WHERE LogChem.LogID = Log.LogID) "
               "AND "_s +
                   m_own)
        .keys();
}

// The batch's price is exact, each line's is that of a quantity of three decimals, to two decimals.
bool TraceFile::lookForLackingLines() const {
    const std::int64_t state = m_connection->changeState();
    if (m_lackingAsOf == state)
        return false;
    const QString atMost =
        u"sum(CASE WHEN lch_QTY > 0 AND %1 IS NOT NULL THEN %1 + 0.005 + 0.0005 * (abs(%1) + 0.005) / lch_QTY "
        "ELSE 1e15 END) AS %2"_s;
    m_lacking =
        Question(m_connection,
                 u"SELECT LogID FROM Log JOIN (SELECT LogID AS Batch, %1, %2 FROM LogChem GROUP BY LogID) "
                 "AS Sums ON Batch = LogID WHERE (log_Cost > Cost + 0.0001 * (1 + abs(log_Quantity)) OR "
                 "log_AWP > AWP + 0.0001 * (1 + abs(log_Quantity))) AND %3"_s.arg(
                     atMost.arg(u"lch_Cost"_s, u"Cost"_s), atMost.arg(u"lch_AWP"_s, u"AWP"_s), m_own))
            .keys();
    m_lackingAsOf = state;
    return true;
}

std::vector<TracedBatch> TraceFile::batches(const Keys& keys) const {
    Question rows(
        m_connection,
        u"SELECT LogID, log_Date, log_Name, log_Strength, log_Lot, log_Quantity, log_Units, log_Initials, "
        "log_Verified, EXISTS (SELECT 1 FROM LogChem WHERE LogChem.LogID = Log.LogID) FROM Log "
        "WHERE LogID IN (SELECT value FROM %1 AS wanted)"_s.arg(words().listedNumbers(u"?1"_s)),
        {listed(keys)});
    std::vector<TracedBatch> all;
    while (rows.next()) {
        all.push_back({.key = {m_number, rows.key(0)},
                       .date = rows.date(1),
                       .formula = rows.text(2),
                       .strength = rows.text(3),
                       .lot = rows.text(4),
                       .quantity = static_cast<int>(rows.key(5)),
                       .units = rows.text(6),
                       .initials = rows.text(7),
                       .verified = rows.text(8),
                       .base = {},
                       .hasNoLines = rows.key(9) == 0,
                       .lacksLines = false});
    }
    return all;
}

std::vector<TracedPrescription> TraceFile::prescriptions(const QString& condition,
                                                         const QVariant& value) const {
    Question rows(m_connection, prescriptionRows.arg(condition, m_own), {value});
    std::vector<TracedPrescription> all;
    while (rows.next()) {
        all.push_back({.key = {m_number, rows.key(0)},
                       .batch = {m_number, rows.key(1)},
                       .patient = {0, rows.key(2)},  // patients keep their keys in every archive
                       .date = rows.date(3),
                       .patientName = joined(rows.text(4), rows.text(5)),
                       .phone = rows.text(6),
                       .drug = rows.text(7),
                       .batchLot = rows.text(8),
                       .quantity = rows.real(9),
                       .units = rows.text(10),
                       .doctor = rows.text(11)});
    }
    return all;
}

std::vector<TracedPrescription> TraceFile::prescriptionsOf(const Keys& batches) const {
    return prescriptions(
        u"RXs.LogID IN (SELECT value FROM %1 AS wanted)"_s.arg(words().listedNumbers(u"?1"_s)),
        listed(batches));
}

std::vector<TracedPrescription> TraceFile::prescriptionsFor(std::int64_t patient) const {
    return prescriptions(u"PatientID = ?"_s, QVariant::fromValue<qint64>(patient));
}

std::vector<TracedPatient> TraceFile::patientsNamed(const QString& text) const {
    const QString wanted = platform::folded(text);
    Question rows(m_connection,
                  patients.arg(u"ORDER BY pat_LName NULLS FIRST, pat_FName NULLS FIRST, PatientID"_s));
    std::vector<TracedPatient> all;
    while (rows.next()) {
        TracedPatient patient = patientIn(rows);
        if (platform::folded(patient.name).contains(wanted))
            all.push_back(std::move(patient));
    }
    return all;
}

std::optional<TracedPatient> TraceFile::patientOf(std::int64_t key) const {
    Question rows(m_connection, patients.arg(u"WHERE PatientID = ?"_s), {QVariant::fromValue<qint64>(key)});
    return rows.next() ? std::optional(patientIn(rows)) : std::nullopt;
}

std::int64_t TraceFile::chemicalOf(const Ingredient& ingredient) const {
    Question rows(m_connection, u"SELECT max(ChemicalID) FROM Chemical WHERE "_s + isChemical(),
                  {ingredient.name, ingredient.lot, ingredient.ndc});
    return rows.next() ? rows.key(0) : 0;
}

std::vector<TracedFormula> TraceFile::formulasWith(const std::vector<Ingredient>& ingredients) const {
    Keys keys;
    Question chemical(m_connection, u"SELECT ChemicalID FROM Chemical WHERE "_s + isChemical());
    for (const Ingredient& one : ingredients) {
        chemical.ask({one.name, one.lot, one.ndc});
        keys.merge(chemical.keys());
    }
    const QString ofThem =
        u"JOIN FormChem USING (FormulaID) WHERE ChemicalID IN (SELECT value FROM %1 AS wanted)"_s.arg(
            words().listedNumbers(u"?1"_s));
    return formulasIn({m_connection, formulas.arg(ofThem) + formulaOrder, {listed(keys)}});
}

std::vector<TracedFormula> TraceFile::formulasNamed(const QString& text) const {
    const QString wanted = platform::folded(text);
    std::vector<TracedFormula> all = formulasIn({m_connection, formulas.arg(QString()) + formulaOrder});
    std::erase_if(
        all, [&](const TracedFormula& formula) { return !platform::folded(formula.name).contains(wanted); });
    return all;
}

std::optional<TracedFormula> TraceFile::formulaOf(std::int64_t key) const {
    Question row(m_connection, formulas.arg(u"WHERE FormulaID = ?"_s), {QVariant::fromValue<qint64>(key)});
    return row.next() ? std::optional(formulaIn(row)) : std::nullopt;
}

bool TraceFile::writePatient(TracedPrescription& prescription) const {
    Question rows(m_connection, u"SELECT pat_LName, pat_FName, pat_Phone FROM Patient WHERE PatientID = ?"_s,
                  {QVariant::fromValue<qint64>(prescription.patient.key)});
    if (!rows.next())
        return false;
    prescription.patientName = joined(rows.text(0), rows.text(1));
    prescription.phone = rows.text(2);
    return true;
}

std::vector<UsedIngredient> TraceFile::linesOf(std::int64_t batch) const {
    Question rows(
        m_connection,
        u"SELECT lch_Name, lch_NDC, lch_Lot, lch_Form, lch_Supplier, lch_QTY, lch_Units FROM LogChem "
        "WHERE LogID = ? ORDER BY LogChemID"_s,
        {QVariant::fromValue<qint64>(batch)});
    std::vector<UsedIngredient> all;
    while (rows.next()) {
        all.push_back({{rows.text(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4)},
                       rows.real(5),
                       rows.text(6),
                       {}});
    }
    return all;
}

}  // namespace sorvanto
