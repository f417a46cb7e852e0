// A text that a user types goes into a statement as it is: what it can reach there.
#include "DataTest.h"
#include "platform/data/Engine.h"

namespace platform {
namespace {

class TypedTextTest : public DataTest {
protected:
    /// As a search puts it into its statement.
    std::int32_t searched(const QString& text) const {
        return failureOf([&] { rows(search(text)); }).number();
    }
    std::int32_t searchedInMemory(const QString& text) const {
        return failureOf([&] { rows(search(text), CursorLocation::Client); }).number();
    }
    std::int32_t opened(const QString& statement) const {
        return failureOf([&] { rows(statement); }).number();
    }

private:
    static QString search(const QString& text) {
        return u"SELECT [FormulaID],[frm_Name] FROM [Formula] WHERE ([frm_Name] Like '%1%')"_s.arg(text);
    }
};

const QStringList& reachingFurther() {
    static const QStringList texts{
        u"x') UNION SELECT 1, name FROM sqlite_master WHERE (name Like '"_s,
        u"x') UNION SELECT 1, sql FROM sqlite_schema WHERE (name Like '"_s,
        u"x') UNION SELECT 1, name FROM main.sqlite_master WHERE (name Like '"_s,
        u"x') UNION SELECT 1, name FROM [sqlite_master] WHERE (name Like '"_s,
        u"x') UNION SELECT 1, sql FROM sqlite_temp_master WHERE (name Like '"_s,
        u"x') UNION SELECT seq, name FROM sqlite_sequence WHERE (name Like '"_s,
        u"x') UNION SELECT seq, file FROM pragma_database_list WHERE (file Like '"_s,
        u"x') UNION SELECT 1, name FROM pragma_function_list WHERE (name Like '"_s,
        u"x') UNION SELECT 1, name FROM pragma_module_list WHERE (name Like '"_s,
        u"x') OR EXISTS (SELECT name FROM sqlite_master) OR ([frm_Name] Like '"_s,
        u"x') OR ([FormulaID] IN (SELECT rootpage FROM sqlite_master)) OR ([frm_Name] Like '"_s,
        u"x') OR ([load_extension]('evil')) OR ([frm_Name] Like '"_s,
        u"x') OR ([randomblob](9) Like '"_s,
        u"x') OR ([zeroblob](1000000000) Like '"_s,
        u"x') OR ([hex]([frm_Name]) Like '"_s,
        u"x') OR ([sqlite_version]() Like '"_s,
        u"x') OR ([total_changes]() Like '"_s,
        u"x') OR ([FormulaID] IN (WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x FROM c)) "
        "OR ([frm_Name] Like '"_s};
    return texts;
}

TEST_F(TypedTextTest, ReachesNeitherOtherTablesNorOtherFunctions) {
    for (const QString& text : reachingFurther()) {
        EXPECT_EQ(searched(text), error::statement) << qPrintable(text);
        EXPECT_EQ(searchedInMemory(text), error::statement) << qPrintable(text);
    }
}

TEST_F(TypedTextTest, ReachesTheTablesOfTheCatalogueAndTheDialectsFunctions) {
    EXPECT_EQ(searched(u"Pro"_s), 0);
    EXPECT_EQ(searched(u"x') OR ([FormulaID] IN (SELECT FormulaID FROM LOG)) OR ([frm_Name] Like '"_s), 0);
    EXPECT_EQ(searched(u"x') OR (Abs([FormulaID]) = 1) OR ([frm_Name] Like '"_s), 0);
    EXPECT_EQ(
        opened(u"SELECT Count(*), Sum(chm_Cost), Avg(chm_Cost), Min(chm_Lot), Max(chm_Lot) FROM Chemical"_s),
        0);
    EXPECT_EQ(
        opened(
            u"SELECT IIf(1=1, 'a' & 2, 3/2), Int(2.5), Fix(2.5), Sgn(1), Round(2.5), Val('1') FROM Options"_s),
        0);
    EXPECT_EQ(opened(u"SELECT @@IDENTITY;"_s), 0);
}

TEST_F(TypedTextTest, ChangesNoTableOfTheEngine) {
    EXPECT_EQ(numberOf(u"DELETE FROM sqlite_sequence"_s), error::statement);
    EXPECT_EQ(numberOf(u"UPDATE sqlite_sequence SET seq = 1"_s), error::statement);
    EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Notes = (SELECT name FROM sqlite_master)"_s),
              error::statement);
    EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Notes = [hex]('a')"_s), error::statement);
    EXPECT_GT(connection->engine().lastKey(u"Chemical"_s), 1);
}

}  // namespace
}  // namespace platform
