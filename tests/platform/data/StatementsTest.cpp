// Every statement that the program composes runs on a real file, with the rows it has to give.
#include "DataTest.h"

#include <QRandomGenerator>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

struct Query {
    const char* statement;
    int rows;
};

class Queries : public DataTest, public ::testing::WithParamInterface<Query> {};

TEST_P(Queries, Run) {
    const QString statement = QString::fromUtf8(GetParam().statement);
    for (const CursorLocation location : {CursorLocation::Default, CursorLocation::Client}) {
        const RecordsetPtr set = rows(statement, location);
        EXPECT_EQ(set->recordCount(), GetParam().rows);
        for (; !set->eof(); set->moveNext()) {
            for (int field = 0; field < set->fieldCount(); ++field)
                set->value(field);
        }
    }
}

const char costSum[] =
    "SELECT  SUM(CostTable.ChemicalCost) AS TotalCost, SUM(CostTable.ChemicalAWP) AS TotalAWP FROM "
    "[SELECT (Chemical.chm_Cost * FormChem.fch_Qty) AS ChemicalCost, (Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP "
    "FROM  Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID WHERE (((FormChem.FormulaID)=1))]. AS CostTable";
const char ingredients[] =
    "SELECT Chemical.chm_Name, Chemical.chm_Units,FormChem.fch_Qty, FormChem.fch_Active, FormChem.fch_QS, FormChem.FormChemID, "
    "Chemical.chm_Form, Chemical.chm_Supplier, Chemical.chm_Notes, Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_NDC, "
    "Chemical.chm_Lot, Chemical.chm_GUID, FormChem.ChemicalID FROM Chemical INNER JOIN FormChem ON Chemical.ChemicalID = "
    "FormChem.ChemicalID WHERE FormChem.FormulaID = 3";
const char prescriptionsOfPatient[] =
    "SELECT RXs.RXsID, Log.log_Name, Log.log_Strength, Log.log_Date, Log.log_Lot, RXs.rxs_QTY, RXs.rxs_Cost, RXs.rxs_Price, "
    "RXs.rxs_Consult, RXs.rxs_Doctor, RXs.rxs_Date, Log.LogID FROM Patient INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) "
    "ON Patient.PatientID = RXs.PatientID WHERE Patient.PatientID=1 ORDER BY RXs.rxs_Date DESC";

