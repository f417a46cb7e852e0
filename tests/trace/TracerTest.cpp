// Where a lot went and what is in a batch, over real records.
#include "trace/RecallList.h"
#include "trace/TracePharmacy.h"

namespace sorvanto {
namespace {

TEST_F(TraceTest, ALotLeadsToItsBatchesPrescriptionsAndPatients) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1, Active L2"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base L1"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Base L9, Active L2"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(1, 2, u"01-07"_s);
    prescription(3, 1, u"03-06"_s);
    const Tracer trace = tracer();
    const TraceHits hits = trace.find(u" l1 "_s);
    ASSERT_EQ(hits.ingredients.size(), 1U);
    EXPECT_EQ(hits.by, TraceHits::By::Lot);
    EXPECT_EQ(hits.ingredients[0].name, u"Base"_s);
    const Recall recall = trace.whereWent(hits.ingredients, {}, {});
    EXPECT_EQ(lots(recall), u"B2 B1"_s) << "newest first";
    ASSERT_EQ(recall.prescriptions.size(), 2U);
    EXPECT_EQ(recall.prescriptions[0].patientName, u"Xu, Jin"_s);
    EXPECT_EQ(recall.prescriptions[0].phone, u"440-555-0188"_s);
    EXPECT_EQ(recall.prescriptions[1].batchLot, u"B1"_s);
    EXPECT_EQ(recall.patients, 2);
    EXPECT_EQ(trace.searched(), 3);
}

TEST_F(TraceTest, OnePatientOfManyPrescriptionsIsOne) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(1, 1, u"01-07"_s);
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    EXPECT_EQ(recall.prescriptions.size(), 2U);
    EXPECT_EQ(recall.patients, 1);
}

TEST_F(TraceTest, AStockBaseIsFollowedToAnyDepth) {
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base b1"_s);  // made with B1, in another case
    batch(3, u"B3"_s, u"03-05"_s, u"Base B2, Other L3"_s);
    batch(4, u"B4"_s, u"04-05"_s, u"Other L3"_s);
    prescription(3, 1, u"03-06"_s);
    EXPECT_EQ(whereUsed(u"L1"_s), u"B3<B2 B2<B1 B1"_s);
    const Tracer trace = tracer();
    EXPECT_EQ(lots(trace.whereWent({}, u"B2"_s, {})), u"B3<B2 B2"_s);
    EXPECT_EQ(trace.whereWent({}, u"B1"_s, {}).prescriptions.size(), 1U);
    QStringList in;
    for (const UsedIngredient& line : trace.contents({0, 3}))
        in << line.ingredient.name + u' ' + line.ingredient.lot + u'<' + line.base;
    EXPECT_EQ(in.join(u", "_s), u"Base B2<, Other L3<, Base b1<B2, Powder L1<b1"_s);
}

TEST_F(TraceTest, ABatchThatHoldsItsOwnLotEndsTheWay) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base B2, Powder L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base B1"_s);
    EXPECT_EQ(whereUsed(u"L1"_s), u"B2<B1 B1"_s);
    EXPECT_EQ(tracer().contents({0, 1}).size(), 5U);
}

TEST_F(TraceTest, WhatHasNoLotIsFollowedByItsNdcAndItsName) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base"_s);
    batch(2, QString(), u"02-05"_s, u"Base"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Base L1, Water"_s);
    batch(4, u"B4"_s, u"04-05"_s, u"Gel B1"_s);
    batch(5, u"B5"_s, u"05-05"_s, u"Other"_s);
    sql(u"UPDATE LogChem SET lch_Lot = NULL WHERE LogID = 2"_s);
    sql(u"INSERT INTO Chemical (chm_Name, chm_Lot, chm_NDC) VALUES ('Base', '', 'N-Base')"_s);
    const Tracer trace = tracer();
    const TraceHits hits = trace.find(u"N-Base"_s);
    ASSERT_EQ(hits.ingredients.size(), 2U) << "an empty lot and none are the same";
    ASSERT_EQ(hits.ingredients[0].lot, QString());
    EXPECT_EQ(lots(trace.whereWent({hits.ingredients[0]}, {}, {})), u"B4<B1  B1"_s);
    EXPECT_EQ(lots(trace.whereWent({hits.ingredients[1]}, {}, {})), u"B3"_s);
    EXPECT_EQ(lots(trace.whereWent(trace.find(u"Wat"_s).ingredients, {}, {})), u"B3"_s);
    EXPECT_EQ(trace.contents({0, 1}).size(), 1U) << "what has no lot was not made here";
}

