// Spreadsheet files, read back by two independent programs.
#include "Samples.h"
#include "Tools.h"
#include "support/Golden.h"
#include "support/TempProgramFolder.h"

#include "platform/basic/Currency.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/CellValue.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/report/XlsWorkbook.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace samples;

namespace {

struct Xls {
    QTemporaryDir folder;
    QString path = folder.filePath("book.xls");

    explicit Xls(const QByteArray& bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QString cells() const { return tools::cells(path); }
    /// The file as comma separated values, by the other reader.
    QString commaSeparated() const {
        tools::output("soffice",
                      {"--headless", "-env:UserInstallation=file://" + folder.filePath("profile"),
                       "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false",
                       "--outdir", folder.path(), path});
        QFile file(folder.filePath("book.csv"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
};

/// What the office program took from the file.
QString inOffice(const Xls& xls) {
    tools::output("soffice", {"--headless", "-env:UserInstallation=file://" + xls.folder.filePath("profile"),
                              "--convert-to", "fods", "--outdir", xls.folder.path(), xls.path});
    QFile file(xls.folder.filePath("book.fods"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

}  // namespace

TEST(Spreadsheet, RowsAndColumnsFollowTheBands) {
    StockFile file;
    file.add("'Zinc oxide', 'Powder', 12.5, 3.2, '2026-03-07 14:05:09', '0303A0000100'");
    file.add("'=SUM(A1)', '+1', 1000, 1234.5, '2026-03-01 00:00:00', '-2'");
    file.add("'@home', 'Лек', NULL, -0.07, NULL, '007'");
    auto report = std::make_unique<StockList>(file.rows());
    report->setText("madeOn", "3/7/2026");
    const Xls xls(spreadsheet(finished(std::move(report))->document()));
    support::expectGolden("report/stock_list_cells.txt", xls.cells());
    support::expectGolden("report/stock_list_office.csv", xls.commaSeparated());
}

TEST(Spreadsheet, RowsOfAllPagesStandUnderOneHeading) {
    StockFile file;
    file.addMany(100);
    const Xls xls(spreadsheet(finished(std::make_unique<StockList>(file.rows()))->document()));
    QStringList first;
    for (const QString& line : xls.cells().split('\n')) {
        const QStringList parts = line.split('|');
        if (parts.size() == 6 && parts[2] == "text" && parts[1] == "0" && parts[3] != "'Stock List'")
            first << parts[3];
    }
    EXPECT_EQ(first.count("'Name'"), 1);
    EXPECT_EQ(first.count("'Items'"), 1);
    const QStringList items = first.filter(QRegularExpression("^'Item \\d"));
    ASSERT_GE(items.size(), 100);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(items[i].toStdString(), "'Item " + std::to_string(i + 1) + "'");
    EXPECT_EQ(xls.cells().count("'Page "), 1) << "the foot of the last page";
    EXPECT_TRUE(xls.cells().contains("'Page 3'"));
}

TEST(Spreadsheet, AHeadOfALaterPageThatSaysAnotherThingStands) {
    struct Renamed : Report {
        Renamed()
            : Report([] {
                  ReportDefinition d;
                  d.name = "Renamed";
                  d.sections = {{SectionKind::PageHeader,
                                 600,
                                 {field("name", 0, 0, 3000, 270), label("one", 0, 300, 1000, 270, "One"),
                                  label("two", 1000, 300, 1000, 270, "Two")}},
                                {SectionKind::Detail, 6500, {field("row", 0, 0, 1000, 270)}}};
                  return d;
              }()) {}
        void fetchData(bool& eof) override { eof = ++m_row > 6; }
        void pageHeaderFormat() override { setText("name", m_row > 4 ? "New name" : "Old name"); }
        void detailFormat() override { setText("row", QString::number(m_row)); }
        int m_row = 0;
    };
    const QString cells = Xls(spreadsheet(finished(std::make_unique<Renamed>())->document())).cells();
    QStringList texts;
    for (const QString& line : cells.split('\n').mid(1))
        texts << line.section('|', 3, 3);
    texts.removeAll(QString());
    EXPECT_EQ(texts.join(' ').toStdString(), "'Old name' 'One' 'Two' '1' '2' '3' '4' 'New name' '5' '6'")
        << qPrintable(cells);
}

/// A list of a hundred rows under its heading row, as readers see its table.
class SpreadsheetTable : public testing::Test {
protected:
    static ReportDefinition layout(SectionKind headings) {
        ReportDefinition d;
        d.name = "Table";
        d.sections = {{SectionKind::ReportHeader, 400, {label("title", 0, 0, 3000, 270, "A title")}},
                      {headings,
                       400,
                       {label("one", 0, 0, 1000, 270, "One"), label("two", 1000, 0, 1000, 270, "Two").right(),
                        label("three", 2000, 0, 1000, 270, "Three").centre()}},
                      {SectionKind::Detail,
                       270,
                       {field("first", 0, 0, 1000, 270), field("second", 1000, 0, 1000, 270).right(),
                        field("third", 2000, 0, 1000, 270).centre()}}};
        return d;
    }
    struct Hundred : Report {
        explicit Hundred(SectionKind headings) : Report(layout(headings)) {}
        void fetchData(bool& eof) override { eof = ++m_row > 100; }
        void detailFormat() override {
            setValue("first", m_row);
            setValue("second", m_row * 2);
            setText("third", u"x"_s);
        }
        int m_row = 0;
    };
    static QByteArray bytes(SectionKind headings) {
        return spreadsheet(finished(std::make_unique<Hundred>(headings))->document());
    }
    static constexpr const char* view = R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
sheet = book.sheet_by_index(0)
print('frozen', sheet.panes_are_frozen, sheet.horz_split_pos)
print('aligned', *[book.xf_list[sheet.cell_xf_index(9, c)].alignment.hor_align for c in (0, 1, 2)])
for name in book.name_obj_list:
    print('name', name.name, name.hidden, name.area2d(clipped=False)[1:])
)";
};

TEST_F(SpreadsheetTable, AListHasFrozenHeadingsThatFilterAndRepeat) {
    const Xls xls(bytes(SectionKind::PageHeader));
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", view, xls.path}).toStdString(),
              "frozen 1 2\n"
              "aligned 1 3 2\n"
              "name _FilterDatabase 1 (1, 102, 0, 3)\n"
              "name Print_Titles 0 (1, 2, 0, 256)\n");
    const QString office = inOffice(xls);
    EXPECT_TRUE(office.contains("Table.A2:Table.C102\" table:display-filter-buttons=\"true\"")) << "filter";
    EXPECT_EQ(office.count("<table:table-header-rows>"), 1);
    EXPECT_TRUE(office.contains("style:scale-to-X=\"1\"")) << "one page wide";
    EXPECT_FALSE(office.contains("style:scale-to-Y")) << "as high as it gets";
}

TEST_F(SpreadsheetTable, HeadingsAmongTheSheetRepeatAndNothingElse) {
    const Xls xls(bytes(SectionKind::GroupHeader));
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", view, xls.path}).toStdString(),
              "frozen 0 0\n"
              "aligned 1 3 2\n"
              "name Print_Titles 0 (1, 2, 0, 256)\n");
    EXPECT_FALSE(inOffice(xls).contains("table:database-range "));
}

namespace {

/// A sheet of two columns: headings, then so many rows that can be filtered.
void fillTable(XlsWorkbook& book, const QString& what, int rows) {
    CellStyle bold;
    bold.bold = true;
    const auto heading = book.addStyle(bold);
    book.addText(0, 0, heading, what);
    book.addText(0, 1, heading, u"Count"_s);
    for (int row = 1; row <= rows; ++row) {
        book.addText(row, 0, 0, what + QString::number(row));
        book.addNumber(row, 1, 0, row * 1.5);
    }
    book.setColumnWidth(0, 3000);
    book.setTable({.headingRow = 0, .frozen = true, .lastFiltered = rows, .firstColumn = 0, .lastColumn = 1});
}

/// SHA-256 of the stream that spreadsheet programs read, whatever the container around it.
QString streamDigest(const Xls& xls) {
    return tools::output("/usr/bin/python3", {"-c", R"(
import hashlib, sys, xlrd.compdoc
document = xlrd.compdoc.CompDoc(open(sys.argv[1], 'rb').read())
print(hashlib.sha256(document.get_named_stream('Workbook')).hexdigest(), end='')
)",
                                              xls.path});
}

}  // namespace

TEST(Spreadsheet, ABookOfOneSheetKeepsItsBytes) {
    XlsWorkbook book(u"List: one"_s);
    fillTable(book, u"Name"_s, 40);
    book.addText(41, 0, 0, u"Лек"_s);
    book.mergeRight(41, 0, 1);
    EXPECT_EQ(streamDigest(Xls(book.bytes())).toStdString(),
              "1e6b2cbb693a1c80a441d07454570b01c5c9b9a0525a317f8dd52ae95461c175");
}

TEST(Spreadsheet, AListKeepsItsBytes) {
    support::TempProgramFolder folder;
    StockFile file;
    file.add("'A name that is far too long for the column of names in this list', 'Powder', 12.5, 3.2, "
             "'2026-03-07 14:05:09', '0303A0000100'");
    file.add("'Лек', 'Cream', 1000, 1234.5, '2026-03-01 00:00:00', '-2'");
    file.addMany(300);
    exportReport(std::make_unique<StockList>(file.rows()), folder.path() + "\\Book.xls");
    EXPECT_EQ(streamDigest(Xls(folder.read("Book.xls"))).toStdString(),
              "88111e19b133a3c28fbcd5a6c19e6ee8b0b5d4aacdd1bf370635e8f817d248b1");
}

TEST(Spreadsheet, TextsThatRepeatAndAnEmptyOneAreTheirOwn) {
    XlsWorkbook book(u"Sheet"_s);
    const QStringList texts{"one", "one", "", "", "two", "one", "two"};
    for (int row = 0; row < texts.size(); ++row) {
        book.addText(row, 0, 0, texts[row]);
        book.addText(row, 1, 0, texts[texts.size() - 1 - row]);
    }
    const Xls xls(book.bytes());
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", R"(
import sys, xlrd
for row in xlrd.open_workbook(sys.argv[1]).sheet_by_index(0).get_rows():
    print(*[cell.value or '-' for cell in row])
)",
                                                 xls.path})
                  .toStdString(),
              "one two\none one\n- two\n- -\ntwo -\none one\ntwo one\n");
}

