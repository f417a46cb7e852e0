// Everything that a recall list says, on paper or in a spreadsheet: what was asked, where it was looked for, and where it
// went.
#pragma once

#include "trace/Tracer.h"

#include <QString>
#include <optional>
#include <vector>

namespace sorvanto {

struct RecallList {
    QString
        asked;  ///< as it stands for what is listed, else as it was typed; the patient's or formula's name
    TraceHits::By by = TraceHits::By::Nothing;
    std::vector<Ingredient> ingredients;  ///< whose way is listed
    std::vector<TracedFormula> formulas;  ///< that use one of them now
    std::optional<TracedPatient> patient;
    std::optional<TracedFormula> formula;
    TraceDays days;
    Recall recall;
    std::int64_t searched = 0;  ///< batches, those of the archives included
    std::vector<GivenOffArchive> archives, absent;
};

/// Where all hits of the text went.
RecallList recallList(const Tracer& tracer, const QString& asked, const TraceHits& hits,
                      const TraceDays& days);
/// What was dispensed to the patient.
RecallList recallList(const Tracer& tracer, const TracedPatient& patient, const TraceDays& days);
/// Where the batches of the formula went.
RecallList recallList(const Tracer& tracer, const TracedFormula& formula, const TraceDays& days);

/// A patient of the list and what was dispensed, newest first.
struct CalledPatient {
    QString name, phone;
    std::vector<TracedPrescription> prescriptions;
};
/// Each patient once, by name.
std::vector<CalledPatient> patientsToCall(const Recall& recall);

}  // namespace sorvanto
