// Recalls over a generated pharmacy, compared with a calculation that shares nothing with the program's.
#include "trace/TracePharmacy.h"

#include <QProcess>
#include <algorithm>
#include <random>
#include <set>

namespace sorvanto {
namespace {

constexpr int batchCount = 1'500;

class RecallGateTest : public TraceTest {
protected:
    /// Batches of one to six lines, their texts in any case; one line in eight is of another batch, and lots repeat. One
    /// line and one batch in nine has no lot, which is written in either way.
    void fill() const {
        const QDateTime first(QDate(2024, 1, 1), QTime(), Qt::UTC);
        QString statements = u"BEGIN;"_s;
        for (int key = 1; key <= batchCount; ++key) {
            statements +=
                u"INSERT INTO Log (LogID, log_Name, log_Lot, log_Date) VALUES (%1, 'F', %2, '%3');"_s.arg(
                    QString::number(key), written(batchLot(key)),
                    first.addSecs(key * 3600).toString(u"yyyy-MM-dd HH:mm:ss"_s));
            for (int line = below(6); line >= 0; --line) {
                QString lot = below(8) == 0 ? batchLot(1 + below(batchCount)) : supplierLot();
                if (below(4) == 0)
                    lot = lot.toLower();
                statements +=
                    u"INSERT INTO LogChem (LogID, lch_Name, lch_Lot, lch_NDC) VALUES (%1, '%2', %3, '%4');"_s
                        .arg(QString::number(key), inAnyCase(u"C%1"_s.arg(below(3))), written(lot),
                             inAnyCase(ndc()));
            }
            for (int times = below(3); times > 0; --times) {
                statements +=
                    u"INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (%1, %2, 1.0);"_s.arg(key).arg(
                        1 + below(2));
            }
        }
        sql(statements + u"COMMIT"_s);
        if (!isFile()) {  // the second calculation reads a file
            createDatabase(path());
            support::runSql(path(), twoPatients() + statements + u"COMMIT"_s);
        }
    }
    bool isFile() const { return place().location(path()) == path(); }
    int below(int bound) const { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    /// One in twenty has the lot of another one.
    static QString batchLot(int key) { return u"SV%1"_s.arg(key % 20 == 0 ? key - 3 : key); }
    QString supplierLot() const { return u"LOT-%1"_s.arg(below(900)); }
    QString inAnyCase(const QString& text) const { return below(4) == 0 ? text.toLower() : text; }
    QString ndc() const { return u"N-%1"_s.arg(below(300)); }
    QString written(const QString& lot) const {
        const int way = below(18);
        return way == 0 ? u"NULL"_s : way == 1 ? u"''"_s : u'\'' + lot + u'\'';
    }

    static QString keys(const std::set<std::int64_t>& all) {
        QStringList texts;
        for (const std::int64_t key : all)
            texts << QString::number(key);
        return texts.join(u' ');
    }
    static QString line(const Tracer& trace, const QString& text) {
        const Recall recall = trace.whereWent(trace.find(text).ingredients, {}, {});
        std::set<std::int64_t> batches, prescriptions, patients;
        for (const TracedBatch& batch : recall.batches)
            batches.insert(batch.key.key);
        for (const TracedPrescription& prescription : recall.prescriptions) {
            prescriptions.insert(prescription.key.key);
            patients.insert(prescription.patient.key);
        }
        EXPECT_EQ(static_cast<int>(patients.size()), recall.patients);
        return keys(batches) + u'|' + keys(prescriptions) + u'|' + keys(patients);
    }

    mutable std::mt19937 m_random{1};
};

// A thousand; over a line to a server so many in long runs alone.
TEST_F(RecallGateTest, EachRecallEqualsASecondCalculation) {
    const bool all = isFile() || qEnvironmentVariableIntValue("SORVANTO_LONG") != 0;
    const int recalls = all ? 1'000 : 100;
    fill();
    QStringList asked;
    for (int i = 0; i < recalls; ++i)
        asked << (below(4) == 0   ? u"ndc "_s + ndc()
                  : below(3) == 0 ? u"lot "_s + batchLot(1 + below(batchCount))
                                  : u"lot "_s + supplierLot());
    QProcess second;
    second.start(u"python3"_s,
                 QStringList{QString(SORVANTO_SOURCE_DIR) + u"/tests/trace/recall.py"_s, path()});
    ASSERT_TRUE(second.waitForStarted());
    second.write((asked.join(u'\n') + u'\n').toUtf8());
    second.closeWriteChannel();
    ASSERT_TRUE(second.waitForFinished(120'000));
    const QStringList expected = QString::fromUtf8(second.readAllStandardOutput()).split(u'\n');
    ASSERT_EQ(expected.size(), asked.size() + 1) << second.readAllStandardError().toStdString();
    const Tracer trace = tracer();
    int batches = 0;
    for (int i = 0; i < recalls; ++i) {
        const QString found = line(trace, asked[i].sliced(4));
        ASSERT_EQ(found, expected[i]) << asked[i].toStdString();
        batches += static_cast<int>(found.section(u'|', 0, 0).count(u' ')) + 1;
    }
    EXPECT_GT(batches, recalls * 3) << "they lead somewhere";
    RecordProperty("batches", batches);
}

}  // namespace
}  // namespace sorvanto