TEST(Spreadsheet, ABookOfSeveralSheetsIsReadByBothReaders) {
    XlsWorkbook book(u"Batches"_s);
    fillTable(book, u"Batch"_s, 40);
    book.addSheet(u"Notes"_s);  // neither headings nor filter
    book.addText(0, 0, 0, u"Name"_s);
    book.addSheet(u"Prescriptions"_s);
    fillTable(book, u"Patient"_s, 3);
    const Xls xls(book.bytes());
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
for sheet in book.sheets():
    print(sheet.name, sheet.nrows, sheet.panes_are_frozen, sheet.sheet_selected, *sheet.row_values(sheet.nrows - 1))
for name in book.name_obj_list:
    print('name', name.name, name.scope, name.area2d(clipped=False)[0].name, name.area2d(clipped=False)[1:])
)",
                                                 xls.path})
                  .toStdString(),
              "Batches 41 1 1 Batch40 60.0\n"
              "Notes 1 0 0 Name\n"
              "Prescriptions 4 1 0 Patient3 4.5\n"
              "name _FilterDatabase 0 Batches (0, 41, 0, 2)\n"
              "name Print_Titles 0 Batches (0, 1, 0, 256)\n"
              "name _FilterDatabase 2 Prescriptions (0, 4, 0, 2)\n"
              "name Print_Titles 2 Prescriptions (0, 1, 0, 256)\n");
    const QString office = inOffice(xls);
    EXPECT_TRUE(office.contains("Batches.A1:Batches.B41\" table:display-filter-buttons=\"true\""))
        << "filter";
    EXPECT_TRUE(office.contains("Prescriptions.A1:Prescriptions.B4\" table:display-filter-buttons=\"true\""));
    EXPECT_EQ(office.count("<table:table-header-rows>"), 2);
    EXPECT_TRUE(office.contains("<text:p>Patient3</text:p>"));
}

