// What the file itself writes down of each change, whoever made it.
#include "HistoryTest.h"
#include "history/HistoryFields.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class TriggersTest : public HistoryTest {
protected:
    QString last(const QString& columns) const {
        return outside(u"SELECT %1 FROM History ORDER BY HistoryID DESC LIMIT 1"_s.arg(columns));
    }
    std::vector<HistoryField> lastFields() const { return readHistoryFields(last(u"hst_Fields"_s)); }
    QStringList lastNames() const {
        QStringList names;
        for (const HistoryField& field : lastFields())
            names << field.name;
        return names;
    }
    int count() const { return outside(u"SELECT count(*) FROM History"_s).toInt(); }
    /// One row in each table, with all relations.
    void fill() const {
        outside(u"INSERT INTO Chemical (ChemicalID) VALUES (11); INSERT INTO Formula (FormulaID) VALUES (12);"
                "INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID) VALUES (13, 12, 11);"
                "INSERT INTO Log (LogID) VALUES (14); INSERT INTO LogChem (LogChemID, LogID) VALUES (15, 14);"
                "INSERT INTO Patient (PatientID) VALUES (16);"
                "INSERT INTO RXs (RXsID, LogID, PatientID) VALUES (17, 14, 16)"_s);
    }
};

TEST_F(TriggersTest, ARowThatIsMadeStandsThereWhole) {
    outside(
        u"INSERT INTO Chemical (chm_Name, chm_Cost, chm_Notes) VALUES ('Urea', 2.85, 'it''s > \"b\", é\n=')"_s);
    EXPECT_EQ(last(u"hst_Table, hst_Key, hst_Record, hst_Name, hst_What"_s), "Chemical|1|1|Urea|made");
    EXPECT_EQ(last(u"hst_Fields"_s),
              u"chm_Name='Urea',chm_Units=NULL,chm_Lot=NULL,chm_NDC=NULL,chm_Cost=2.85,chm_AWP=NULL,"
              "chm_Notes='it''s > \"b\", é\n=',chm_Form=NULL,chm_GUID=NULL,chm_Supplier=NULL"_s);
    const std::vector<HistoryField> fields = lastFields();
    ASSERT_EQ(fields.size(), 10);
    EXPECT_EQ(fields[0], (HistoryField{"chm_Name", {}, "Urea"}));
    EXPECT_EQ(fields[3], (HistoryField{"chm_NDC", {}, {}}));
    EXPECT_EQ(fields[4], (HistoryField{"chm_Cost", {}, 2.85}));
    EXPECT_EQ(fields[6], (HistoryField{"chm_Notes", {}, u"it's > \"b\", é\n="_s}));
    EXPECT_TRUE(last(u"hst_When"_s)
                    .contains(QRegularExpression("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}$")));
    EXPECT_EQ(last(u"typeof(hst_Zone), length(hst_Salt)"_s), "integer|16");
    EXPECT_EQ(last(u"hst_Person, hst_Program, hst_Seal"_s), "NULL|NULL|NULL") << "the program's to write";
}

TEST_F(TriggersTest, OfAChangeOnlyTheChangedFieldsStandThere) {
    outside(u"INSERT INTO Chemical (chm_Name, chm_Lot) VALUES ('Urea', 'a1')"_s);
    outside(u"UPDATE Chemical SET chm_Name = 'Urea', chm_Lot = 'A1', chm_AWP = 4"_s);
    EXPECT_EQ(last(u"hst_What, hst_Name, hst_Fields"_s), "changed|Urea|chm_Lot='a1'>'A1',chm_AWP=NULL>4")
        << "case counts here";
    const int before = count();
    outside(u"UPDATE Chemical SET chm_Name = 'Urea', chm_Lot = 'A1'"_s);
    EXPECT_EQ(count(), before) << "a save that changes nothing";
}

