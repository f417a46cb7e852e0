// Follows ingredients and batches through the log, both ways and to any depth: an ingredient whose lot is a batch's lot
// was made here, and where the batch goes, what went into it goes along. Everything comes from what the log froze, so
// that changed and deleted chemicals, formulas and patients' prescriptions make no difference.
#pragma once

#include "trace/TraceFile.h"

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace sorvanto {

class Tracer {
public:
    /// database: the one in use, open. folders: where its archives may lie.
    Tracer(platform::ConnectionPtr database, const QStringList& folders);

    /// From now on whatever looks through many records asks this between pieces of far less than a millisecond; false ends
    /// it, by TraceEnded. Nothing else is asked of this tracer within.
    void setPace(std::function<bool()> goesOn) { m_pace->set(std::move(goesOn)); }
    /// All that is read of the database in use until it is gone is of one moment.
    std::unique_ptr<platform::EngineLook> oneMoment() const { return m_files.front().oneMoment(); }

    /// Other numbers after any change in one of the files.
    std::vector<std::int64_t> state() const;

    /// Batches that are searched, those of the archives at hand included.
    std::int64_t searched() const;
    /// Archives that are searched too.
    const std::vector<GivenOffArchive>& archives() const { return m_archives; }
    /// Those that can't be.
    const std::vector<GivenOffArchive>& absentArchives() const { return m_absent; }

    /// What the text stands for: ingredients of this lot, else of this NDC; batches of this lot; where there are none,
    /// ingredients whose name holds it. A lot or NDC is looked for as the text is, then without the blanks around it; blanks
    /// alone stand for nothing.
    TraceHits find(const QString& text) const;
    /// The same where it is known what the text is: by a lot, ingredients and batches of it; by a batch, batches of the
    /// lot alone.
    TraceHits find(const QString& text, TraceHits::By by) const;
    /// Lots that may be meant instead; what they lead to is never mixed in. The lots are read once.
    QStringList similarTo(const QString& text);

    std::vector<TracedPatient> patientsNamed(const QString& text) const {
        return m_files.front().patientsNamed(text);
    }
    /// As TraceFile, in the database in use.
    std::optional<TracedPatient> patientOf(std::int64_t key) const { return m_files.front().patientOf(key); }
    std::int64_t chemicalOf(const Ingredient& ingredient) const {
        return m_files.front().chemicalOf(ingredient);
    }
    /// The place of the chemical among the ingredients; none where it is none of them, or where a newer chemical is the same.
    std::optional<std::size_t> placeOf(std::int64_t chemical,
                                       const std::vector<Ingredient>& ingredients) const;
    std::vector<TracedFormula> formulasWith(const std::vector<Ingredient>& ingredients) const {
        return m_files.front().formulasWith(ingredients);
    }
    std::vector<TracedFormula> formulasNamed(const QString& text) const {
        return m_files.front().formulasNamed(text);
    }
    std::optional<TracedFormula> formulaOf(std::int64_t key) const { return m_files.front().formulaOf(key); }

    /// Batches that took in one of the ingredients or were made as the lot, all made with those, and what they were
    /// dispensed as.
    Recall whereWent(const std::vector<Ingredient>& ingredients, const QString& batchLot,
                     const TraceDays& days) const;
    /// Batches that were made of the formula, all made with those, and what they were dispensed as.
    Recall madeOf(std::int64_t formula, const TraceDays& days) const;
    /// What was dispensed to a patient in these days, and the batches it came from, of whatever days.
    Recall dispensedTo(std::int64_t patient, const TraceDays& days) const;

    /// Looks for the batches that lack some of their lines, which lists name from then on. Takes time in a large file, and
    /// none where nothing has changed since the last look; false then.
    bool lookForLackingLines() const;
    /// How many were found by that.
    std::size_t batchesThatLackLines() const;
    /// Names them in a list of these days that was made before.
    void nameUncertain(Recall& recall, const TraceDays& days) const;

    /// What is in a batch: its lines, each that was made here followed by its own.
    std::vector<UsedIngredient> contents(TraceKey batch) const;

private:
    struct Reached;

    TraceHits findAsItIs(const QString& wanted, TraceHits::By by) const;
    template <typename Ask>
    std::vector<Ingredient> gathered(Ask ask) const;
    Reached following(Reached reached) const;
    Recall recallOf(const Reached& reached, const TraceDays& days) const;
    Recall dressed(const Reached& reached, const TraceDays& days) const;
    /// Of each lot in turn what went into the batches that were made as it.
    std::vector<UsedIngredient> linesMadeAs(const QStringList& lots) const;
    void finish(Recall& recall) const;
    /// What the compared rows are ordered by, with turns for others in between.
    template <typename Before>
    auto paced(Before before) const;
    template <typename Row>
    void newestFirst(std::vector<Row>& rows) const;
    void bringUpToDate(std::vector<TracedPrescription>& prescriptions) const;

    std::shared_ptr<TracePace> m_pace;
    std::vector<TraceFile> m_files;
    std::vector<GivenOffArchive> m_archives, m_absent;
    QStringList m_lots;  ///< of ingredients and batches, once they are read
};

}  // namespace sorvanto
