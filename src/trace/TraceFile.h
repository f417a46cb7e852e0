// The questions that a trace asks one database file. Texts are bound, never part of a statement. An archive answers
// for the batches alone that left the database with it.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/Dialect.h"
#include "platform/data/Engine.h"
#include "trace/TracePace.h"
#include "trace/TraceRows.h"

#include <QStringList>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace sorvanto {

class TraceQuestion;

class TraceFile {
public:
    /// number: its place in TraceKey. pace: asked between the pieces of whatever reads many rows. Throws RuntimeError as
    /// all functions, where the file can't be read.
    TraceFile(platform::ConnectionPtr connection, int number, std::shared_ptr<TracePace> pace);

    /// All that is read until it is gone is of one moment.
    std::unique_ptr<platform::EngineLook> oneMoment() const;

    /// Another number after any change.
    std::int64_t state() const { return m_connection->changeState(); }
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
    /// Those that were made under each of the lots, which are told apart as the engine does; in the order of their keys.
    std::vector<std::pair<std::int64_t, QString>> batchesMadeAs(const QStringList& lots) const;
    /// The lots of these batches, in the order of their keys; those without one are not among them.
    std::vector<std::pair<std::int64_t, QString>> lotsOf(const Keys& batches) const;
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
    /// Name, NDC and lot of the chemical; none where there is none of that key.
    std::optional<Ingredient> chemical(std::int64_t key) const;
    /// Formulas with one of the chemicals now, each once, by name.
    std::vector<TracedFormula> formulasWith(const std::vector<Ingredient>& ingredients) const;
    /// Those whose folded name holds the folded text, by name.
    std::vector<TracedFormula> formulasNamed(const QString& text) const;
    std::optional<TracedFormula> formulaOf(std::int64_t key) const;
    /// By their keys.
    std::map<std::int64_t, TracedPatient> patients(const Keys& keys) const;
    /// By the keys of the batches, each in the order of the batch.
    std::map<std::int64_t, std::vector<UsedIngredient>> linesOf(const Keys& batches) const;

private:
    const platform::EngineWords& words() const;
    TraceQuestion ask(const QString& sql, const QVariantList& values = {}) const;
    /// A list as values that can be bound to one place, in turn: as few as possible where each costs a way to a server and
    /// back, else such that each takes some milliseconds at most.
    template <typename List>
    QStringList bound(const List& list, int atOnce) const;
    QStringList bound(const Keys& keys) const;
    /// All for which the column is one of the texts.
    std::vector<Ingredient> ingredients(QLatin1StringView column, const QStringList& texts) const;
    QStringList differentNames() const;
    /// Of the database in use.
    Keys chemicalsLike(const std::vector<Ingredient>& ingredients) const;
    /// Of each of the values in turn.
    std::vector<TracedPrescription> prescriptions(const QString& condition, const QVariantList& values) const;
    /// named: folded; empty: all.
    std::vector<TracedFormula> formulas(TraceQuestion& rows, const QString& named) const;
    /// Bounds of batches' keys, first and last, that are looked through in one piece.
    std::vector<std::pair<std::int64_t, std::int64_t>> spans() const;

    platform::ConnectionPtr m_connection;
    int m_number;
    std::shared_ptr<TracePace> m_pace;
    QString m_own;  ///< condition on Log of the batches that this file answers for
    mutable std::optional<std::int64_t> m_lackingAsOf;  ///< state of the file
    mutable Keys m_lacking;
};

}  // namespace sorvanto
