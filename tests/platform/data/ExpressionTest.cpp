// Expressions of the dialect and the value that the dialect gives for each, asked of the engine: as a field of
// a result set, and as what a raw quantity stores.
#include "DataTest.h"

#include "platform/basic/SystemLocale.h"
#include "platform/basic/Values.h"

#include <ostream>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// A value as text, "NULL", or the number of an error.
struct Expected {
    const char* expression;
    const char* value;
};

using Table = std::vector<Expected>;

void PrintTo(const Table& table, std::ostream* out) { *out << table.size() << " expressions"; }

const char division[] = "error 11";
const char overflowing[] = "error 6";
const char mismatched[] = "mismatch";
const char wrong[] = "syntax";

class Expressions : public DataTest, public ::testing::WithParamInterface<Table> {
protected:
    void SetUp() override {
        DataTest::SetUp();
        setSystemLocale(QLocale::c());
    }
    void TearDown() override { setSystemLocale(std::nullopt); }

    static QString told(const RuntimeError& failure) {
        switch (failure.number()) {
        case error::dataMismatch:
            return QString::fromLatin1(mismatched);
        case error::statement:
            return QString::fromLatin1(wrong);
        default:
            return u"error %1"_s.arg(failure.number());
        }
    }
};

TEST_P(Expressions, GiveTheDialectsValue) {
    for (const auto& [expression, expected] : GetParam()) {
        QString found;
        const RuntimeError failure = failureOf([&, text = QString::fromUtf8(expression)] {
            const QVariant value = rows(u"SELECT %1 AS v FROM Options"_s.arg(text))->value(0);
            found = value.isValid() ? valueText(value) : u"NULL"_s;
        });
        EXPECT_EQ((failure.number() == 0 ? found : told(failure)).toStdString(), expected) << expression;
    }
}

INSTANTIATE_TEST_SUITE_P(Division, Expressions,
                         ::testing::Values(Table{Expected{"5/2", "2.5"},
                                                 Expected{"1/2", "0.5"},
                                                 Expected{"4/2", "2"},
                                                 Expected{"-5/2", "-2.5"},
                                                 Expected{"1/2/2", "0.25"},
                                                 Expected{"1/3*3", "1"},
                                                 Expected{"2*5/4", "2.5"},
                                                 Expected{"'5'/2", "2.5"},
                                                 Expected{"'5'/'2'", "2.5"},
                                                 Expected{"' 5 '/2", "2.5"},
                                                 Expected{"5./2.", "2.5"},
                                                 Expected{"(2+3)/(1+1)", "2.5"},
                                                 Expected{"1/0", division},
                                                 Expected{"0/0", division},
                                                 Expected{"1/0.0", division},
                                                 Expected{"1/'0'", division},
                                                 Expected{"1/(2-2)", division},
                                                 Expected{"NULL/0", "NULL"},
                                                 Expected{"1/NULL", "NULL"},
                                                 Expected{"'abc'/2", mismatched},
                                                 Expected{"''/2", mismatched},
                                                 Expected{"'2,5'/2", mismatched},
                                                 Expected{"1e308/1e-308", overflowing},
                                                 Expected{"5/", wrong},
                                                 Expected{"/5", wrong},
                                                 Expected{"5//2", wrong}}));

INSTANTIATE_TEST_SUITE_P(WholeDivision, Expressions,
                         ::testing::Values(Table{Expected{"5\\2", "2"},
                                                 Expected{"-7\\2", "-3"},
                                                 Expected{"5.5\\2", "3"},
                                                 Expected{"4.5\\2", "2"},
                                                 Expected{"3.5\\2", "2"},
                                                 Expected{"1\\0", division},
                                                 Expected{"1\\0.4", division},
                                                 Expected{"1\\0.5", division},
                                                 Expected{"3000000000\\2", overflowing},
                                                 Expected{"7\\2*2", "1"},
                                                 Expected{"'7'\\2", "3"},
                                                 Expected{"NULL\\2", "NULL"},
                                                 Expected{"7 Mod 3", "1"},
                                                 Expected{"-7 Mod 3", "-1"},
                                                 Expected{"7 mod -3", "1"},
                                                 Expected{"5.5 Mod 4", "2"},
                                                 Expected{"7 Mod 0", division},
                                                 Expected{"10 Mod 3*2", "4"},
                                                 Expected{"11\\4 Mod 3", "2"},
                                                 Expected{"2+7 Mod 4", "5"},
                                                 Expected{"NULL Mod 2", "NULL"},
                                                 Expected{"'x' Mod 2", mismatched},
                                                 Expected{"\\2", wrong},
                                                 Expected{"Mod 2", wrong}}));