TEST_F(TraceTest, TwoIngredientsOfOneLotAreToldApart) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Active L1"_s);
    const Tracer trace = tracer();
    const TraceHits hits = trace.find(u"L1"_s);
    ASSERT_EQ(hits.ingredients.size(), 2U);
    EXPECT_EQ(hits.ingredients[0].name, u"Active"_s);
    EXPECT_EQ(lots(trace.whereWent({hits.ingredients[0]}, {}, {})), u"B2"_s);
    EXPECT_EQ(lots(trace.whereWent(hits.ingredients, {}, {})), u"B2 B1"_s);
}

TEST_F(TraceTest, AnIngredientWrittenInAnotherCaseIsTheSame) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"BASE l1"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Base L1"_s);
    batch(4, u"B4"_s, u"04-05"_s, u"Gel"_s);
    batch(5, u"B5"_s, u"05-05"_s, u"GEL"_s);
    sql(u"UPDATE LogChem SET lch_NDC = lower(lch_NDC) WHERE LogID = 3"_s);
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) VALUES (7, 'bASE', 'L1', 'N-Base')"_s);
    const Tracer trace = tracer();
    const TraceHits hits = trace.find(u"L1"_s);
    ASSERT_EQ(hits.ingredients.size(), 1U);
    EXPECT_EQ(lots(trace.whereWent(hits.ingredients, {}, {})), u"B3 B2 B1"_s);
    EXPECT_EQ(trace.chemicalOf(hits.ingredients[0]), 7);
    sql(u"INSERT INTO Formula (FormulaID, frm_Name) VALUES (3, 'Gel')"_s);
    sql(u"INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (3, 7)"_s);
    EXPECT_EQ(trace.formulasWith(hits.ingredients).size(), 1U);
    EXPECT_EQ(lots(trace.whereWent(trace.find(u"gel"_s).ingredients, {}, {})), u"B5 B4"_s)
        << "without a lot too";
}

TEST_F(TraceTest, FoundByNdcThenByAnyPartOfTheName) {
    sql(u"INSERT INTO Chemical (chm_Name, chm_Lot, chm_NDC, chm_Supplier) VALUES ('Crème base', 'L5', '111-22', 'Q')"_s);
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    const Tracer trace = tracer();
    EXPECT_EQ(trace.find(u"n-base"_s).by, TraceHits::By::Ndc);
    const TraceHits named = trace.find(u"CREME"_s);
    EXPECT_EQ(named.by, TraceHits::By::Name);
    ASSERT_EQ(named.ingredients.size(), 1U);
    EXPECT_EQ(named.ingredients[0].supplier, u"Q"_s);
    EXPECT_EQ(trace.find(u"base"_s).ingredients.size(), 2U) << "of a batch, and a chemical never used";
    EXPECT_EQ(trace.find(u"nothing"_s).by, TraceHits::By::Nothing);
    EXPECT_TRUE(trace.find(u"  "_s).ingredients.empty());
    EXPECT_TRUE(trace.find(u"' OR 1=1 --"_s).ingredients.empty()) << "a text is never part of a statement";
}

TEST_F(TraceTest, ADeletedOrChangedChemicalIsFoundAsItWasLogged) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot) VALUES (7, 'Now', 'L2')"_s);
    batch(1, u"B1"_s, u"01-05"_s, u"Then L1"_s);
    EXPECT_EQ(whereUsed(u"L1"_s), u"B1"_s);
    EXPECT_EQ(whereUsed(u"L2"_s), QString());
}

