// A delivery: the copy of a chemical with another lot, the formulas that take it, all of it or nothing.
#include "RecordsTest.h"

#include "db/DatabaseFile.h"
#include "history/HistoryBook.h"
#include "history/HistoryChain.h"
#include "history/HistoryReplay.h"
#include "history/HistoryRestore.h"
#include "history/HistorySeal.h"
#include "records/NewLot.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Currency;
using platform::Recordset;

namespace {

class NewLotTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
        sql("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES "
            "(2, 3, 7.5, 1, 0), (1, 3, 0.25, 0, 1)");
    }
    /// The rows of a statement, columns parted by "|".
    static QString rows(const QString& statement) {
        const auto found = Recordset::create();
        found->open(statement, openDB());
        QStringList all;
        for (; !found->eof(); found->moveNext()) {
            QStringList values;
            for (int column = 0; column < found->fieldCount(); ++column)
                values << found->value(column).toString();
            all << values.join(u'|');
        }
        return all.join(u'\n');
    }
    static QString lines() {
        return rows(u"SELECT FormChemID, FormulaID, ChemicalID, fch_Qty FROM FormChem ORDER BY FormChemID"_s);
    }
    static QString chemicals() { return rows(u"SELECT * FROM Chemical ORDER BY ChemicalID"_s); }
    static clsChemicalPtr shown(std::int16_t chemical) { return clsChemical().openChemical(chemical, {}); }
    /// As it is shown before.
    static clsChemicalPtr add(std::int16_t chemical, const std::vector<std::int16_t>& formulas) {
        return addNewLot(*shown(chemical), delivery(), formulas).chemical;
    }
    static NewLot delivery() {
        return {u" L3-new "_s, u"O'Hara"_s, Currency::fromText(u"0.2850"_s), Currency::fromText(u"4"_s)};
    }
};

TEST_F(NewLotTest, FormulasWithTheChemicalStandByNameEachOnce) {
    QStringList names;
    for (const UsingFormula& one : formulasUsing(3))
        names << u"%1 %2"_s.arg(one.key).arg(one.name);
    EXPECT_EQ(str(names.join(u", "_s)), "1 Cooling Gel, 2 Plain Base");
    EXPECT_TRUE(formulasUsing(1).empty());
}

TEST_F(NewLotTest, TheCopyIsLikeTheFormerInAllElse) {
    const clsChemicalPtr added = add(3, {1, 2});
    ASSERT_TRUE(added);
    const clsChemicalPtr copy = clsChemical().openChemical(added->ChemicalID, {});
    const clsChemicalPtr former = clsChemical().openChemical(3, {});
    EXPECT_NE(copy->ChemicalID, former->ChemicalID);
    EXPECT_NE(copy->chm_GUID, former->chm_GUID);
    EXPECT_FALSE(copy->chm_GUID.isEmpty());
    EXPECT_EQ(str(copy->chm_Name), "Camphor");
    EXPECT_EQ(str(copy->chm_Units), "GMS");
    EXPECT_EQ(str(copy->chm_NDC), "333-3");
    EXPECT_EQ(str(copy->chm_Notes), "keep cool");
    EXPECT_EQ(str(copy->chm_Form), "Crystal");
    EXPECT_EQ(str(copy->chm_Lot), "L3-new");
    EXPECT_EQ(str(copy->chm_Supplier), "O'Hara");
    EXPECT_EQ(copy->chm_Cost, Currency::fromText(u"0.285"_s));
    EXPECT_EQ(copy->chm_AWP, Currency::fromText(u"4"_s));
}

TEST_F(NewLotTest, TheFormerStaysAsItWas) {
    const QString before = chemicals();
    ASSERT_TRUE(add(3, {1, 2}));
    EXPECT_EQ(str(chemicals().section(u'\n', 0, 3)), str(before));
    EXPECT_EQ(chemicals().count(u'\n'), 4);
}

TEST_F(NewLotTest, EveryLineOfTheTickedFormulasTakesItAndNoOther) {
    const clsChemicalPtr added = add(3, {1});
    ASSERT_TRUE(added);
    EXPECT_EQ(str(lines()),
              str(u"1|1|%1|1.2345\n2|1|4|5\n3|1|2|0.5\n4|2|3|7.5\n5|1|%1|0.25"_s.arg(added->ChemicalID)));
}

TEST_F(NewLotTest, WithoutTickedFormulasTheLotIsThereAlone) {
    const QString before = lines();
    EXPECT_TRUE(add(3, {}));
    EXPECT_EQ(str(lines()), str(before));
}