INSTANTIATE_TEST_SUITE_P(Powers, Expressions,
                         ::testing::Values(Table{Expected{"2^3", "8"}, Expected{"2^3^2", "64"},
                                                 Expected{"-2^2", "-4"}, Expected{"(-2)^2", "4"},
                                                 Expected{"2^-1", "0.5"}, Expected{"2*3^2", "18"},
                                                 Expected{"9^.5", "3"}, Expected{"0^0", "1"},
                                                 Expected{"'2'^'3'", "8"}, Expected{"NULL^2", "NULL"},
                                                 Expected{"0^-1", division}, Expected{"10^400", overflowing},
                                                 Expected{"(-8)^.5", wrong}, Expected{"2^", wrong}}));

INSTANTIATE_TEST_SUITE_P(SumsAndProducts, Expressions,
                         ::testing::Values(Table{Expected{"10-20", "-10"},
                                                 Expected{"- -5", "5"},
                                                 Expected{"-(-5)", "5"},
                                                 Expected{"+5", "5"},
                                                 Expected{"2+3*4", "14"},
                                                 Expected{"1-2-3", "-4"},
                                                 Expected{"0.1+0.2", "0.3"},
                                                 Expected{"'5'+3", "8"},
                                                 Expected{"'5'+'3'", "53"},
                                                 Expected{"'5'*'3'", "15"},
                                                 Expected{"'5'-3", "2"},
                                                 Expected{"'a'+'b'", "ab"},
                                                 Expected{"'a'+1", mismatched},
                                                 Expected{"-'5'", "-5"},
                                                 Expected{"-'a'", mismatched},
                                                 Expected{"'a'*1", mismatched},
                                                 Expected{"NULL+1", "NULL"},
                                                 Expected{"-NULL", "NULL"},
                                                 Expected{"'a'+NULL", "NULL"},
                                                 Expected{"1e308*10", overflowing},
                                                 Expected{"1e308+1e308", overflowing},
                                                 Expected{"9007199254740993-1", "9007199254740992"},
                                                 Expected{"5 5", wrong},
                                                 Expected{"5 +", wrong},
                                                 Expected{"5 * * 5", wrong}}));

INSTANTIATE_TEST_SUITE_P(JoinedTexts, Expressions,
                         ::testing::Values(Table{
                             Expected{"5 & 0", "50"}, Expected{"'a' & 1", "a1"}, Expected{"'a' & NULL", "a"},
                             Expected{"NULL & NULL", "NULL"}, Expected{"2+3 & 4", "54"},
                             Expected{"1 & 2+3", "15"}, Expected{"1.5 & ''", "1.5"},
                             Expected{"True & ''", "-1"}, Expected{"(1=1) & 'x'", "-1x"},
                             Expected{"5/2 & ' ml'", "2.5 ml"}, Expected{"#3/7/2026# & ''", "3/7/2026"},
                             Expected{"'a' &", wrong}}));

INSTANTIATE_TEST_SUITE_P(Truth, Expressions,
                         ::testing::Values(Table{Expected{"True", "-1"},
                                                 Expected{"FALSE", "0"},
                                                 Expected{"True+True", "-2"},
                                                 Expected{"-True", "1"},
                                                 Expected{"5*True", "-5"},
                                                 Expected{"1=1", "-1"},
                                                 Expected{"1=2", "0"},
                                                 Expected{"(1=1)", "-1"},
                                                 Expected{"(1=1)+1", "0"},
                                                 Expected{"(2>1)*5", "-5"},
                                                 Expected{"1<2<3", "-1"},
                                                 Expected{"True=-1", "-1"},
                                                 Expected{"True=1", "0"},
                                                 Expected{"Not True", "0"},
                                                 Expected{"Not 0", "-1"},
                                                 Expected{"6 And 3", "-1"},
                                                 Expected{"0 Or 0", "0"},
                                                 Expected{"1=1 And 2=3", "0"},
                                                 Expected{"NULL And 1", "NULL"},
                                                 Expected{"'x' And 1", mismatched},
                                                 Expected{"IIf(1=1,5/2,0)", "2.5"},
                                                 Expected{"IIf(1>2,'a','b')", "b"},
                                                 Expected{"1 Xor 1", wrong}}));