TEST_F(TraceTest, TheFormulasThatUseAnIngredientNow) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) VALUES (1, 'Base', 'L1', 'N1'), (2, 'Base', 'L2', "
        "'N1'), (3, 'Water', NULL, '')"_s);
    sql(u"INSERT INTO Formula (FormulaID, frm_Name, frm_Strength) VALUES (1, 'Salve', '1%'), (2, 'gel', NULL), "
        "(3, 'Cream', NULL), (4, 'Drops', NULL)"_s);
    sql(u"INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (1, 1), (1, 1), (1, 3), (2, 1), (3, 2), (4, 3)"_s);
    const Tracer trace = tracer();
    const auto names = [&](const QString& text) {
        QStringList all;
        const TraceHits hits = trace.find(text);
        for (const TracedFormula& formula : recallList(trace, text, hits, {}).formulas)
            all << QString::number(formula.key) + u' ' + formula.name + u' ' + formula.strength;
        return all.join(u", "_s).toStdString();
    };
    EXPECT_EQ(names(u"L1"_s), "2 gel , 1 Salve 1%") << "each once, by name";
    EXPECT_EQ(names(u"L2"_s), "3 Cream ");
    EXPECT_EQ(names(u"N1"_s), "3 Cream , 2 gel , 1 Salve 1%");
    EXPECT_EQ(names(u"Water"_s), "4 Drops , 1 Salve 1%") << "no lot and an empty NDC are the same as none";
    EXPECT_EQ(names(u"nothing"_s), "");
}

TEST_F(TraceTest, AFormulaLeadsToItsBatchesAndAllMadeWithThem) {
    sql(u"INSERT INTO Formula (FormulaID, frm_Name) VALUES (3, 'Stock base'), (4, 'Crème'), (5, 'Unused base')"_s);
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base B1"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Powder L1"_s);
    sql(u"UPDATE Log SET FormulaID = 4 WHERE LogID > 1"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(2, 2, u"02-06"_s);
    const Tracer trace = tracer();
    const std::vector<TracedFormula> bases = trace.formulasNamed(u"BASE"_s);
    ASSERT_EQ(bases.size(), 2U);
    EXPECT_EQ(bases[0].key, 3);
    const RecallList list = recallList(trace, bases[0], {});
    EXPECT_EQ(list.asked, u"Stock base"_s);
    EXPECT_EQ(list.formula->key, 3);
    EXPECT_EQ(list.searched, 3);
    EXPECT_EQ(lots(list.recall), u"B2<B1 B1"_s) << "whatever they were called";
    EXPECT_EQ(list.recall.prescriptions.size(), 2U);
    EXPECT_EQ(lots(trace.madeOf(4, {})), u"B3 B2"_s);
    EXPECT_EQ(lots(trace.madeOf(3, {QDate(2026, 2, 1), {}})), u"B2<B1"_s);
    EXPECT_TRUE(trace.madeOf(5, {}).batches.empty());
    EXPECT_EQ(trace.formulasNamed(u"creme"_s).at(0).key, 4);
    EXPECT_EQ(trace.formulaOf(5)->name, u"Unused base"_s);
    EXPECT_FALSE(trace.formulaOf(9));
}

TEST_F(TraceTest, SimilarLotsAreNamedApartAndNeverSearched) {
    batch(1, u"SV0426"_s, u"01-05"_s, u"Base HC24118"_s);
    batch(2, u"B2"_s, u"01-05"_s, u"Base HC-24118"_s);
    Tracer trace = tracer();
    const TraceHits hits = trace.find(u"HC24118"_s);
    EXPECT_EQ(hits.ingredients.size(), 1U);
    EXPECT_EQ(trace.similarTo(u"HC24118"_s), QStringList{u"HC-24118"_s});
    EXPECT_EQ(lots(trace.whereWent(hits.ingredients, {}, {})), u"SV0426"_s);
    EXPECT_EQ(trace.similarTo(u"SVO426"_s), QStringList{u"SV0426"_s}) << "a batch's lot too";
}

TEST_F(TraceTest, ALotIsFoundWithTheBlanksThatItHasOrWithout) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base L2"_s);
    batch(3, u"B3\u00a0"_s, u"03-05"_s, u"Other L3"_s);
    sql(u"UPDATE LogChem SET lch_Lot = 'L1\u00a0' WHERE LogID = 2"_s);
    Tracer trace = tracer();
    const QString raw = u"L1\u00a0"_s;
    EXPECT_EQ(trace.similarTo(u"L1"_s), QStringList{raw});
    EXPECT_EQ(whereUsed(raw), u"B2"_s) << "as it is first";
    EXPECT_EQ(trace.similarTo(raw), QStringList{u"L1"_s}) << "what was not searched";
    EXPECT_EQ(whereUsed(u"L1"_s), u"B1"_s);
    EXPECT_EQ(whereUsed(u"\tL1 "_s), u"B1"_s) << "then without the blanks around it";
    EXPECT_EQ(trace.similarTo(u"\tL1 "_s), QStringList{raw});
    EXPECT_EQ(trace.find(u"B3\u00a0"_s, TraceHits::By::Batch).batches.size(), 1U);
    EXPECT_EQ(trace.find(u" B3\u00a0"_s, TraceHits::By::Batch).batches.size(), 0U);
    for (const QString& lot : {u" L9"_s, u"L9\t"_s, u"L9  "_s}) {
        sql(u"UPDATE LogChem SET lch_Lot = '%1' WHERE LogID = 2"_s.arg(lot));
        EXPECT_EQ(whereUsed(lot), u"B2"_s) << lot.toStdString();
    }
}

