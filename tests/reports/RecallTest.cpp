// The recall list on paper and as spreadsheet, over real records.
#include "RecallTest.h"
#include "reports/RecallTexts.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

TEST_F(RecallTest, SaysWhatWasAskedAndListsBatchesThenPatients) {
    const RunPtr run = paper(list(u"l1"_s));
    kept(*run, "recall");
    EXPECT_EQ(str(texts(*run, "lblReportTitle").join('|')), "Recall List|Recall List");
    EXPECT_EQ(str(text(*run, "txtAsked")), "l1 (found by lot)");
    EXPECT_EQ(str(text(*run, "lblDate")), str(dateText(clock.now())));
    EXPECT_EQ(str(text(*run, "txtSearched")),
              "Base · NDC 00-1 · Lot L1 · Northfield\n2 batches were searched.");
    EXPECT_EQ(str(text(*run, "txtTotals")), "2 batches · 3 prescriptions · 2 patients");
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B2|B1");
    EXPECT_EQ(str(texts(*run, "txtBatchReason").join('|')), "with B1|");
    EXPECT_EQ(str(texts(*run, "txtBatchFormula").join('|')), "Cooling Gel 1%|Cooling Gel 1%");
    EXPECT_EQ(str(texts(*run, "txtBatchQuantity").join('|')), "100 GMS|100 GMS");
    EXPECT_EQ(str(texts(*run, "txtCallPatient").join('|')), "Abernathy, Margaret|Xu, Jin")
        << "each once, by name";
    EXPECT_EQ(str(texts(*run, "txtCallPhone").join('|')), "440-555-0117|no phone number");
    EXPECT_EQ(str(text(*run, "txtCallDispensed")),
              "2/6/2026, Cooling Gel, 30.5 GMS, Lot B2\n1/6/2026, Cooling Gel, 30.5 GMS, Lot B1");
    EXPECT_EQ(str(texts(*run, "txtPage").join('|')), "Page 1|Page 2");
    EXPECT_EQ(str(text(*run, "txtEnd")), "2 batches · 3 prescriptions · 2 patients");
    EXPECT_TRUE(cut(*run).isEmpty());
}

TEST_F(RecallTest, ALotWithBlanksAroundItStandsThereAsItIs) {
    sql("UPDATE LogChem SET lch_Lot = '  L1' WHERE LogID = 1");
    const RecallList found = list(u"  L1"_s);
    EXPECT_EQ(str(text(*paper(found), "txtAsked")), "  L1 (found by lot)");
    EXPECT_TRUE(sheets(found).contains("Batches: Recall List:   L1 (found by lot)\n"_L1))
        << str(sheets(found));
    EXPECT_EQ(str(text(*paper(list(u" B1 "_s)), "txtAsked")), "B1 (found by lot)")
        << "that is what was found";
}

TEST_F(RecallTest, PatientsStandOnPagesOfTheirOwnWithABoxAndALine) {
    const RunPtr run = paper(list(u"L1"_s));
    ASSERT_EQ(run->document().pages.size(), 2U);
    int boxes = 0, lines = 0;
    const Page& page = run->document().pages[1];
    for (const PageBand& band : page.bands) {
        for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
            const QString name = run->document().controlOf(band, page.items[i]).name;
            boxes += name == "boxTick"_L1;
            lines += name == "linSign"_L1;
            EXPECT_NE(str(name), "txtBatchLot");
        }
    }
    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(str(text(*run, "lblPageCallSign")), "Date and signature");
    EXPECT_TRUE(texts(*run, "lblPageBatchLot").isEmpty())
        << "the first page has its headings below what was found";
    EXPECT_EQ(str(text(*run, "lblHeadBatchLot")), "Lot");
}

TEST_F(RecallTest, DatesAndWhatTheyHideAreNamed) {
    const RunPtr run = paper(list(u"L1"_s, {QDate(2026, 2, 1), QDate(2026, 3, 1)}));
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B2");
    EXPECT_TRUE(text(*run, "txtSearched").contains("Batches: from 2/1/2026 to 3/1/2026"));
    EXPECT_EQ(str(text(*run, "txtGaps")), "1 batch outside these dates is not listed.");
    EXPECT_EQ(str(text(*run, "txtTotals")), "1 batch · 1 prescription · 1 patient");
}

