// A search text goes into its statement as it was typed. It may break that statement; it reaches nothing else: no function
// but the dialect's own, no table but those of the records, and it changes nothing.
#include "DataTest.h"

namespace platform {
namespace {

class HostileText : public DataTest, public ::testing::WithParamInterface<const char*> {
protected:
    static QString searchFor(const QString& text) {
        return u"SELECT [FormulaID],[frm_Name] FROM [Formula] WHERE ([frm_Name] Like '%1%') ORDER BY [frm_Name]"_s
            .arg(text);
    }
    /// Everything that a text could have changed.
    QString everything() const {
        return stored(u"SELECT count(*), max(frm_Name) FROM Formula"_s) +
               stored(u"SELECT count(*), max(log_Lot) FROM Log"_s) +
               stored(u"SELECT count(*) FROM History"_s);
    }
};

TEST_P(HostileText, BreaksItsOwnStatementAndNothingElse) {
    const QString before = everything(), statement = searchFor(QString::fromUtf8(GetParam()));
    for (const CursorLocation location : {CursorLocation::Default, CursorLocation::Client})
        EXPECT_EQ(failureOf([&] { rows(statement, location); }).number(), error::statement);
    EXPECT_EQ(failureOf([&] { editable(statement); }).number(), error::statement);
    EXPECT_EQ(numberOf(statement), error::statement);
    EXPECT_EQ(everything(), before);
}

constexpr const char* functions[] = {
    "x') OR (version() = 'x') OR ('' = '",
    "x') OR ([version]() = 'x') OR ('' = '",
    "x') OR ([pg_catalog].[version]() = 'x') OR ('' = '",
    "x') OR (pg_catalog.version() = 'x') OR ('' = '",
    "x') OR ([current_setting]('sorvanto.person') = 'x') OR ('' = '",
    "x') OR ([told]('person') = 'x') OR ('' = '",
    "x') OR ([sorvanto].[told]('person') = 'x') OR ('' = '",
    "x') OR ([write_history]('', 0, 0, '', 'x', '') IS NULL) OR ('' = '",
    "x') OR ([nextval]('changes') = 1) OR ('' = '",
    "x') OR ([dialect_add](1, 2) = 3) OR ('' = '",
    "x') OR (dialect_add(1, 2) = 3) OR ('' = '",
    "x') OR ([Formula].[row_to_json] IS NULL) OR ('' = '",
    "x') OR ([Formula].[to_json] IS NULL) OR ('' = '",
    "x') OR ([upper]([frm_Name]) = 'X') OR ('' = '",
    "x') OR (load_extension('x') = 1) OR ('' = '",
    "x') OR ([load_extension]('x') = 1) OR ('' = '",
    "x') OR (randomblob(9) = 1) OR ('' = '",
    "x') OR (current_user = 'bench') OR ('' = '",
    "x') OR (CURRENT_TIMESTAMP > 1) OR ('' = '",
    "x') OR ([Chr](65) = 'A') OR ('' = '",
    "x') OR (CAST([frm_Name] AS text) = 'A') OR ('' = '",
    "x') OR (CASE WHEN 1=1 THEN 1 END = 1) OR ('' = '",
};

constexpr const char* tables[] = {
    "x') UNION SELECT 1, rolname FROM pg_authid WHERE (rolname Like '",
    "x') UNION SELECT 1, relname FROM [pg_class] WHERE (relname Like '",
    "x') UNION SELECT 1, relname FROM [pg_catalog].[pg_class] WHERE (relname Like '",
    "x') UNION SELECT 1, table_name FROM information_schema.tables WHERE (table_name Like '",
    "x') UNION SELECT 1, sql FROM sqlite_master WHERE (name Like '",
    "x') UNION SELECT 1, sql FROM [sqlite_master] WHERE (name Like '",
    "x') UNION SELECT 1, sql FROM main.sqlite_schema WHERE (name Like '",
    "x') OR EXISTS (SELECT 1 FROM generate_series(1, 9)) OR ([frm_Name] Like '",
    "x') OR EXISTS (SELECT 1 FROM pragma_table_info('Log')) OR ([frm_Name] Like '",
    "x') OR EXISTS (SELECT 1 FROM nothing) OR ([frm_Name] Like '",
};

constexpr const char* changes[] = {
    "x'); DELETE FROM Log; --",
    "x'); COMMIT; DELETE FROM Log; --",
    "x') UNION DELETE FROM Log WHERE ('' = '",
    "x'); SELECT 1 INTO hostile; --",
    "x') FOR UPDATE; --",
    "x' /* ",
    "x') -- ",
    "x') OR ('a' = $$a$$) OR ('' = '",
    "x') OR ('a'::text = 'a') OR ('' = '",
    "x') OR (E'\\047' = 'a') OR ('' = '",
    "x') OR (? = 1) OR ('' = '",
    "x') OR ($1 = 1) OR ('' = '",
    "x') OR (ARRAY[1] IS NULL) OR ('' = '",
    "x') OR ([frm_Name] COLLATE \"C\" = 'x') OR ('' = '",
};

INSTANTIATE_TEST_SUITE_P(Functions, HostileText, ::testing::ValuesIn(functions));
INSTANTIATE_TEST_SUITE_P(Tables, HostileText, ::testing::ValuesIn(tables));
INSTANTIATE_TEST_SUITE_P(Changes, HostileText, ::testing::ValuesIn(changes));

}  // namespace
}  // namespace platform
