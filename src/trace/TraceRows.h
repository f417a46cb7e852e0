// What a trace finds: rows as the log froze them, with the keys by which their records are opened.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <vector>

namespace sorvanto {

/// A row of one of the files that are searched: 0 is the database in use, from 1 on its archives.
struct TraceKey {
    int file = 0;
    std::int64_t key = 0;

    auto operator<=>(const TraceKey&) const = default;
};

/// Something that goes into batches. Name, NDC and lot tell it from others; the rest is what was written last.
struct Ingredient {
    QString name, ndc, lot, form, supplier;
};

/// How much of an ingredient went into a batch, or into the stock base of another lot that the batch was made with.
struct UsedIngredient {
    Ingredient ingredient;
    double quantity = 0;  ///< of units, as it was logged with the batch or the base
    QString units;
    QString base;  ///< lot of the stock base that it came with; empty: put in itself
};

struct TracedBatch {
    TraceKey key;
    QDateTime date;
    QString formula, strength, lot;
    int quantity = 0;
    QString units, initials, verified;
    QString base;  ///< lot of the stock base through which it belongs here; empty: it belongs itself
    bool hasNoLines = false;  ///< nothing is known of what went into it
    bool lacksLines = false;  ///< its ingredients cost less than the batch: some of them are not written down
};

struct TracedPrescription {
    TraceKey key, batch, patient;
    QDateTime date;
    QString patientName, phone;  ///< "Last, First"
    QString drug, batchLot;
    double quantity = 0;
    QString units, doctor;
};

struct TracedPatient {
    std::int64_t key = 0;
    QString name, phone;  ///< "Last, First"
    QDate born;
};

/// A formula as it stands now in the database in use.
struct TracedFormula {
    std::int64_t key = 0;
    QString name, strength, ndc;
};

/// Batches made in these days, both included; an invalid date is no bound.
struct TraceDays {
    QDate from, to;

    bool holds(const QDateTime& date) const {
        return (!from.isValid() || (date.isValid() && date.date() >= from)) &&
               (!to.isValid() || (date.isValid() && date.date() <= to));
    }
};

/// Older batches that left the database for a file of their own, whether it is at hand or not.
struct GivenOffArchive {
    QString identity;
    QDate first, last;
    std::int64_t batches = 0;
};

/// Where something went. Newest first.
struct Recall {
    std::vector<TracedBatch> batches;
    std::vector<TracedPrescription> prescriptions;
    int patients = 0;  ///< different ones of the prescriptions
    std::vector<TracedBatch>
        uncertain;                ///< batches without their lines: whether they belong here can't be told
    int hiddenBatches = 0;        ///< that belong here, made outside the days that were asked for
    int hiddenPrescriptions = 0;  ///< of a patient, dispensed outside the days
};

/// What a text stands for.
struct TraceHits {
    enum class By { Nothing, Lot, Ndc, Name, Batch };
    By by = By::Nothing;  ///< Batch: its lot alone, no ingredient's
    QString text;         ///< that stands for them: as it was asked, or without the blanks around it
    std::vector<Ingredient> ingredients;  ///< by name, then lot
    std::vector<TracedBatch> batches;     ///< made under this lot
};

}  // namespace sorvanto
