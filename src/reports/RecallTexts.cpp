#include "reports/RecallTexts.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "platform/report/Report.h"
#include "shared/Translator.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString dayOf(const QDate& date) { return recallDay(date.startOfDay(Qt::UTC)); }

QString ofArchive(const QString& forms, const GivenOffArchive& archive) {
    return platform::counted(translated(forms), archive.batches)
        .replace(u"%2"_s, dayOf(archive.first))
        .replace(u"%3"_s, dayOf(archive.last));
}

QString ofCount(const QString& forms, std::size_t count) {
    return platform::counted(translated(forms), static_cast<std::int64_t>(count));
}

}  // namespace

QString recallDay(const QDateTime& date) {
    return date.isValid() ? platform::dateText(QDateTime(date.date(), QTime(0, 0), Qt::UTC)) : QString();
}

QString recallAmount(double quantity, const QString& units) {
    const QString number = platform::shownText(quantity, QString());
    return units.isEmpty() ? number : number + u' ' + units;
}

QString reasonOf(const TracedBatch& batch) {
    if (batch.hasNoLines)
        return translated(u"ingredients not known"_s);
    if (batch.lacksLines)
        return translated(u"ingredients not complete"_s);
    return batch.base.isEmpty() ? QString() : translated(u"with %1"_s).replace(u"%1"_s, batch.base);
}

QString foundBy(const RecallList& list) {
    if (list.patient)
        return translated(u"Patient"_s);
    if (list.formula)
        return translated(u"Formula"_s);
    switch (list.by) {
    case TraceHits::By::Lot:
        return translated(u"found by lot"_s);
    case TraceHits::By::Ndc:
        return translated(u"found by NDC"_s);
    case TraceHits::By::Name:
        return translated(u"found by name"_s);
    case TraceHits::By::Batch:
        return translated(u"lot of a batch"_s);
    case TraceHits::By::Nothing:
        break;
    }
    return {};
}

QString formulaText(const TracedFormula& formula) {
    return formula.strength.isEmpty() ? formula.name : formula.name + u' ' + formula.strength;
}

QString recallFormulas(const RecallList& list) {
    QStringList names;
    for (const TracedFormula& formula : list.formulas)
        names << formulaText(formula);
    return names.isEmpty()
               ? QString()
               : translated(u"Formulas that use it now: %1"_s).replace(u"%1"_s, names.join(u", "_s));
}

QString recallTotals(const Recall& recall) {
    return QStringList{ofCount(u"%1 batch | %1 batches"_s, recall.batches.size()),
                       ofCount(u"%1 prescription | %1 prescriptions"_s, recall.prescriptions.size()),
                       ofCount(u"%1 patient | %1 patients"_s, static_cast<std::size_t>(recall.patients))}
        .join(u" · "_s);
}

QString recallDays(const TraceDays& days) {
    QStringList parts;
    if (days.from.isValid())
        parts << translated(u"from %1"_s).replace(u"%1"_s, dayOf(days.from));
    if (days.to.isValid())
        parts << translated(u"to %1"_s).replace(u"%1"_s, dayOf(days.to));
    return parts.join(u' ');
}

QStringList recallSearched(const RecallList& list) {
    QStringList sentences{platform::counted(
        translated(u"%1 batch was searched. | %1 batches were searched."_s), list.searched)};
    for (const GivenOffArchive& archive : list.archives)
        sentences << ofArchive(u"An archive with %1 batch from %2 to %3 is among them. | An archive with %1 "
                               "batches from %2 to %3 is among them."_s,
                               archive);
    return sentences;
}

QStringList recallGaps(const RecallList& list) {
    QStringList sentences;
    for (const GivenOffArchive& archive : list.absent)
        sentences << ofArchive(
            u"An archive with %1 batch from %2 to %3 is not at hand and was not searched. | "
            "An archive with %1 batches from %2 to %3 is not at hand and was not "
            "searched."_s,
            archive);
    if (!list.absent.empty())
        sentences << translated(u"What is counted here is not final."_s);
    const Recall& recall = list.recall;
    if (recall.hiddenBatches > 0)
        sentences << platform::counted(translated(u"%1 batch outside these dates is not listed. | %1 batches "
                                                  "outside these dates are not listed."_s),
                                       recall.hiddenBatches);
    if (recall.hiddenPrescriptions > 0)
        sentences << platform::counted(translated(u"%1 prescription outside these dates is not listed. | %1 "
                                                  "prescriptions outside these dates are not listed."_s),
                                       recall.hiddenPrescriptions);
    const auto lacking =
        static_cast<std::size_t>(std::count_if(recall.uncertain.begin(), recall.uncertain.end(),
                                               [](const TracedBatch& batch) { return batch.lacksLines; }));
    if (recall.uncertain.size() > lacking)
        sentences << ofCount(
            u"%1 batch is in the log without ingredients: whether it belongs here is not known. | "
            "%1 batches are in the log without ingredients: whether they belong here is not known."_s,
            recall.uncertain.size() - lacking);
    if (lacking > 0)
        sentences << ofCount(
            u"%1 batch cost more than its ingredients in the log: some are missing, and whether it belongs here is not "
            "known. | %1 batches cost more than their ingredients in the log: some are missing, and whether they belong "
            "here is not known."_s,
            lacking);
    return sentences;
}

QString recallNoBatch(std::int64_t searched) {
    return platform::counted(
        translated(
            u"No batch took it in: %1 batch was searched. | No batch took it in: %1 batches were searched."_s),
        searched);
}

QString recallNotDispensed(std::int64_t searched) {
    return platform::counted(
        translated(
            u"Nothing was dispensed: %1 batch was searched. | Nothing was dispensed: %1 batches were searched."_s),
        searched);
}

QString recallNotMade(std::int64_t searched) {
    return platform::counted(
        translated(
            u"No batch was made of it: %1 batch was searched. | No batch was made of it: %1 batches were searched."_s),
        searched);
}

QString recallNothing(std::int64_t searched) {
    return platform::counted(
        translated(
            u"Nothing has this lot, NDC or name: %1 batch was searched. | Nothing has this lot, NDC or name: "
            "%1 batches were searched."_s),
        searched);
}

}  // namespace sorvanto
