// Widths, formats and place of the search list.
#include "records/SearchColumns.h"

#include <gtest/gtest.h>

using platform::FieldKind;
using sorvanto::ColumnNeed;
using sorvanto::fittedWidths;
using sorvanto::ListMeasure;
using sorvanto::searchColumn;
using sorvanto::searchPlace;

namespace {

constexpr ListMeasure measure{10, 220};

platform::GridColumn column(FieldKind kind, int size, const char* name = "Field") {
    return searchColumn({name, kind, size, {}, {}}, measure);
}

TEST(SearchColumns, TextsAreAsWideAsTheirSizeAndHalfFromTwentyOn) {
    struct Row {
        int size, width;
    };
    for (const Row& row : {Row{0, 50}, Row{1, 50}, Row{4, 50}, Row{5, 50}, Row{6, 60}, Row{19, 190},
                           Row{20, 100}, Row{21, 105}, Row{50, 250}, Row{255, 1275}})
        EXPECT_EQ(column(FieldKind::Text, row.size).width, row.width) << row.size;
    EXPECT_TRUE(column(FieldKind::Text, 40).numberFormat.isEmpty());
}

TEST(SearchColumns, ADoubleIsMoneyAndAFlagIsAWord) {
    EXPECT_EQ(column(FieldKind::Double, 8).numberFormat, "Currency");
    EXPECT_EQ(column(FieldKind::Double, 8).width, 100);
    EXPECT_EQ(column(FieldKind::Flag, 2, "Active").numberFormat, "Yes/No");
    EXPECT_EQ(column(FieldKind::Flag, 2, "Active").width, 60);
}

TEST(SearchColumns, AnyOtherTypeKeepsTheDefault) {
    for (const FieldKind kind :
         {FieldKind::Short, FieldKind::Long, FieldKind::Money, FieldKind::Date, FieldKind::LongText}) {
        EXPECT_EQ(column(kind, 8).width, 220);
        EXPECT_TRUE(column(kind, 8).numberFormat.isEmpty());
    }
}

TEST(SearchColumns, TheHeadingIsTheFieldsName) {
    EXPECT_EQ(column(FieldKind::Long, 4, "FormulaName").caption, "FormulaName");
    EXPECT_FALSE(column(FieldKind::Long, 4).editable);
}

TEST(SearchColumns, TheWindowStandsWhereWishedIfItFitsElseInTheMiddle) {
    EXPECT_EQ(searchPlace(0, 400, 1000), 300);
    EXPECT_EQ(searchPlace(-5, 400, 1000), 300);
    EXPECT_EQ(searchPlace(1, 400, 1000), 1);
    EXPECT_EQ(searchPlace(600, 400, 1000), 600);
    EXPECT_EQ(searchPlace(601, 400, 1000), 300);
    EXPECT_EQ(searchPlace(0, 401, 1000), 299);
    EXPECT_EQ(searchPlace(10, 1200, 1000), -100);
}

TEST(SearchColumns, KeepTheirDesignedWidthsWhereTheRoomHoldsThem) {
    EXPECT_EQ(fittedWidths({{0, 0}, {300, 60}, {200, 500}}, 500), (std::vector<int>{0, 300, 200}));
}

TEST(SearchColumns, GiveTheirEmptyRoomWhereTheScreenIsNarrow) {
    EXPECT_EQ(fittedWidths({{0, 0}, {300, 60}, {200, 150}}, 400), (std::vector<int>{0, 60, 150}));
}

TEST(SearchColumns, DocumentsAndIdentifiersGiveBeforeNamesDo) {
    EXPECT_EQ(fittedWidths({{0, 0}, {400, 300}, {500, 500, true}, {200, 120}}, 550),
              (std::vector<int>{0, 300, 130, 120}));
    EXPECT_EQ(fittedWidths({{0, 0}, {400, 300}, {500, 500, true}, {200, 120}}, 400),
              (std::vector<int>{0, 190, 90, 120}));
}

TEST(SearchColumns, TheWidestGiveUntilAllAreSeen) {
    const std::vector<int> widths = fittedWidths({{0, 0}, {900, 900}, {800, 700}, {100, 80}, {60, 20}}, 600);
    EXPECT_EQ(widths, (std::vector<int>{0, 236, 236, 80, 48}));
}

TEST(SearchColumns, TooManyForAnyScreenKeepTheirTextsAndScroll) {
    std::vector<ColumnNeed> columns(20, {300, 200});
    columns[3] = {400, 350};            // a long name
    columns[5] = {500, 500, true, 60};  // a document
    std::vector<int> widths(20, 200);
    widths[3] = 240;
    widths[5] = 60;
    EXPECT_EQ(fittedWidths(columns, 600), widths);
}

}  // namespace
