// What becomes of a statement's text: each rule of the dialect, and what is refused.
#include "platform/data/Dialect.h"
#include "DataTest.h"
#include "platform/data/sqlite/FileEngine.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

struct Pair {
    const char* statement;
    const char* sql;
};

QString toSqlite(const QString& statement) { return translateStatement(statement, sqlite::fileWords()).sql; }

class Translated : public ::testing::TestWithParam<Pair> {};

TEST_P(Translated, ReadsAsSqlite) {
    EXPECT_EQ(toSqlite(QString::fromUtf8(GetParam().statement)).toStdString(), GetParam().sql);
}

INSTANTIATE_TEST_SUITE_P(
    Dialect, Translated,
    ::testing::Values(
        Pair{"SELECT FormulaID FROM Formula Order By frm_Name",
             "SELECT FormulaID FROM Formula Order By frm_Name"},
        Pair{"SELECT @@IDENTITY;", "SELECT last_insert_rowid()"},
        Pair{"select @@identity", "select last_insert_rowid()"},
        Pair{
            "SELECT Log.LogID, Log.log_Lot as [Lot No.] FROM Log WHERE ([Log.LogID] = 5) ORDER BY Log.log_Date DESC;",
            "SELECT Log.LogID, Log.log_Lot as \"Lot No.\" FROM Log WHERE (\"Log\".\"LogID\" = 5) ORDER BY Log.log_Date DESC"},
        Pair{"SELECT [a] AS [Any \"Text\"(with) é] FROM T",
             "SELECT \"a\" AS \"Any \"\"Text\"\"(with) é\" FROM T"},
        Pair{"DELETE FROM [Chemical] WHERE (ChemicalID = 7);",
             "DELETE FROM \"Chemical\" WHERE (ChemicalID = 7)"},
        Pair{"SELECT a FROM T WHERE ([n] Like 'O''H%')", "SELECT a FROM T WHERE (\"n\" Like 'O''H%')"},
        Pair{"SELECT a FROM T WHERE n = \"it's\"", "SELECT a FROM T WHERE n = 'it''s'"},
        Pair{
            "SELECT  SUM(C.x) AS T FROM [SELECT (A.x * B.y) AS x FROM  A INNER JOIN B ON A.i = B.i WHERE (((B.f)=4))]. AS C",
            "SELECT SUM(C.x) AS T FROM (SELECT (dialect_calc(A.x , '*', B.y)) AS x FROM A INNER JOIN B ON A.i = B.i WHERE (((B.f)=4))) AS C"},
        Pair{
            "SELECT c FROM [SELECT F.s from Log F WHERE F.d >=#01-05-2026#  and F.D<=#11-21-2026#]. AS L group by L.s",
            "SELECT c FROM (SELECT F.s from Log F WHERE F.d >='2026-01-05 00:00:00' and F.D<='2026-11-21 00:00:00') AS L group by L.s"},
        Pair{"SELECT [SELECT] FROM T", "SELECT \"SELECT\" FROM T"},
        Pair{"SELECT [Selection].x FROM Selection", "SELECT \"Selection\".x FROM Selection"},
        Pair{"INSERT INTO T ( a ) VALUES ( True, FALSE )", "INSERT INTO T ( a ) VALUES ( -1, 0 )"},
        Pair{"SELECT a FROM T WHERE f = True", "SELECT a FROM T WHERE f = 1"},
        Pair{"SELECT T.True FROM T", "SELECT T.True FROM T"},
        Pair{"SELECT [a][b] FROM T", "SELECT \"a\" \"b\" FROM T"},
        Pair{"SELECT 'a'\"b\" FROM T", "SELECT 'a' 'b' FROM T"},
        Pair{"SELECT 1x FROM T", "SELECT 1 x FROM T"},
        Pair{"SELECT a- -1, .5, 1E+15, 1e-07 FROM T",
             "SELECT dialect_calc(a, '-', -1), .5, 1E+15, 1e-07 FROM T"},
        Pair{"SELECT a\r\n\tFROM T WHERE a<>1 AND b<=2", "SELECT a FROM T WHERE a<>1 AND b<=2"},
        Pair{"UPDATE T SET a = '-- no comment /* */ ; x' ;  ",
             "UPDATE T SET a = '-- no comment /* */ ; x'"}));

class DateLiterals : public ::testing::TestWithParam<Pair> {};

TEST_P(DateLiterals, AreMonthFirst) {
    const QString sql = toSqlite(u"SELECT #%1#"_s.arg(QLatin1String(GetParam().statement)));
    EXPECT_EQ(sql.toStdString(), std::string("SELECT '") + GetParam().sql + "'");
}