INSTANTIATE_TEST_SUITE_P(
    OfTheProgram, Queries,
    ::testing::Values(
        Query{"SELECT opt_Version FROM Options", 1}, Query{"SELECT [opt_Version] FROM [Options]", 1},
        Query{"SELECT FormulaID FROM Formula Order By frm_Name", 22},
        Query{"SELECT ChemicalID FROM Chemical", 46}, Query{"SELECT LogID FROM Log", 12},
        Query{"SELECT PatientID FROM Patient", 6}, Query{"SELECT @@IDENTITY;", 1}, Query{costSum, 1},
        Query{ingredients, 5}, Query{prescriptionsOfPatient, 3},
        Query{
            "SELECT [ChemicalID],[chm_Name] AS [Name],[chm_Units] AS [Units],[chm_Lot] AS [Lot],[chm_NDC] AS [NDC],[chm_Cost] AS [Cost],"
            "[chm_AWP] AS [AWP],[chm_Notes] AS [Notes],[chm_Form] AS [Form],[chm_GUID] AS [UniqueID],[chm_Supplier] AS [Supplier] "
            "FROM [Chemical] WHERE ([chm_Name] Like 'HYDRO%')",
            2},
        Query{
            "SELECT [ChemicalID],[chm_Name] AS Name, [chm_NDC] AS NDC FROM [Chemical] WHERE ([chm_Lot] Like 'cmo 17/4%')",
            1},
        Query{
            "SELECT [FormulaID],[frm_Name] AS [Name],[frm_Desc] AS [Description],[frm_Mix] AS [Mischung (XML)] FROM [Formula] "
            "WHERE ([frm_Name] Like 'crÈme%')",
            1},
        Query{
            "SELECT Log.LogID, Log.log_Lot as [Lot], Log.log_Date as [DateLogged], Log.log_Version as [cVersion], Log.FormulaID FROM Log "
            "WHERE ([Log.log_Name] Like 'hydro%') ORDER BY Log.log_Date DESC;",
            2},
        Query{
            "SELECT LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, lch_Supplier, lch_Form, "
            "lch_GUID, lch_QTY  FROM LogChem WHERE (LogID = 6)",
            5},
        Query{
            "SELECT LogChem.lch_Name, LogChem.lch_QTY, LogChem.lch_Lot, LogChem.lch_Cost, LogChem.lch_AWP, LogChem.lch_NDC, "
            "LogChem.lch_Supplier, LogChem.lch_Form, LogChem.lch_Units, LogChem.LogChemID, Chemical.chm_Notes FROM LogChem LEFT OUTER JOIN "
            "Chemical ON Chemical.ChemicalID = LogChem.ChemicalID WHERE (((LogID)= 6));",
            5},
        Query{
            "SELECT [PatientID], [pat_LName] as [LastName], [pat_BDay] as [BirthDate] FROM [Patient] WHERE ([pat_LName] Like 'KATZ%')"
            "AND ([pat_FName] Like 'w%')",
            1},
        Query{"SELECT Log.FormulaID FROM Log WHERE ([LogID] = 4)", 1},
        Query{
            "SELECT Log.log_Name, Log.log_Strength, Log.log_Lot, RXs.rxs_QTY, RXs.rxs_Consult, RXs.rxs_Date, RXs.rxs_Doctor, "
            "Patient.pat_FName, Patient.pat_LName, RXs.RXsID FROM Patient INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) "
            "ON Patient.PatientID = RXs.PatientID WHERE (((RXs.RXsID)=2));",
            1},
        Query{
            "SELECT Log.log_Date, Log.log_Lot, Log.log_JarSize, Log.log_Quantity, Log.log_Cost, Log.log_Initials, Log.log_Verified, "
            "Log.log_Name, Log.log_FormType, Log.log_Desc, Log.log_Strength, Log.log_NDC FROM Log WHERE Log.FormulaID=1 AND "
            "Log.log_Date >= #08-31-2026# AND Log.log_Date <= #10-09-2026#;",
            1},
        Query{
            "SELECT Count(*) as TotalLogs, Sum(Log.log_Quantity) as TotalQTY ,Sum(Log.log_Cost) as TotalCost FROM Log WHERE "
            "Log.FormulaID=1 AND Log.log_Date >= #8/31/2026# AND Log.log_Date <= #10/9/2026 9:47:18 AM#;",
            1},
        Query{
            "SELECT LT.log_JarSize AS JarSize , count(LT.log_JarSize) as Used FROM [SELECT FLT.log_JarSize from Log FLT WHERE "
            "FLT.log_date >=#01-01-2026#  and FLT.Log_Date<=#12-31-2026#]. AS LT group by LT.log_JarSize",
            6},
        Query{
            "SELECT Chemical.chm_Name, Chemical.chm_Units, Chemical.chm_Lot, Chemical.chm_NDC, Chemical.chm_Cost, Chemical.chm_AWP, "
            "Chemical.chm_Notes, Chemical.chm_Form, Chemical.chm_Supplier FROM Chemical ORDER BY chm_Name;",
            46},
        Query{
            "SELECT [PatientID],[pat_LName],[pat_FName],[pat_Address1],[pat_Address2],[pat_City],[pat_State],[pat_Zip],[pat_Country],"
            "[pat_BDay],[pat_Phone],[pat_Fax] FROM Patient WHERE PatientID = 5",
            1},
        Query{
            "SELECT RXs.RXsID, RXs.rxs_Date, Formula.frm_Name, Formula.frm_Strength, RXs.rxs_QTY, RXs.rxs_Price, RXs.rxs_Doctor, "
            "Log.log_Lot FROM Patient INNER JOIN ((Log INNER JOIN Formula ON Log.FormulaID = Formula.FormulaID) INNER JOIN RXs ON "
            "Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE Patient.PatientID=1 AND RXs.rxs_Date >= #01-01-2026# "
            "AND RXs.rxs_Date <= #10-09-2026#;",
            3},
        Query{
            "SELECT Count(*) as TotalRXs ,Sum(RXs.rxs_Price) as TotalPrice FROM RXs WHERE RXs.PatientID=1 AND RXs.rxs_Date >= #01-01-2026# "
            "AND RXs.rxs_Date <= #12-31-2026#;",
            1}));

