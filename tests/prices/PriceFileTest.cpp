// Lists as workbooks, made by an office program, and files that are none.
#include "prices/PriceFile.h"

#include "TempProgramFolder.h"
#include "platform/report/Tools.h"

#include <QDir>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

constexpr int longRows = 1500;  // their texts fill many records

QString textCell(const QString& text) {
    return u"<table:table-cell office:value-type=\"string\"><text:p>%1</text:p></table:table-cell>"_s.arg(
        text.toHtmlEscaped());
}

QString numberCell(const QString& value, const QString& formula = {}) {
    return u"<table:table-cell %2office:value-type=\"float\" office:value=\"%1\"/>"_s.arg(
        value, formula.isEmpty() ? QString() : u"table:formula=\"of:=%1\" "_s.arg(formula));
}

QString sheet(const QString& name, const QStringList& rows) {
    return u"<table:table table:name=\""_s + name + u"\"><table:table-row>"_s +
           rows.join(u"</table:table-row><table:table-row>"_s) + u"</table:table-row></table:table>"_s;
}

QString longText(int row) {
    return (row % 3 == 0 ? u"Цинка оксид %1 €"_s : u"Zinc oxide %1 é"_s).arg(row).repeated(1 + row % 4);
}

QString workbook() {
    QStringList prices{
        textCell(u"Name"_s) + textCell(u"NDC"_s) + textCell(u"Price"_s) + textCell(u"Pack"_s),
        textCell(u"Zinc \"oxide\", <fine>"_s) + textCell(u"0338-0049-04"_s) + numberCell(u"28.5"_s) +
            textCell(u"100 g"_s),
        textCell(u"Вазелин"_s) + numberCell(u"338004904"_s) + numberCell(u"0.285"_s) +
            numberCell(u"1234567.25"_s),
        u"<table:table-cell/>"_s + textCell(u"alone"_s) + numberCell(u"0"_s, u"57/2"_s) +
            u"<table:table-cell office:value-type=\"string\" table:formula=\"of:=&quot;5&quot;&amp;&quot; kg&quot;\"/>"_s,
        numberCell(u"-3"_s) + numberCell(u"0.1"_s) + numberCell(u"1e-7"_s) + numberCell(u"100"_s),
        numberCell(u"1"_s) + numberCell(u"-20"_s) + numberCell(u"3.25"_s)};
    QStringList texts;
    for (int row = 0; row < longRows; ++row)
        texts << textCell(longText(row)) + numberCell(QString::number(row / 100.0));
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document "
           "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
           "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
           "xmlns:of=\"urn:oasis:names:tc:opendocument:xmlns:of:1.2\" office:version=\"1.2\" "
           "office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\"><office:body><office:spreadsheet>"_s +
           sheet(u"Preise"_s, prices) + sheet(u"Texts &amp; more"_s, texts) +
           u"</office:spreadsheet></office:body></office:document>"_s;
}

std::string cells(const PriceTable& table) {
    QString text;
    for (const PriceRow& row : table.rows) {
        for (const PriceCell& cell : row)
            text += cell.number ? u'(' + cell.text + u')' : u'[' + cell.text + u']';
        text += u'\n';
    }
    return text.toStdString();
}

class PriceFileTest : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<support::TempProgramFolder>();
        folder->write(u"list.fods"_s, workbook().toUtf8());
        for (const char* kind : {"xls", "xlsx"})
            tools::output(u"soffice"_s,
                          {u"--headless"_s, u"-env:UserInstallation=file://"_s + folder->path(u"profile"_s),
                           u"--convert-to"_s, QLatin1String(kind), u"--outdir"_s, folder->path(),
                           folder->path(u"list.fods"_s)});
    }
    static void TearDownTestSuite() { folder.reset(); }
    static QString path() { return folder->path(u"list."_s + QLatin1String(GetParam())); }
    static PriceFault faultOf(const QByteArray& bytes) {
        folder->write(u"other.bin"_s, bytes);
        return PriceFile(folder->path(u"other.bin"_s)).fault();
    }

    static inline std::unique_ptr<support::TempProgramFolder> folder;
};

TEST_P(PriceFileTest, CellsAreReadWithTheirNumbersAsNumbers) {
    const PriceFile file(path());
    ASSERT_EQ(file.fault(), PriceFault::none);
    EXPECT_FALSE(file.isText());
    EXPECT_EQ(file.sheets().join(u'|'), u"Preise|Texts & more"_s);
    const ReadTable read = file.readSheet(0);
    ASSERT_EQ(read.fault, PriceFault::none);
    EXPECT_EQ(cells(read.table), "[Name][NDC][Price][Pack]\n"
                                 "[Zinc \"oxide\", <fine>][0338-0049-04](28.5)[100 g]\n"
                                 "[Вазелин](338004904)(0.285)(1234567.25)\n"
                                 "[][alone](28.5)[5 kg]\n"
                                 "(-3)(0.1)(0.0000001)(100)\n"
                                 "(1)(-20)(3.25)\n");
}