TEST(Spreadsheet, LabelsStandSideBySideAndSkippedOnesLeaveTheirRoom) {
    const Xls xls(spreadsheet(finished(std::make_unique<StripLabels>(4, 3, "L-1"))->document()));
    support::expectGolden("report/strip_labels_cells.txt", xls.cells());
}

TEST(Spreadsheet, ValuesGivenByAnEventAreNumbers) {
    struct Money : Report {
        Money()
            : Report([] {
                  ReportDefinition d;
                  d.name = "Money";
                  d.sections = {{SectionKind::GroupHeader,
                                 300,
                                 {field("cost", 0, 0, 2000, 270), field("plain", 2000, 0, 2000, 270)}}};
                  return d;
              }()) {}
        void groupHeaderFormat() override {
            setValue("cost", QVariant::fromValue(Currency::fromText("1234.5")), "$###,##0.00");
            setValue("plain", 0.1, {}, "a tenth");
        }
    };
    const auto run = finished(std::make_unique<Money>());
    EXPECT_TRUE(dumped(run->document()).contains("$1,234.50"));
    EXPECT_TRUE(dumped(run->document()).contains("a tenth"));
    const QString cells = Xls(spreadsheet(run->document())).cells();
    EXPECT_TRUE(cells.contains("0|0|number|1234.5|\"$\"###,##0.00|plain")) << qPrintable(cells);
    EXPECT_TRUE(cells.contains("0|1|number|0.1|General|plain")) << qPrintable(cells);
}

