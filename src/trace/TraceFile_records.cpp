// What a trace asks of one file about patients, prescriptions, chemicals and formulas.
#include "platform/basic/Folding.h"
#include "trace/TraceFile.h"
#include "trace/TraceQuestion.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr auto prescriptionRows =
    "SELECT RXsID, RXs.LogID, PatientID, rxs_Date, pat_LName, pat_FName, pat_Phone, log_Name, log_Lot, rxs_QTY, "
    "log_Units, rxs_Doctor FROM RXs JOIN Log USING (LogID) JOIN Patient USING (PatientID) WHERE %1 AND %2"_L1;
constexpr auto patientRows = "SELECT PatientID, pat_LName, pat_FName, pat_Phone, pat_BDay FROM Patient %1"_L1;
constexpr auto formulaRows = "FormulaID, frm_Name, frm_Strength, frm_NDC FROM Formula %1"_L1;
constexpr auto formulaOrder = " ORDER BY frm_Name NULLS FIRST, FormulaID"_L1;
constexpr auto isInList = "%1 IN (SELECT value FROM %2 AS wanted)"_L1;

QString joined(const QString& last, const QString& first) {
    return last.isEmpty() || first.isEmpty() ? last + first : last + u", "_s + first;
}

TracedPatient patientIn(const TraceQuestion& row) {
    return {row.key(0), joined(row.text(1), row.text(2)), row.text(3), row.date(4).date()};
}

TracedFormula formulaIn(const TraceQuestion& row) {
    return {row.key(0), row.text(1), row.text(2), row.text(3)};
}

TracedPrescription prescriptionIn(const TraceQuestion& row, int file) {
    return {.key = {file, row.key(0)},
            .batch = {file, row.key(1)},
            .patient = {0, row.key(2)},  // patients keep their keys in every archive
            .date = row.date(3),
            .patientName = joined(row.text(4), row.text(5)),
            .phone = row.text(6),
            .drug = row.text(7),
            .batchLot = row.text(8),
            .quantity = row.real(9),
            .units = row.text(10),
            .doctor = row.text(11)};
}

QVariant keyValue(std::int64_t key) { return QVariant::fromValue<qint64>(key); }

}  // namespace

std::vector<TracedPrescription> TraceFile::prescriptions(const QString& condition,
                                                         const QVariantList& values) const {
    TraceQuestion rows = ask(prescriptionRows.arg(condition, m_own));
    std::vector<TracedPrescription> all;
    for (const QVariant& value : values) {
        rows.ask({value});
        while (rows.next())
            all.push_back(prescriptionIn(rows, m_number));
    }
    return all;
}

std::vector<TracedPrescription> TraceFile::prescriptionsOf(const Keys& batches) const {
    QVariantList values;
    for (const QString& piece : bound(batches))
        values << piece;
    return prescriptions(isInList.arg("RXs.LogID"_L1, words().listedNumbers(u"?1"_s)), values);
}

std::vector<TracedPrescription> TraceFile::prescriptionsFor(std::int64_t patient) const {
    return prescriptions(u"PatientID = ?"_s, {keyValue(patient)});
}

std::vector<TracedPatient> TraceFile::patientsNamed(const QString& text) const {
    const QString wanted = platform::folded(text);
    TraceQuestion rows =
        ask(patientRows.arg("ORDER BY pat_LName NULLS FIRST, pat_FName NULLS FIRST, PatientID"_L1));
    std::vector<TracedPatient> all;
    while (rows.next()) {
        const QString name = joined(rows.text(1), rows.text(2));
        if (platform::folded(name).contains(wanted))
            all.push_back(patientIn(rows));
    }
    return all;
}

std::optional<TracedPatient> TraceFile::patientOf(std::int64_t key) const {
    TraceQuestion rows = ask(patientRows.arg("WHERE PatientID = ?"_L1), {keyValue(key)});
    return rows.next() ? std::optional(patientIn(rows)) : std::nullopt;
}

std::map<std::int64_t, TracedPatient> TraceFile::patients(const Keys& keys) const {
    TraceQuestion rows =
        ask(patientRows.arg(u"WHERE "_s + isInList.arg("PatientID"_L1, words().listedNumbers(u"?1"_s))));
    std::map<std::int64_t, TracedPatient> all;
    for (const QString& piece : bound(keys)) {
        rows.ask({piece});
        while (rows.next())
            all.emplace(rows.key(0), patientIn(rows));
    }
    return all;
}

std::int64_t TraceFile::chemicalOf(const Ingredient& ingredient) const {
    const Keys keys = chemicalsLike({ingredient});
    return keys.empty() ? 0 : *keys.rbegin();
}

std::optional<Ingredient> TraceFile::chemical(std::int64_t key) const {
    TraceQuestion row =
        ask(u"SELECT chm_Name, chm_NDC, chm_Lot FROM Chemical WHERE ChemicalID = ?"_s, {keyValue(key)});
    return row.next() ? std::optional(Ingredient{row.text(0), row.text(1), row.text(2), {}, {}})
                      : std::nullopt;
}

std::vector<TracedFormula> TraceFile::formulas(TraceQuestion& rows, const QString& named) const {
    std::vector<TracedFormula> all;
    while (rows.next()) {
        if (named.isEmpty() || platform::folded(rows.text(1)).contains(named))
            all.push_back(formulaIn(rows));
    }
    return all;
}

std::vector<TracedFormula> TraceFile::formulasWith(const std::vector<Ingredient>& ingredients) const {
    const Keys keys = ingredients.empty() ? Keys() : chemicalsLike(ingredients);
    if (keys.empty())
        return {};
    const QString ofThem = u"JOIN FormChem USING (FormulaID) WHERE "_s +
                           isInList.arg("ChemicalID"_L1, words().listedNumbers(u"?1"_s));
    QJsonArray all;
    for (const std::int64_t key : keys)
        all.append(qint64(key));
    TraceQuestion rows =
        ask(u"SELECT DISTINCT "_s + formulaRows.arg(ofThem) + formulaOrder, {boundList(all)});
    return formulas(rows, {});
}

std::vector<TracedFormula> TraceFile::formulasNamed(const QString& text) const {
    TraceQuestion rows = ask(u"SELECT "_s + formulaRows.arg(QString()) + formulaOrder);
    return formulas(rows, platform::folded(text));
}

std::optional<TracedFormula> TraceFile::formulaOf(std::int64_t key) const {
    TraceQuestion row = ask(u"SELECT "_s + formulaRows.arg("WHERE FormulaID = ?"_L1), {keyValue(key)});
    return row.next() ? std::optional(formulaIn(row)) : std::nullopt;
}

}  // namespace sorvanto