class Statements : public DataTest {};

TEST_F(Statements, InsertAnEmptyRecordOfEachKind) {
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  Chemical ( [chm_Name],  [chm_Units],  [chm_Lot],  [chm_NDC],  [chm_Cost],  [chm_AWP],  [chm_Notes],  [chm_Form],  "
            u"[chm_GUID],  [chm_Supplier] )  VALUES ('', '', '', '', 0, 0, '', '', 'G-1', ''); "_s),
        1);
    EXPECT_EQ(rows(u"SELECT @@IDENTITY;"_s)->value(0), QVariant(qint64{47}));
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  Formula ( [frm_Name],  [frm_Desc],  [frm_Strength],  [frm_Units],  [frm_Instructions],  [frm_Quantity],  "
            u"[frm_JarSize],  [frm_FormType],  [frm_AWP],  [frm_NDC],  [frm_GUID],  [frm_Mix]  )  VALUES ('', '', '', 'MLS', '', 0, 3, 3, 0, "
            u"'', 'G-2', '') "_s),
        1);
    EXPECT_EQ(rows(u"SELECT @@IDENTITY;"_s)->value(0), QVariant(qint64{23}));
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  FormChem ( [FormulaID],  [ChemicalID],  [fch_Qty],  [fch_QS],  [fch_Active] )  VALUES ( 23, 47, 12.5, 0, 1) "_s),
        1);
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  Patient ( [pat_FName],  [pat_LName],  [pat_Address1],  [pat_Address2],  [pat_City],  [pat_State],  [pat_Zip],  "
            u"[pat_Country],  [pat_BDay],  [pat_Phone],  [pat_Fax], [pat_Notes] )  VALUES ('', '', '', '', '', '', '', '', NULL, '', '', '');"_s),
        1);
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  RXs ( [LogID],  [PatientID],  [rxs_Date],  [rxs_QTY],  [rxs_Cost],  [rxs_Price], [rxs_Doctor] )  VALUES ('012', '7', "
            u"'11/21/2026', '0100', '037.32', '013.1', '');"_s),
        1);
    EXPECT_EQ(stored(u"SELECT * FROM RXs WHERE RXsID = 9"_s),
              "9|12|7|2026-11-21 00:00:00|100.0|37.32|13.1|NULL|");
}

TEST_F(Statements, InsertABatch) {
    EXPECT_EQ(
        connection->execute(
            u"INSERT INTO  Log ( [FormulaID],  [log_Name],  [log_Strength],  [log_Desc],  [log_Units],  [log_FormType],  [log_Quantity],  "
            u"[log_JarSize],  [log_NDC],  [log_Date],  [log_Lot],  [log_Initials],  [log_Verified],  [log_Results],  [log_Version], [log_AWP],  "
            u"[log_Cost],  [log_Notes],  [log_Mix]  )  VALUES ('4', 'Lassar''s', '', '', 'GMS', '3', 100, '5', '', '1/31/2026 2:05:09 PM', "
            u"'AB0012', 'MR', 'JT', '<Results Value=\"AB\"/>', '2.1', '2.5', '0.0001', '', '<CustomMix/>'); "_s),
        1);
    EXPECT_EQ(
        stored(
            u"SELECT FormulaID, log_Name, log_FormType, log_JarSize, log_Date, log_AWP, log_Cost, log_Results "
            u"FROM Log WHERE LogID = 13"_s),
        "4|Lassar's|3|5|2026-01-31 14:05:09|2.5|0.0001|<Results Value=\"AB\"/>");
}