TEST(Spreadsheet, ATextBesideAnotherHasTheRoomItNeeds) {
    const auto run = finished(onePage({
        label("caption", 0, 0, 500, 270, "A long caption"),
        label("value", 500, 0, 500, 270, "its value"),
        label("third", 1000, 0, 500, 270, "third"),
        label("alone", 0, 500, 500, 270, "A text with nothing beside it"),
        label("endless", 0, 1000, 500, 270, u"many words "_s.repeated(30).trimmed()),
        label("beside", 500, 1000, 500, 270, "y"),
    }));
    const Xls xls(spreadsheet(run->document()));
    const char* const script = R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
s = book.sheet_by_index(0)
print(*[s.colinfo_map[c].width // 256 for c in (0, 1, 2)], s.merged_cells)
for r in range(3):
    print(book.xf_list[s.cell_xf_index(r, 0)].alignment.text_wrapped, s.rowinfo_map[r].height)
)";
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", script, xls.path}).trimmed().toStdString(),
              "46 9 5 [(1, 2, 0, 3)]\n0 255\n0 255\n1 2295")
        << "a column grows to a limit, then the text goes on in further lines";
}

TEST(Spreadsheet, ATextTakesTheEmptyCellsBesideIt) {
    const auto run = finished(onePage({
        label("a", 0, 0, 1000, 270, "a"),
        label("b", 1000, 0, 1000, 270, "b"),
        label("c", 2000, 0, 1000, 270, "c"),
        label("address", 0, 500, 3000, 270, "418 Larkspur Court"),
        label("long", 0, 1000, 3000, 270, u"A caution of many words. "_s.repeated(10).trimmed()),
    }));
    const char* const script = R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
s = book.sheet_by_index(0)
print(sorted(s.merged_cells), s.rowinfo_map[2].height, book.xf_list[s.cell_xf_index(2, 0)].alignment.text_wrapped)
)";
    const Xls xls(spreadsheet(run->document()));
    EXPECT_EQ(tools::output("/usr/bin/python3", {"-c", script, xls.path}).trimmed().toStdString(),
              "[(1, 2, 0, 2), (2, 3, 0, 3)] 1275 1");
}

TEST(Spreadsheet, LineEndsAndTabsAreTheSpreadsheetsOwn) {
    const auto run = finished(onePage({label("lines", 0, 0, 3000, 900, "one\r\ntwo\rthree\n\r\n"),
                                       label("tabs", 0, 1000, 3000, 270, "Name\tType\t777-01")}));
    const QString cells = Xls(spreadsheet(run->document())).cells();
    EXPECT_TRUE(cells.contains("'one\\ntwo\\nthree'")) << qPrintable(cells);
    EXPECT_TRUE(cells.contains("'Name   Type   777-01'")) << qPrintable(cells);
}

TEST(Spreadsheet, TextsBesideAHighOneHaveRowsOfTheirOwn) {
    const auto run = finished(onePage({
        label("high", 0, 0, 2000, 1440, "high"),
        label("beside", 2000, 0, 2000, 270, "beside"),
        label("second", 2000, 270, 2000, 270, "second"),
        label("third", 2000, 540, 2000, 270, "third"),
    }));
    const QString cells = Xls(spreadsheet(run->document())).cells();
    for (const char* cell : {"0|0|text|'high'", "0|1|text|'beside'", "1|1|text|'second'", "2|1|text|'third'"})
        EXPECT_TRUE(cells.contains(cell)) << cell << "\n" << qPrintable(cells);
}

TEST(Spreadsheet, ATextFromTheMiddleOfALineOnHasARowOfItsOwn) {
    const auto run = finished(onePage({
        label("high", 0, 0, 2000, 300, "high"),
        label("above", 2000, 149, 2000, 270, "above"),
        label("middle", 4000, 150, 2000, 270, "middle"),
    }));
    const QString cells = Xls(spreadsheet(run->document())).cells();
    for (const char* cell : {"0|0|text|'high'", "0|1|text|'above'", "1|1|text|'middle'"})
        EXPECT_TRUE(cells.contains(cell)) << cell << "\n" << qPrintable(cells);
}