TEST_F(NewLotTest, AFailureAtAnyStatementLeavesNothing) {
    const QString chemicalsBefore = chemicals(), linesBefore = lines();
    for (const QString& part : {u"INSERT INTO"_s, u"SELECT @@IDENTITY"_s, u"UPDATE Chemical"_s,
                                u"AND FormulaID = 1"_s, u"AND FormulaID = 2"_s}) {
        failStatement(part);
        EXPECT_FALSE(add(3, {1, 2})) << str(part);
        failStatement(u"no statement has this"_s);
        EXPECT_EQ(str(chemicals()), str(chemicalsBefore)) << str(part);
        EXPECT_EQ(str(lines()), str(linesBefore)) << str(part);
    }
    dropReports();
}

TEST_F(NewLotTest, AChemicalThatIsGoneHasNoNewLot) {
    asker.alwaysAnswer(u"No Records"_s);
    clsChemical gone;
    gone.ChemicalID = 99;
    EXPECT_FALSE(addNewLot(gone, delivery(), {1}).chemical);
    EXPECT_EQ(chemicals().count(u'\n'), 3);
}

TEST_F(NewLotTest, WhatIsNotAsShownAnyMoreGetsNoNewLot) {
    for (const char* change : {"UPDATE Chemical SET chm_Units = 'MLS' WHERE ChemicalID = 3",
                               "UPDATE Chemical SET chm_Cost = 7 WHERE ChemicalID = 3",
                               "UPDATE Chemical SET chm_AWP = 7 WHERE ChemicalID = 3",
                               "UPDATE Chemical SET chm_Notes = 'x' WHERE ChemicalID = 3",
                               "INSERT INTO Chemical (chm_Name, chm_Lot) VALUES ('camphor', ' l3-NEW')"}) {
        const clsChemicalPtr before = shown(3);
        sql(change);
        const QString chemicalsBefore = chemicals(), linesBefore = lines();
        const AddedLot lot = addNewLot(*before, delivery(), {1, 2});
        EXPECT_FALSE(lot.chemical) << change;
        ASSERT_TRUE(lot.changed) << change;
        EXPECT_EQ(str(lot.changed->name), "Camphor");
        EXPECT_EQ(str(chemicals()), str(chemicalsBefore)) << change;
        EXPECT_EQ(str(lines()), str(linesBefore)) << change;
    }
}

TEST_F(NewLotTest, AFormulaThatTakesTheChemicalNoMoreRefusesAll) {
    const clsChemicalPtr before = shown(3);
    sql("DELETE FROM FormChem WHERE FormulaID = 2");
    const QString chemicalsBefore = chemicals(), linesBefore = lines();
    const AddedLot lot = addNewLot(*before, delivery(), {1, 2});
    ASSERT_TRUE(lot.changed);
    EXPECT_EQ(str(lot.changed->name), "Plain Base");
    EXPECT_EQ(str(chemicals()), str(chemicalsBefore));
    EXPECT_EQ(str(lines()), str(linesBefore));
    EXPECT_TRUE(add(3, {1})) << "as it is shown anew";
}

TEST_F(NewLotTest, ALotThatIsThereIsFoundByNameWhateverItsCase) {
    const QStringList lots = lotsOf(u"camphor "_s);
    EXPECT_EQ(lots, QStringList{u"L3"_s}) << "not those of other chemicals";
    EXPECT_TRUE(hasLot(lots, u" l3"_s));
    EXPECT_FALSE(hasLot(lots, u"L33"_s));
}

TEST_F(NewLotTest, TheHistorySaysThatALotHasCome) {
    support::TempProgramFolder other;
    createSample(other.path(u"kept.mdb"_s), 20);
    basMain::gConnection->close();
    basMain::gConnection->open(u"Data Source="_s + other.path(u"kept.mdb"_s));
    keepHistory(*basMain::gConnection);
    platform::Engine& database = basMain::gConnection->engine();
    const auto formulas = formulasUsing(3);
    ASSERT_FALSE(formulas.empty());
    const clsChemicalPtr former = clsChemical().openChemical(3, {});
    const std::int64_t before = lastHistoryRow(database);
    const clsChemicalPtr added = add(3, {formulas.front().key});
    ASSERT_TRUE(added);
    EXPECT_EQ(
        str(rows(u"SELECT DISTINCT hst_Deed, hst_Note FROM History WHERE HistoryID > %1"_s.arg(before))),
        str(u"new lot|"_s + former->chm_Name));
    const auto ofFormula = historyOf(database, u"Formula"_s, formulas.front().key);
    EXPECT_EQ(str(ofFormula.front().deed), "new lot");
    EXPECT_EQ(chainProblems(database) + recordProblems(database), QStringList());
    basMain::gConnection->execute(u"UPDATE Chemical SET chm_Notes = 'x' WHERE ChemicalID = 3"_s);
    EXPECT_EQ(str(historyOf(database, u"Chemical"_s, 3).front().deed), "") << "nothing beyond it";
}

}  // namespace
