// The whole program on a real print service: the list in the options, paper on the chosen queue measured
// against the PDF of the same preview, and nothing on any queue where it must not be.
#include "Pharmacy.h"
#include "PrintService.h"

#include <QFile>
#include <QImage>

namespace e2e {
namespace {

class PrintTest : public Pharmacy {
protected:
    void SetUp() override {
        const QString obstacle = PrintService::obstacle();
        if (!obstacle.isEmpty())
            GTEST_SKIP() << obstacle.toStdString();
        ASSERT_NO_FATAL_FAILURE(Pharmacy::SetUp());
        ASSERT_TRUE(m_service.start());
    }
    void TearDown() override {
        if (!IsSkipped())
            Pharmacy::TearDown();
    }
    QProcessEnvironment tourEnvironment() const override { return m_service.environment(environment()); }

    /// The printer of an earlier day, in the options.
    void choose(const QString& printer) const {
        QFile options(path("options.xml"));
        ASSERT_TRUE(options.open(QIODevice::WriteOnly));
        options.write(optionsWithPrinter(printer).toUtf8());
    }
    /// The one page of the file, its ink black.
    QImage page(const QString& pdf) const {
        const QString picture = path("tour/page");
        const int code =
            QProcess::execute("pdftoppm", {"-q", "-singlefile", "-gray", "-r", "144", "-png", pdf, picture});
        EXPECT_EQ(code, 0) << pdf.toStdString();
        return QImage(picture + ".png").convertToFormat(QImage::Format_Grayscale8);
    }
    /// How much of one page's ink the other has at the same place, half a point more or less.
    static double share(const QImage& ink, const QImage& of) {
        int all = 0, found = 0;
        for (int y = 1; y < ink.height() - 1; ++y) {
            for (int x = 1; x < ink.width() - 1; ++x) {
                if (qGray(ink.pixel(x, y)) >= dark)
                    continue;
                ++all;
                found += hasInkNear(of, x, y);
            }
        }
        return all > 1000 ? double(found) / all : 0;
    }
    static bool hasInkNear(const QImage& page, int x, int y) {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                if (qGray(page.pixel(x + dx, y + dy)) < pale)
                    return true;
            }
        }
        return false;
    }
    void expectSamePage(const QString& paper, const QString& pdf) const {
        const QImage printed = page(paper), saved = page(pdf);
        ASSERT_EQ(printed.size(), saved.size());
        EXPECT_GT(share(printed, saved), 0.99) << pdf.toStdString();
        EXPECT_GT(share(saved, printed), 0.99) << pdf.toStdString();
    }

    static constexpr int dark = 128, pale = 200;  // of 255
    PrintService m_service;
};

}  // namespace

TEST_F(PrintTest, TheChosenQueueGetsEverySheetTrueToItsPlace) {
    ASSERT_TRUE(m_service.addQueue("Counter") && m_service.addQueue("Laboratory"));
    const Ending end = tour({"--printers", "Counter,Laboratory", "--print-on", "Laboratory"});
    ASSERT_EQ(end.code, 0) << end.err.toStdString();
    const QStringList paper = m_service.printed(2);
    EXPECT_EQ(m_service.jobs(), QStringList({"Laboratory-1", "Laboratory-2"}));
    ASSERT_EQ(paper.size(), 2) << paper.join(' ').toStdString();
    expectSamePage(paper.filter("Worksheet").value(0), path("tour/worksheet.pdf"));
    expectSamePage(paper.filter("Label").value(0), path("tour/batch-labels.pdf"));
    QFile options(path("options.xml"));
    ASSERT_TRUE(options.open(QIODevice::ReadOnly));
    EXPECT_TRUE(options.readAll().contains("<DefPrinter>Laboratory</DefPrinter>"));
}

TEST_F(PrintTest, AMissingQueueIsSaidAndNothingGoesElsewhere) {
    ASSERT_TRUE(m_service.addQueue("Counter"));
    choose("Attic");
    const Ending end = tour({"--print-on-missing", "Attic"});
    EXPECT_EQ(end.code, 0) << end.err.toStdString();
    EXPECT_EQ(m_service.jobs(), QStringList());
}

TEST_F(PrintTest, WithoutAnyQueueThePdfIsOffered) {
    choose("Counter");
    const Ending end = tour({"--print-without-printer"});
    EXPECT_EQ(end.code, 0) << end.err.toStdString();
}

TEST_F(PrintTest, AQueueThatTakesNoJobsIsReported) {
    ASSERT_TRUE(m_service.addQueue("Counter") && m_service.refuseJobs("Counter"));
    choose("Counter");
    const Ending end = tour({"--print-on-refusing", "Counter"});
    EXPECT_EQ(end.code, 0) << end.err.toStdString();
    EXPECT_EQ(m_service.jobs(), QStringList());
}

}  // namespace e2e