TEST_F(TraceTest, ABatchIsFoundByItsLotTwinsIncluded) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"b1"_s, u"02-05"_s, u"Base L2"_s);
    const TraceHits hits = tracer().find(u"B1"_s);
    ASSERT_EQ(hits.batches.size(), 2U);
    EXPECT_EQ(hits.batches[0].key.key, 2);
    EXPECT_TRUE(hits.ingredients.empty());
    EXPECT_EQ(lots(tracer().whereWent({}, u"B1"_s, {})), u"b1 B1"_s);
}

TEST_F(TraceTest, TheDaysBoundTheBatchesNotTheWay) {
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base B1"_s);
    prescription(1, 1, u"01-06"_s);
    EXPECT_EQ(whereUsed(u"L1"_s, {QDate(2026, 2, 5), QDate(2026, 2, 5)}), u"B2<B1"_s);
    EXPECT_EQ(whereUsed(u"L1"_s, {QDate(), QDate(2026, 2, 4)}), u"B1"_s);
    const Tracer trace = tracer();
    EXPECT_EQ(
        trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {QDate(2026, 2, 1), {}}).prescriptions.size(),
        0U);
}

TEST_F(TraceTest, OfOneMomentTheLaterRowIsTheNewer) {
    for (int key = 1; key < 4; ++key) {
        batch(key, u"B%1"_s.arg(key), u"01-05"_s, u"Base L1"_s);
        prescription(key, 1, u"01-06"_s);
    }
    EXPECT_EQ(whereUsed(u"L1"_s), u"B3 B2 B1"_s);
    const Tracer trace = tracer();
    QStringList dispensed;
    for (const TracedPrescription& one : trace.dispensedTo(1, {}).prescriptions)
        dispensed << one.batchLot;
    EXPECT_EQ(dispensed.join(u' '), u"B3 B2 B1"_s);
}

TEST_F(TraceTest, WhatHasNoDateLiesOutsideOfAnyBound) {
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    sql(u"UPDATE Log SET log_Date = NULL"_s);
    EXPECT_EQ(whereUsed(u"L1"_s), u"B1"_s);
    const Tracer trace = tracer();
    for (const TraceDays& days : {TraceDays{{}, QDate(2026, 12, 31)}, TraceDays{QDate(2000, 1, 1), {}}}) {
        const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, days);
        EXPECT_TRUE(recall.batches.empty());
        EXPECT_EQ(recall.hiddenBatches, 1) << "and is counted";
    }
}

TEST_F(TraceTest, PatientsOfOneNameAreCalledEach) {
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Phone) VALUES (3, 'Jin', 'Xu', 'other')"_s);
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    for (const int patient : {2, 3})
        prescription(1, patient, u"01-06"_s);
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    EXPECT_EQ(recall.patients, 2);
    ASSERT_EQ(patientsToCall(recall).size(), 2U);
    EXPECT_NE(patientsToCall(recall)[0].phone, patientsToCall(recall)[1].phone);
}

