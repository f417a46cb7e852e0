// PDFs measured by an independent reader against the twips of the layout.
#include "Samples.h"
#include "Tools.h"
#include "support/Hindrances.h"
#include "support/TempProgramFolder.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/PagePainter.h"
#include "platform/report/ReportOutput.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace samples;

namespace {

constexpr double tolerance = 0.1;  // points

struct Pdf {
    QTemporaryDir folder;
    QString path = folder.filePath("report.pdf");
    std::vector<tools::Word> words;

    explicit Pdf(const PageDocument& document) {
        EXPECT_TRUE(savePdf(document, path));
        words = tools::words(path);
    }
};

}  // namespace

TEST(Pdf, IsLetterAndEveryTextStartsAtItsTwip) {
    StockFile file;
    file.add("'Zinc', 'Powder', 12.5, 3.2, '2026-03-01 00:00:00', 'L77'");
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    const Pdf pdf(run->document());
    EXPECT_TRUE(tools::output("pdfinfo", {pdf.path}).contains("612 x 792 pts (letter)"));
    EXPECT_NEAR(tools::wordOf(pdf.words, "Stock").left, 810 / 20.0, tolerance);
    EXPECT_NEAR(tools::wordOf(pdf.words, "Stock").top, 900 / 20.0, 1.5) << "the box of a word is its font's";
    EXPECT_NEAR(tools::wordOf(pdf.words, "Name").left, 720 / 20.0, tolerance);
    EXPECT_NEAR(tools::wordOf(pdf.words, "Quantity").right, (5220 + 1260) / 20.0, tolerance);
    EXPECT_NEAR(tools::wordOf(pdf.words, "12.500").right, (5220 + 1260) / 20.0, tolerance);
    EXPECT_NEAR(tools::wordOf(pdf.words, "3/1/2026").left, 7830 / 20.0, tolerance);
    const tools::Word powder = tools::wordOf(pdf.words, "Powder");
    EXPECT_NEAR((powder.left + powder.right) / 2, (3420 + 450) / 20.0, tolerance);
    EXPECT_NEAR(tools::wordOf(pdf.words, "on").left - tools::wordOf(pdf.words, "From").left, 72, tolerance)
        << "after a tab";
}

TEST(Pdf, FontsAreEmbedded) {
    const Pdf pdf(finished(onePage({label("a", 0, 0, 9000, 270, "Sans"),
                                    label("b", 0, 300, 9000, 270, "Serif").font("Times New Roman", 9),
                                    label("c", 0, 600, 9000, 270, "Bold").bold()}))
                      ->document());
    const QString fonts = tools::output("pdffonts", {pdf.path});
    const QStringList lines = fonts.split('\n', Qt::SkipEmptyParts).mid(2);
    EXPECT_EQ(lines.size(), 3) << qPrintable(fonts);
    for (const QString& line : lines)
        EXPECT_TRUE(line.contains(QRegularExpression("yes\\s+\\w+\\s+yes"))) << qPrintable(line);
}

TEST(Pdf, NothingRunsOverItsNeighbour) {
    const QString name = u"Very long name "_s.repeated(20);
    const auto run = finished(
        onePage({field("name", 100, 0, 2000, 270, name), field("next", 2100, 0, 1000, 270, "|next")}));
    const Pdf pdf(run->document());
    for (const tools::Word& word : pdf.words) {
        if (word.text == "|next")
            continue;
        EXPECT_LE(word.right, (720 + 2100) / 20.0 + tolerance) << qPrintable(word.text);
    }
    ASSERT_EQ(run->document().warnings.size(), 1u);
    EXPECT_EQ(run->document().warnings[0].kind, WarningKind::TextCut);
    EXPECT_EQ(run->document().warnings[0].control, "name");
    EXPECT_EQ(run->document().warnings[0].page, 1);
    EXPECT_EQ(run->document().warnings[0].text, name);
}

TEST(Pdf, HoldsTheScriptsOfAllLanguages) {
    const QStringList texts{"Worksheet",    "Hoja-año",   "Fiche-préparée-œuvre", "Größe-über-ß",
                            "Qualità",      "Formulação", "Składniki-żółć",       "Přípravek-ů",
                            "Лекарство-Ёж", "Συνταγή",    "50-µg-≥-½-°C-€"};
    std::vector<Control> controls;
    for (int i = 0; i < texts.size(); ++i)
        controls.push_back(label(u"t%1"_s.arg(i), 0, i * 300, 9000, 270, texts[i]));
    const auto run = finished(onePage(controls));
    EXPECT_TRUE(run->document().warnings.empty());
    const Pdf pdf(run->document());
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_NEAR(tools::wordOf(pdf.words, texts[i]).left, 36, tolerance);
}

