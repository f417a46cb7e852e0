// The questions that a trace asks one database file. Texts are bound, never part of a statement. An archive answers
// for the batches alone that left the database with it.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/Dialect.h"
#include "trace/TraceRows.h"

#include <QStringList>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace sorvanto {

class TraceFile {
public:
    /// number: its place in TraceKey. Throws RuntimeError as all functions, where the file can't be read.
    TraceFile(platform::ConnectionPtr connection, int number);

    std::int64_t batchCount() const;
    /// All lots that ingredients of batches or chemicals have, each once whatever its case.
    QStringList ingredientLots() const;
    /// Those of all batches, twins included.
    QStringList batchLots() const;

    /// Ingredients of batches, and in the database in use its chemicals.
    std::vector<Ingredient> ingredientsOfLot(const QString& lot) const;
    std::vector<Ingredient> ingredientsOfNdc(const QString& ndc) const;
    /// Those whose folded name holds the folded text.
    std::vector<Ingredient> ingredientsNamed(const QString& text) const;

    using Keys = std::set<std::int64_t>;
    /// Batches that took in one of them.
    Keys batchesWith(const std::vector<Ingredient>& ingredients) const;
    /// Batches that took in one of the lots, each with the lot as it was asked for.
    std::map<std::int64_t, QString> batchesWithLots(const QStringList& lots) const;
    Keys batchesMadeAs(const QString& lot) const;
    /// Made of the formula, whatever its name was.
    Keys batchesMadeOf(std::int64_t formula) const;
    Keys batchesWithoutLines() const;
    /// Batches that cost more than their lines, by more than rounding explains: lines are missing. One that lacks lines
    /// without a price is not found. As of the last look for them, which takes time; none before.
    const Keys& batchesThatLackLines() const { return m_lacking; }
    /// Looks for them; false, and at once, where the file has not changed since.
    bool lookForLackingLines() const;

    /// In no order.
    std::vector<TracedBatch> batches(const Keys& keys) const;
    std::vector<TracedPrescription> prescriptionsOf(const Keys& batches) const;
    std::vector<TracedPrescription> prescriptionsFor(std::int64_t patient) const;
    /// Those whose folded "Last, First" holds the folded text, by name.
    std::vector<TracedPatient> patientsNamed(const QString& text) const;
    std::optional<TracedPatient> patientOf(std::int64_t key) const;
    /// The chemical as it stands now; 0 where there is none any more.
    std::int64_t chemicalOf(const Ingredient& ingredient) const;
    /// Formulas with one of the chemicals now, each once, by name.
    std::vector<TracedFormula> formulasWith(const std::vector<Ingredient>& ingredients) const;
    /// Those whose folded name holds the folded text, by name.
    std::vector<TracedFormula> formulasNamed(const QString& text) const;
    std::optional<TracedFormula> formulaOf(std::int64_t key) const;
    /// Writes the patient's name and phone of this file into the prescription; false where there is no such patient.
    bool writePatient(TracedPrescription& prescription) const;
    /// In the order of the batch.
    std::vector<UsedIngredient> linesOf(std::int64_t batch) const;

private:
    const platform::EngineWords& words() const;
    /// All for which a column is one of the texts, in their order.
    std::vector<Ingredient> ingredients(const QString& condition, const QStringList& texts) const;
    std::vector<TracedPrescription> prescriptions(const QString& condition, const QVariant& value) const;

    platform::ConnectionPtr m_connection;
    int m_number;
    QString m_own;  ///< condition on Log of the batches that this file answers for
    mutable std::optional<std::int64_t> m_lackingAsOf;  ///< state of the file
    mutable Keys m_lacking;
};

}  // namespace sorvanto