TEST_F(RecallTest, APatientsListBoundsThePrescriptions) {
    const Tracer tracer(openDB(), {});
    const RunPtr run = paper(recallList(tracer, tracer.patientOf(1).value(), {{}, QDate(2026, 1, 31)}));
    EXPECT_EQ(str(text(*run, "txtAsked")), "Abernathy, Margaret (Patient)");
    EXPECT_TRUE(text(*run, "txtSearched").startsWith("Prescriptions: to 1/31/2026"));
    EXPECT_EQ(str(text(*run, "txtGaps")), "1 prescription outside these dates is not listed.");
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B1");
}

TEST_F(RecallTest, TheFormulasThatUseItNowAreNamed) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) VALUES (7, 'Base', 'L1', '00-1')"_s);
    sql(u"INSERT INTO Formula (FormulaID, frm_Name, frm_Strength) VALUES (3, 'Salve', '1%'), (4, 'Gel', NULL)"_s);
    sql(u"INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (3, 7), (4, 7)"_s);
    EXPECT_EQ(
        str(text(*paper(list(u"L1"_s)), "txtSearched")),
        "Base · NDC 00-1 · Lot L1 · Northfield\nFormulas that use it now: Gel, Salve 1%\n2 batches were "
        "searched.");
    EXPECT_EQ(sheets(list(u"L1"_s)).count(": Formulas that use it now: Gel, Salve 1%\n"), 2)
        << "on both sheets";
    EXPECT_FALSE(sheets(list(u"B1"_s)).contains("Formulas that use")) << "no formula uses it";
}

TEST_F(RecallTest, FormulasThatFillMoreThanACellAreCutInIt) {
    RecallList all = list(u"L1"_s);
    all.formulas.assign(500, TracedFormula{1, QString(u'W').repeated(100), {}, {}});
    EXPECT_TRUE(sheets(all).contains("W\u2026\n"));
}

TEST_F(RecallTest, AFormulasListSaysSo) {
    const Tracer tracer(openDB(), {});
    const RunPtr run = paper(recallList(tracer, TracedFormula{3, u"Cooling Gel"_s, {}, {}}, {}));
    EXPECT_EQ(str(text(*run, "txtAsked")), "Cooling Gel (Formula)");
    EXPECT_EQ(str(text(*run, "txtSearched")), "2 batches were searched.");
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B2|B1");
}

TEST_F(RecallTest, ABatchWithoutIngredientsIsNamed) {
    batch(3, u"B3"_s, u"2026-03-05"_s, {}, {});
    const RunPtr run = paper(list(u"L1"_s));
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B2|B1|B3");
    EXPECT_EQ(str(texts(*run, "txtBatchReason").last()), "ingredients not known");
    EXPECT_EQ(str(text(*run, "txtGaps")),
              "1 batch is in the log without ingredients: whether it belongs here is not known.");
}

TEST_F(RecallTest, NothingFoundSaysWhereItWasLookedFor) {
    const RunPtr run = paper(list(u"nowhere"_s));
    ASSERT_EQ(run->document().pages.size(), 1U);
    EXPECT_EQ(str(text(*run, "txtAsked")), "nowhere");
    EXPECT_EQ(str(text(*run, "txtSearched")),
              "Nothing has this lot, NDC or name: 2 batches were searched.\n2 batches were searched.");
    EXPECT_EQ(str(text(*run, "txtTotals")), "0 batches · 0 prescriptions · 0 patients");
    EXPECT_TRUE(texts(*run, "lblHeadBatchLot").isEmpty()) << "no headings over nothing";
}

TEST_F(RecallTest, LongValuesStandWhole) {
    const QString name = u"Hydrocortisone-and-all-that-goes-with-it "_s.repeated(8).trimmed();
    const QString lot = QString(u'W').repeated(90);
    sql(u"UPDATE Log SET log_Name = '%1', log_Lot = '%2' WHERE LogID = 1"_s.arg(name, lot));
    sql(u"UPDATE Patient SET pat_LName = '%1', pat_Phone = '%2'"_s.arg(name, lot));
    sql(u"UPDATE LogChem SET lch_Supplier = '%1'"_s.arg(name));
    const RunPtr run = paper(list(u"L1"_s));
    kept(*run, "recall-long");
    EXPECT_TRUE(cut(*run).isEmpty()) << qPrintable(cut(*run).join('\n'));
    const QString pages =
        tools::output("pdftotext", {"-raw", pdf(*run, "long"), "-"}).simplified().remove(u' ');
    EXPECT_GE(pages.count(QString(name).remove(u' ')), 4) << qPrintable(pages);
    EXPECT_TRUE(QString(pages).remove(u'\n').contains(lot));
}