TEST(Spreadsheet, NothingIsHiddenByItsCell) {
    const auto run = finished(onePage({
        label("title", 0, 0, 1000, 400, "A title over narrow columns").points(14.5).centre(),
        label("short", 0, 500, 1000, 270, "it").centre(),
        label("lines", 0, 900, 1000, 900, "one\r\ntwo and more than fits\r\nthree"),
        label("small", 0, 2000, 1000, 270, "small").points(6),
    }));
    const Xls xls(spreadsheet(run->document()));
    const char* const script = R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
sheet = book.sheet_by_index(0)
for r in range(sheet.nrows):
    form = book.xf_list[sheet.cell_xf_index(r, 0)].alignment
    row = sheet.rowinfo_map[r]
    print(form.hor_align, form.text_wrapped, row.height, row.height_mismatch)
)";
    const QStringList rows =
        tools::output("/usr/bin/python3", {"-c", script, xls.path}).trimmed().split('\n');
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0].toStdString(), "2 0 370 1") << "centred over a column wide enough; high enough";
    EXPECT_EQ(rows[1].toStdString(), "2 0 255 0");
    EXPECT_EQ(rows[2].toStdString(), "1 1 765 1") << "three lines";
    EXPECT_EQ(rows[3].toStdString(), "1 0 255 0");
}

struct PictureCase {
    const char *picture, *format;
};
class NumberFormats : public testing::TestWithParam<PictureCase> {};