INSTANTIATE_TEST_SUITE_P(Comparisons, Expressions,
                         ::testing::Values(Table{Expected{"2=2.0", "-1"},
                                                 Expected{"1<>2", "-1"},
                                                 Expected{"2>=3", "0"},
                                                 Expected{"'a'='A'", "-1"},
                                                 Expected{"'a'<'b'", "-1"},
                                                 Expected{"'10'<'9'", "-1"},
                                                 Expected{"'5'=5", mismatched},
                                                 Expected{"5<'10'", mismatched},
                                                 Expected{"('5' & '0')=50", mismatched},
                                                 Expected{"5 Between '1' And '9'", mismatched},
                                                 Expected{"5 Between 1 And 9", "-1"},
                                                 Expected{"5 Not Between 1 And 9", "0"},
                                                 Expected{"3 In (1,2,3)", "-1"},
                                                 Expected{"3 Not In (1,2)", "-1"},
                                                 Expected{"5/2 In (2,2.5)", "-1"},
                                                 Expected{"2.5 In (5/2,7)", "-1"},
                                                 Expected{"NULL=NULL", "NULL"},
                                                 Expected{"NULL Is Null", "-1"},
                                                 Expected{"5 Is Not Null", "-1"},
                                                 Expected{"'abc' Like 'A%'", "-1"},
                                                 Expected{"'abc' Not Like 'A%'", "0"},
                                                 Expected{"1/2=0.5", "-1"},
                                                 Expected{"'' = NULL", "NULL"}}));

INSTANTIATE_TEST_SUITE_P(Dates, Expressions,
                         ::testing::Values(Table{
                             Expected{"#3/7/2026#-#3/1/2026#", "6"}, Expected{"#1/1/1900#+0", "2"},
                             Expected{"#3/7/2026#=#03-07-2026#", "-1"},
                             Expected{"#3/7/2026#>#12/31/2025#", "-1"}, Expected{"#1/1/1900#=2", "-1"},
                             Expected{"#1/1/1900#+1=#1/2/1900#", "-1"}, Expected{"(1=1)=#12/29/1899#", "-1"},
                             Expected{"#12/30/1899#=(1=2)", "-1"}, Expected{"(1=1)=#12/30/1899#", "0"},
                             Expected{"#3/7/2026#='3/7/2026'", mismatched},
                             Expected{"#12/30/1899 12:00:00 PM#*2", "1"}, Expected{"#13/13/2026#", wrong}}));

INSTANTIATE_TEST_SUITE_P(Functions, Expressions,
                         ::testing::Values(Table{
                             Expected{"Abs(-2.5)", "2.5"},       Expected{"Int(-2.5)", "-3"},
                             Expected{"Fix(-2.5)", "-2"},        Expected{"Round(2.5)", "2"},
                             Expected{"Round(1.005,2)", "1"},    Expected{"Sgn(-3)", "-1"},
                             Expected{"Val('12 ml')", "12"},     Expected{"Abs('x')", mismatched},
                             Expected{"Int(NULL)", "NULL"},      Expected{"Count(*)", "1"},
                             Expected{"Sum(5/2)", "2.5"},        Expected{"Max(1,2)", wrong},
                             Expected{"Log(100)", wrong},        Expected{"Hex(255)", wrong},
                             Expected{"random()", wrong},        Expected{"date()", wrong},
                             Expected{"CAST(5 AS TEXT)", wrong}, Expected{"CASE WHEN 1 THEN 2 END", wrong},
                             Expected{"'a' GLOB 'a'", wrong},    Expected{"(SELECT 5/2)", "2.5"},
                             Expected{"CURRENT_DATE", wrong}}));

/// What is stored as a quantity that was typed.
class RawQuantity : public Expressions {};