TEST_F(Statements, UpdateAndDelete) {
    EXPECT_EQ(
        connection->execute(
            u"UPDATE Chemical SET [chm_Name] = 'O''Hara', [chm_Cost] = '2.5', [chm_AWP] = '0', [chm_Supplier] = 'x' WHERE [ChemicalID] = 2"_s),
        1);
    EXPECT_EQ(stored(u"SELECT chm_Name, chm_Cost, chm_AWP FROM Chemical WHERE ChemicalID = 2"_s),
              "O'Hara|2.5|0");
    EXPECT_EQ(
        connection->execute(
            u"UPDATE Formula SET [frm_Name] = 'F', [frm_Quantity] = -1, [frm_AWP] = '4.25', [frm_Mix] = '<a b=\"c\"/>'WHERE [FormulaID] = 1"_s),
        1);
    EXPECT_EQ(stored(u"SELECT frm_Quantity, frm_AWP, frm_Mix FROM Formula WHERE FormulaID = 1"_s),
              "-1|4.25|<a b=\"c\"/>");
    EXPECT_EQ(
        connection->execute(
            u"UPDATE Patient SET [pat_FName] = 'a', [pat_BDay] = '12:00:00 AM', [pat_Notes] = '' WHERE [PatientID]  = 5"_s),
        1);
    EXPECT_EQ(stored(u"SELECT pat_BDay FROM Patient WHERE PatientID = 5"_s), "1899-12-30 00:00:00");
    EXPECT_EQ(
        connection->execute(
            u"UPDATE [Log] SET [log_Initials] = 'x',[log_Verified] = 'y',[log_Notes] = 'z' WHERE [LogID] = 99"_s),
        0);
    EXPECT_EQ(connection->execute(u"UPDATE [Options] SET [opt_Version] = 1.25"_s), 1);
    EXPECT_EQ(connection->execute(u"DELETE FROM [FormChem] WHERE FormChemID = 1"_s), 1);
    EXPECT_EQ(connection->execute(u"DELETE FROM [RXs] WHERE (PatientID = 1);"_s), 3);
}

TEST_F(Statements, CostSumOfNoLinesIsNull) {
    const RecordsetPtr set = rows(QString::fromLatin1(costSum).replace(")=1)"_L1, ")=22)"_L1));
    EXPECT_EQ(set->recordCount(), 1);
    EXPECT_FALSE(set->value(u"TotalCost"_s).isValid());
}

TEST_F(Statements, ADateBoundIsTheMidnightOfItsDay) {
    EXPECT_EQ(rows(u"SELECT LogID FROM Log WHERE Log.log_Date <= #08-31-2026#"_s)->recordCount(), 0);
    EXPECT_EQ(rows(u"SELECT LogID FROM Log WHERE Log.log_Date <= #09-01-2026#"_s)->recordCount(), 2);
}

TEST_F(Statements, TakeTenThousandCharactersOfText) {
    const QString text(10000, QChar(0xE9));
    EXPECT_EQ(
        connection->execute(u"UPDATE Chemical SET [chm_Name] = '%1' WHERE [ChemicalID] = 1"_s.arg(text)), 1);
    EXPECT_EQ(
        rows(u"SELECT chm_Name FROM Chemical WHERE ([chm_Name] Like '%1%')"_s.arg(text))->value(0).toString(),
        text);
}

struct Like {
    const char* pattern;
    const char* text;
    bool matches;
};