TEST_F(TraceTest, ALotOfTwoBatchesBringsTheLinesOfBoth) {
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    batch(2, u"B1"_s, u"02-05"_s, u"Water L2"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Base B1, Again b1"_s);
    QStringList in;
    for (const UsedIngredient& line : tracer().contents({0, 3}))
        in << line.ingredient.lot + u'<' + line.base;
    EXPECT_EQ(in.join(u' '), u"B1< b1< L1<B1 L2<B1"_s) << "and once, though the base is in it twice";
}

TEST_F(TraceTest, SimilarLotsStandOnceAndInOrder) {
    batch(1, u"AB-100"_s, u"01-05"_s, u"Base AB-100, Base ab100, Base AB1OO, Other AB10"_s);
    batch(2, u"AA100"_s, u"02-05"_s, QString());
    EXPECT_EQ(tracer().similarTo(u"AB100"_s).join(u' '), u"AA100 AB-100 AB10 AB1OO"_s);
}

TEST_F(TraceTest, WhatTheDaysHideIsCounted) {
    batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base B1"_s);
    batch(3, u"B3"_s, u"03-05"_s, u"Other L9"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(2, 1, u"02-06"_s);
    const Tracer trace = tracer();
    const TraceHits hits = trace.find(u"L1"_s);
    EXPECT_EQ(trace.whereWent(hits.ingredients, {}, {QDate(2026, 2, 1), {}}).hiddenBatches, 1);
    EXPECT_EQ(trace.whereWent(hits.ingredients, {}, {{}, QDate(2026, 1, 4)}).hiddenBatches, 2);
    EXPECT_EQ(trace.whereWent(hits.ingredients, {}, {}).hiddenBatches, 0);
    EXPECT_EQ(trace.dispensedTo(1, {{}, QDate(2026, 1, 31)}).hiddenPrescriptions, 1);
    EXPECT_EQ(trace.dispensedTo(1, {}).hiddenPrescriptions, 0);
}

TEST_F(TraceTest, WhatATextIsCanBeSaid) {
    using By = TraceHits::By;
    sql(u"INSERT INTO Chemical (chm_Name, chm_Lot, chm_NDC) VALUES ('B1', 'X1', 'L1')"_s);
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    const Tracer trace = tracer();
    EXPECT_EQ(trace.find(u"L1"_s, By::Lot).ingredients.at(0).name, u"Base"_s);
    EXPECT_EQ(trace.find(u" L1 "_s, By::Ndc).ingredients.at(0).name, u"B1"_s);
    EXPECT_TRUE(trace.find(u"L1"_s, By::Batch).ingredients.empty());
    EXPECT_EQ(trace.find(u"B1"_s, By::Batch).batches.size(), 1U);
    EXPECT_EQ(trace.find(u"B1"_s, By::Name).ingredients.size(), 1U);
    EXPECT_TRUE(trace.find(u"B1"_s, By::Name).batches.empty());
    const TraceHits base = trace.find(u"B1"_s, By::Lot);
    EXPECT_EQ(base.by, By::Batch) << "a lot of nothing bought, but of a batch";
    EXPECT_EQ(base.batches.size(), 1U);
}

TEST_F(TraceTest, AListSaysWhatWasAskedAndWhere) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1, Active L2"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base L1"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(1, 2, u"01-07"_s);
    prescription(2, 1, u"02-07"_s);
    const Tracer trace = tracer();
    const TraceDays days{QDate(2026, 1, 1), {}};
    const RecallList list = recallList(trace, u" L1 "_s, trace.find(u"L1"_s), days);
    EXPECT_EQ(list.asked, u"L1"_s);
    EXPECT_EQ(list.by, TraceHits::By::Lot);
    EXPECT_EQ(list.ingredients.size(), 1U);
    EXPECT_EQ(list.searched, 2);
    EXPECT_EQ(list.days.from, QDate(2026, 1, 1));
    EXPECT_EQ(lots(list.recall), u"B2 B1"_s);
    const std::vector<CalledPatient> patients = patientsToCall(list.recall);
    ASSERT_EQ(patients.size(), 2U);
    EXPECT_EQ(patients[0].name, u"Abernathy, Margaret"_s);
    EXPECT_EQ(patients[0].prescriptions.size(), 2U);
    EXPECT_EQ(patients[0].prescriptions[0].batchLot, u"B2"_s) << "newest first";
    EXPECT_EQ(patients[1].phone, u"440-555-0188"_s);
    EXPECT_TRUE(recallList(trace, u"no"_s, trace.find(u"no"_s), {}).recall.batches.empty());
}

TEST_F(TraceTest, AListBearsTheTextThatStandsForWhatItLists) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L7, Active L2"_s);
    sql(u"UPDATE LogChem SET lch_Lot = ' L7' WHERE lch_Lot = 'L7'"_s);
    const Tracer trace = tracer();
    const auto asked = [&](const QString& text) {
        return recallList(trace, text, trace.find(text), {}).asked;
    };
    ASSERT_EQ(trace.find(u" L7"_s).ingredients.size(), 1U);
    EXPECT_EQ(asked(u" L7"_s), u" L7"_s) << "a lot with a blank is another than one without";
    EXPECT_EQ(asked(u" L2"_s), u"L2"_s) << "found without the blank";
    EXPECT_EQ(asked(u" act "_s), u"act"_s);
    EXPECT_EQ(asked(u" L9 "_s), u" L9 "_s) << "nothing was found as it was typed";
    EXPECT_EQ(asked(u"  "_s), QString());
}

