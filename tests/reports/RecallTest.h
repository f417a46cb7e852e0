// A small pharmacy whose batches hold one lot, and its recall list on paper and as spreadsheet.
#pragma once

#include "ReportTest.h"
#include "platform/basic/Paths.h"
#include "platform/report/Tools.h"
#include "reports/RecallWorkbook.h"
#include "reports/rptRecall.h"
#include "shared/basMain.h"
#include "trace/RecallList.h"

namespace sorvanto {

using namespace Qt::StringLiterals;

class RecallTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        useNewFile();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Phone) VALUES (1, 'Margaret', 'Abernathy', "
            "'440-555-0117'), (2, 'Jin', 'Xu', NULL)");
        batch(1, u"B1"_s, u"2026-01-05"_s, u"Base"_s, u"L1"_s);
        batch(2, u"B2"_s, u"2026-02-05"_s, u"Stock"_s, u"B1"_s);
        prescription(1, 1, u"2026-01-06"_s);
        prescription(2, 1, u"2026-02-06"_s);
        prescription(1, 2, u"2026-01-07"_s);
    }
    void batch(int key, const QString& lot, const QString& day, const QString& name,
               const QString& from) const {
        sql(u"INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Lot, log_Date, log_Quantity, log_Units, "
            "log_Initials, log_Verified) VALUES (%1, 3, 'Cooling Gel', '1%', '%2', '%3 10:00:00', 100, 'GMS', 'AK', "
            "'JT')"_s.arg(QString::number(key), lot, day));
        if (!name.isEmpty())
            sql(u"INSERT INTO LogChem (LogID, lch_Name, lch_Lot, lch_NDC, lch_Supplier) VALUES (%1, '%2', '%3', "
                "'00-1', 'Northfield')"_s.arg(QString::number(key), name, from));
    }
    void prescription(int batch, int patient, const QString& day) const {
        sql(u"INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY, rxs_Doctor) VALUES (%1, %2, '%3 00:00:00', 30.5, "
            "'Marsh')"_s.arg(QString::number(batch), QString::number(patient), day));
    }
    RecallList list(const QString& text, const TraceDays& days = {}) const {
        const Tracer tracer(openDB(), {folder.path()});
        return recallList(tracer, text, tracer.find(text), days);
    }
    static RunPtr paper(const RecallList& list) {
        return finished(std::make_unique<rptRecall>(context, list));
    }
    /// Sheet, row and texts of each row, as an independent reader sees them.
    QString sheets(const RecallList& list) const {
        const QString path = folder.path(u"recall.xls"_s);
        platform::writeFile(path, recallWorkbook(list));
        return tools::output("/usr/bin/python3", {"-c", R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
for sheet in book.sheets():
    for row in range(sheet.nrows):
        cells = [xlrd.xldate_as_datetime(c.value, 0).date().isoformat() if c.ctype == 3 else
                 c.value if c.ctype == 1 else c.value for c in sheet.row(row)]
        print(sheet.name, '|'.join(str(c) for c in cells).rstrip('|'), sep=': ')
)",
                                                  path});
    }
};

}  // namespace sorvanto
