// A small pharmacy whose batches are easily told apart, for the tests of the trace.
#pragma once

#include "RecordsPlace.h"
#include "TempProgramFolder.h"
#include "history/HistoryTest.h"
#include "platform/data/Connection.h"
#include "trace/Tracer.h"

#include <gtest/gtest.h>

namespace sorvanto {

using namespace Qt::StringLiterals;

class TraceTest : public ::testing::Test {
protected:
    void SetUp() override {
        createRecords(path());
        sql(twoPatients());
    }
    QString path(const QString& name = u"sorvanto.mdb"_s) const { return folder.path(name); }
    void sql(const QString& statements) const { place().run(path(), statements); }
    static support::RecordsPlace& place() { return support::RecordsPlace::current(); }

    /// A batch of the day in 2026; its lines are "name lot", parted by commas.
    void batch(int key, const QString& lot, const QString& day, const QString& lines) const {
        sql(u"INSERT INTO Log (LogID, FormulaID, log_Name, log_Lot, log_Date, log_Quantity, log_Units, log_Initials, "
            "log_Verified) VALUES (%1, 3, 'Formula %1', '%2', '2026-%3 10:00:00', 100, 'GMS', 'AK', 'JT')"_s
                .arg(QString::number(key), lot, day));
        for (const QString& line : lines.split(u',', Qt::SkipEmptyParts)) {
            const QStringList words = line.simplified().split(u' ');
            sql(u"INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_Lot, lch_NDC, lch_Units, lch_QTY) VALUES "
                "(%1, 7, '%2', '%3', 'N-%2', 'GMS', 2.5)"_s.arg(QString::number(key), words[0],
                                                                words.value(1)));
        }
    }
    void prescription(int batch, int patient, const QString& day) const {
        sql(u"INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY, rxs_Doctor) VALUES (%1, %2, '2026-%3 00:00:00', "
            "30.0, 'Marsh')"_s.arg(QString::number(batch), QString::number(patient), day));
    }

    Tracer tracer() const {
        auto connection = std::make_shared<platform::Connection>();
        connection->open(u"Data Source="_s + place().location(path()));
        return Tracer(connection, {folder.path()});
    }
    /// Lots of the batches that a lot is in, each with the base it came with: "B2 B3<B2".
    static QString lots(const Recall& recall) {
        QStringList texts;
        for (const TracedBatch& batch : recall.batches)
            texts << (batch.base.isEmpty() ? batch.lot : batch.lot + u'<' + batch.base);
        return texts.join(u' ');
    }
    QString whereUsed(const QString& lot, const TraceDays& days = {}) const {
        const Tracer trace = tracer();
        return lots(trace.whereWent(trace.find(lot).ingredients, {}, days));
    }

    static QString twoPatients() {
        return u"INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Phone) VALUES (1, 'Margaret', 'Abernathy', "
               "'440-555-0117'), (2, 'Jin', 'Xu', '440-555-0188');"_s;
    }
    support::TempProgramFolder folder;
};

}  // namespace sorvanto
