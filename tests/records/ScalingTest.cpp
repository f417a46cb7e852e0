// Scaling a formula to a batch, and the document for the mixer.
#include "RecordsTest.h"

#include "platform/basic/Values.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Currency;
using platform::nullText;

namespace {

class ScalingTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
    }
    /// "quantity cost awp" of each line.
    static QStringList lines(const clsFormula& formula) {
        QStringList all;
        platform::Recordset& rows = *formula.Chemical;
        for (rows.moveFirst(); !rows.eof(); rows.moveNext())
            all << nullText(rows.value("fch_Qty")) + " " + nullText(rows.value("chm_Cost")) + " " +
                       nullText(rows.value("chm_AWP"));
        return all;
    }
    /// One line of that quantity and prices in a formula of that base, scaled.
    QStringList oneLine(int base, int quantity, const QString& amount, const QString& cost,
                        const QString& awp) {
        sql(u"DELETE FROM FormChem; UPDATE Formula SET frm_Quantity = %1 WHERE FormulaID = 1;"
            u"UPDATE Chemical SET chm_Cost = %2, chm_AWP = %3 WHERE ChemicalID = 3;"
            u"INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) "
            u"VALUES (1, 3, %4, 0, 1)"_s.arg(QString::number(base), cost, awp, amount));
        return lines(*scaled(1, static_cast<std::int16_t>(quantity)));
    }
    clsFormulaPtr withJar(std::int16_t quantity) {
        const auto formula = clsFormula().openFormula(2, QString());
        formula->frm_JarSize = 77;
        formula->makeQuantity(quantity);
        return formula;
    }
};

TEST_F(ScalingTest, ScalesQuantitiesThenPricesFromTheRoundedQuantity) {
    const auto formula = scaled(1, 25);
    EXPECT_EQ(lines(*formula), (QStringList{"3.086 6.17 10.8", "12.5 1.25 2.5", "1.25 1.26 3.34"}));
    EXPECT_EQ(formula->makeQuantity(), 25);
    EXPECT_EQ(formula->frm_Quantity, 10);
    EXPECT_EQ(formula->frm_JarSize, 3);
    // 3.4715 * 2.5 = 8.67875 and 6.6582 * 2.5 = 16.6455: from the totals, not from the lines
    EXPECT_EQ(str(formula->frm_Cost.toText()), "8.6788");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "16.6455");
}

TEST_F(ScalingTest, TheBaseBatchItselfIsStillFormattedAndPricedByLine) {
    EXPECT_EQ(lines(*scaled(1, 10)), (QStringList{"1.235 2.47 4.32", "5 0.5 1", "0.5 0.5 1.34"}));
}

TEST_F(ScalingTest, NothingToMakeGivesZerosAndTheSmallestJar) {
    const auto formula = scaled(1, 0);
    EXPECT_EQ(lines(*formula), (QStringList{"0 0 0", "0 0 0", "0 0 0"}));
    EXPECT_EQ(formula->frm_Cost, Currency());
    EXPECT_EQ(formula->frm_AWP, Currency());
    EXPECT_EQ(formula->frm_JarSize, 1);
}

TEST_F(ScalingTest, RoundsHalfAwayFromZeroOnTheDecimalText) {
    EXPECT_EQ(oneLine(1, 1, "1.0005", "1", "1"), QStringList("1.001 1 1"));
    EXPECT_EQ(oneLine(1, 1, "0.0015", "0", "0"), QStringList("0.002 0 0"));
    EXPECT_EQ(oneLine(1, 1, "0.0005", "0", "0"), QStringList("0.001 0 0"));
    EXPECT_EQ(oneLine(1, 1, "1", "1.005", "2.675"), QStringList("1 1.01 2.68"));
    EXPECT_EQ(oneLine(1, 1, "0.00000001", "1", "1"), QStringList("0 0 0"));
    EXPECT_EQ(oneLine(3, 1, "1", "3", "3"), QStringList("0.333 1 1"));
}

TEST_F(ScalingTest, ANullReadsAsZero) {
    EXPECT_EQ(oneLine(1, 2, "NULL", "1", "1"), QStringList("0 0 0"));
    EXPECT_EQ(oneLine(1, 2, "1", "NULL", "1"), QStringList("2 0 2"));
    EXPECT_EQ(oneLine(1, 2, "1", "1", "NULL"), QStringList("2 2 0"));
}

TEST_F(ScalingTest, ANegativeProductIsNoNumberBehindTheZero) {
    EXPECT_THROW(oneLine(10, 10, "-3", "1", "1"), platform::RuntimeError);
    const auto formula = clsFormula().openFormula(1, QString());
    EXPECT_THROW(formula->makeQuantity(20), platform::RuntimeError);
    EXPECT_EQ(str(nullText(formula->Chemical->value("fch_Qty"))), "-3");
}

TEST_F(ScalingTest, MoneyTiesGoToTheEvenNeighbour) {
    for (const auto& [total, half] : {std::pair("1.0001", "0.5"), std::pair("1.0003", "0.5002"),
                                      std::pair("0.0001", "0"), std::pair("0.0003", "0.0002")}) {
        const auto formula = clsFormula().openFormula(2, QString());
        formula->frm_Quantity = 2;
        formula->frm_Cost = Currency::fromText(total);
        formula->frm_AWP = Currency::fromText(total);
        formula->makeQuantity(1);
        EXPECT_EQ(str(formula->frm_Cost.toText()), half);
        EXPECT_EQ(str(formula->frm_AWP.toText()), half);
    }
}

