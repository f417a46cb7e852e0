#include "trace/RecallList.h"

#include <algorithm>
#include <map>
#include <utility>

namespace sorvanto {
namespace {

RecallList searchedIn(const Tracer& tracer) {
    RecallList list;
    list.searched = tracer.searched();
    list.archives = tracer.archives();
    list.absent = tracer.absentArchives();
    return list;
}

}  // namespace

RecallList recallList(const Tracer& tracer, const QString& asked, const TraceHits& hits,
                      const TraceDays& days) {
    RecallList list = searchedIn(tracer);
    list.asked = hits.by != TraceHits::By::Nothing ? hits.text
                 : asked.trimmed().isEmpty()       ? QString()
                                                   : asked;
    list.by = hits.by;
    list.ingredients = hits.ingredients;
    list.formulas = tracer.formulasWith(hits.ingredients);
    list.days = days;
    if (!hits.ingredients.empty() || !hits.batches.empty())
        list.recall = tracer.whereWent(hits.ingredients,
                                       hits.batches.empty() ? QString() : hits.batches.front().lot, days);
    return list;
}

RecallList recallList(const Tracer& tracer, const TracedPatient& patient, const TraceDays& days) {
    RecallList list = searchedIn(tracer);
    list.asked = patient.name;
    list.patient = patient;
    list.days = days;
    list.recall = tracer.dispensedTo(patient.key, days);
    return list;
}

RecallList recallList(const Tracer& tracer, const TracedFormula& formula, const TraceDays& days) {
    RecallList list = searchedIn(tracer);
    list.asked = formula.name;
    list.formula = formula;
    list.days = days;
    list.recall = tracer.madeOf(formula.key, days);
    return list;
}

std::vector<CalledPatient> patientsToCall(const Recall& recall) {
    std::map<TraceKey, CalledPatient> byKey;
    for (const TracedPrescription& one : recall.prescriptions) {
        CalledPatient& patient = byKey[one.patient];
        patient.name = one.patientName;
        patient.phone = one.phone;
        patient.prescriptions.push_back(one);
    }
    std::vector<CalledPatient> all;
    for (auto& [key, patient] : byKey)
        all.push_back(std::move(patient));
    std::stable_sort(all.begin(), all.end(), [](const CalledPatient& one, const CalledPatient& other) {
        return one.name.compare(other.name, Qt::CaseInsensitive) < 0;
    });
    return all;
}

}  // namespace sorvanto