TEST_F(TraceTest, APatientsListNamesThePatient) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    prescription(1, 2, u"01-07"_s);
    const Tracer trace = tracer();
    const RecallList list = recallList(trace, trace.patientOf(2).value(), {});
    EXPECT_EQ(list.asked, u"Xu, Jin"_s);
    EXPECT_EQ(list.patient->phone, u"440-555-0188"_s);
    EXPECT_EQ(lots(list.recall), u"B1"_s);
    EXPECT_FALSE(trace.patientOf(99));
}

TEST_F(TraceTest, ABatchWithoutLinesIsNamedAsUncertain) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, QString());
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    ASSERT_EQ(recall.uncertain.size(), 1U);
    EXPECT_EQ(recall.uncertain[0].lot, u"B2"_s);
    EXPECT_TRUE(recall.uncertain[0].hasNoLines);
    EXPECT_TRUE(trace.whereWent({}, u"B2"_s, {}).uncertain.empty()) << "it is in the list itself";
    EXPECT_TRUE(
        trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {QDate(2026, 3, 1), {}}).uncertain.empty());
}

TEST_F(TraceTest, ABatchThatCostMoreThanItsLinesIsNamedAsUncertain) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Other L2, More L3"_s);
    const auto costs = [this](const char* batchCost, const char* lineCost) {
        sql(u"UPDATE LogChem SET lch_Cost = %1, lch_AWP = 0, lch_QTY = 2 WHERE LogID = 2"_s.arg(
            QLatin1String(lineCost)));
        sql(u"UPDATE Log SET log_Cost = %1, log_AWP = 0, log_Quantity = 10 WHERE LogID = 2"_s.arg(
            QLatin1String(batchCost)));
        const Tracer trace = tracer();
        EXPECT_TRUE(trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {}).uncertain.empty())
            << "not looked for yet";
        EXPECT_TRUE(trace.lookForLackingLines());
        EXPECT_FALSE(trace.lookForLackingLines()) << "nothing has changed";
        return trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {}).uncertain;
    };
    const std::vector<TracedBatch> lacking = costs("7.55", "2.5");
    ASSERT_EQ(lacking.size(), 1U);
    EXPECT_EQ(lacking[0].lot, u"B2"_s);
    EXPECT_TRUE(lacking[0].lacksLines);
    EXPECT_FALSE(lacking[0].hasNoLines);
    EXPECT_TRUE(costs("5.0109", "2.5").empty()) << "what rounding explains";
    EXPECT_TRUE(costs("4.2", "2.5").empty()) << "lines that cost more are not missing";
    EXPECT_TRUE(costs("7.55", "NULL").empty()) << "lines without a price say nothing";
    EXPECT_TRUE(costs("NULL", "2.5").empty());
}

TEST_F(TraceTest, LinesThatGoWhileTheFileIsOpenAreMissed) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Other L2, More L3"_s);
    sql(u"UPDATE LogChem SET lch_Cost = 2.5, lch_AWP = 3, lch_QTY = 2 WHERE LogID = 2"_s);
    sql(u"UPDATE Log SET log_Cost = 5, log_AWP = 6, log_Quantity = 10 WHERE LogID = 2"_s);
    const Tracer trace = tracer();
    const auto uncertain = [&] {
        EXPECT_TRUE(trace.lookForLackingLines());
        return trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {}).uncertain.size();
    };
    EXPECT_EQ(uncertain(), 0U);
    sql(u"DELETE FROM LogChem WHERE LogID = 2 AND lch_Lot = 'L3'"_s);
    EXPECT_EQ(uncertain(), 1U);
}