TEST_P(NumberFormats, AreTheSpreadsheetsOwn) {
    EXPECT_EQ(numberFormatOf(QString::fromUtf8(GetParam().picture)).toStdString(), GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, NumberFormats,
    testing::Values(PictureCase{"#0.00", "#0.00"}, PictureCase{"$ ###,##0.00", "\"$ \"###,##0.00"},
                    PictureCase{"Kč###,##0.00", "\"Kč\"###,##0.00"}, PictureCase{"####0;;Null", "####0"},
                    PictureCase{"0.00 ml", "0.00\" ml\""}, PictureCase{"MM-DD-YY", "MM\\-DD\\-YY"}));

TEST(XlsWorkbook, KeepsTextsOfEveryLengthAndScript) {
    XlsWorkbook book("Texts");
    std::vector<QString> texts;
    // Lengths about the border of a record, narrow and wide, so that texts split at every kind of place.
    for (int i = 0; i < 300; ++i) {
        const QChar character = i % 3 == 0 ? QChar(0x041B) : QChar('a' + i % 26);
        texts.push_back(QString::number(i) + QString((i * 37) % 300, character));
    }
    texts.push_back(QString(32'767, 'x'));
    texts.push_back(QString(32'767, QChar(0x20AC)));
    texts.push_back(QString::fromUcs4(U"\U0001F600 end", 5));
    texts.push_back("line\nend and \"quotes\"");
    QString expected = u"Texts %1 1\n"_s.arg(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        book.addText(static_cast<int>(i), 0, 0, texts[i]);
    const Xls xls(book.bytes());
    const QString script = "import sys, xlrd\ns = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
                           "print(chr(1).join(s.cell(r, 0).value for r in range(s.nrows)), end='')";
    const QStringList read = tools::output("/usr/bin/python3", {"-c", script, xls.path}).split(QChar(1));
    ASSERT_EQ(read.size(), static_cast<qsizetype>(texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(read[static_cast<qsizetype>(i)].toStdString(), texts[i].toStdString()) << i;
}

TEST(XlsWorkbook, KeepsNumbersToTheLastBit) {
    const std::vector<double> numbers{0, -0.0, 1, -1, 0.01, -0.07, 12.5, 1234567.89, 0.1, 1e300, -1e-300,
                                      536870911, 536870912, -536870911, 5368709.11, 5368709.12, 1.0 / 3,
                                      46088.5869,
                                      // a hundredth but for the last bit
                                      0.8 - 0.1};
    XlsWorkbook book("Numbers");
    for (std::size_t i = 0; i < numbers.size(); ++i)
        book.addNumber(static_cast<int>(i), static_cast<int>(i % 3), 0, numbers[i]);
    const Xls xls(book.bytes());
    const QString script = "import sys, xlrd\ns = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
                           "print(*[repr(s.cell(r, r % 3).value) for r in range(s.nrows)])";
    const QStringList read = tools::output("/usr/bin/python3", {"-c", script, xls.path}).trimmed().split(' ');
    ASSERT_EQ(read.size(), static_cast<qsizetype>(numbers.size()));
    for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(read[static_cast<qsizetype>(i)].toDouble(), numbers[i]) << i;
}

TEST(XlsWorkbook, HoldsItsMostRowsAndSaysWhenThereAreMore) {
    XlsWorkbook book("Rows");
    for (int row = 0; row < XlsWorkbook::mostRows; ++row)
        book.addNumber(row, 0, 0, row);
    try {
        book.addNumber(XlsWorkbook::mostRows, 0, 0, 1);
        FAIL();
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), error::overflow);
        EXPECT_TRUE(failure.description().contains("65,536 rows"));
    }
    const Xls xls(book.bytes());
    EXPECT_TRUE(xls.cells().contains("65535|0|number|65535.0|General|plain"));
}

TEST(XlsWorkbook, SaysWhenATextIsTooLong) {
    XlsWorkbook book("Long");
    try {
        book.addText(0, 0, 0, QString(32'768, 'x'));
        FAIL();
    } catch (const RuntimeError& failure) {
        EXPECT_TRUE(failure.description().contains("32,767 characters"));
    }
}

TEST(XlsWorkbook, ManyStylesAndAStrangeSheetName) {
    XlsWorkbook book("a/b[c]:d*e?f\\g this name is much too long for a sheet");
    for (int i = 0; i < 20; ++i) {
        CellStyle style;
        style.twips = 160 + 20 * i;
        style.bold = i % 2;
        style.numberFormat = u"0.%1"_s.arg(QString(i + 1, '0'));
        book.addNumber(i, 0, book.addStyle(style), i);
    }
    const QString cells = Xls(book.bytes()).cells();
    EXPECT_TRUE(cells.startsWith("a b c  d e f g this name is muc 20 1")) << qPrintable(cells);
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(cells.contains(
            u"%1|0|number|%1.0|0.%2|%3"_s.arg(i).arg(QString(i + 1, '0')).arg(i % 2 ? "bold" : "plain")))
            << i;
}

TEST(Spreadsheet, OverwritesWithoutAQuestionAndLeavesNoRest) {
    support::TempProgramFolder folder;
    folder.write("Book.xls", "old");
    StockFile file;
    file.addMany(3);
    exportReport(std::make_unique<StockList>(file.rows()), folder.path() + "\\Book.xls");
    EXPECT_TRUE(folder.read("Book.xls").startsWith(QByteArray::fromHex("d0cf11e0a1b11ae1")));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("Book.xls"));
}

TEST(Spreadsheet, AFailingEventLeavesTheOldFile) {
    support::TempProgramFolder folder;
    folder.write("Book.xls", "old");
    StockFile file;
    file.addMany(3);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList&) { throw RuntimeError(error::divisionByZero, "Division by zero"); };
    EXPECT_THROW(exportReport(std::move(report), folder.path() + "\\Book.xls"), RuntimeError);
    EXPECT_EQ(folder.read("Book.xls"), "old");
}

TEST(Spreadsheet, SaysHowFarItIsAndWritesNothingWhenItIsStopped) {
    support::TempProgramFolder folder;
    folder.write("Book.xls", "old");
    StockFile file;
    file.addMany(300);
    const QString path = folder.path() + "\\Book.xls";
    std::vector<double> told;
    const auto all = [&](double done) {
        told.push_back(done);
        return true;
    };
    ASSERT_TRUE(exportReport(std::make_unique<StockList>(file.rows()), path, all));
    const QByteArray whole = folder.read("Book.xls");
    EXPECT_GE(told.size(), 10U);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.back(), 1.0);
    for (std::size_t turn = 0; turn < told.size(); ++turn) {
        folder.write("Book.xls", "old");
        std::size_t calls = 0;
        EXPECT_FALSE(exportReport(std::make_unique<StockList>(file.rows()), path,
                                  [&](double) { return calls++ < turn; }));
        EXPECT_EQ(calls, turn + 1);
        EXPECT_EQ(folder.read("Book.xls"), "old") << turn;
    }
    ASSERT_TRUE(exportReport(std::make_unique<StockList>(file.rows()), path));
    EXPECT_EQ(folder.read("Book.xls"), whole);
}

TEST(Spreadsheet, AFolderThatIsNotThereIsAnError) {
    StockFile file;
    file.addMany(1);
    EXPECT_THROW(exportReport(std::make_unique<StockList>(file.rows()), "/nowhere\\Book.xls"), RuntimeError);
}