TEST_F(TriggersTest, EachColumnOfEachTableIsSeen) {
    fill();
    for (const QString& table :
         outside(u"SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                 "'sqlite%' AND name NOT IN ('Options', 'FileIdentity', 'History')"_s)
             .split('\n')) {
        const QStringList columns =
            outside(u"SELECT group_concat(name) FROM pragma_table_info('%1') WHERE pk = 0"_s.arg(table))
                .split(',');
        for (const QString& column : columns) {
            const QString type =
                outside(u"SELECT type FROM pragma_table_info('%1') WHERE name = '%2'"_s.arg(table, column));
            if (column.endsWith("ID"))
                continue;  // a relation
            const QString value = type == "DATETIME" ? u"'2026-03-07 00:00:00'"_s : u"1"_s;
            outside(u"UPDATE %1 SET %2 = %3"_s.arg(table, column, value));
            EXPECT_EQ(last(u"hst_Table"_s), table);
            EXPECT_EQ(lastNames(), QStringList{column}) << qPrintable(table);
        }
        outside(u"PRAGMA foreign_keys = OFF; DELETE FROM "_s + table);
        EXPECT_EQ(last(u"hst_Table, hst_What"_s), table + "|deleted");
        EXPECT_EQ(lastNames(), columns);
    }
}

TEST_F(TriggersTest, LinesKnowTheirRecordAndBearAName) {
    fill();
    outside(u"UPDATE Chemical SET chm_Name = 'Urea'; UPDATE Log SET log_Name = 'Cream'"_s);
    outside(u"UPDATE FormChem SET fch_Qty = 1.0 / 3"_s);
    EXPECT_EQ(last(u"hst_Table, hst_Key, hst_Record, hst_Name"_s), "FormChem|13|12|Urea");
    EXPECT_EQ(lastFields(), (std::vector<HistoryField>{{"fch_Qty", {}, 1.0 / 3}})) << "to the last bit";
    outside(u"UPDATE RXs SET rxs_Doctor = 'Reed'"_s);
    EXPECT_EQ(last(u"hst_Table, hst_Key, hst_Record, hst_Name"_s), "RXs|17|16|Cream");
    outside(u"DELETE FROM RXs; DELETE FROM Log"_s);
    EXPECT_EQ(outside(u"SELECT hst_Table, hst_What FROM History ORDER BY HistoryID DESC LIMIT 3"_s)
                  .split('\n')
                  .filter("LogChem|deleted")
                  .size(),
              1)
        << "lines that the engine deletes along";
}

TEST_F(TriggersTest, WhatNoProgramStoresStopsNoChange) {
    outside(u"INSERT INTO Chemical (chm_Name, chm_Notes) VALUES (x'4142', x'00ff')"_s);
    EXPECT_EQ(lastFields().at(6), (HistoryField{"chm_Notes", {}, "X'00FF'"}));
    outside(u"UPDATE Chemical SET chm_Notes = 'a'"_s);
    EXPECT_EQ(outside(u"SELECT chm_Notes FROM Chemical"_s), "a");
}

TEST_F(TriggersTest, WhatIsNoListOfFieldsEndsTheReading) {
    EXPECT_TRUE(readHistoryFields({}).empty());
    EXPECT_TRUE(readHistoryFields(u"chm_Name"_s).empty());
    EXPECT_EQ(readHistoryFields(u"a=1,"_s).size(), 1);
    EXPECT_EQ(readHistoryFields(u"a='open"_s), (std::vector<HistoryField>{{"a", {}, "open"}}));
    const auto text = [](const QString& literal) {
        return readHistoryFields(u"a="_s + literal).at(0).after.toString().toStdString();
    };
    EXPECT_EQ(text(u"''"_s), "");
    EXPECT_EQ(text(u"''''"_s), "'");
    EXPECT_EQ(text(u"'''a'',=>''b'''"_s), "'a',=>'b'");
    EXPECT_EQ(text(u"'open''"_s), "open'") << "nothing ends it";
    EXPECT_EQ(text(u"'''"_s), "'");
    EXPECT_EQ(text(u"'"_s), "");
    EXPECT_EQ(readHistoryFields(u"a='x'>'y''z',b=NULL>1.5,c=-3,d=X'00ff'"_s),
              (std::vector<HistoryField>{
                  {"a", "x", "y'z"}, {"b", {}, 1.5}, {"c", {}, qint64{-3}}, {"d", {}, "X'00ff'"}}));
    EXPECT_EQ(readHistoryFields(u"a=1>2>3,b=4"_s), (std::vector<HistoryField>{{"a", qint64{1}, qint64{2}}}));
}

TEST_F(TriggersTest, ASealedRowStaysAndNoneIsDeleted) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    for (const char* statement : {"UPDATE History SET hst_Name = 'x'", "DELETE FROM History"}) {
        try {
            connection->execute(QString::fromLatin1(statement));
            ADD_FAILURE() << statement;
        } catch (const platform::RuntimeError& failure) {
            EXPECT_TRUE(failure.description().contains("what happened can't be")) << statement;
        }
    }
    EXPECT_EQ(count(), 2);
}

// What the program reads back after its own statement is untouched by what the file writes beside it.
TEST_F(TriggersTest, TheProgramsOwnAnswersAreAsEver) {
    EXPECT_EQ(connection->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Reed')"_s), 1);
    EXPECT_EQ(support::rowsText(
                  {{QString::number(connection->execute(u"UPDATE Patient SET pat_City = 'Fenwick'"_s))}}),
              "1");
    run("INSERT INTO Patient (pat_LName) VALUES ('Stone')");
    platform::Query identity(connection->engine(), u"SELECT last_insert_rowid()"_s, {});
    ASSERT_TRUE(identity.step());
    EXPECT_EQ(identity.integer(0), 2);
}

}  // namespace