TEST_F(ScalingTest, TheJarFollowsTheQuantity) {
    struct Row {
        int low, high, jar;
    };
    for (const Row& row :
         {Row{0, 15, 1}, Row{16, 20, 2}, Row{21, 30, 3}, Row{31, 50, 4}, Row{51, 100, 5}, Row{101, 200, 6},
          Row{201, 300, 7}, Row{301, 500, 8}, Row{501, 1000, 9}, Row{1001, 1001, 77}, Row{32767, 32767, 77},
          Row{-1, -1, 77}, Row{-32768, -32768, 77}}) {
        for (const int quantity : {row.low, (row.low + row.high) / 2, row.high})
            EXPECT_EQ(withJar(static_cast<std::int16_t>(quantity))->frm_JarSize, row.jar) << quantity;
    }
}

TEST_F(ScalingTest, WithoutLinesTheTotalsScaleAndTheListStaysConnected) {
    const auto formula = clsFormula().openFormula(2, QString());
    formula->frm_Cost = Currency::fromText("4");
    formula->makeQuantity(50);
    EXPECT_EQ(str(formula->frm_Cost.toText()), "2");
    EXPECT_EQ(formula->frm_JarSize, 4);
    EXPECT_TRUE(formula->Chemical->isConnected());
    EXPECT_FALSE(scaled(1, 50)->Chemical->isConnected());
}

TEST_F(ScalingTest, NeverTouchesTheTables) {
    const QString lines = sqlText("SELECT * FROM FormChem");
    const QString chemicals = sqlText("SELECT * FROM Chemical");
    const auto formula = scaled(1, 500);
    formula->Chemical->moveFirst();
    formula->Chemical->setValue("fch_Qty", 1.0);
    formula->Chemical->update();
    EXPECT_EQ(str(sqlText("SELECT * FROM FormChem")), str(lines));
    EXPECT_EQ(str(sqlText("SELECT * FROM Chemical")), str(chemicals));
}

TEST_F(ScalingTest, FlagsStayAndAQuantumSatisLineIsMultipliedLikeAnyOther) {
    const auto formula = scaled(1, 20);
    formula->Chemical->moveFirst();
    formula->Chemical->moveNext();
    EXPECT_EQ(str(platform::valueText(formula->Chemical->value("fch_QTY"))), "10");
    EXPECT_EQ(str(platform::valueText(formula->Chemical->value("fch_QS"))), "True");
    formula->Chemical->moveNext();
    EXPECT_EQ(str(platform::valueText(formula->Chemical->value("fch_Active"))), "False");
}

TEST_F(ScalingTest, ASecondScalingMultipliesWhatIsAlreadyScaled) {
    const auto formula = scaled(1, 20);
    formula->makeQuantity(20);
    formula->Chemical->moveFirst();
    EXPECT_EQ(str(nullText(formula->Chemical->value("fch_Qty"))), "4.938");
    EXPECT_EQ(str(formula->frm_Cost.toText()), "13.886");
}

TEST_F(ScalingTest, ABaseBatchOfZeroFailsWithTheQuantityStoredAndNothingElseChanged) {
    const auto formula = clsFormula().openFormula(1, QString());
    formula->frm_Quantity = 0;
    try {
        formula->makeQuantity(30);
        FAIL() << "no failure";
    } catch (const platform::RuntimeError& failure) {
        EXPECT_EQ(failure.number(), platform::error::divisionByZero);
    }
    EXPECT_EQ(formula->makeQuantity(), 30);
    EXPECT_EQ(formula->frm_JarSize, 4);
    EXPECT_EQ(str(formula->frm_Cost.toText()), "3.4715");
    EXPECT_TRUE(formula->Chemical->isConnected());
}

TEST_F(ScalingTest, AnObjectWithoutAListFails) {
    clsFormula formula;
    formula.frm_Quantity = 1;
    EXPECT_THROW(formula.makeQuantity(5), platform::RuntimeError);
}

TEST_F(ScalingTest, TheDocumentHoldsSixTextsAndACopyOfTheProgramme) {
    const auto formula = scaled(1, 25);
    formula->frm_Name = "A&B <C> \"d\"";
    const auto made = formula->getFormulaXML();
    ASSERT_TRUE(made);
    support::expectGolden("records/formula_document.txt", made->xml() + "\n");
    EXPECT_EQ(str(formula->frm_Mix->root().name()), "CustomMix");
    EXPECT_EQ(str(platform::nodeText(*made, "//Formula/Name")), "A&B <C> \"d\"");
}

TEST_F(ScalingTest, AProgrammeWithoutARootGivesNoDocument) {
    const auto formula = clsFormula().addFormula();
    EXPECT_FALSE(formula->getFormulaXML());
    expectReport("clsFormula:getFormulaXML");
    formula->frm_Mix = document("<Other/>");
    EXPECT_FALSE(formula->getFormulaXML());
    expectReport("clsFormula:getFormulaXML");
}

}  // namespace