TEST_F(TraceTest, WhatAPatientGotAndOutOfWhichLots) {
    batch(1, u"B1"_s, u"01-05"_s, u"Base L1"_s);
    batch(2, u"B2"_s, u"02-05"_s, u"Base L1"_s);
    prescription(1, 1, u"01-06"_s);
    prescription(2, 2, u"02-06"_s);
    const Tracer trace = tracer();
    const Recall recall = trace.dispensedTo(1, {});
    EXPECT_EQ(lots(recall), u"B1"_s);
    ASSERT_EQ(recall.prescriptions.size(), 1U);
    EXPECT_EQ(recall.prescriptions[0].doctor, u"Marsh"_s);
    EXPECT_TRUE(trace.dispensedTo(1, {QDate(2026, 1, 7), {}}).prescriptions.empty());
    EXPECT_TRUE(trace.dispensedTo(99, {}).batches.empty());
}

/// Chemicals of different names and lots, each in a batch of its own.
class ManyTracedTest : public TraceTest {
protected:
    static constexpr int many = 600;
    void SetUp() override {
        TraceTest::SetUp();
        const QString numbers =
            u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s.arg(many);
        sql(numbers + u"INSERT INTO Log (LogID, log_Name, log_Lot) SELECT i, 'F', 'B' || i FROM n"_s);
        sql(numbers +
            u"INSERT INTO LogChem (LogID, lch_Name, lch_Lot, lch_NDC) SELECT i, 'Many ' || i, CASE WHEN i % 3 = 0 "
            "THEN NULL WHEN i % 3 = 1 THEN '' ELSE 'M' || i END, CASE WHEN i % 2 = 0 THEN 'N' || i END FROM n"_s);
        sql(numbers + u"INSERT INTO RXs (LogID, PatientID) SELECT i, 1 + i % 2 FROM n"_s);
    }
    static QString summary(const Tracer& trace) {
        const TraceHits hits = trace.find(u"many"_s);
        const Recall recall = trace.whereWent(hits.ingredients, {}, {});
        return u"%1 %2 %3 %4"_s.arg(hits.ingredients.size())
            .arg(recall.batches.size())
            .arg(recall.prescriptions.size())
            .arg(recall.patients);
    }
};

TEST_F(ManyTracedTest, ANameOfManyIngredientsLeadsToAllTheirBatches) {
    EXPECT_EQ(summary(tracer()), u"600 600 600 2"_s);
}

TEST_F(ManyTracedTest, WhatIsNotAskedForStaysOutWhereMuchIs) {
    const Tracer trace = tracer();
    std::vector<Ingredient> asked = trace.find(u"many"_s).ingredients;
    std::erase_if(asked,
                  [](const Ingredient& one) { return one.name == u"Many 7"_s || one.name == u"Many 8"_s; });
    const Recall recall = trace.whereWent(asked, {}, {});
    EXPECT_EQ(recall.batches.size(), std::size_t{many - 2});
    for (const TracedBatch& batch : recall.batches)
        EXPECT_TRUE(batch.lot != u"B7"_s && batch.lot != u"B8"_s);
}

TEST_F(ManyTracedTest, ALookThatIsEndedGivesNothing) {
    Tracer trace = tracer();
    const QString whole = summary(trace);
    int ended = 0;
    for (int most = 0, over = 0; !over; most += 1 + most / 4) {
        int turns = 0;
        trace.setPace([&] { return ++turns <= most; });
        try {
            EXPECT_EQ(summary(trace), whole);
            over = 1;
        } catch (const TraceEnded&) {
            ++ended;
        }
    }
    EXPECT_GT(ended, 10) << "it can be ended on its way";
}

TEST_F(ManyTracedTest, SimilarLotsAreAllThereThoughTheirReadingWasEndedBefore) {
    const QStringList whole = tracer().similarTo(u"B5000"_s);
    ASSERT_FALSE(whole.isEmpty());
    for (int most = 0; most < 12; ++most) {
        Tracer trace = tracer();
        int turns = 0;
        trace.setPace([&] { return ++turns <= most; });
        try {
            trace.similarTo(u"B5000"_s);
        } catch (const TraceEnded&) {
        }
        trace.setPace({});
        EXPECT_EQ(trace.similarTo(u"B5000"_s), whole) << most;
    }
}

}  // namespace
}  // namespace sorvanto
