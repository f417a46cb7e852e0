// The sentences and amounts of a recall, as its window, its paper and its spreadsheet word them.
#pragma once

#include "trace/RecallList.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace sorvanto {

/// The day in the system's short form; empty for none.
QString recallDay(const QDateTime& date);
/// "30 GMS" in the system's marks.
QString recallAmount(double quantity, const QString& units);
/// Why a batch belongs here where it isn't plain: "with" its stock base, or that its ingredients are not known.
QString reasonOf(const TracedBatch& batch);
/// "found by lot"; empty where the text stands for nothing.
QString foundBy(const RecallList& list);

/// "Cooling Gel 1%"
QString formulaText(const TracedFormula& formula);
/// "Formulas that use it now: Arnica Salve, Cooling Gel 1%"; empty where none does.
QString recallFormulas(const RecallList& list);
/// "4 batches · 6 prescriptions · 5 patients"
QString recallTotals(const Recall& recall);
/// "from 1/5/2026", "from 1/5/2026 to 2/5/2026", "to 2/5/2026"; empty without bounds.
QString recallDays(const TraceDays& days);
/// Where it was looked for: batches, and the archives among them.
QStringList recallSearched(const RecallList& list);
/// All that keeps the list from being the last word: archives that were not searched, what the days hide, batches whose
/// ingredients are not known.
QStringList recallGaps(const RecallList& list);
/// "Nothing has this lot, NDC or name: 3 batches were searched."
QString recallNothing(std::int64_t searched);
/// "No batch took it in: 3 batches were searched."
QString recallNoBatch(std::int64_t searched);
/// "Nothing was dispensed: 3 batches were searched."
QString recallNotDispensed(std::int64_t searched);
/// "No batch was made of it: 3 batches were searched."
QString recallNotMade(std::int64_t searched);

}  // namespace sorvanto