TEST_P(PriceFileTest, TextsPartedAmongManyRecordsAreWhole) {
    const ReadTable read = PriceFile(path()).readSheet(1);
    ASSERT_EQ(read.table.rows.size(), static_cast<std::size_t>(longRows));
    for (int row = 0; row < longRows; ++row) {
        const PriceRow& cells = read.table.rows[static_cast<std::size_t>(row)];
        ASSERT_EQ(cells[0].text.toStdString(), longText(row).toStdString()) << row;
        ASSERT_EQ(cells[1].text.toStdString(), QString::number(row / 100.0).toStdString()) << row;
    }
}

TEST_P(PriceFileTest, ItCanBeStopped) {
    EXPECT_EQ(PriceFile(path()).readSheet(1, [](double) { return false; }).fault, PriceFault::stopped);
}

TEST_P(PriceFileTest, ABrokenFileIsRefusedOrReadInPartAndNothingElse) {
    const QByteArray whole = folder->read(u"list."_s + QLatin1String(GetParam()));
    ASSERT_GT(whole.size(), 1000);
    std::mt19937 random(4711);  // NOLINT(cert-msc51-cpp): the same breaks each time
    int refused = 0;
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        QByteArray broken = whole;
        if (round % 3 == 0)
            broken.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size())));
        for (int flips = round % 20; flips > 0 && !broken.isEmpty(); --flips)
            broken[static_cast<qsizetype>(random() % static_cast<unsigned>(broken.size()))] =
                static_cast<char>(random());
        folder->write(u"broken.bin"_s, broken);
        const PriceFile file(folder->path(u"broken.bin"_s));
        refused += file.fault() != PriceFault::none ? 1 : 0;
        for (int sheet = 0; file.fault() == PriceFault::none && sheet < file.sheets().size(); ++sheet)
            EXPECT_LE(file.readSheet(sheet).table.rows.size(), static_cast<std::size_t>(mostPriceRows));
    }
    EXPECT_GT(refused, rounds / 10);
}

INSTANTIATE_TEST_SUITE_P(Kinds, PriceFileTest, testing::Values("xls", "xlsx"),
                         [](const auto& kind) { return std::string(kind.param); });

class OtherFileTest : public testing::Test {
protected:
    PriceFault faultOf(const QByteArray& bytes) const {
        folder.write(u"list.xls"_s, bytes);
        return PriceFile(folder.path(u"list.xls"_s)).fault();
    }
    support::TempProgramFolder folder;
};

TEST_F(OtherFileTest, WhatAFileIsIsSeenInItAndNotInItsName) {
    folder.write(u"list.xls"_s, "Name;Price\nZinc;1,50\n");
    const PriceFile file(folder.path(u"list.xls"_s));
    EXPECT_TRUE(file.isText());
    EXPECT_EQ(file.separatorIn(file.encoding()), u';');
    EXPECT_EQ(cells(file.readText(file.encoding(), u';').table), "[Name][Price]\n[Zinc][1,50]\n");
}

TEST_F(OtherFileTest, WhatIsNoListIsRefusedWithItsReason) {
    EXPECT_EQ(PriceFile(folder.path(u"none.csv"_s)).fault(), PriceFault::unreadable);
    EXPECT_FALSE(PriceFile(folder.path(u"none.csv"_s)).detail().isEmpty());
    EXPECT_EQ(PriceFile(folder.path()).fault(), PriceFault::unreadable) << "a folder";
    EXPECT_EQ(faultOf(""), PriceFault::empty);
    EXPECT_EQ(faultOf("  \n"), PriceFault::empty);
    EXPECT_EQ(faultOf("<!DOCTYPE html><table><tr><td>Zinc"), PriceFault::webPage);
    EXPECT_EQ(faultOf(QByteArray("%PDF-1.4\n\x01\x02\x03", 12)), PriceFault::notATable);
    EXPECT_EQ(faultOf("PK\x03\x04 and nothing behind it"), PriceFault::broken);
    EXPECT_EQ(faultOf("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and nothing behind it"), PriceFault::broken);
    QFile large(folder.path(u"large.csv"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(largestPriceFile + 1));
    EXPECT_EQ(PriceFile(large.fileName()).fault(), PriceFault::tooLarge);
}

}  // namespace