TEST(Pdf, LinesAndBoxesStandAtTheirTwips) {
    const auto run = finished(onePage({line("rule", 90, 810, 11340), box("frame", 180, 1500, 3960, 270),
                                       box("grey", 5000, 1500, 1000, 1000).background(0xC0C0C0)}));
    const Pdf pdf(run->document());
    constexpr int dots = 288;  // five twips a pixel
    const QImage page = tools::picture(pdf.path, 1, dots);
    ASSERT_EQ(page.size(), QSize(612 * 4, 792 * 4));
    const auto grey = [&](int x, int y) { return qGray(page.pixel((720 + x) / 5, (720 + y) / 5)); };
    EXPECT_LT(grey(100, 809), 160);
    EXPECT_LT(grey(10000, 809), 160);
    EXPECT_GT(grey(70, 809), 250) << "the rule begins at 90";
    EXPECT_GT(grey(11360, 809), 250) << "and ends at 11340";
    EXPECT_LT(grey(2000, 1500), 160);
    EXPECT_LT(grey(180, 1600), 160);
    EXPECT_GT(grey(2000, 1600), 250) << "a box is empty";
    EXPECT_NEAR(grey(5500, 2000), 0xC0, 2);
}

TEST(Pdf, IsWrittenWholeOrNotAtAll) {
    StockFile file;
    file.addMany(100);
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    QTemporaryDir folder;
    const QString path = folder.filePath("a.pdf");
    int pages = 0;
    EXPECT_FALSE(savePdf(run->document(), path, [&](int done) {
        pages = done;
        return done < 2;
    }));
    EXPECT_EQ(pages, 2);
    EXPECT_TRUE(QDir(folder.path()).isEmpty()) << "a stopped file leaves nothing";
    EXPECT_TRUE(savePdf(run->document(), path));
    EXPECT_TRUE(tools::output("pdfinfo", {path}).contains(QRegularExpression("Pages:\\s+3")));
    EXPECT_TRUE(tools::output("pdfinfo", {path}).contains("Stock List"));
}

TEST(Pdf, AFullDiskLeavesTheOldFileAlone) {
    StockFile file;
    file.addMany(100);
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    support::TempProgramFolder folder;
    ASSERT_TRUE(savePdf(run->document(), folder.path("a.pdf")));
    const auto whole = static_cast<rlim_t>(folder.read("a.pdf").size());
    folder.write("a.pdf", "old");
    for (const rlim_t room : {rlim_t{0}, whole / 2, whole - 100, whole - 1}) {
        {
            const support::FullDisk full(room);
            EXPECT_THROW(savePdf(run->document(), folder.path("a.pdf")), RuntimeError) << room;
        }
        EXPECT_EQ(folder.read("a.pdf"), "old");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.pdf"));
    }
}

TEST(Pdf, PrintingToAFileOnAFullDiskLeavesTheOldFileAlone) {
    StockFile file;
    file.addMany(100);
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    support::TempProgramFolder folder;
    folder.write("a.pdf", "old");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.path("a.pdf"));
    preparePrinter(printer, run->document());
    {
        const support::FullDisk full(8192);
        EXPECT_THROW(printDocument(run->document(), printer), RuntimeError);
    }
    EXPECT_EQ(folder.read("a.pdf"), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.pdf"));
}

TEST(Pdf, AFolderThatIsNotThereIsAnError) {
    const auto run = finished(onePage({}));
    EXPECT_THROW(savePdf(run->document(), "/nowhere/at/all.pdf"), RuntimeError);
}

TEST(Painter, DrawsTheSamePageOnScreenAndOnPaper) {
    StockFile file;
    file.add("'Zinc', 'Powder', 12.5, 3.2, '2026-03-01 00:00:00', 'L77'");
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    const Pdf pdf(run->document());
    const QImage paper = tools::picture(pdf.path, 1, 96);
    QImage screen(816, 1056, QImage::Format_Grayscale8);
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(96 / 1440.0, 96 / 1440.0);
    PagePainter(run->document()).paint(painter, run->document().pages[0]);
    painter.end();
    ASSERT_EQ(paper.size(), screen.size());
    // Blocks of 8 by 8 pixels must be about as dark on both.
    for (int y = 0; y < screen.height(); y += 8) {
        for (int x = 0; x < screen.width(); x += 8) {
            int a = 0, b = 0;
            for (int i = 0; i < 64; ++i) {
                a += qGray(screen.pixel(x + i % 8, y + i / 8));
                b += qGray(paper.pixel(x + i % 8, y + i / 8));
            }
            ASSERT_NEAR(a / 64, b / 64, 48) << "at " << x << ", " << y;
        }
    }
}

TEST(PrinterOffset, IsKeptByPrinterBesideTheProgram) {
    support::TempProgramFolder folder;
    EXPECT_EQ(printerOffset("Front desk"), QPoint());
    setPrinterOffset("Front desk", {14, -29});
    setPrinterOffset("Büro/2", {1, 2});
    EXPECT_EQ(printerOffset("Front desk"), QPoint(14, -29));
    EXPECT_EQ(printerOffset("Büro/2"), QPoint(1, 2));
    EXPECT_EQ(printerOffset("other"), QPoint());
    EXPECT_TRUE(folder.has("window.ini"));
}