INSTANTIATE_TEST_SUITE_P(
    Dialect, DateLiterals,
    ::testing::Values(Pair{"11-21-2026", "2026-11-21 00:00:00"}, Pair{"3/7/2026", "2026-03-07 00:00:00"},
                      Pair{"11/21/2026 2:05:09 PM", "2026-11-21 14:05:09"},
                      Pair{"11/21/2026 12:00:00 AM", "2026-11-21 00:00:00"},
                      Pair{"11/21/2026 12:30 pm", "2026-11-21 12:30:00"},
                      Pair{"11/21/2026 23:59:59", "2026-11-21 23:59:59"},
                      Pair{"21/11/2026", "2026-11-21 00:00:00"}, Pair{"1/2/29", "2029-01-02 00:00:00"},
                      Pair{"1/2/30", "1930-01-02 00:00:00"}, Pair{"2:05:09 PM", "1899-12-30 14:05:09"},
                      Pair{"2026-11-21 14:05:09", "2026-11-21 14:05:09"}));

class Refused : public ::testing::TestWithParam<const char*> {};

TEST_P(Refused, AsAStatement) {
    const QString statement = QString::fromUtf8(GetParam());
    const RuntimeError failure = failureOf([&] { toSqlite(statement); });
    EXPECT_EQ(failure.number(), error::statement);
    EXPECT_EQ(failure.statement(), statement);
    EXPECT_FALSE(failure.description().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Dialect, Refused,
                         ::testing::Values("", " ; ", "PRAGMA foreign_keys = OFF", "ATTACH 'x' AS y",
                                           "DROP TABLE Log", "CREATE TABLE x (y)", "VACUUM", "BEGIN",
                                           "WITH x AS (SELECT 1) DELETE FROM Log", "EXPLAIN SELECT 1",
                                           "REPLACE INTO T VALUES (1)", "SELECT 1; DELETE FROM Log",
                                           "SELECT 1;;", "SELECT 1 -- x", "SELECT 1 /* x */", "SELECT 'open",
                                           "SELECT \"open", "SELECT [open", "SELECT #1/2/2026",
                                           "SELECT #13/13/2026#", "SELECT #no date#", "SELECT #2/30/2026#",
                                           "SELECT ##", "SELECT #25:00:00#", "SELECT #13:00:00 PM#",
                                           "SELECT (1", "SELECT 1)", "SELECT ?", "SELECT :a", "SELECT $a",
                                           "SELECT @@VERSION", "SELECT @@IDENTITYX", "SELECT `a`",
                                           "SELECT 1 | 2", "SELECT a FROM [SELECT b; DELETE FROM c]. AS d",
                                           "SELECT a FROM [SELECT b -- ]. AS d", "SELECT {1}", "SELECT \\"));

TEST(Dialect, RefusesANullCharacterAnywhere) {
    for (const QString& statement : {u"SELECT 'a%1b'"_s, u"SELECT [a%1b]"_s, u"SELECT %1"_s}) {
        const QString text = statement.arg(QChar());
        EXPECT_EQ(failureOf([&] { toSqlite(text); }).number(), error::statement) << qPrintable(statement);
    }
}

TEST(Dialect, LimitsNesting) {
    const auto nested = [](int depth) {
        return u"SELECT "_s + QString(depth, u'(') + u'1' + QString(depth, u')');
    };
    EXPECT_NO_THROW(toSqlite(nested(50)));
    EXPECT_EQ(failureOf([&] { toSqlite(nested(51)); }).number(), error::statement);
    EXPECT_EQ(failureOf([&] { toSqlite(nested(100000)); }).number(), error::statement);
}

TEST(Dialect, SplitsAListOfOneTableIntoKeysAndRows) {
    const Translation found = translateStatement(
        u"SELECT [FormulaID],[frm_Name] AS [Name] FROM [Formula] WHERE ([frm_Name] Like 'a%')"_s,
        sqlite::fileWords());
    EXPECT_EQ(found.keysSql, "SELECT \"Formula\".rowid FROM \"Formula\" WHERE (\"frm_Name\" Like 'a%')");
    EXPECT_EQ(found.rowSql,
              "SELECT \"FormulaID\",\"frm_Name\" AS \"Name\" FROM \"Formula\" WHERE \"Formula\".rowid = ?");
    EXPECT_EQ(found.table, "Formula");
    EXPECT_FALSE(found.order.ordered);
    EXPECT_TRUE(
        translateStatement(u"SELECT a FROM Log L ORDER BY L.b DESC;"_s, sqlite::fileWords()).order.ordered);
}

class NotByKey : public ::testing::TestWithParam<const char*> {};

TEST_P(NotByKey, KeepsTheStatementWhole) {
    EXPECT_TRUE(translateStatement(QString::fromUtf8(GetParam()), sqlite::fileWords()).keysSql.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Dialect, NotByKey,
                         ::testing::Values("SELECT @@IDENTITY;", "SELECT Count(*) as n FROM T",
                                           "SELECT a+1 FROM T", "SELECT DISTINCT a FROM T",
                                           "SELECT a FROM T, U", "SELECT a FROM T INNER JOIN U ON T.i = U.i",
                                           "SELECT a FROM T GROUP BY a", "SELECT a FROM T ORDER BY 1",
                                           "SELECT a FROM T LIMIT 3",
                                           "SELECT a FROM T WHERE b UNION SELECT c FROM U",
                                           "SELECT a FROM (SELECT 1 AS a)", "DELETE FROM T", "SELECT a"));

}  // namespace
}  // namespace platform