TEST_P(RawQuantity, IsStoredAsTheDialectGivesIt) {
    for (const auto& [typed, expected] : GetParam()) {
        connection->execute(u"DELETE FROM FormChem WHERE FormulaID = 22"_s);
        const RuntimeError failure = failureOf([&, text = QString::fromUtf8(typed)] {
            connection->execute(
                u"INSERT INTO  FormChem ( [FormulaID],  [ChemicalID],  [fch_Qty],  [fch_QS],  "
                u"[fch_Active] )  VALUES ( 22, 3, %1, 0, 1) "_s.arg(text));
        });
        const QString found = failure.number() != 0
                                  ? told(failure)
                                  : stored(u"SELECT fch_Qty FROM FormChem WHERE FormulaID = 22"_s);
        EXPECT_EQ(found.toStdString(), expected) << typed;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Typed, RawQuantity,
    ::testing::Values(Table{
        Expected{"5/2", "2.5"},          Expected{"1/2", "0.5"},          Expected{"1/0", division},
        Expected{"10-20", "-10.0"},      Expected{"TRUE", "-1.0"},        Expected{"1=1", "-1.0"},
        Expected{"NULL", "NULL"},        Expected{"NULL*2", "NULL"},      Expected{"'2.5'", "2.5"},
        Expected{"'2,5'", mismatched},   Expected{"'5' & '0'", "50.0"},   Expected{"'x' & 5", mismatched},
        Expected{"1.250", "1.25"},       Expected{"2,5", wrong},          Expected{"", wrong},
        Expected{"1.2.3", wrong},        Expected{"#1/1/1900#", "2.0"},   Expected{"#1/1/1900#+1", "3.0"},
        Expected{"(#1/1/1900#)", "2.0"}, Expected{"5\\2", "2.0"},         Expected{"2^0.5*2^0.5", "2.0"},
        Expected{"1e400", mismatched},   Expected{"(SELECT 5/2)", "2.5"}, Expected{"-(5)", "-5.0"},
        Expected{"5 ml", wrong},         Expected{"0x10", wrong},         Expected{"Hex(255)", wrong},
        Expected{"five", wrong}}));

TEST_F(Expressions, AreCalculatedWhereRowsAreChosenToo) {
    EXPECT_EQ(rows(u"SELECT ChemicalID FROM Chemical WHERE ChemicalID = 5/2"_s)->recordCount(), 0);
    EXPECT_EQ(rows(u"SELECT ChemicalID FROM Chemical WHERE ChemicalID*2 = 5"_s)->recordCount(), 0);
    EXPECT_EQ(
        rows(u"SELECT ChemicalID FROM Chemical WHERE ChemicalID = 9/3 Or ChemicalID = 8\\2"_s)->recordCount(),
        2);
    EXPECT_EQ(rows(u"SELECT FormChemID FROM FormChem WHERE fch_Active = True"_s)->recordCount(),
              stored(u"SELECT count(*) FROM FormChem WHERE fch_Active = 1"_s).toInt());
    EXPECT_EQ(failureOf([&] { rows(u"SELECT LogID FROM Log WHERE 1/0 = LogID"_s); }).number(),
              error::divisionByZero);
}

TEST_F(Expressions, GiveTextColumnsTheTextOfANumber) {
    EXPECT_EQ(
        connection->execute(u"UPDATE Chemical SET chm_Lot = 5/2, chm_Cost = 1/3 WHERE ChemicalID = 1"_s), 1);
    EXPECT_EQ(stored(u"SELECT chm_Lot, chm_Cost FROM Chemical WHERE ChemicalID = 1"_s), "2.5|0.3333");
}

TEST_F(Expressions, CalculateLongRows) {
    QString sum = u"0"_s;
    for (int i = 0; i < 40; ++i)
        sum += u"+0.5"_s;
    EXPECT_EQ(rows(u"SELECT %1 AS v"_s.arg(sum))->value(0).toDouble(), 20);
    QString long_sum = sum;
    for (int i = 0; i < 100; ++i)
        long_sum += u"+0.5"_s;
    EXPECT_EQ(failureOf([&] { rows(u"SELECT %1 AS v"_s.arg(long_sum)); }).number(), error::statement);
}

}  // namespace
}  // namespace platform