TEST_F(RecallTest, ManyRowsGoOnUnderTheirHeadings) {
    for (int key = 10; key < 80; ++key) {
        batch(key, u"C%1"_s.arg(key), u"2026-01-05"_s, u"Base"_s, u"L1"_s);
        sql(u"INSERT INTO Patient (PatientID, pat_LName) VALUES (%1, 'P%1')"_s.arg(key));
        prescription(key, key, u"2026-01-06"_s);
    }
    const RunPtr run = paper(list(u"L1"_s));
    EXPECT_EQ(texts(*run, "txtBatchLot").size(), 72);
    EXPECT_EQ(texts(*run, "txtCallPatient").size(), 72);
    const auto pages = static_cast<qsizetype>(run->document().pages.size());
    EXPECT_EQ(pages, 6);
    EXPECT_EQ(texts(*run, "lblPageBatchLot").size(), 2) << "on the second and third page of batches";
    EXPECT_EQ(texts(*run, "lblPageCallPatient").size(), pages - 3);
}

TEST_F(RecallTest, TheSpreadsheetHasBatchesThenPrescriptions) {
    EXPECT_EQ(str(sheets(list(u"L1"_s))),
              "Batches: Recall List: L1 (found by lot)\n"
              "Batches: Base · NDC 00-1 · Lot L1 · Northfield\n"
              "Batches: 2 batches were searched.\n"
              "Batches: 2 batches · 3 prescriptions · 2 patients\n"
              "Batches: \n"
              "Batches: Date|Formula|Strength|Lot|Remark|Quantity|Units|Logged|Verified\n"
              "Batches: 2026-02-05|Cooling Gel|1%|B2|with B1|100.0|GMS|AK|JT\n"
              "Batches: 2026-01-05|Cooling Gel|1%|B1||100.0|GMS|AK|JT\n"
              "Prescriptions: Recall List: L1 (found by lot)\n"
              "Prescriptions: Base · NDC 00-1 · Lot L1 · Northfield\n"
              "Prescriptions: 2 batches were searched.\n"
              "Prescriptions: 2 batches · 3 prescriptions · 2 patients\n"
              "Prescriptions: \n"
              "Prescriptions: Patient|Phone|Date|Drug Name|Quantity|Units|Lot|Doctor\n"
              "Prescriptions: Abernathy, Margaret|440-555-0117|2026-02-06|Cooling Gel|30.5|GMS|B2|Marsh\n"
              "Prescriptions: Xu, Jin||2026-01-07|Cooling Gel|30.5|GMS|B1|Marsh\n"
              "Prescriptions: Abernathy, Margaret|440-555-0117|2026-01-06|Cooling Gel|30.5|GMS|B1|Marsh\n");
}

TEST_F(RecallTest, TheSpreadsheetTellsHowFarItIsAndStops) {
    std::vector<double> parts;
    const RecallList all = list(u"L1"_s);
    const QByteArray whole = recallWorkbook(all, [&](double done) {
        parts.push_back(done);
        return true;
    });
    EXPECT_EQ(whole, recallWorkbook(all));
    ASSERT_FALSE(parts.empty());
    EXPECT_EQ(parts.front(), 0);
    EXPECT_TRUE(recallWorkbook(all, [](double) { return false; }).isEmpty());
}

class RecallLanguageTest : public RecallTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(RecallLanguageTest, NoHeadingIsCut) {
    speak(GetParam());
    batch(3, u"B3"_s, u"2026-03-05"_s, {}, {});
    const RunPtr run = paper(list(u"L1"_s, {{}, QDate(2026, 12, 31)}));
    kept(*run, u"recall-"_s + GetParam());
    EXPECT_TRUE(cut(*run).isEmpty()) << qPrintable(cut(*run).join('\n'));
    EXPECT_FALSE(recallWorkbook(list(u"L1"_s)).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, RecallLanguageTest,
                         ::testing::Values("English", "Spanish", "German", "French", "Russian", "Portuguese",
                                           "Italian", "Swiss"));

}  // namespace