TEST_F(Statements, LikeIgnoresCaseAndKnowsItsSigns) {
    const Like cases[] = {{"asp%", "Aspirin", true},
                          {"%rin", "Aspirin", true},
                          {"spir%", "Aspirin", false},
                          {"a_p%", "Aspirin", true},
                          {"crème%", "CRÈME MÈRE", true},
                          {"ΑΓΩ%", "αγωγή", true},
                          {"é_", "Éß", true},
                          {"", "", true},
                          {"%", "", true},
                          {"_", "", false},
                          {"%%x%", "abxab", true},
                          {"a%b%c", "a1b2b3c", true},
                          {"[a-c]%", "Beta", true},
                          {"[a-c]%", "delta", false},
                          {"[!a-c]%", "delta", true},
                          {"[!a-c]%", "Beta", false},
                          {"[xyz]1", "Y1", true},
                          {"[!]", "!", true},
                          {"[!]", "a", false},
                          {"[!]", "", false},
                          {"[]a", "A", true},
                          {"5[%]%", "5% gel", true},
                          {"5[%]%", "50 gel", false},
                          {"a[-]b", "a-b", true},
                          {"a]", "A]", true},
                          {"a", "ab", false},
                          {"%ab%ab", "ababx ab", true},
                          {"ab", "a", false},
                          {"_%_", "é", false},
                          {"_%_", "éé", true}};
    for (const Like& one : cases) {
        const RecordsetPtr set = rows(
            u"SELECT '%1' Like '%2' AS m"_s.arg(QString::fromUtf8(one.text), QString::fromUtf8(one.pattern)));
        EXPECT_EQ(set->value(0).toLongLong(), one.matches ? -1 : 0) << one.text << " Like " << one.pattern;
    }
    EXPECT_FALSE(rows(u"SELECT NULL Like 'a' AS m"_s)->value(0).isValid());
    EXPECT_EQ(failureOf([&] { rows(u"SELECT LogID FROM Log WHERE ([log_Name] Like '[abc%')"_s); }).number(),
              error::statement);
}

/// Texts as users and mischief write them: pieces of the dialect in random order.
QString randomSearch(QRandomGenerator& random) {
    static const QStringList pieces = {u"h"_s,
                                       u"Hydro"_s,
                                       u"é"_s,
                                       u"'"_s,
                                       u"''"_s,
                                       u"\""_s,
                                       u"["_s,
                                       u"]"_s,
                                       u"%"_s,
                                       u"_"_s,
                                       u"#"_s,
                                       u";"_s,
                                       u"--"_s,
                                       u"/*"_s,
                                       u"*/"_s,
                                       u")"_s,
                                       u"("_s,
                                       u" OR 1=1 "_s,
                                       u"; DELETE FROM Chemical;"_s,
                                       u" UNION SELECT 1,2 "_s,
                                       u"DROP TABLE Log"_s,
                                       u" "_s,
                                       u"\\"_s,
                                       u"?"_s,
                                       u"@@IDENTITY"_s,
                                       u"\n"_s,
                                       u"a-z"_s,
                                       QString(QChar(0))};
    QString text;
    for (quint32 left = random.bounded(8u); left > 0; --left)
        text += pieces.at(random.bounded(int(pieces.size())));
    return text;
}

TEST_F(Statements, AnySearchTextBreaksItsOwnStatementAtMost) {
    QRandomGenerator random(20261121);
    const QString before = stored(
        u"SELECT (SELECT count(*) FROM Chemical), (SELECT count(*) FROM Log), sum(ChemicalID) FROM Chemical"_s);
    for (int round = 0; round < 4000; ++round) {
        const QString text = randomSearch(random);
        const QString statement =
            u"SELECT [ChemicalID],[chm_Name] AS [Name] FROM [Chemical] WHERE ([chm_Name] Like '%1%')"_s.arg(
                text);
        const auto number =
            failureOf([&] {
                const RecordsetPtr found = rows(statement);
                if (text.contains(QRegularExpression(u"['\\[%_]"_s)))
                    return;
                for (; !found->eof(); found->moveNext())
                    EXPECT_TRUE(found->value(1).toString().startsWith(text, Qt::CaseInsensitive))
                        << qPrintable(text);
            }).number();
        EXPECT_TRUE(number == 0 || number == error::statement) << number << ": " << qPrintable(text);
        EXPECT_NE(failureOf([&] { connection->execute(statement); }).number(), error::general);
    }
    EXPECT_EQ(
        stored(
            u"SELECT (SELECT count(*) FROM Chemical), (SELECT count(*) FROM Log), sum(ChemicalID) FROM Chemical"_s),
        before);
}

}  // namespace
}  // namespace platform
